#include "record_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <testing/record_parts.h>

namespace fuzz {

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

// What a fit sets apart from the coefficients.
constexpr double CGEORec::*kNumbers[] = {&CGEORec::MinLat, &CGEORec::MeanLat, &CGEORec::MaxLat,
                                         &CGEORec::MinLon, &CGEORec::MeanLon, &CGEORec::MaxLon};

void keep_points(const CRefPointList& points, Kept& kept) {
    for (const CRefPoint* point : elements_of(points)) {
        kept.text(point->Name);
        kept.add(point->X);
        kept.add(point->Y);
        kept.add(point->Longitude);
        kept.add(point->Latitude);
    }
}

bool same_transforms(const std::vector<double>& a, const std::vector<double>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

// Points equal those of the file, except for the rounding of longitudes moved down and up by 360.
void check_points(const CRefPointList& file, const CRefPointList& fitted, bool wraps) {
    const auto before = elements_of(file);
    const auto after = elements_of(fitted);
    must(before.size() == after.size(), "a fit keeps the number of points");
    for (std::size_t i = 0; i < before.size(); ++i) {
        const CRefPoint& is = *after[i];
        double longitude = before[i]->Longitude;
        if (wraps && longitude > 0.0) longitude -= 360.0;
        if (wraps && longitude < -180.0) longitude += 360.0;
        must(is.X == before[i]->X && is.Y == before[i]->Y && same(is.Latitude, before[i]->Latitude) &&
                 same(is.Longitude, longitude) && is.Name == before[i]->Name,
             "a fit leaves points unchanged");
    }
}

int truncated(double number) {
    if (!(number > -2147483648.0)) return number != number ? 0 : std::numeric_limits<int>::min();
    return number >= 2147483647.0 ? std::numeric_limits<int>::max() : static_cast<int>(number);
}

void check_vertices(const CRefPointList& file, const CGEORec& fitted) {
    const auto before = elements_of(file);
    const auto after = elements_of(fitted.Vertices);
    must(before.size() == after.size(), "a fit keeps the number of vertices");
    for (std::size_t i = 0; i < before.size(); ++i) {
        const CRefPoint& is = *after[i];
        must(same(is.Longitude, before[i]->Longitude) && same(is.Latitude, before[i]->Latitude),
             "a fit leaves the positions of vertices unchanged");
        double x = 0.0;
        double y = 0.0;
        fitted.wpxy(is.Longitude, is.Latitude, &x, &y);
        must(is.X == truncated(x) && is.Y == truncated(y), "a vertex has the pixel of its position");
    }
}

void check_inset_rect(const CGEORec& inset) {
    std::int64_t pixels[4] = {};  // left, top, right, bottom
    bool first = true;
    for (const CRefPoint* point : inset.Points) {
        const std::int64_t at[] = {point->X, point->Y};
        for (int i = 0; i < 4; ++i) {
            const std::int64_t moved = at[i % 2] + (i < 2 ? -80 : 80);
            if (first || (i < 2 ? moved < pixels[i] : moved > pixels[i])) pixels[i] = moved;
        }
        first = false;
    }
    const PixelRect& rect = inset.InsetRect;
    const int given[] = {rect.left, rect.top, rect.right, rect.bottom};
    for (int i = 0; i < 4; ++i)
        must(given[i] == truncated(static_cast<double>(pixels[i])),
             "InsetRect contains the points and a margin of 80 pixels");
}

void check_modes(const CGEORec& record) {
    must(record.Wraps180 == 0 || record.Wraps180 == 1, "Wraps180 is 0 or 1");
    must(record.ProjCode >= 0 && record.ProjCode <= 4, "ProjCode is valid");
    must(record.Wraps180 == 0 || record.ProjCode == 0,
         "a record across the 180th meridian has no projection");
    const std::vector<double> all = transforms_of(record);
    const bool direct = record.ProjCode == 0;
    // Four other numbers, then 168 coefficients of polynomials and 84 of affine transforms.
    const auto first = all.begin() + 4 + (direct ? 168 : 0);
    const auto last = direct ? all.end() : all.begin() + 4 + 168;
    must(std::all_of(first, last, [](double number) { return number == 0.0; }),
         "a fit fills the transforms of its own mode");
    for (const double number : all) {
        must(!direct || number == number, "a fit with NaN is not used");
    }
    const auto points = record.Points.GetCount();
    must(points >= 6 || (record.pwSplit == kLargest && record.wpSplit == kLargest), "a half has six points");
    must(points >= 3 || !direct || std::count(all.begin() + 4, all.end(), 0.0) == all.end() - all.begin() - 4,
         "a fit needs three points");
}

void convert(const CGEORec& record, Input& input, Kept& kept) {
    must(record.SelectPWpoly(0.0, record.pwSplit) == 0, "the row of the split is in region 0");
    must(record.SelectWPpoly(0.0, record.wpSplit) == 0, "the latitude of the split is in region 0");
    for (int i = 0; i < 3; ++i) {
        const double a = input.real();
        const double b = input.real();
        double longitude = 0.0;
        double latitude = 0.0;
        record.pwxy(a, b, &longitude, &latitude);
        must(same(longitude, record.pwx(a, b)) && same(latitude, record.pwy(a, b)),
             "pwx and pwy agree with pwxy");
        must(record.SelectPWpoly(a, b) == (b > record.pwSplit ? 1 : 0), "a row is in its region");
        double x = 0.0;
        double y = 0.0;
        record.wpxy(a, b, &x, &y);
        must(same(x, record.wpx(a, b)) && same(y, record.wpy(a, b)), "wpx and wpy agree with wpxy");
        must(record.SelectWPpoly(a, b) == (b > record.wpSplit ? 1 : 0), "a latitude is in its region");
        double plane[4] = {0.25, 0.25, 0.25, 0.25};
        record.ProjFwd(a, b, &plane[0], &plane[1]);
        record.ProjFwdWGS84(a + record.LongitudeOffset, b + record.LatitudeOffset, &plane[2], &plane[3]);
        must(same(plane[0], plane[2]) && same(plane[1], plane[3]),
             "ProjFwd and ProjFwdWGS84 differ by the offsets");
        double back[4] = {0.25, 0.25, 0.25, 0.25};
        record.ProjInv(a, b, &back[0], &back[1]);
        record.ProjInvWGS84(a, b, &back[2], &back[3]);
        must(equal_or_nan(back[0], back[2] - record.LongitudeOffset) &&
                 equal_or_nan(back[1], back[3] - record.LatitudeOffset),
             "ProjInv and ProjInvWGS84 differ by the offsets");
        must(record.ProjCode != 0 ||
                 (plane[2] == 0.25 && plane[3] == 0.25 && back[2] == 0.25 && back[3] == 0.25),
             "no projection writes nothing");
        for (const double number : {longitude, latitude, x, y, plane[0], plane[1]}) {
            kept.add(number);
            kept.text(record.deg2dms(number));
        }
        kept.bytes(back, sizeof back);
    }
}

// The fits and the split alone, which do not change the record.
void check_fits(CGEORec& record, Input& input, Kept& kept) {
    const int order = input.around(-1, 6);
    double first[21] = {};
    double second[21] = {};
    double error = -1.0;
    record.SolveSVDpw(order, &record.Points, first, second, &error);
    must(!(error < 0.0), "an error is a sum of squares");
    record.SolveSVDwp(order, &record.Points, first, second, &error);
    must(!(error < 0.0), "an error is a sum of squares");
    kept.bytes(first, sizeof first);
    kept.bytes(second, sizeof second);
    kept.add(error);

    CRefPointList low;
    CRefPointList high;
    double split = 0.0;
    record.SplitListNSpw(&record.Points, &low, &high, &split);
    const auto low_points = elements_of(low);
    const auto high_points = elements_of(high);
    kept.add(split);
    for (const CRefPoint* point : elements_of(record.Points)) {
        const bool is_low = std::count(low_points.begin(), low_points.end(), point) > 0;
        const bool is_high = std::count(high_points.begin(), high_points.end(), point) > 0;
        must(low_points.empty() || is_low || is_high, "each point is in a half");
    }
}

void check_one(const CGEORec& file, CGEORec& fitted, Input& input, Kept& kept) {
    for (const RecordField& field : kRecordFields) {
        must(field.text != nullptr ? file.*field.text == fitted.*field.text
                                   : same(file.*field.number, fitted.*field.number),
             "a fit leaves the fields of the file unchanged");
    }
    check_points(file.Points, fitted.Points, fitted.Wraps180 != 0);
    check_vertices(file.Vertices, fitted);
    check_modes(fitted);
    convert(fitted, input, kept);
    if (file.Points.GetCount() <= 400) check_fits(fitted, input, kept);

    const std::vector<double> before = transforms_of(fitted);
    const bool wraps = fitted.Wraps180 != 0;
    if (fitted.Points.GetCount() > 400) return;
    fitted.solvepoly();
    kept.add(fitted.pwSplit);
    // Longitudes moved down and up by 360 may differ in the last place, which changes the next fit.
    must(wraps || same_transforms(before, transforms_of(fitted)), "a fit of the same points is the same");
}

}  // namespace

OwnRecord::~OwnRecord() {
    for (const CGEORec* inset : elements_of(Insets))
        delete inset;
    Insets.RemoveAll();
}

void keep_record(const CGEORec& record, Kept& kept) {
    for (const RecordField& field : kRecordFields) {
        if (field.text != nullptr) kept.text(record.*field.text);
        if (field.number != nullptr) kept.add(record.*field.number);
    }
    for (const auto number : kNumbers)
        kept.add(record.*number);
    for (const double number : transforms_of(record))
        kept.add(number);
    kept.bytes(&record.ProjParms, sizeof record.ProjParms);
    kept.bytes(&record.InsetRect, sizeof record.InsetRect);
    keep_points(record.Points, kept);
    keep_points(record.Vertices, kept);
    for (const CGEORec* inset : elements_of(record.Insets))
        keep_record(*inset, kept);
}

void check_unfitted_record(const CGEORec& record) {
    const std::vector<double> all = transforms_of(record);
    must(record.pwSplit == kLargest && record.wpSplit == kLargest, "a record without a fit has one region");
    must(std::all_of(all.begin() + 4, all.end(), [](double number) { return number == 0.0; }),
         "a record without a fit has no transforms");
    for (const CRefPoint* vertex : elements_of(record.Vertices))
        must(vertex->X == 0 && vertex->Y == 0, "vertices without a fit have no pixels");
}

void check_fitted_record(const CGEORec& file, CGEORec& fitted, Input& input, Kept& kept) {
    check_one(file, fitted, input, kept);
    const auto before = elements_of(file.Insets);
    const auto after = elements_of(fitted.Insets);
    must(before.size() == after.size(), "a fit keeps the insets");
    // Checks only the first few insets, because many are alike.
    for (std::size_t i = 0; i < std::min<std::size_t>(before.size(), 8); ++i) {
        check_inset_rect(*after[i]);
        check_one(*before[i], *after[i], input, kept);
    }
}

}  // namespace fuzz
