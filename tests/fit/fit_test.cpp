#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include <zellap10/georef/geo_record.h>

#include "../support/point_lists.h"

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr int kTerms = 21;

struct Fit {
    double first[kTerms] = {};
    double second[kTerms] = {};
    double error = -1.0;
};

enum class Way { kPw, kWp };

Fit solved(Way way, int order, PointList& points) {
    const CGEORec record;
    Fit fit;
    const auto solve = way == Way::kPw ? &CGEORec::SolveSVDpw : &CGEORec::SolveSVDwp;
    (record.*solve)(order, points.list(), fit.first, fit.second, &fit.error);
    return fit;
}

const std::vector<PointRow> kFourCorners = {
    {0, 0, -70, 40}, {1000, 0, -69, 40}, {0, 1000, -70, 39}, {1000, 1000, -69, 39}};

// 16 points of a linear chart of 9000 by 10500 pixels.
std::vector<PointRow> sixteen_points() {
    std::vector<PointRow> rows;
    for (int x = 0; x <= 9000; x += 3000) {
        for (int y = 0; y <= 10500; y += 3500)
            rows.push_back({x, y, -70 + 0.00012 * x, 42 - 0.00009 * y});
    }
    return rows;
}

TEST(LeastSquares, FitsFourCorners) {
    PointList points(kFourCorners);
    const Fit pw = solved(Way::kPw, 1, points);
    const double longitude[] = {-70, 0.001, 0};
    const double latitude[] = {40, 0, -0.001};
    const Fit wp = solved(Way::kWp, 1, points);
    const double x[] = {70000, 1000, 0};
    const double y[] = {40000, 0, -1000};
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(pw.first[i], longitude[i], 1e-12);
        EXPECT_NEAR(pw.second[i], latitude[i], 1e-12);
        EXPECT_NEAR(wp.first[i], x[i], 1e-8);
        EXPECT_NEAR(wp.second[i], y[i], 1e-8);
    }
    EXPECT_LT(pw.error, 1e-26);
    EXPECT_LT(wp.error, 1e-18);
    EXPECT_EQ(pw.first[3], 0.0) << "only as many as there are terms are written";
}

struct ErrorRow {
    const char* name;
    Way way;
    int order;
    double least, most;  // of the error
};

// Raw pixels and degrees, without scaling, lose singular values at order 3.
// clang-format off
const ErrorRow kErrorRows[] = {
    // name              way       order  least   most
    {"pw, order 1",      Way::kPw, 1,     0.0,    1e-22},
    {"pw, order 2",      Way::kPw, 2,     1e-14,  1e-10},
    {"pw, order 3",      Way::kPw, 3,     7690.0, 7720.0},
    {"wp, order 1",      Way::kWp, 1,     0.0,    1e-16},
    {"wp, order 2",      Way::kWp, 2,     1e-14,  1e-10},
    {"wp, order 3",      Way::kWp, 3,     0.087,  0.09},
};
// clang-format on

TEST(LeastSquares, DropsWhatTheLimitTakes) {
    for (const ErrorRow& row : kErrorRows) {
        SCOPED_TRACE(row.name);
        PointList points(sixteen_points());
        const Fit fit = solved(row.way, row.order, points);
        EXPECT_GE(fit.error, row.least);
        EXPECT_LE(fit.error, row.most);
    }
    PointList points(sixteen_points());
    EXPECT_NEAR(solved(Way::kPw, 3, points).first[0], -1.82e-5, 1e-6);
}

TEST(LeastSquares, GivesTheSmallestCoefficientsOfOnePoint) {
    PointList point({{100, 200, -70, 40}});
    const Fit fit = solved(Way::kPw, 1, point);
    // The point's row of terms is (1, 100, 200), whose square is 50001.
    const double expected[] = {-70.0 / 50001, -7000.0 / 50001, -14000.0 / 50001};
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(fit.first[i], expected[i], 1e-15);
    EXPECT_NEAR(fit.first[0] + 100 * fit.first[1] + 200 * fit.first[2], -70, 1e-12);
}

