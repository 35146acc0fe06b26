#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/point_lists.h>
#include <zellap10/georef/geo_record.h>

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kUnwritten = 9.0;
constexpr int kTerms = 21;

enum class Way { kPw, kWp };

struct Fit {
    Fit() {
        std::fill_n(first, kTerms, kUnwritten);
        std::fill_n(second, kTerms, kUnwritten);
    }
    // Coefficients before the first that was not written, or is 0 because of the order.
    int terms() const { return static_cast<int>(std::find_if(first, first + kTerms, is_no_term) - first); }
    static bool is_no_term(double coefficient) { return coefficient == kUnwritten || coefficient == 0.0; }

    double first[kTerms];
    double second[kTerms];
    double error = -1.0;
};

Fit solved(Way way, int order, PointList& points) {
    Fit fit;
    const auto solve = way == Way::kPw ? &CGEORec::SolveSVDpw : &CGEORec::SolveSVDwp;
    (CGEORec().*solve)(order, points.list(), fit.first, fit.second, &fit.error);
    return fit;
}

Fit best(Way way, PointList& points) {
    Fit fit;
    const auto find = way == Way::kPw ? &CGEORec::FindBestPolyPW : &CGEORec::FindBestPolyWP;
    (CGEORec().*find)(points.list(), fit.first, fit.second, &fit.error);
    return fit;
}

PointRow point_of(Way way, int a, int b, double first, double second) {
    if (way == Way::kPw) return {a, b, first, second};
    return {static_cast<int>(first), static_cast<int>(second), double(a), double(b)};
}

// Points on a grid of integers. The first result is the sum of the first terms, the second -2 times that.
std::vector<PointRow> polynomial_points(Way way, int terms) {
    std::vector<PointRow> rows;
    for (int i = 0; i < 36; ++i) {
        const int a = i % 6 - 3;
        const int b = i / 6 - 2;
        double sum = 0.0;
        for (int term = 0; term < terms; ++term)
            sum += CGEORec().polyfunc(term, a, b);
        rows.push_back(point_of(way, a, b, sum, -2.0 * sum));
    }
    return rows;
}

struct OrderRow {
    int order, terms;
};

const OrderRow kOrderRows[] = {{-1, 1}, {0, 1}, {1, 3}, {2, 6}, {3, 10}, {4, 15}, {5, 21}, {7, 21}};

TEST(LeastSquares, FindsThePolynomialOfItsOrder) {
    for (const Way way : {Way::kPw, Way::kWp}) {
        for (const OrderRow& row : kOrderRows) {
            SCOPED_TRACE("order " + std::to_string(row.order));
            PointList points(polynomial_points(way, row.terms));
            const Fit fit = solved(way, row.order, points);
            EXPECT_EQ(fit.terms(), row.terms);
            for (int i = 0; i < row.terms; ++i) {
                EXPECT_NEAR(fit.first[i], 1.0, 1e-9);
                EXPECT_NEAR(fit.second[i], -2.0, 1e-9);
            }
            EXPECT_LT(fit.error, 1e-15);
        }
    }
}

// Singular values in the ratio of 1 to L, on either side of the limit of 1e-10.
TEST(LeastSquares, DiscardsSmallSingularValues) {
    for (const double length : {0.99e-10, 1.01e-10}) {
        PointList points({{1, 0, length, 0}, {-1, 0, -length, 0}});
        EXPECT_NEAR(solved(Way::kWp, 1, points).first[1] * length, length < 1e-10 ? 0.0 : 1.0, 1e-9);
    }
    PointList grid;
    for (int i = 0; i < 16; ++i) {
        const int x = i % 4 * 3000;
        const int y = i / 4 * 3500;
        grid.add({x, y, -70 + 0.00012 * x, 42 - 0.00009 * y});
    }
    EXPECT_LT(solved(Way::kPw, 2, grid).error, 1e-10);
    EXPECT_NEAR(solved(Way::kPw, 3, grid).error, 7705.0, 15.0) << "unscaled pixels lose a value";
}

std::vector<int> rows_of(CRefPointList& list) {
    std::vector<int> rows;
    for (const CRefPoint* point : elements_of(list))
        rows.push_back(point->Y);
    return rows;
}

TEST(Split, OverlapsInTheMiddle) {
    PointList points;
    for (int y = 100; y >= 0; y -= 10)
        points.add({0, y, 0.0, -0.5 * y});
    const CGEORec record;
    CRefPointList low;
    CRefPointList high;
    double middle = 0.0;
    record.SplitListNSpw(points.list(), &low, &high, &middle);
    EXPECT_EQ(middle, 50.0);
    EXPECT_EQ(rows_of(low), (std::vector<int>{50, 40, 30, 20, 10, 0})) << "60 is on the limit";
    EXPECT_EQ(rows_of(high), (std::vector<int>{100, 90, 80, 70, 60, 50}));

    CRefPointList south;
    CRefPointList north;
    record.SplitListNSwp(points.list(), &south, &north, &middle);
    EXPECT_EQ(middle, -25.0);
    EXPECT_EQ(rows_of(south), rows_of(high)) << "large rows are the south";
    EXPECT_EQ(rows_of(north), rows_of(low));
}

