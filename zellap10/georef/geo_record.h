#pragma once

#include <cfloat>

#include <zellap10/georef/ref_point.h>
#include <zellap10/platform/platform.h>
#include <zellap10/projection/projection.h>

/// A rectangle of pixels.
struct PixelRect {
    int left = 0;    ///< smallest column
    int top = 0;     ///< smallest row
    int right = 0;   ///< largest column
    int bottom = 0;  ///< largest row
};

/// One georeference record: what the georeference file says of a chart or of an inset on it, and the
/// transforms that tie the picture's pixels to the earth.
///
/// The transforms work in one of two modes. In direct mode (ProjCode 0) polynomials tie pixels to degrees,
/// with up to two regions per direction. In projection mode (ProjCode 1 to 4) polynomials of the first order
/// tie pixels to the projected plane, and the projection's formulas do the rest. solvepoly chooses.
///
/// Every operation names x before y and longitude before latitude. Positions are DEGREES, north and east
/// positive; pixels are doubles, x the column and y the row; pw is pixel to world and wp world to pixel.
/// Nothing reports failure: infinity and NaN are handed on, and positions outside the picture are
/// extrapolated.
///
/// Positions are in the chart's own frame, the datum that its points were given in, unless an operation's
/// name ends in WGS84. A WGS-84 position, as a GPS receiver gives it, has LatitudeOffset and LongitudeOffset
/// taken off before wpxy, and a position of pwxy has them added to become one. The text of Datum plays no
/// part in this.
///
/// Threads: a record is for one thread at a time while ReadGEO or solvepoly runs, since they write it; the
/// conversions only read it.
///
/// Ownership: a record owns the points of Vertices and Points, and not the records of Insets, which the chart
/// object deletes. Memory that runs out reaches the caller as std::bad_alloc. Lists then stay consistent, and
/// a record keeps the transforms of its last whole fit.
class ZELLAP10_API CGEORec {
public:
    /// No text, no points, one region, no projection; every number without a meaning of its own is 0.
    CGEORec();

    /// Deletes the points of Vertices and Points.
    ~CGEORec();
    CGEORec(const CGEORec&) = delete;
    CGEORec& operator=(const CGEORec&) = delete;

    /// Reads a georeference file into this record and into a new record in Insets for each inset, then fits
    /// them all. It clears nothing: lists grow, and only fields that the file names are replaced.
    ///
    /// @param path      the file; one that cannot be opened changes nothing. It is read to its end,
    ///                  but no further than 10000 insets, so that their memory has a bound
    /// @param infoOnly  other than 0 to read without fitting
    void ReadGEO(CString path, int infoOnly);

    /// Sets ProjCode from Projection, and for a known projection its parameters and the affine transforms
    /// from Points. A record over the 180th meridian has no projection.
    void ProjectionInit();

    /// Sets the six extents from Vertices. Without vertices the means are 0, and the smallest and largest
    /// values are the largest double and its negative. Longitudes are compared as they are: vertices on both
    /// sides of the 180th meridian give an extent around the rest of the earth, and a mean in the midst of
    /// it.
    void MinMeanMaxLL();

    /// A position in the chart's own frame to the projected plane, in metres; the record's offsets are added
    /// on the way. Without a projection x and y stay as they were.
    void ProjFwd(double lon, double lat, double* x, double* y) const;

    /// The way back. Without a projection the offsets are taken off what lon and lat hold.
    void ProjInv(double x, double y, double* lon, double* lat) const;

    /// A position in the projection's frame, which is the chart's own plus the record's offsets and named
    /// WGS-84, to the projected plane. Without a projection x and y stay as they were.
    void ProjFwdWGS84(double lon, double lat, double* x, double* y) const;

    /// The way back. Without a projection lon and lat stay as they were.
    void ProjInvWGS84(double x, double y, double* lon, double* lat) const;

    /// Sets Wraps180: 1 when the longitude of the point with the largest X is below 0 and that of the point
    /// with the smallest X is above 0.
    void Check180Wrap(CRefPointList* list);

