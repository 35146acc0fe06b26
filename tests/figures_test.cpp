// The error bounds of projections, datum shifts and meridional parts, over random positions on four
// ellipsoids. Forward functions are compared with the formulas in long double. An inverse is measured by its
// round trip, whose bound includes what its series leaves out or where its iteration stops.
#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "plain_numeric.h"
#include <zellap10/zellap10.h>

namespace {

using plain::Pair;
using plain::Triple;
using plain::Wide;
using Position = std::array<double, 3>;

constexpr int kPositions = 4000;
constexpr int kDatums[] = {17, 38, 87, 117};

struct Range {
    double from, to;
};

using Errors = std::array<double, 4>;

struct Row {
    const char* name;
    Errors (*measure)(const Row& row);
    int code;
    double lat0, lon0;
    Range lat;
    double side;  // of the central meridian, degrees
    Errors bounds;
};

std::mt19937_64 generator;

double draw(Range range) {
    return range.from + (range.to - range.from) * (static_cast<double>(generator() >> 11) * 0x1p-53);
}

double off(Wide result, Wide expected) {
    return static_cast<double>(std::fabs(result - expected));
}

// x and y forward in metres, latitude and longitude of the inverse in degrees. The parallels of a cone are
// those of the latitude of origin, or random ones.
Errors projection(const Row& row) {
    const double lat1 = row.lat0 != 0.0 ? row.lat0 + 7.0 : draw({5.0, 75.0});
    const double lat2 = row.lat0 != 0.0 ? row.lat0 - 5.0 : lat1 + draw({1.0, 10.0});
    tagPPARMS parms;
    project_init2(row.code, row.lat0 != 0.0 ? row.lat0 : lat1, row.lon0, lat1, lat2,
                  kDatums[generator() % std::size(kDatums)], &parms);
    const double lat = draw(row.lat), lon = row.lon0 + draw({-row.side, row.side});
    double x = 0.0, y = 0.0, back_lat = 0.0, back_lon = 0.0;
    project_f(row.code, &parms, lat, lon, &x, &y);
    project_i(row.code, &parms, x, y, &back_lat, &back_lon);
    constexpr Pair (*kPlain[])(const tagPPARMS&, const Pair&) = {plain::mercator_f, plain::polyconic_f,
                                                                 plain::utm_f, plain::lambert_f};
    const Pair plane = kPlain[row.code - 1](parms, {lat, lon});
    const Pair back = row.code == 3 ? plain::utm_i(parms, {x, y}) : Pair{lat, lon};
    return {off(x, plane[0]), off(y, plane[1]), off(back_lat, back[0]), off(back_lon, back[1])};
}

// merc_k, poly_m0, utm_m0, and lam_rho0 relative to its size and per degree between the parallels.
Errors setup(const Row& row) {
    const double lat = draw(row.lat), other = lat + draw({0.1, 10.0});
    tagPPARMS parms;
    project_init2(4, lat, 0.0, lat, other, kDatums[generator() % std::size(kDatums)], &parms);
    const double rho0 = parms.lam_rho0;
    const Wide expected = plain::lambert_rho0(parms, lat, lat, other);
    mercator_init(lat, 0.0, &parms);
    polyconic_init(lat, 0.0, &parms);
    utm_init(lat, 0.0, &parms);
    const Wide phi = parms.lat0, arc = plain::arc(parms, phi) * parms.a;
    return {off(parms.merc_k, std::cos(phi) * plain::prime_vertical_radius(parms, phi) / parms.a),
            off(parms.poly_m0, arc), off(parms.utm_m0, arc),
            off(rho0, expected) / std::fabs(rho0) * (other - lat)};
}

Position draw_place(const Row& row) {
    return {draw(row.lat), draw({-180.0, 180.0}), draw({-100.0, 9000.0})};
}

Errors off(const Position& result, const Triple& expected) {
    return {off(result[0], expected[0]), off(result[1], expected[1]), off(result[2], expected[2])};
}

// Latitude, longitude and height.
Errors molodensky(const Row& row) {
    const Position at = draw_place(row);
    Position to = at;
    const int datum = static_cast<int>(generator() % 120);
    const bool to_wgs = generator() % 2 == 0;
    (to_wgs ? datum_to_WGS : WGS_to_datum)(&to[0], &to[1], &to[2], datum);
    return off(to, plain::molodensky({at[0], at[1], at[2]}, to_wgs, datum));
}

// The largest of x, y and z; latitude, longitude and height of the round trip.
Errors earth_centred(const Row& row) {
    const Position at = draw_place(row);
    const int datum = static_cast<int>(generator() % 120);
    Position xyz{}, back{};
    llhxyz(at[0], at[1], at[2], datum, &xyz[0], &xyz[1], &xyz[2]);
    xyzllh(xyz[0], xyz[1], xyz[2], datum, &back[0], &back[1], &back[2]);
    const Triple place{at[0], at[1], at[2]};
    const Errors there = off(xyz, plain::llhxyz(place, datum)), round_trip = off(back, place);
    return {*std::max_element(there.begin(), there.end()), round_trip[0], round_trip[1], round_trip[2]};
}

// The parts of a latitude, and the round trip in degrees.
Errors parts(const Row& row) {
    const double lat = draw(row.lat), phi = lat * plain::DEG_TO_RAD, minutes = m_parts(phi);
    return {off(minutes, plain::m_parts(phi)), off(m_parts_inv(minutes), lat)};
}

// clang-format off
const Row kRows[] = {
    // name                      measure       code lat0   lon0   latitudes       side    bounds
    {"mercator",                 projection,    1,  0.0,  -30.0,  {-89.0, 89.0}, 180.0,  {4e-9, 9e-8, 7e-10, 1e-13}},
    {"polyconic",                projection,    2,  0.0,  100.0,  {1.0, 85.0},    20.0,  {3e-9, 3e-8, 4e-11, 1.1e-4}},
    {"polyconic, far south",     projection,    2,  0.0,  100.0,  {-85.0, -40.0}, 20.0,  {3e-9, 3e-8, 4e-11, 1e-5}},
    {"transverse mercator",      projection,    3, 49.0,   -2.0,  {-85.0, 85.0},   4.0,  {5e-10, 7e-9, 6e-14, 6e-14}},
    {"lambert",                  projection,    4,  0.0,  -96.0,  {0.0, 89.0},    60.0,  {6e-9, 3e-8, 4e-8, 1e-13}},
    {"lambert, southern cone",   projection,    4,-40.0,  150.0,  {-89.0, 0.0},   60.0,  {6e-9, 3e-8, 4e-8, 1e-13}},
    {"set-up",                   setup,         0,  0.0,    0.0,  {5.0, 75.0},     0.0,  {2e-16, 4e-9, 4e-9, 2e-13}},
    {"molodensky",               molodensky,    0,  0.0,    0.0,  {-85.0, 85.0},   0.0,  {4e-14, 4e-14, 2e-12}},
    {"earth-centred",            earth_centred, 0,  0.0,    0.0,  {-85.0, 85.0},   0.0,  {3e-9, 7e-12, 6e-14, 9e-7}},
    {"meridional parts",         parts,         0,  0.0,    0.0,  {-88.0, 88.0},   0.0,  {4e-11, 3e-8}},
};
// clang-format on

TEST(Figures, StayWithinTheirBounds) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        generator.seed(1);
        Errors largest{};
        for (int i = 0; i < kPositions; ++i) {
            const Errors errors = row.measure(row);
            for (std::size_t k = 0; k < errors.size(); ++k)
                largest[k] = errors[k] <= largest[k] ? largest[k] : errors[k];
        }
        for (std::size_t k = 0; k < largest.size(); ++k)
            EXPECT_LE(largest[k], row.bounds[k]) << "number " << k;
    }
}

}  // namespace
