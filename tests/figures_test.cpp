// The figures that the headers of projections, datum shifts and navigation state: for each function one
// bound, held by random positions on four ellipsoids. Forward functions are compared with their formulas in
// long double, inverse ones with the position that they should come back to.
#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include <zellap10/datum/tables.h>
#include <zellap10/platform/angle.h>
#include <zellap10/zellap10.h>

namespace {

using zellap10::platform::DEG_TO_RAD;
using zellap10::platform::QUARTER_PI;
using zellap10::platform::RAD_TO_DEG;

using Wide = long double;
using Pair = std::array<Wide, 2>;    // latitude and longitude in degrees, or x and y in metres
using Triple = std::array<Wide, 3>;  // the same with a height, or x, y and z

// The formulas as published, each sine and each power a call of its own.
namespace plain {

Pair mercator_f(const tagPPARMS& p, const Pair& at) {
    const Wide s = std::sin(at[0] * DEG_TO_RAD) * p.e;
    const Wide q = std::fabs(std::tan((at[0] * Wide(0.5) + 45) * DEG_TO_RAD));
    const Wide w = std::pow((1 - s) / (s + 1), Wide(p.e) * Wide(0.5));
    return {(at[1] * DEG_TO_RAD - p.lon0) * p.a, std::log(q * w) * p.a};
}

Pair utm_f(const tagPPARMS& p, const Pair& at) {
    const Wide phi = at[0] * DEG_TO_RAD, s = std::sin(phi), N = p.a / std::sqrt(1 - s * s * p.e2);
    const Wide t = std::tan(phi), T = t * t, c = std::cos(phi), ep2 = p.utm_ep2, U = c * c * ep2;
    const Wide A = (at[1] * DEG_TO_RAD - p.lon0) * c;
    const Wide A2 = A * A, A3 = A2 * A, A5 = A2 * A2 * A;
    const Wide M = phi * p.utm_c0 - std::sin(2 * phi) * p.utm_c2 + std::sin(4 * phi) * p.utm_c4 -
                   std::sin(6 * phi) * p.utm_c6;
    const Wide x = ((5 - 18 * T + 72 * U + T * T - 58 * ep2) * A5 * 0.008333333333333333 +
                    (1 - T + U) * A3 * 0.16666666666666666 + A) *
                   N * 0.9996;
    const Wide y = ((((61 - 58 * T + 600 * U + T * T - 330 * ep2) * A2 * 0.001388888888888889 +
                      ((4 * U + 9) * U + (5 - T)) * 0.041666666666666664) *
                         A2 +
                     Wide(0.5)) *
                        A2 * t * N +
                    (M - p.utm_m0)) *
                   0.9996;
    return {x, y};
}

// The meridian arc as a part of the semi-major axis.
template <class Real>
Real arc_of(const tagPPARMS& p, Real phi) {
    const Real e2 = p.e2, e4 = p.e4, e6 = p.e6;
    const Real c1 = 1 - e2 * 0.25 - e4 * 0.046875 - e6 * 0.01953125;
    const Real c2 = e2 * 0.375 + e4 * 0.09375 + e6 * 0.0439453125;
    const Real c3 = e4 * 0.05859375 + e6 * 0.0439453125;
    const Real c4 = e6 * 0.011393229166666666;
    return c1 * phi - c2 * std::sin(2 * phi) + c3 * std::sin(4 * phi) - c4 * std::sin(6 * phi);
}

template <class Real>
std::array<Real, 2> polyconic_f(const tagPPARMS& p, const std::array<Real, 2>& at) {
    const Real phi = at[0] * DEG_TO_RAD, dlam = at[1] * DEG_TO_RAD - p.lon0;
    if (phi == 0) return {dlam * p.a, -p.poly_m0};
    const Real s = std::sin(phi), N = p.a / std::sqrt(1 - s * s * p.e2), E = dlam * s, w = 1 / std::tan(phi);
    return {w * std::sin(E) * N, w * (1 - std::cos(E)) * N + (arc_of(p, phi) * p.a - p.poly_m0)};
}

Pair lambert_f(const tagPPARMS& p, const Pair& at) {
    const Wide phi = at[0] * DEG_TO_RAD, s = std::sin(phi) * p.e;
    const Wide t = std::tan(QUARTER_PI - phi * Wide(0.5)) / std::pow((1 - s) / (s + 1), Wide(p.e) * 0.5);
    const Wide rho = std::pow(t, Wide(p.lam_n)) * p.lam_F * p.a;
    const Wide theta = (at[1] * DEG_TO_RAD - p.lon0) * p.lam_n;
    return {std::sin(theta) * rho, p.lam_rho0 - std::cos(theta) * rho};
}

Triple lambert_cone(const tagPPARMS& p, double lat0, double lat1, double lat2) {
    const auto t = [&](Wide phi) {
        const Wide s = std::sin(phi) * p.e;
        return std::tan(QUARTER_PI - phi * Wide(0.5)) / std::pow((1 - s) / (s + 1), Wide(p.e) * 0.5);
    };
    const auto m = [&](Wide phi) {
        return std::cos(phi) / std::sqrt(1 - std::sin(phi) * p.e2 * std::sin(phi));
    };
    const Wide phi0 = lat0 * Wide(DEG_TO_RAD), phi1 = lat1 * Wide(DEG_TO_RAD), phi2 = lat2 * Wide(DEG_TO_RAD);
    const Wide n = lat1 == lat2
                       ? std::sin(phi1)
                       : (std::log(m(phi1)) - std::log(m(phi2))) / (std::log(t(phi1)) - std::log(t(phi2)));
    const Wide F = m(phi1) / (std::pow(t(phi1), n) * n);
    return {n, F, std::pow(t(phi0), n) * F * p.a};
}

Triple molodensky(const Triple& at, bool to_wgs, int datum) {
    const zellap10::datum::DatumFigures on = zellap10::datum::datum_figures(datum);
    const Wide wgs_a = 6378137.0, wgs_f = 0.0033528106647474805;
    const Wide sign = to_wgs ? 1 : -1, dx = sign * on.dx, dy = sign * on.dy, dz = sign * on.dz;
    const Wide a = to_wgs ? Wide(on.a) : wgs_a, f = to_wgs ? Wide(on.f) : wgs_f;
    const Wide e2 = to_wgs ? Wide(on.e2) : Wide(0.0066943799901413165);
    const Wide da = sign * (wgs_a - on.a), df = sign * (wgs_f - on.f);
    const Wide phi = at[0] * DEG_TO_RAD, lam = at[1] * DEG_TO_RAD, h = at[2];
    const Wide W = 1 - std::sin(phi) * std::sin(phi) * e2, Rn = a / std::sqrt(W);
    const Wide one_less_e2 = to_wgs ? 1 - e2 : Wide(0.9933056200098587);
    const Wide Rm = one_less_e2 / std::pow(W, Wide(1.5)) * a;
    const Wide q_rn = to_wgs ? (1 - f) * Rn : Rn * Wide(0.9966471893352525);
    const Wide rm_q = to_wgs ? Rm / (1 - f) : Rm * Wide(1.0033640898209764);
    const Wide axis = to_wgs ? (Rn * std::cos(phi) * std::sin(phi) * e2 / a) * da
                             : Rn * std::cos(phi) * std::sin(phi) * Wide(1.0495823451489544e-09) * da;
    const Wide dphi = (-std::cos(lam) * std::sin(phi) * dx - std::sin(lam) * std::sin(phi) * dy +
                       std::cos(phi) * dz + axis + (rm_q + q_rn) * std::cos(phi) * std::sin(phi) * df) /
                      (Rm + h);
    const Wide dlam = (std::cos(lam) * dy - std::sin(lam) * dx) / ((Rn + h) * std::cos(phi));
    const Wide dh = (std::sin(lam) * dy + std::cos(lam) * dx) * std::cos(phi) + std::sin(phi) * dz -
                    da * a / Rn + q_rn * (std::sin(phi) * std::sin(phi)) * df;
    return {(phi + dphi) * RAD_TO_DEG, (lam + dlam) * RAD_TO_DEG, h + dh};
}

Triple llhxyz(const Triple& at, int datum) {
    const zellap10::datum::DatumFigures on = zellap10::datum::datum_figures(datum);
    const Wide phi = at[0] * DEG_TO_RAD, lam = at[1] * DEG_TO_RAD, h = at[2];
    const Wide N = on.a / std::sqrt(1 - std::sin(phi) * std::sin(phi) * on.e2);
    return {std::cos(lam) * (N + h) * std::cos(phi), std::sin(lam) * (N + h) * std::cos(phi),
            ((1 - Wide(on.e2)) * N + h) * std::sin(phi)};
}

Wide parts_of_sine(Wide s) {
    return Wide(23.268932) * s - Wide(0.0525) * (s * s * s) - Wide(0.000213) * (s * s * s * s * s);
}

Wide m_parts(Wide phi) {
    const Wide tangent = std::fabs(std::tan(phi * Wide(0.5) + QUARTER_PI));
    return Wide(7915.704486) * std::log10(tangent) - parts_of_sine(std::sin(phi));
}

Wide m_diff(Wide lat1, Wide lat2) {
    return m_parts(lat2 * DEG_TO_RAD) - m_parts(lat1 * DEG_TO_RAD);
}

Wide m_angle(Wide x, Wide y) {
    const Wide t = std::atan2(y, x) * RAD_TO_DEG - 90;
    return t > 0 ? 360 - t : -t;
}

Wide m_distance(Wide dlat, Wide dlon, Wide lat1, Wide lat2) {
    const Wide departure = dlat * 60 * dlon * 60 / m_diff(lat1, lat2);
    return std::sqrt(departure * departure + dlat * 60 * (dlat * 60));
}

// Not for courses within 0.01 degrees of east or west.
Pair m_advance_d(Wide lat, Wide lon, Wide distance, Wide course) {
    const Wide to = distance * 0.016666666666666666 * std::cos(course * DEG_TO_RAD) + lat;
    const Wide size = std::fabs(std::tan(course * DEG_TO_RAD));
    const bool minus = (course > 90 && course < 180) || (course > 270 && course < 360);
    return {to, m_diff(lat, to) * (minus ? -size : size) * 0.016666666666666666 + lon};
}

}  // namespace plain

// A processor without long double computes it slowly.
constexpr int kPositions = std::numeric_limits<Wide>::digits > 64 ? 4000 : 20000;
constexpr int kDatums[] = {17, 38, 87, 117};

std::mt19937_64 generator;

double draw(double from, double to) {
    return from + (to - from) * (static_cast<double>(generator() >> 11) * 0x1p-53);
}

struct Cone {
    int code;
    double lat0, lon0, lat1, lat2;
};

// Without parallels, a Lambert cone gets random ones, one to ten degrees apart.
tagPPARMS record_of(Cone cone) {
    tagPPARMS parms;
    if (cone.lat1 > 90.0) {
        cone.lat0 = cone.lat1 = draw(5.0, 75.0);
        cone.lat2 = cone.lat1 + draw(1.0, 10.0);
    }
    const int datum = kDatums[generator() % std::size(kDatums)];
    project_init2(cone.code, cone.lat0, cone.lon0, cone.lat1, cone.lat2, datum, &parms);
    return parms;
}

// The errors of one position, in the order of the figures of its row.
using Errors = std::array<double, 4>;

struct Row {
    const char* name;
    Errors (*measure)(const Row& row);
    Cone cone;
    double lat_from, lat_to;
    double side;  // degrees to either side of the central meridian, miles, or metres of height
    Errors stated;

