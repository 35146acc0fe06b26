#pragma once

#include <cfloat>

#include <zellap10/georef/ref_point.h>
#include <zellap10/platform/platform.h>
#include <zellap10/projection/projection.h>

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning( \
    disable : 4251)  // members of other libraries' types: application and library share the runtime
#endif

/// A rectangle of pixels.
struct PixelRect {
    int left = 0;    ///< smallest column
    int top = 0;     ///< smallest row
    int right = 0;   ///< largest column
    int bottom = 0;  ///< largest row
};

/// One georeference record: the entries of the georeference file for a chart or an inset, and the transforms
/// between its pixels and positions.
///
/// The transforms have two modes; solvepoly chooses one. In direct mode (ProjCode 0), polynomials convert
/// between pixels and degrees, with up to two regions per direction. In projection mode (ProjCode 1 to 4),
/// polynomials of the first order convert between pixels and the projected plane, and the projection's
/// formulas between the plane and degrees.
///
/// Every operation takes x before y and longitude before latitude. Positions are DEGREES, north and east
/// positive. Pixels are doubles, x the column and y the row. pw is pixel to world, wp is world to pixel.
/// No operation reports failure: infinity and NaN pass through, and positions outside the chart are
/// extrapolated.
///
/// Positions are in the datum of the chart's points, unless an operation's name ends in WGS84. Before wpxy,
/// subtract LatitudeOffset and LongitudeOffset from a WGS-84 position, such as one of a GPS receiver; after
/// pwxy, add them to get one. The text of Datum has no effect.
///
/// Threads: ReadGEO and solvepoly write the record, so no other thread may use it meanwhile. The conversions
/// only read it.
///
/// Ownership: a record owns the points of Vertices and Points. The chart object, not the record, deletes the
/// records of Insets. If memory runs out, std::bad_alloc is thrown; lists then stay consistent, and a record
/// keeps the transforms of its last complete fit.
class ZELLAP10_API CGEORec {
public:
    /// No text, no points, one region, no projection; all other numbers are 0.
    CGEORec();

    /// Deletes the points of Vertices and Points.
    ~CGEORec();
    CGEORec(const CGEORec&) = delete;
    CGEORec& operator=(const CGEORec&) = delete;

    /// Reads a georeference file into this record and into a new record in Insets for each inset, then fits
    /// them all. It clears nothing: lists grow, and only fields that the file names are replaced.
    ///
    /// @param path      the file. If it cannot be opened, nothing changes. Reading ends after 10000 insets,
    /// to
    ///                  limit their memory.
    /// @param infoOnly  0 to fit; otherwise the file is only read
    void ReadGEO(CString path, int infoOnly);

    /// Sets ProjCode from Projection; for a known projection also its parameters, and the affine transforms
    /// from Points. A record across the 180th meridian has no projection.
    void ProjectionInit();

    /// Sets the six extents from Vertices. Without vertices the means are 0, the smallest values are the
    /// largest double and the largest values its negative. Longitudes are compared unchanged: vertices on
    /// both sides of the 180th meridian give the extent and the mean of the rest of the earth.
    void MinMeanMaxLL();

    /// Converts a position in the chart's own datum, plus the record's offsets, to the projected plane, in
    /// metres. Without a projection, x and y do not change.
    void ProjFwd(double lon, double lat, double* x, double* y) const;

    /// The inverse of ProjFwd. Without a projection, the offsets are subtracted from lon and lat.
    void ProjInv(double x, double y, double* lon, double* lat) const;

    /// Converts a position to the projected plane without adding the offsets. Without a projection, x and y
    /// do not change.
    void ProjFwdWGS84(double lon, double lat, double* x, double* y) const;

    /// The inverse of ProjFwdWGS84. Without a projection, lon and lat do not change.
    void ProjInvWGS84(double x, double y, double* lon, double* lat) const;

    /// Sets Wraps180: 1 if the point with the largest X has a longitude below 0 and the point with the
    /// smallest X has one above 0.
    void Check180Wrap(CRefPointList* list);

    /// On a record across the 180th meridian, reduces longitudes above 0 by 360.
    void WrapLongitude(CRefPointList* list) const;