    /// On a record over the 180th meridian, moves longitudes above 0 down by 360.
    void WrapLongitude(CRefPointList* list) const;

    /// On a record over the 180th meridian, moves longitudes below -180 up by 360. Those from 0 to 180
    /// that WrapLongitude moved come back less than 3e-14 DEGREES off, and 180 as -180.
    void UnWrapLongitude(CRefPointList* list) const;

    /// An angle in DEGREES as sign, degrees, minutes and seconds, such as "-122 25 09.84". Seconds are
    /// rounded and carry nothing, so that they may read 60.00. 0 has a minus sign. Whole degrees are held at
    /// the ends of an int.
    CString deg2dms(double degrees) const;

    /// A term of the polynomials: 1, a, b, a2, ab, b2, a3 and so on up to b5 for the index 0 to 20, each the
    /// product of the two powers; 0 for every other index.
    double polyfunc(int index, double a, double b) const;

    /// The sum of 21 coefficients times their terms, from 0 to 20, whatever the order of the fit.
    double Evaluate(const double* coefficients, double a, double b) const;

    /// The region of a pixel: 1 when y is greater than pwSplit, else 0.
    int SelectPWpoly(double x, double y) const;

    /// The region of a position: 1 when the latitude is greater than wpSplit, else 0.
    int SelectWPpoly(double longitude, double latitude) const;

    /// The position of a pixel, in the chart's own frame. Over the 180th meridian a longitude comes out from
    /// -180 up.
    void pwxy(double x, double y, double* longitude, double* latitude) const;
    double pwx(double x, double y) const;  ///< the longitude of pwxy
    double pwy(double x, double y) const;  ///< the latitude of pwxy

    /// The pixel of a position in the chart's own frame, not rounded.
    void wpxy(double longitude, double latitude, double* x, double* y) const;
    double wpx(double longitude, double latitude) const;  ///< the x of wpxy
    double wpy(double longitude, double latitude) const;  ///< the y of wpxy

    /// Singular value decomposition of a matrix of m rows and n columns, A = U diag(w) V^T. Vectors and
    /// matrices count from 1.
    ///
    /// @param a  m by n; A on entry, U on return
    /// @param m  rows, 0 or more; may be smaller than n
    /// @param n  columns, 1 or more
    /// @param w  n; receives the singular values, not negative and not sorted
    /// @param v  n by n; receives V, not its transpose
    ///
    /// A value that 30 passes do not settle is left as it is. With NaN or infinity in A the call ends and the
    /// results are whatever the arithmetic gives; so it is, mostly NaN, where all elements are below 1e-160
    /// in size or some reach 1e150, since products of two then underflow or overflow. Source: Golub and
    /// Reinsch (1970), Singular Value Decomposition and Least Squares Solutions, Numerische Mathematik 14.
    void svdcmp(double** a, int m, int n, double* w, double** v) const;

    /// Solves for one right-hand side by a decomposition of svdcmp, which stays as it is; directions with a w
    /// of exactly 0 take no part.
    ///
    /// @param u, w, v  the factors
    /// @param m, n     rows and columns of the matrix
    /// @param b        m; the right-hand side
    /// @param x        n; receives the solution
    void svbksb(double** u, double* w, double** v, int m, int n, double* b, double* x) const;

    /// The square root of a2 + b2 without overflow of the squares.
    double pythag(double a, double b) const;

    /// A vector with the indices from lower to upper, not initialised; free_dvector frees it.
    double* dvector(long lower, long upper) const;

    /// A matrix with these rows and columns, not initialised; it may have no rows. free_dmatrix frees it.
    double** dmatrix(long first_row, long last_row, long first_column, long last_column) const;

    /// Frees a vector of dvector with the same bounds.
    void free_dvector(double* vector, long lower, long upper) const;

    /// Frees a matrix of dmatrix with the same bounds.
    void free_dmatrix(double** matrix, long first_row, long last_row, long first_column,
                      long last_column) const;

