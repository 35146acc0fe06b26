#include <cmath>

#include <gtest/gtest.h>

#include <zellap10/georef/geo_record.h>

namespace {

constexpr int kTerms = 21;

TEST(Polynomial, HasItsTermsInOrder) {
    const CGEORec record;
    const double expected[kTerms] = {1,  2,  3,  4,  6,  9,  8,  12,  18,  27, 16,
                                     24, 36, 54, 81, 32, 48, 72, 108, 162, 243};
    for (int i = 0; i < kTerms; ++i)
        EXPECT_EQ(record.polyfunc(i, 2.0, 3.0), expected[i]) << i;
}

// (1 + d) (1 - d) is 1 - d*d, which rounds to 1; a multiply-add that rounds only once would leave -d*d.
TEST(Polynomial, RoundsEachProductByItself) {
    const CGEORec record;
    const double d = std::ldexp(1.0, -27);
    const double coefficients[kTerms] = {-1.0, 1.0 + d};
    EXPECT_EQ(record.Evaluate(coefficients, 1.0 - d, 0.0), 0.0);
}

TEST(Transforms, TakeTheRegionAndTheWrapIntoAccount) {
    CGEORec record;
    record.pwSplit = 10;
    record.wpSplit = 20;
    for (const int region : {0, 1}) {
        const double sign = region == 0 ? 1.0 : -1.0;
        record.pwxPoly[region][1] = sign;  // longitude = +-x
        record.pwyPoly[region][2] = sign * 2;
        record.wpxPoly[region][1] = sign * 3;
        record.wpyPoly[region][2] = sign * 4;
    }
    double a = 0, b = 0;
    record.pwxy(7, 10, &a, &b);
    EXPECT_EQ(a, 7);
    EXPECT_EQ(b, 20);
    record.pwxy(7, 11, &a, &b);
    EXPECT_EQ(a, -7);
    EXPECT_EQ(b, -22);
    record.wpxy(170, 21, &a, &b);
    EXPECT_EQ(a, -510);
    EXPECT_EQ(b, -84);
    EXPECT_EQ(record.pwx(-190, 5), -190);
    record.Wraps180 = 1;
    for (const double longitude : {170.0, -190.0})
        EXPECT_EQ(record.wpx(longitude, 5), -570);
    EXPECT_EQ(record.wpx(-170, 5), -510);
    EXPECT_EQ(record.wpx(0, 5), 0);
    EXPECT_EQ(record.pwx(-190, 5), 170);
    EXPECT_EQ(record.pwx(-180, 5), -180);
}

}  // namespace