    double latitude() const { return draw(lat_from, lat_to); }
};

double off(Wide result, Wide expected) {
    return static_cast<double>(std::fabs(result - expected));
}

Errors offs(const std::array<double, 3>& result, const Triple& expected) {
    return {off(result[0], expected[0]), off(result[1], expected[1]), off(result[2], expected[2])};
}

// x and y of the forward function, latitude and longitude of the inverse.
Errors projection(const Row& row) {
    const tagPPARMS parms = record_of(row.cone);
    const double lat = row.latitude(), lon = row.cone.lon0 + draw(-row.side, row.side);
    const Pair at = {lat, lon};
    const Pair plane = row.cone.code == 1   ? plain::mercator_f(parms, at)
                       : row.cone.code == 2 ? plain::polyconic_f(parms, at)
                       : row.cone.code == 3 ? plain::utm_f(parms, at)
                                            : plain::lambert_f(parms, at);
    double x = 0.0, y = 0.0, back_lat = 0.0, back_lon = 0.0;
    project_f(row.cone.code, &parms, lat, lon, &x, &y);
    project_i(row.cone.code, &parms, static_cast<double>(plane[0]), static_cast<double>(plane[1]), &back_lat,
              &back_lon);
    return {off(x, plane[0]), off(y, plane[1]), off(back_lat, lat), off(back_lon, lon)};
}

// merc_k, poly_m0, utm_m0, and lam_rho0 as a part of it and times the degrees between the parallels.
Errors setup(const Row& row) {
    const double lat = row.latitude(), other = lat + draw(0.1, 10.0);
    tagPPARMS parms = record_of({4, lat, 0.0, lat, other});
    const double rho0 = parms.lam_rho0;
    const Triple cone = plain::lambert_cone(parms, lat, lat, other);
    mercator_init(lat, 0.0, &parms);
    polyconic_init(lat, 0.0, &parms);
    utm_init(lat, 0.0, &parms);
    const Wide phi = parms.lat0, sine = std::sin(phi), arc = plain::arc_of(parms, phi) * parms.a;
    return {off(parms.merc_k, std::cos(phi) / std::sqrt(1 - sine * sine * parms.e2)), off(parms.poly_m0, arc),
            off(parms.utm_m0, arc), off(rho0, cone[2]) / std::fabs(rho0) * (other - lat)};
}

struct Place {
    explicit Place(const Row& row)
        : at{row.latitude(), draw(-180.0, 180.0), draw(-100.0, row.side)},
          datum(static_cast<int>(generator() % 120)) {}
    Triple wide() const { return {at[0], at[1], at[2]}; }