struct CountRow {
    int points, terms;
};

const CountRow kCountRows[] = {{2, 0}, {3, 3}, {5, 3}, {6, 6}, {9, 6}, {10, 10}, {21, 10}};

TEST(BestOrder, IsTheHighestWithEnoughPointsIfItsErrorIsSmallest) {
    for (const Way way : {Way::kPw, Way::kWp}) {
        for (const CountRow& row : kCountRows) {
            SCOPED_TRACE(row.points);
            PointList points;
            for (int i = 0; i < row.points; ++i) {
                // Spread over a small chart, with values that no polynomial fits.
                const int a = i * 7 % 10, b = i * i * 3 % 11;
                points.add(point_of(way, a, b, i * i * i % 17, i * i % 13));
            }
            const Fit fit = best(way, points);
            EXPECT_EQ(fit.terms(), row.terms);
            const double last = row.terms == 0 ? kUnwritten : 0.0;
            EXPECT_EQ(fit.first[20], last) << "all 21 are written, or none";
            EXPECT_EQ(fit.second[20], last);
            EXPECT_EQ(fit.error < 0.0, row.terms == 0);
        }
    }
}

TEST(BestOrder, IsTheLowerOfEqualOnesAndNeverNan) {
    // The squares of these residuals are 0 at every order; only the coefficients differ between orders.
    PointList tiny(std::vector<PointRow>(12, PointRow{1, 0, 1e-200, 0.0}));
    const Fit equal = best(Way::kPw, tiny);
    EXPECT_EQ(equal.error, 0.0);
    EXPECT_NEAR(equal.first[0] / 1e-200, 0.5, 1e-12) << "shared by the two terms of order 1 that are not 0";
    PointList odd(std::vector<PointRow>(12, PointRow{1, 2, std::nan(""), 0.0}));
    EXPECT_EQ(best(Way::kPw, odd).error, -1.0);
}

// Longitudes bend at row 10, at latitude 0; every order fits a straight half.
PointRow bent_at_row_10(int i) {
    const int x[] = {0, 3, 7, 1, 5, 8, 1, 4, 8, 2, 6, 9};
    const int y[] = {0, 1, 0, 3, 3, 2, 20, 19, 20, 17, 17, 18};
    return {x[i], y[i], 0.1 * x[i] + 0.1 * std::abs(y[i] - 10), 1 - 0.1 * y[i]};
}

PointRow bent_on_one_latitude(int i) {
    const int x = i % 6 * 200, y = i / 6 * 100;
    return {x, y, 10 + 0.002 * x + 0.001 * std::abs(y - 500), 40};
}

PointRow at_one_place(int i) {
    return {i % 6 * 200, i / 6 * 200, 0, 0};
}

PointRow scattered(int i) {
    return {i * 7 % 10, i * i % 11, double(i * i * i % 17), double(i * i % 13)};
}

struct RegionsRow {
    const char* name;
    PointRow (*point)(int i);
    int from, to;
    double pw_split, wp_split;
};

// clang-format off
const RegionsRow kRegionsRows[] = {
    // name                           points                from  to  pwSplit   wpSplit
    {"six points per half",           bent_at_row_10,       0,    12, 10.0,     0.0},
    {"five in the low rows",          bent_at_row_10,       1,    12, kLargest, kLargest},
    {"five in the high rows",         bent_at_row_10,       0,    11, kLargest, kLargest},
    {"no latitude to divide by",      bent_on_one_latitude, 0,    66, 500.0,    kLargest},
    {"each half better, not both",    scattered,            0,    26, kLargest, 6.0},
    {"no errors at all",              at_one_place,         0,    36, kLargest, kLargest},
};
// clang-format on

TEST(RecordFit, TakesTwoRegionsIfTheirErrorIsSmaller) {
    for (const RegionsRow& row : kRegionsRows) {
        SCOPED_TRACE(row.name);
        CGEORec record;
        for (int i = row.from; i < row.to; ++i)
            add_points(record, {row.point(i)});
        record.pwxPoly[1][0] = kUnwritten;
        record.solvepoly();
        EXPECT_NEAR(record.pwSplit, row.pw_split, 1e-12);
        EXPECT_NEAR(record.wpSplit, row.wp_split, 1e-12);
        EXPECT_EQ(record.pwxPoly[1][0] == kUnwritten, row.pw_split == kLargest)
            << "a second region is written if it is used";
        if (row.point != bent_at_row_10 || row.wp_split == kLargest) continue;
        for (const int line : {2, 17}) {
            const double longitude = 0.4 + 0.1 * std::abs(line - 10);
            EXPECT_NEAR(record.pwx(4, line), longitude, 1e-9);
            EXPECT_NEAR(record.pwy(4, line), 1 - 0.1 * line, 1e-9);
            EXPECT_NEAR(record.wpx(longitude, 1 - 0.1 * line), 4, 1e-9);
            EXPECT_NEAR(record.wpy(longitude, 1 - 0.1 * line), line, 1e-9);
        }
    }
}