TEST(LeastSquares, HoldsItsOrderAndTakesAnyList) {
    PointList points(sixteen_points());
    EXPECT_EQ(solved(Way::kPw, 7, points).error, solved(Way::kPw, 5, points).error);
    const Fit constant = solved(Way::kPw, -1, points);
    EXPECT_NEAR(constant.first[0], -70 + 0.00012 * 4500, 1e-12) << "the mean";
    EXPECT_EQ(constant.first[1], 0.0);
    PointList none;
    const Fit empty = solved(Way::kWp, 2, none);
    EXPECT_EQ(empty.error, 0.0);
    for (const double coefficient : empty.first)
        EXPECT_EQ(coefficient, 0.0);
    std::vector<PointRow> doubled = kFourCorners;
    doubled.push_back(doubled[2]);
    PointList twice(doubled);
    EXPECT_NEAR(solved(Way::kPw, 1, twice).first[0], -70, 1e-12);
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
    EXPECT_EQ(rows_of(low), (std::vector<int>{50, 40, 30, 20, 10, 0})) << "60 lies on the bound";
    EXPECT_EQ(rows_of(high), (std::vector<int>{100, 90, 80, 70, 60, 50}));

    CRefPointList south;
    CRefPointList north;
    record.SplitListNSwp(points.list(), &south, &north, &middle);
    EXPECT_EQ(middle, -25.0);
    EXPECT_EQ(rows_of(south), rows_of(high)) << "large rows are the south";
    EXPECT_EQ(rows_of(north), rows_of(low));
}

TEST(Split, NeedsARange) {
    const CGEORec record;
    CRefPointList low;
    CRefPointList high;
    double middle = 7.0;
    PointList none;
    record.SplitListNSpw(none.list(), &low, &high, &middle);
    EXPECT_EQ(middle, 0.0);
    PointList level({{1, 5, 0, 0}, {2, 5, 0, 0}});
    record.SplitListNSpw(level.list(), &low, &high, &middle);
    EXPECT_EQ(middle, 5.0);
    EXPECT_TRUE(low.IsEmpty() && high.IsEmpty());
}

// `count` points whose longitude is a cubic and whose latitude is a square of small pixels: order 3 is exact.
std::vector<PointRow> curved_points(int count) {
    std::vector<PointRow> rows;
    for (int i = 0; i < count; ++i) {
        const int x = i % 4 * 3 + i / 4 % 2;
        const int y = i / 4 * 3 + i % 3;
        rows.push_back({x, y, 1.0 + 0.5 * x + 0.001 * x * x * y, 2.0 - 0.25 * y + 0.01 * x * y});
    }
    return rows;
}

TEST(BestOrder, IsTheSmallestErrorThatThePointsAllow) {
    const CGEORec record;
    for (const int count : {0, 1, 2, 3, 5, 6, 9, 10, 16}) {
        SCOPED_TRACE(count);
        PointList points(curved_points(count));
        Fit best;
        best.first[20] = 9.0;
        record.FindBestPolyPW(points.list(), best.first, best.second, &best.error);
        if (count < 3) {
            EXPECT_EQ(best.error, -1.0) << "nothing is written";
            EXPECT_EQ(best.first[20], 9.0);
            continue;
        }
        EXPECT_EQ(best.first[20], 0.0) << "all 21 are written";
        double least = kLargest;
        int order = 0;
        for (const int tried : {1, 2, 3}) {
            if (count < (tried == 1 ? 3 : tried == 2 ? 6 : 10)) continue;
            const Fit fit = solved(Way::kPw, tried, points);
            if (fit.error < least) {
                least = fit.error;
                order = tried;
            }
        }
        EXPECT_EQ(best.error, least);
        EXPECT_EQ(order == 3, count >= 10);
    }
}

TEST(BestOrder, IsFoundForWorldToPixelToo) {
    PointList points(sixteen_points());
    Fit best;
    CGEORec().FindBestPolyWP(points.list(), best.first, best.second, &best.error);
    const Fit first_order = solved(Way::kWp, 1, points);
    EXPECT_EQ(best.error, first_order.error);
    EXPECT_EQ(best.first[1], first_order.first[1]);
    EXPECT_EQ(best.second[2], first_order.second[2]);
}