    /// Least-squares fit of pixel to world over a list of points: raw pixels and raw degrees, no weights and
    /// no scaling. Singular values below the largest times 1e-10 take no part, so that points on one line, or
    /// fewer points than terms, give the smallest coefficients that fit.
    ///
    /// @param order   0 to 5, held at these ends: 1, 3, 6, 10, 15 or 21 terms
    /// @param points  any number of points, which stay as they are
    /// @param first   receives the coefficients of longitude over pixel x and y, as many as there are terms
    /// @param second  receives those of latitude
    /// @param error   receives the sum of the squared residuals of both, DEGREES squared
    void SolveSVDpw(int order, CRefPointList* points, double* first, double* second, double* error) const;

    /// The same for world to pixel.
    ///
    /// @param order   as in SolveSVDpw
    /// @param points  as in SolveSVDpw
    /// @param first   receives the coefficients of pixel x over longitude and latitude, one a term
    /// @param second  receives those of pixel y
    /// @param error   receives the sum of the squared residuals of both, pixels squared
    ///
    /// A small picture far from the origin loses its constant term to the limit of 1e-10, since the plane's
    /// coordinates enter as they are, in metres. Measured over 25 points at 48 north, 2000 pixels across: a
    /// picture of 7 km in Mercator is met to 1e-9 pixels, one of 6 km is missed by 1000 pixels; transverse
    /// Mercator and polyconic from the equator end between 8 and 7 km, Lambert between 10 and 9 km. Between
    /// there and 20 km errors of 1e-3 pixels occur. With a latitude of origin near the chart, in transverse
    /// Mercator or Lambert, pictures down to 1 km are met to 5e-9 pixels. Pixel to world has no such limit.
    void SolveSVDwp(int order, CRefPointList* points, double* first, double* second, double* error) const;

    /// Fits the transforms of this record to Points: sets Wraps180, ProjCode and what the mode needs. Points
    /// stay as they are but over the 180th meridian, where their longitudes are moved by WrapLongitude and
    /// UnWrapLongitude. An application that read a file with infoOnly may call it later, for this record and
    /// for each of its insets; vertices get no pixels by that.
    void solvepoly();

    /// Divides points by their row, at the middle of the range of rows. Points within a tenth of the range
    /// from the middle go to both lists; where all rows are equal, none goes to any.
    ///
    /// @param source  the points
    /// @param low     empty; receives pointers to those with small rows, in the source's order
    /// @param high    empty; receives pointers to those with large rows
    /// @param split   receives the middle row
    void SplitListNSpw(CRefPointList* source, CRefPointList* low, CRefPointList* high, double* split) const;

    /// The same by latitude, in DEGREES: the south goes to `low`.
    void SplitListNSwp(CRefPointList* source, CRefPointList* low, CRefPointList* high, double* split) const;

    /// The fit of pixel to world with the smallest error among the orders 1 (from 3 points on), 2 (from 6)
    /// and 3 (from 10); the lower order where two errors are equal. Where no order has a finite error,
    /// nothing is written.
    ///
    /// @param points  the points, which stay as they are
    /// @param first   receives 21 coefficients of longitude
    /// @param second  receives 21 coefficients of latitude
    /// @param error   receives the error of SolveSVDpw
    void FindBestPolyPW(CRefPointList* points, double* first, double* second, double* error) const;

    /// The same for world to pixel, with SolveSVDwp.
    void FindBestPolyWP(CRefPointList* points, double* first, double* second, double* error) const;