TEST(RecordFit, CrossesThe180thMeridian) {
    CGEORec record;
    record.Projection = "MERCATOR";
    for (int i = 0; i < 36; ++i) {
        const int x = i % 6 * 200, y = i / 6 * 200;
        const double longitude = 179 + 0.002 * x;
        add_points(record, {{x, y, longitude > 180 ? longitude - 360 : longitude, 40 - 0.002 * y}});
    }
    record.solvepoly();
    EXPECT_EQ(record.Wraps180, 1);
    EXPECT_EQ(record.ProjCode, 0);
    EXPECT_EQ(elements_of(record.Points)[1]->Longitude, 179.4) << "longitudes are restored";
    EXPECT_NEAR(record.pwx(100, 300), 179.2, 1e-9);
    EXPECT_NEAR(record.pwx(900, 300), -179.2, 1e-9);
    for (const double turned : {179.2, -180.8})
        EXPECT_NEAR(record.wpx(turned, 39.5), 100, 1e-5);
    EXPECT_NEAR(record.wpx(-179.2, 39.5), 900, 1e-5);
}

struct ProjectionRow {
    const char* name;
    const char* projection;
    int code;
    double p1, pp, p5, p6;
    double north, west;  // of the upper left pixel
};

// clang-format off
const ProjectionRow kProjectionRows[] = {
    // name                    projection              code  P1     PP      P5     P6     north  west
    {"Mercator, south",        "MERCATOR",             1,    0.0,   174.0,  0.0,   0.0,   -39.5, 172.5},
    {"polyconic",              "Polyconic",            2,    0.0,   -69.0,  0.0,   0.0,   44.5,  -70.5},
    {"transverse Mercator",    "TRANSVERSE MERCATOR",  3,    49.0,  -3.0,   0.0,   0.0,   50.5,  -5.0},
    {"Lambert",                "LAMBERT CONFORMAL",    4,    49.0,  -2.0,   48.0,  51.0,  51.0,  -4.5},
    {"Lambert, south",         "lambert",              4,    -40.0, 20.0,   -35.0, -42.0, -34.0, 17.0},
};
// clang-format on

// Charts that are skewed on the plane of the projection's own functions, with offsets. The tolerance of a
// thousandth of a pixel is 3 cm, three times the error of the inverse projections.
TEST(RecordFit, WorksInEachProjection) {
    constexpr double kLatitudeOffset = 0.26, kLongitudeOffset = -0.42;
    for (const ProjectionRow& row : kProjectionRows) {
        SCOPED_TRACE(row.name);
        PPARMS parms;
        project_init2(row.code, row.p1, row.pp, row.p5, row.p6, 17, &parms);
        double left = 0.0, top = 0.0;
        project_f(row.code, &parms, row.north, row.west, &left, &top);
        const auto point_at = [&](int x, int y) {
            PointRow point{x, y, 0.0, 0.0};
            project_i(row.code, &parms, left + 30.0 * x + 2.0 * y, top + x - 28.0 * y, &point.latitude,
                      &point.longitude);
            point.latitude -= kLatitudeOffset;
            point.longitude -= kLongitudeOffset;
            return point;
        };
        CGEORec record;
        record.Projection = row.projection;
        record.P1.Format("%f", row.p1);
        record.PP.Format("%f", row.pp);
        record.P5.Format("%f", row.p5);
        record.P6.Format("%f", row.p6);
        record.LatitudeOffset = kLatitudeOffset;
        record.LongitudeOffset = kLongitudeOffset;
        for (int i = 0; i < 12; ++i)
            add_points(record, {point_at(i % 4 * 2600, i / 4 * 3000)});
        record.solvepoly();
        EXPECT_EQ(record.ProjCode, row.code);
        for (int i = 0; i < 12; ++i) {
            const PointRow point = point_at(i % 4 * 2000 + 700, i / 4 * 2000 + 300);
            EXPECT_NEAR(record.wpx(point.longitude, point.latitude), point.x, 1e-3);
            EXPECT_NEAR(record.wpy(point.longitude, point.latitude), point.y, 1e-3);
            EXPECT_NEAR(record.pwx(point.x, point.y), point.longitude, 1e-6);
            EXPECT_NEAR(record.pwy(point.x, point.y), point.latitude, 1e-6);
        }
    }
}

}  // namespace