TEST(BestOrder, IsTheLowerOfEqualOnesAndNeverNan) {
    const CGEORec record;
    // Residuals so small that their squares are 0 at every order; only the coefficients tell the orders
    // apart.
    PointList tiny(std::vector<PointRow>(12, PointRow{1, 0, 1e-200, 0.0}));
    Fit best;
    record.FindBestPolyPW(tiny.list(), best.first, best.second, &best.error);
    EXPECT_EQ(best.error, 0.0);
    EXPECT_NEAR(best.first[0] / 1e-200, 0.5, 1e-12) << "shared by the two terms of order 1 that are not 0";
    PointList odd(std::vector<PointRow>(12, PointRow{1, 2, std::nan(""), 0.0}));
    Fit none;
    record.FindBestPolyPW(odd.list(), none.first, none.second, &none.error);
    EXPECT_EQ(none.error, -1.0);
}

std::vector<double> longitudes_of(const CGEORec& record) {
    std::vector<double> longitudes;
    for (const CRefPoint* point : elements_of(record.Points))
        longitudes.push_back(point->Longitude);
    return longitudes;
}

// A grid over two degrees by two; `bend` curves the rows north of the middle and those south of it
// differently.
std::vector<PointRow> bent_grid(double west, double bend) {
    std::vector<PointRow> rows;
    for (int x = 0; x <= 1000; x += 200) {
        for (int y = 0; y <= 1000; y += 100) {
            const double longitude = west + 0.002 * x;
            const double kink = std::fabs(y - 500.0) * bend;
            rows.push_back({x, y, longitude > 180 ? longitude - 360 : longitude, 40 - 0.002 * y + kink});
        }
    }
    return rows;
}

TEST(RecordFit, TakesTwoRegionsWhereTheyErrLess) {
    CGEORec straight;
    add_points(straight, kFourCorners);
    straight.solvepoly();
    EXPECT_EQ(straight.pwSplit, kLargest);
    EXPECT_EQ(straight.wpSplit, kLargest);
    EXPECT_EQ(straight.pwxPoly[1][0], 0.0);

    CGEORec bent;
    add_points(bent, bent_grid(10, 0.0005));
    bent.solvepoly();
    EXPECT_EQ(bent.pwSplit, 500.0);
    EXPECT_NE(bent.wpSplit, kLargest);
    double x = 0;
    double y = 0;
    bent.wpxy(11.0, 40 - 0.2 + 0.2, &x, &y);
    EXPECT_NEAR(x, 500, 1.0);
    EXPECT_NEAR(y, 100, 40.0);
    // The overlap is fitted with both halves, so that only the outer rows are met closely.
    EXPECT_NEAR(bent.pwy(500, 1000), 38.25, 0.05);
    EXPECT_NEAR(bent.pwy(500, 0), 40.25, 0.05);
}

TEST(RecordFit, KeepsOneRegionWhereAHalfHasTooFewPoints) {
    CGEORec record;
    for (const int x : {0, 1000}) {
        for (const int y : {0, 100, 900, 1000}) {
            record.Points.AddTail(new CRefPoint("", x, y, 10 + 0.002 * x, 40 - 0.001 * std::fabs(y - 500.0)));
        }
    }
    record.solvepoly();
    EXPECT_EQ(record.pwSplit, kLargest);
}

TEST(RecordFit, DecidesEachDirectionByItself) {
    // Longitudes bent only where rows change, on one latitude: nothing to divide by latitude.
    CGEORec record;
    for (const PointRow& row : bent_grid(10, 0)) {
        const double longitude = row.longitude + 0.001 * std::fabs(row.y - 500.0);
        record.Points.AddTail(new CRefPoint("", row.x, row.y, longitude, 40));
    }
    record.solvepoly();
    EXPECT_EQ(record.pwSplit, 500.0);
    EXPECT_EQ(record.wpSplit, kLargest);
}

TEST(RecordFit, CrossesThe180thMeridian) {
    CGEORec record;
    add_points(record, bent_grid(179, 0));
    record.Projection = "MERCATOR";
    const std::vector<double> before = longitudes_of(record);
    record.solvepoly();
    EXPECT_EQ(record.Wraps180, 1);
    EXPECT_EQ(record.ProjCode, 0);
    EXPECT_EQ(longitudes_of(record), before);
    EXPECT_NEAR(record.pwx(100, 300), 179.2, 1e-9);
    EXPECT_NEAR(record.pwx(900, 300), -179.2, 1e-9);
    for (const double turned : {179.2, -180.8})
        EXPECT_NEAR(record.wpx(turned, 39.5), 100, 1e-5);
    EXPECT_NEAR(record.wpx(-179.2, 39.5), 900, 1e-5);
}

}  // namespace