    // What the georeference file says, as it stands there. The fit reads Projection, PP, P1, P5 and P6; all
    // else is for the application.
    CString Bitmap;                ///< text of "Bitmap"
    CString Name;                  ///< text of "Name"
    CString Scale;                 ///< text of "Scale"
    CString Order;                 ///< text of "Order"
    CString Id;                    ///< text of "Id"
    CString Type;                  ///< text of "Type"
    CString Source;                ///< text of "Source"
    CString SourceEdition;         ///< text of "Source Edition"
    CString Country;               ///< text of "Country"
    CString ProvinceState;         ///< text of "Province/State"
    CString DatePublished;         ///< text of "Date Published"
    CString LastUpdate;            ///< text of "Last Update"
    CString MagDeclinationDate;    ///< text of "Magnetic Declination Date="
    CString MagDeclination;        ///< text of "Magnetic Declination="
    CString MagDeclinationChange;  ///< text of "Magnetic Declination Change"
    CString ULLatitude;            ///< text of "UL Latitude"
    CString ULLongitude;           ///< text of "UL Longitude"
    CString LRLatitude;            ///< text of "LR Latitude"
    CString LRLongitude;           ///< text of "LR Longitude"
    CString DepthUnits;            ///< text of "Depth Units"
    CString SoundingDatum;         ///< text of "Sounding Datum"
    CString Projection;            ///< text of "Projection": the projection's name
    CString PP;                    ///< text of "PP": central meridian, DEGREES
    CString P1;                    ///< text of "P1": latitude of origin, DEGREES
    CString P2;                    ///< text of "P2"
    CString P3;                    ///< text of "P3"
    CString P4;                    ///< text of "P4"
    CString P5;                    ///< text of "P5": first standard parallel, DEGREES
    CString P6;                    ///< text of "P6": second standard parallel, DEGREES
    double SkewAngle = 0.0;        ///< number of "Skew Angle"
    CString Resolution;            ///< text of "Resolution"
    CString Datum;                 ///< text of "Datum"; never looked up
    double LatitudeOffset = 0.0;   ///< DEGREES; added to a chart's latitude to reach WGS-84
    double LongitudeOffset = 0.0;  ///< DEGREES; likewise for a longitude
    CRefPointList Vertices{10};    ///< the picture's outline, owned; pixels come from the fit
    /// Of an inset: where it stands on the chart, its points and 80 pixels around, not clipped to the
    /// picture; zeros without points. Of the chart's own record: the size of the picture, until ReadGEO fits
    /// the record and leaves zeros.
    PixelRect InsetRect;
    CRefPointList Points{10};              ///< the reference points, owned
    CList<CGEORec*, CGEORec*> Insets{10};  ///< of a chart's record: its insets, owned by the chart object
    int Wraps180 = 0;  ///< 1 for a picture over the 180th meridian; set by Check180Wrap, so by each fit

    double pwSplit = DBL_MAX;    ///< last row of region 0; the largest double: one region
    double wpSplit = DBL_MAX;    ///< last latitude of region 0; likewise
    double wpxPoly[2][21] = {};  ///< direct mode: longitude and latitude to pixel x, by region
    double wpyPoly[2][21] = {};  ///< longitude and latitude to pixel y
    double pwxPoly[2][21] = {};  ///< pixel to longitude
    double pwyPoly[2][21] = {};  ///< pixel to latitude

    int ProjCode = 0;           ///< 0 none, 1 Mercator, 2 polyconic, 3 transverse Mercator, 4 Lambert
    PPARMS ProjParms;           ///< the projection on its ellipsoid
    double wpxAffine[21] = {};  ///< projection mode: easting and northing to pixel x
    double wpyAffine[21] = {};  ///< easting and northing to pixel y
    double pwxAffine[21] = {};  ///< pixel to easting
    double pwyAffine[21] = {};  ///< pixel to northing

    // The extents are set by MinMeanMaxLL, so by each fit in projection mode. They are of no use over the
    // 180th meridian.
    double MinLat = 0.0;   ///< smallest latitude of Vertices, DEGREES
    double MeanLat = 0.0;  ///< half the sum of MinLat and MaxLat
    double MaxLat = 0.0;   ///< largest latitude of Vertices, DEGREES
    double MinLon = 0.0;   ///< smallest longitude of Vertices, DEGREES
    double MeanLon = 0.0;  ///< half the sum of MinLon and MaxLon
    double MaxLon = 0.0;   ///< largest longitude of Vertices, DEGREES
};
