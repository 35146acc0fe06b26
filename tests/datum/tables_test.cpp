#include <zellap10/datum/tables.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <iterator>
#include <set>
#include <string>

namespace {

using namespace zellap10::datum;

struct EllipsoidCase {
    const char* name;
    double a, over_f;
};

// Axes and reciprocal flattenings as geodesists publish them, in the order of the table.
// clang-format off
const EllipsoidCase kPublished[] = {
    // name                     a (m)        1/f
    {"Airy 1830",               6377563.396, 299.3249646},
    {"Australian National",     6378160.000, 298.2500000},
    {"Bessel 1841",             6377397.155, 299.1528128},
    {"Bessel 1841 (Namibia)",   6377483.865, 299.1528128},
    {"Clarke 1866",             6378206.400, 294.9786982},
    {"Clarke 1880",             6378249.145, 293.4650000},
    {"Everest (India 1830)",    6377276.345, 300.8017000},
    {"GRS 80",                  6378137.000, 298.2572221},
    {"Helmert 1906",            6378200.000, 298.3000000},
    {"Hough 1960",              6378270.000, 297.0000000},
    {"International 1924",      6378388.000, 297.0000000},
    {"Krassovsky 1940",         6378245.000, 298.3000000},
    {"Modified Airy",           6377340.189, 299.3249646},
    {"Everest 1948",            6377304.063, 300.8017000},
    {"Modified Fischer 1960",   6378155.000, 298.3000000},
    {"South American 1969",     6378160.000, 298.2500000},
    {"WGS-72",                  6378135.000, 298.2600000},
    {"WGS-84",                  6378137.000, 298.2572236},
};
// clang-format on

TEST(EllipsoidTable, MeetsThePublishedFigures) {
    ASSERT_EQ(std::size(kPublished), std::size(kEllipsoids));
    for (std::size_t row = 0; row < std::size(kEllipsoids); ++row) {
        SCOPED_TRACE(kPublished[row].name);
        EXPECT_NEAR(kWgs84A - kEllipsoids[row].da, kPublished[row].a, 1e-6);
        EXPECT_NEAR(1.0 / (kWgs84F - 0.0001 * kEllipsoids[row].df), kPublished[row].over_f, 1e-7);
    }
}

TEST(DatumTable, HoldsPlausibleRowsUnderDifferentNames) {
    std::set<std::string> names;
    for (const DatumRow& row : kDatums) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(names.insert(row.name).second);
        EXPECT_EQ(std::string(row.name).find(' '), std::string::npos);
        EXPECT_TRUE(row.ellipsoid >= 0 && row.ellipsoid < kEllipsoidCount);
        EXPECT_LT(std::hypot(row.dx, row.dy, row.dz), 1600.0)
            << "no datum lies farther from the earth's centre";
    }
}

TEST(DatumTable, IsTheOneThatWasEntered) {
    // FNV-1a of the table's text, taken from the source: no row changes, moves or is respelt unseen.
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const DatumRow& row : kDatums) {
        std::string text = row.name;
        for (std::int32_t value : {row.ellipsoid, row.dx, row.dy, row.dz})
            text += ',' + std::to_string(value);
        for (char character : text + ';') {
            hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3;
        }
    }
    EXPECT_EQ(hash, 0x3192ed3e14470b3cU);
}

TEST(DatumFigures, ComeFromTheRowAndItsEllipsoid) {
    for (int datum : {44, 48, 75, 103, 117}) {
        const DatumFigures figures = datum_figures(datum);
        EXPECT_EQ(figures.a, kWgs84A) << datum;
        EXPECT_EQ(figures.f, kWgs84F) << datum;
        EXPECT_TRUE(figures.dx == 0.0 && figures.dy == 0.0 && figures.dz == 0.0) << datum;
    }
    const DatumFigures figures = datum_figures(87);
    EXPECT_EQ(figures.a, 6377563.396);
    EXPECT_NEAR(1.0 / figures.f, 299.324964577565, 1e-11);
    EXPECT_NEAR(figures.e2, (2.0 - figures.f) * figures.f, 1e-17);
    EXPECT_EQ(figures.dx, 375.0);
    EXPECT_EQ(figures.dy, -111.0);
    EXPECT_EQ(figures.dz, 431.0);
    EXPECT_LT(std::fabs(datum_figures(78).f - kWgs84F), 2e-11) << "GRS 80 is hardly another ellipsoid";
    EXPECT_STREQ(kDatums[36].name, "Easter_lsland_1967") << "with a small L";
}

TEST(DatumFigures, AreNanOutsideTheTable) {
    for (int datum : {-1, 120, -2147483647 - 1, 2147483647}) {
        const DatumFigures figures = datum_figures(datum);
        for (double value : {figures.a, figures.f, figures.e2, figures.dx, figures.dy, figures.dz}) {
            EXPECT_TRUE(std::isnan(value)) << datum;
        }
    }
}

}  // namespace