    /// On a record across the 180th meridian, increases longitudes below -180 by 360. After WrapLongitude, a
    /// longitude from 0 to 180 returns less than 3e-14 DEGREES off, and 180 returns as -180.
    void UnWrapLongitude(CRefPointList* list) const;

    /// An angle in DEGREES as sign, degrees, minutes and seconds, such as "-122 25 09.84". Seconds are
    /// rounded without a carry, so they may be 60.00. 0 has a minus sign. Degrees are clamped to the range of
    /// an int.
    CString deg2dms(double degrees) const;

    /// A term of the polynomials: 1, a, b, a2, ab, b2, a3 and so on up to b5 for the index 0 to 20; 0 for
    /// every other index.
    double polyfunc(int index, double a, double b) const;

    /// The sum of 21 coefficients times their terms, from 0 to 20, whatever the order of the fit.
    double Evaluate(const double* coefficients, double a, double b) const;

    /// The region of a pixel: 1 if y is greater than pwSplit, otherwise 0.
    int SelectPWpoly(double x, double y) const;

    /// The region of a position: 1 if the latitude is greater than wpSplit, otherwise 0.
    int SelectWPpoly(double longitude, double latitude) const;

    /// The position of a pixel, in the chart's own datum. On a chart across the 180th meridian, the longitude
    /// is -180 or more.
    void pwxy(double x, double y, double* longitude, double* latitude) const;
    double pwx(double x, double y) const;  ///< the longitude of pwxy
    double pwy(double x, double y) const;  ///< the latitude of pwxy

    /// The pixel of a position in the chart's own datum, not rounded.
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
    /// A value that has not converged after 30 passes keeps its last estimate. With NaN or infinity in A, the
    /// call returns and the results have no meaning; they are mostly NaN. The same holds if all elements are
    /// below 1e-160 in size or some reach 1e150, because products of two then underflow or overflow. Source:
    /// Golub and Reinsch (1970), Singular Value Decomposition and Least Squares Solutions, Numerische
    /// Mathematik 14.
    void svdcmp(double** a, int m, int n, double* w, double** v) const;

    /// Solves for one right-hand side with the factors of svdcmp. Directions with a w of exactly 0 take no
    /// part.
    ///
    /// @param u, w, v  the factors
    /// @param m, n     rows and columns of the matrix
    /// @param b        m; the right-hand side
    /// @param x        n; receives the solution
    void svbksb(double** u, double* w, double** v, int m, int n, double* b, double* x) const;

    /// The square root of a2 + b2 without overflow of the squares.
    double pythag(double a, double b) const;

    /// A vector with the indices from lower to upper, not initialised. Free it with free_dvector.
    double* dvector(long lower, long upper) const;

    /// A matrix with these rows and columns, not initialised; it may have no rows. Free it with free_dmatrix.
    double** dmatrix(long first_row, long last_row, long first_column, long last_column) const;

    /// Frees a vector of dvector with the same bounds.
    void free_dvector(double* vector, long lower, long upper) const;

    /// Frees a matrix of dmatrix with the same bounds.
    void free_dmatrix(double** matrix, long first_row, long last_row, long first_column,
                      long last_column) const;

    /// Least-squares fit of pixel to world over a list of points: raw pixels and raw degrees, without weights
    /// or scaling. Singular values below 1e-10 times the largest are discarded, so points on one line, or
    /// fewer points than terms, give the smallest coefficients that fit.
    ///
    /// @param order   0 to 5, clamped to this range: 1, 3, 6, 10, 15 or 21 terms
    /// @param points  any number of points, which do not change
    /// @param first   receives the coefficients of longitude over pixel x and y, one per term
    /// @param second  receives those of latitude
    /// @param error   receives the sum of the squared residuals of both, DEGREES squared
    void SolveSVDpw(int order, CRefPointList* points, double* first, double* second, double* error) const;

