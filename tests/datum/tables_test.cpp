#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include <zellap10/datum/tables.h>

namespace {

using namespace zellap10::datum;

TEST(EllipsoidTable, EqualsItsSource) {
    double axes = 0.0, flattenings = 0.0, row = 1.0;
    for (const EllipsoidRow& ellipsoid : kEllipsoids) {
        axes += row * (kWgs84A - ellipsoid.da);
        flattenings += row / (kWgs84F - 0.0001 * ellipsoid.df);
        row += 1.0;
    }
    // Sums weighted by the row number, computed from the source: they change if a figure changes or moves.
    EXPECT_NEAR(axes, 1090635600.945, 1e-5);
    EXPECT_NEAR(flattenings, 51006.54618584652, 1e-9);
}

TEST(DatumTable, EqualsItsSource) {
    // FNV-1a of the table's text, computed from the source: it changes if a row or its spelling changes.
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

}  // namespace
