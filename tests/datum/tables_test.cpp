#include <zellap10/datum/tables.h>

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

namespace {

using namespace zellap10::datum;

TEST(EllipsoidTable, HoldsFiguresOfTheEarth) {
    for (const EllipsoidRow& row : kEllipsoids) {
        EXPECT_NEAR(kWgs84A - row.da, 6377800.0, 700.0);
        EXPECT_NEAR(1.0 / (kWgs84F - 0.0001 * row.df), 297.1, 3.8);
    }
    EXPECT_EQ(kEllipsoids[1].da, kEllipsoids[15].da);
    EXPECT_EQ(kEllipsoids[1].df, kEllipsoids[15].df);
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

struct FigureRow {
    int datum;
    const char* name;
    double a, over_f, dx, dy, dz;
};

// Axes and flattenings as DMA TR 8350.2 prints them, to 1 mm and 1e-7.
// clang-format off
const FigureRow kFigureRows[] = {
    // datum name                                       a (m)     1/f           dx    dy    dz
    {  9, "Astro_Beacon_\"E\"",                    6378388.000, 297.0,         145,   75, -272},
    { 17, "Bukit_Rimpah",                          6377397.155, 299.1528128,  -384,  664,  -48},
    { 25, "Carribean_(NAD27)",                     6378206.400, 294.9786982,    -7,  152,  178},
    { 31, "Corrego_Alegre_(Provisional)",          6378388.000, 297.0,        -206,  172,   -6},
    { 36, "Easter_lsland_1967",                    6378388.000, 297.0,         211,  147,  111},
    { 44, "Ghana",                                 6378137.000, 298.257223563,   0,    0,    0},
    { 48, "Gunung_Serindung_1962",                 6378137.000, 298.257223563,   0,    0,    0},
    { 61, "Kertau_'48",                            6377304.063, 300.8017,      -11,  851,    5},
    { 75, "Montjong_Lowe",                         6378137.000, 298.257223563,   0,    0,    0},
    { 78, "North_America_'83",                     6378137.000, 298.2572221,     0,    0,    0},
    { 81, "Old_Egyptian",                          6378200.000, 298.3,        -130,  110,  -13},
    { 87, "Ordnance_Survey_of_Great_Britain_'36",  6377563.396, 299.3249646,   375, -111,  431},
    {103, "Sierra_Leone_1960",                     6378137.000, 298.257223563,   0,    0,    0},
    {113, "Unites_Arab_Emirates_(Nahrwan)",        6378249.145, 293.465,      -249, -156,  381},
    {116, "WGS-72",                                6378135.000, 298.26,          0,    0,    5},
    {117, "WGS-84",                                6378137.000, 298.257223563,   0,    0,    0},
    {119, "Zanderij",                              6378388.000, 297.0,        -265,  120, -358},
};
// clang-format on

TEST(DatumFigures, MeetThePublishedEllipsoids) {
    for (const FigureRow& row : kFigureRows) {
        SCOPED_TRACE(row.name);
        EXPECT_STREQ(kDatums[row.datum].name, row.name);
        const DatumFigures figures = datum_figures(row.datum);
        EXPECT_NEAR(figures.a, row.a, 1e-3);
        EXPECT_NEAR(1.0 / figures.f, row.over_f, 1e-7);
        EXPECT_NEAR(figures.e2, (2.0 - figures.f) * figures.f, 1e-17);
        EXPECT_EQ(figures.dx, row.dx);
        EXPECT_EQ(figures.dy, row.dy);
        EXPECT_EQ(figures.dz, row.dz);
    }
    EXPECT_EQ(datum_figures(kWgs84Datum).f, kWgs84F);
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
