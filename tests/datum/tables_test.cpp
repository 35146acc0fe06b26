#include <zellap10/datum/tables.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <set>
#include <string>

namespace {

using namespace zellap10::datum;

TEST(EllipsoidTable, HoldsFiguresOfTheEarth) {
    double axes = 0.0, flattenings = 0.0, row = 1.0;
    for (const EllipsoidRow& ellipsoid : kEllipsoids) {
        const double a = kWgs84A - ellipsoid.da;
        const double over_f = 1.0 / (kWgs84F - 0.0001 * ellipsoid.df);
        EXPECT_NEAR(a, 6377800.0, 700.0) << row;
        EXPECT_NEAR(over_f, 297.1, 3.8) << row;
        axes += row * a;
        flattenings += row * over_f;
        row += 1.0;
    }
    // Sums weighted by the row's place, worked out from the source: no figure changes or moves unseen.
    EXPECT_NEAR(axes, 1090635600.945, 1e-5);
    EXPECT_NEAR(flattenings, 51006.54618584652, 1e-9);
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
        EXPECT_TRUE(figures.a == kWgs84A && figures.f == kWgs84F) << datum;
        EXPECT_TRUE(figures.dx == 0.0 && figures.dy == 0.0 && figures.dz == 0.0) << datum;
    }
    const DatumFigures figures = datum_figures(87);
    EXPECT_EQ(figures.a, 6377563.396);
    EXPECT_NEAR(1.0 / figures.f, 299.324964577565, 1e-11);
    EXPECT_TRUE(figures.dx == 375.0 && figures.dy == -111.0 && figures.dz == 431.0);
    EXPECT_LT(std::fabs(datum_figures(78).f - kWgs84F), 2e-11) << "GRS 80 is hardly another ellipsoid";
}

TEST(DatumFigures, AreNanOutsideTheTable) {
    for (int datum : {-1, 120, -2147483647 - 1, 2147483647}) {
        const DatumFigures no = datum_figures(datum);
        for (double figure : {no.a, no.f, no.e2, no.dx, no.dy, no.dz})
            EXPECT_TRUE(std::isnan(figure)) << datum;
    }
}

}  // namespace