    std::array<double, 3> at;
    int datum;
};

// Latitude, longitude and height.
Errors molodensky(const Row& row) {
    Place place(row);
    const bool to_wgs = generator() % 2 == 0;
    const Triple expected = plain::molodensky(place.wide(), to_wgs, place.datum);
    auto& [lat, lon, h] = place.at;
    (to_wgs ? datum_to_WGS : WGS_to_datum)(&lat, &lon, &h, place.datum);
    return offs(place.at, expected);
}

// Metres between the two ways to shift: on the ground, and in height.
Errors two_ways(const Row& row) {
    Place place(row);
    std::array<double, 3> xyz{}, other{};
    auto& [lat, lon, h] = place.at;
    llhxyz(lat, lon, h, place.datum, &xyz[0], &xyz[1], &xyz[2]);
    shxyz(place.datum, 117, &xyz[0], &xyz[1], &xyz[2]);
    xyzllh(xyz[0], xyz[1], xyz[2], 117, &other[0], &other[1], &other[2]);
    datum_to_WGS(&lat, &lon, &h, place.datum);
    const double degree = 111320.0, east = std::remainder(lon - other[1], 360.0) * std::cos(lat / 57.3);
    return {std::hypot(lat - other[0], east) * degree, std::fabs(h - other[2])};
}

Errors earth_centred(const Row& row) {
    const Place place(row);
    std::array<double, 3> xyz{};
    llhxyz(place.at[0], place.at[1], place.at[2], place.datum, &xyz[0], &xyz[1], &xyz[2]);
    return offs(xyz, plain::llhxyz(place.wide(), place.datum));
}

// Latitude, longitude and height.
Errors geodetic(const Row& row) {
    const Place place(row);
    const Triple from = plain::llhxyz(place.wide(), place.datum);
    std::array<double, 3> at{};
    xyzllh(static_cast<double>(from[0]), static_cast<double>(from[1]), static_cast<double>(from[2]),
           place.datum, &at[0], &at[1], &at[2]);
    return offs(at, place.wide());
}

// The parts of a latitude, and the latitude of parts.
Errors parts(const Row& row) {
    const double lat = row.latitude();
    const Wide minutes = plain::m_parts(lat * Wide(DEG_TO_RAD));
    return {off(m_parts(lat * DEG_TO_RAD), minutes), off(m_parts_inv(static_cast<double>(minutes)), lat)};
}

// Bearing and direction, times the degrees of latitude if these are less than one, the distance as a part of
// it and times the degrees of latitude, and the bearing of a vector.
Errors course(const Row& row) {
    const double lat1 = row.latitude(), lon1 = draw(-90.0, 90.0), lon2 = draw(-90.0, 90.0);
    const double lat2 = std::clamp(lat1 + draw(-row.side, row.side), row.lat_from, row.lat_to);
    const double apart = std::fabs(lat2 - lat1), part_of_degree = std::min(apart, 1.0);
    const Wide x = (Wide(lon2) - lon1) * 60, y = plain::m_diff(Wide(lat1), Wide(lat2)),
               dlat = Wide(lat2) - lat1;
    const Wide distance = plain::m_distance(dlat, Wide(lon2) - lon1, lat1, lat2);
    const double part = off(m_distance(lat1, lon1, lat2, lon2), distance) / static_cast<double>(distance);
    return {off(m_bearing(lat1, lon1, lat2, lon2), plain::m_angle(x, y)) * part_of_degree,
            off(m_theta(lat1, lon1, lat2, lon2), std::atan2(y, x)) * part_of_degree, part * apart,
            off(m_angle(lon1, lon2), plain::m_angle(Wide(lon1), Wide(lon2)))};
}

// Latitude and longitude, for courses a degree and more off east and west.
Errors advance(const Row& row) {
    double lat = row.latitude(), lon = draw(-180.0, 180.0), course = draw(-89.0, 269.0);
    const double distance = draw(0.0, row.side);
    if (std::fabs(course - 90.0) < 1.0) return {};
    if (course < 0.0) course += 360.0;
    const Pair expected = plain::m_advance_d(lat, lon, distance, course);
    if (std::fabs(expected[0]) > 85.0) return {};
    m_advance_d(&lat, &lon, distance, course);
    return {off(lat, expected[0]), off(lon, expected[1])};
}

constexpr double kAny = std::numeric_limits<double>::infinity();
constexpr Cone kNone{};
constexpr Cone kMercator{1, 0.0, -30.0, 0.0, 0.0};
constexpr Cone kPolyconic{2, 0.0, 100.0, 0.0, 0.0};
constexpr Cone kTransverse{3, 49.0, -2.0, 0.0, 0.0};
constexpr Cone kSouthern{4, -40.0, 150.0, -33.0, -45.0};
constexpr Cone kAnyLambert{4, 0.0, -96.0, 99.0, 99.0};

// clang-format off
const Row kRows[] = {
    // name                      measure        projection   latitudes      side    stated
    {"mercator",                 projection,    kMercator,   -89.0, 89.0,  180.0, {4e-9, 9e-8, 7e-10, 8e-14}},
    {"transverse mercator",      projection,    kTransverse, -85.0, 85.0,    4.0, {5e-10, 7e-9, 8e-9, 7e-8}},
    {"polyconic",                projection,    kPolyconic,  1.0, 85.0,     20.0, {3e-9, 3e-8, 4e-11, 1.1e-4}},
    {"polyconic at the equator", projection,    kPolyconic,  -1.0, 1.0,     20.0, {3e-9, kAny, 3e-7, kAny}},
    {"lambert",                  projection,    kAnyLambert, 0.0, 89.0,     60.0, {6e-9, 3e-8, 4e-8, 8e-14}},
    {"lambert, southern cone",   projection,    kSouthern,   -89.0, 0.0,    60.0, {6e-9, 3e-8, 4e-8, 8e-14}},
    {"set-up",                   setup,         kNone,       5.0, 75.0,      0.0, {2e-16, 4e-9, 4e-9, 2e-13}},
    {"molodensky",               molodensky,    kNone,       -85.0, 85.0, 9000.0, {4e-14, 4e-14, 2e-12}},
    {"two ways to shift",        two_ways,      kNone,       -85.0, 85.0, 9000.0, {1.1, 0.3}},
    {"earth-centred",            earth_centred, kNone,       -90.0, 90.0, 9000.0, {3e-9, 3e-9, 3e-9}},
    {"geodetic",                 geodetic,      kNone,       -85.0, 85.0, 9000.0, {7e-12, 4e-14, 9e-7}},
    {"meridional parts",         parts,         kNone,       -88.0, 88.0,    0.0, {4e-11, 3e-8}},
    {"course",                   course,        kNone,       -85.0, 85.0,   90.0, {2e-12, 2e-14, 6e-14, 6e-14}},
    {"advance",                  advance,       kNone,       -80.0, 80.0, 1000.0, {2e-14, 1e-11}},
};
// clang-format on

TEST(Figures, HoldOverAllPositions) {
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
            EXPECT_LE(largest[k], row.stated[k]) << "number " << k;
    }
}

// One sine and one cosine give all terms: that may move a result by so much and no more.
TEST(PolyconicForward, IsWithinFourLastPlacesOfItsFormulas) {
    const auto places = [](double result, double expected, double of) {
        const double size = std::max(std::fabs(expected), of);
        return std::fabs(result - expected) / (std::nextafter(size, kAny) - size);
    };
    generator.seed(1);
    for (int i = 0; i < 100000; ++i) {
        const tagPPARMS parms = record_of(kPolyconic);
        const std::array<double, 2> at = {draw(-90.0, 90.0), draw(-80.0, 280.0)};
        const std::array<double, 2> expected = plain::polyconic_f(parms, at);
        double x = 0.0, y = 0.0;
        polyconic_f(&parms, at[0], at[1], &x, &y);
        ASSERT_LE(places(x, expected[0], 0.0), 4.0) << at[0] << ' ' << at[1];
        ASSERT_LE(places(y, expected[1], 0.0), 4.0) << at[0] << ' ' << at[1];
    }
}

}  // namespace