    /// The same for world to pixel.
    ///
    /// @param order   as in SolveSVDpw
    /// @param points  as in SolveSVDpw
    /// @param first   receives the coefficients of pixel x over longitude and latitude, one per term
    /// @param second  receives those of pixel y
    /// @param error   receives the sum of the squared residuals of both, pixels squared
    ///
    /// A small chart far from the origin of its plane loses its constant term to the limit of 1e-10, because
    /// coordinates enter the fit in metres, unscaled. Measured over 25 points at 48 north, 2000 pixels
    /// across: in Mercator, a chart of 7 km is fitted to 1e-9 pixels, one of 6 km is 1000 pixels off. The
    /// same happens between 8 and 7 km in transverse Mercator and polyconic from the equator, between 10 and
    /// 9 km in Lambert. From there up to 20 km, errors of 1e-3 pixels occur. If the latitude of origin is
    /// near the chart, in transverse Mercator or Lambert, charts down to 1 km are fitted to 5e-9 pixels. At
    /// higher latitudes the limits are larger. Pixel to world has no such limit.
    void SolveSVDwp(int order, CRefPointList* points, double* first, double* second, double* error) const;

    /// Fits the transforms of this record to Points: sets Wraps180, ProjCode and what the mode needs. On a
    /// chart across the 180th meridian, WrapLongitude and UnWrapLongitude move the longitudes of Points;
    /// other points do not change. An application that read a file with infoOnly may call it later, for this
    /// record and for each inset; it sets no pixels of vertices.
    void solvepoly();

    /// Divides points by their row, at the middle of the range of rows. Points within a tenth of the range
    /// from the middle go to both lists. If all rows are equal, both lists stay empty.
    ///
    /// @param source  the points
    /// @param low     empty; receives pointers to those with small rows, in the source's order
    /// @param high    empty; receives pointers to those with large rows
    /// @param split   receives the middle row
    void SplitListNSpw(CRefPointList* source, CRefPointList* low, CRefPointList* high, double* split) const;

    /// The same by latitude, in DEGREES: the south goes to `low`.
    void SplitListNSwp(CRefPointList* source, CRefPointList* low, CRefPointList* high, double* split) const;

    /// The fit of pixel to world with the smallest error among the orders 1 (from 3 points on), 2 (from 6)
    /// and 3 (from 10); the lower order if two errors are equal. If no order has a finite error, nothing is
    /// written.
    ///
    /// @param points  the points, which do not change
    /// @param first   receives 21 coefficients of longitude
    /// @param second  receives 21 coefficients of latitude
    /// @param error   receives the error of SolveSVDpw
    void FindBestPolyPW(CRefPointList* points, double* first, double* second, double* error) const;

    /// The same for world to pixel, with SolveSVDwp.
    void FindBestPolyWP(CRefPointList* points, double* first, double* second, double* error) const;

    // The entries of the georeference file, unchanged. The fit reads Projection, PP, P1, P5 and P6; the
    // others are for the application.
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
    double LongitudeOffset = 0.0;  ///< DEGREES; the same for a longitude
    CRefPointList Vertices{10};    ///< the outline, owned; its pixels come from the fit
    /// Of an inset: its points and 80 pixels around them, not clipped to the chart; zeros without points. Of
    /// the chart's own record: the chart's size, until ReadGEO fits the record and sets zeros.
    PixelRect InsetRect;
    CRefPointList Points{10};              ///< the reference points, owned
    CList<CGEORec*, CGEORec*> Insets{10};  ///< of a chart's record: its insets, owned by the chart object
    int Wraps180 = 0;  ///< 1 for a chart across the 180th meridian; set by Check180Wrap and so by each fit

    double pwSplit = DBL_MAX;    ///< last row of region 0; the largest double: one region
    double wpSplit = DBL_MAX;    ///< last latitude of region 0; the same
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

    // MinMeanMaxLL, and so each fit in projection mode, sets the extents. They are useless on a chart across
    // the 180th meridian.
    double MinLat = 0.0;   ///< smallest latitude of Vertices, DEGREES
    double MeanLat = 0.0;  ///< half the sum of MinLat and MaxLat
    double MaxLat = 0.0;   ///< largest latitude of Vertices, DEGREES
    double MinLon = 0.0;   ///< smallest longitude of Vertices, DEGREES
    double MeanLon = 0.0;  ///< half the sum of MinLon and MaxLon
    double MaxLon = 0.0;   ///< largest longitude of Vertices, DEGREES
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif
