// The figures that the headers of projections, datum shifts and navigation state, each held by random
// positions on four ellipsoids. Rounding is the difference to the same formulas in long double; last places
// are those by which an identity or a shorter way moves a result from the formulas word for word in double.
#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include <testing/plain_numeric.h>
#include <zellap10/zellap10.h>

namespace {

using Wide = long double;
using plain::Pair;
using plain::Triple;

// A long double that the processor has not is slow.
constexpr int kPositions = std::numeric_limits<Wide>::digits > 64 ? 4000 : 20000;
constexpr int kDatums[] = {17, 38, 87, 117};

struct Range {
    double from, to;
};

// Errors of one position; a measure names those that it has.
using Errors = std::array<double, 10>;

struct Cone {
    int code;
    double lat0, lon0, lat1, lat2;
};

// What a row measures: a projection, or none, over some latitudes and so many degrees to either side of its
// meridian, or so many miles.
struct Row {
    const char* name;
    Errors (*measure)(const Row& row);
    Cone cone;
    Range lat;
    double side;
    Errors stated;
};

std::mt19937_64 generator;

double draw(double from, double to) {
    return from + (to - from) * (static_cast<double>(generator() >> 11) * 0x1p-53);
}

int draw_datum() {
    return kDatums[generator() % std::size(kDatums)];
}

double off(Wide result, Wide expected) {
    return static_cast<double>(std::fabs(result - expected));
}

// In last places of the result, or of what it is a difference of.
double places(double result, double expected, double of) {
    const double size = std::max(std::fabs(expected), std::fabs(of));
    return std::fabs(result - expected) / (std::nextafter(size, 1e300) - size);
}

// A Lambert cone whose parallels are none has any, one to ten degrees apart.
tagPPARMS record_of(Cone cone) {
    tagPPARMS parms;
    if (cone.lat1 > 90.0) {
        cone.lat0 = cone.lat1 = draw(5.0, 75.0);
        cone.lat2 = cone.lat1 + draw(1.0, 10.0);
    }
    project_init2(cone.code, cone.lat0, cone.lon0, cone.lat1, cone.lat2, draw_datum(), &parms);
    return parms;
}

template <class To, class From>
Pair<To> as(const Pair<From>& pair) {
    return {static_cast<To>(pair[0]), static_cast<To>(pair[1])};
}

template <class Real>
Pair<Real> plain_f(int code, const tagPPARMS& parms, const Pair<Real>& at) {
    if (code == 1) return plain::mercator_f(parms, at);
    if (code == 2) return plain::polyconic_f(parms, at);
    if (code == 3) return plain::utm_f(parms, at);
    return plain::lambert_f(parms, at);
}

template <class Real>
Pair<Real> plain_i(int code, const tagPPARMS& parms, const Pair<Real>& plane, plain::Passes& passes) {
    if (code == 1) return plain::mercator_i(parms, plane, passes);
    if (code == 2) return plain::polyconic_i(parms, plane, passes);
    if (code == 3) return plain::utm_i(parms, plane);
    return plain::lambert_i(parms, plane, passes);
}

// Of x, y, latitude and longitude: rounding; last places, in which another number of passes would show as
// millions; and of the latter two what the inverse misses, in long double, by its series or by where it
// stops. The inverse in long double takes the passes that it takes in double.
Errors projection(const Row& row) {
    const int code = row.cone.code;
    const tagPPARMS parms = record_of(row.cone);
    const Pair<double> at = {draw(row.lat.from, row.lat.to), row.cone.lon0 + draw(-row.side, row.side)};
    Pair<double> plane{}, back{};
    project_f(code, &parms, at[0], at[1], &plane[0], &plane[1]);
    project_i(code, &parms, plane[0], plane[1], &back[0], &back[1]);
    plain::Passes passes;
    const Pair<double> word_plane = plain_f(code, parms, at);
    const Pair<double> word_back = plain_i(code, parms, plane, passes);
    const Pair<Wide> exact_plane = plain_f(code, parms, as<Wide>(at));
    const Pair<Wide> exact_back = plain_i(code, parms, as<Wide>(plane), passes);
    const Pair<Wide> round_trip = plain_i(code, parms, exact_plane, passes);
    const double northing = parms.utm_m0 + parms.poly_m0 + parms.lam_rho0;
    const double right_angle = code == 1 || code == 4 ? 90.0 : 0.0;
    return {off(plane[0], exact_plane[0]),
            off(plane[1], exact_plane[1]),
            off(back[0], exact_back[0]),
            off(back[1], exact_back[1]),
            places(plane[0], word_plane[0], 0.0),
            places(plane[1], word_plane[1], northing),
            places(back[0], word_back[0], right_angle),
            places(back[1], word_back[1], row.cone.lon0),
            off(round_trip[0], at[0]),
            off(round_trip[1], at[1])};
}

// What each set-up works out: merc_k, poly_m0, utm_m0, and lam_rho0 as a part of it and times the degrees
// between the parallels.
Errors setup(const Row& row) {
    const double lat = draw(row.lat.from, row.lat.to), other = lat + draw(0.1, 10.0);
    const int datum = draw_datum();
    tagPPARMS parms;
    project_init2(4, lat, 0.0, lat, other, datum, &parms);
    const double rho0 = parms.lam_rho0;
    const Triple<Wide> cone = plain::lambert_cone<Wide>(parms, lat, lat, other);
    mercator_init(lat, 0.0, &parms);
    polyconic_init(lat, 0.0, &parms);
    utm_init(lat, 0.0, &parms);
    const Wide phi = parms.lat0, sine = std::sin(phi);
    const Wide arc = plain::Arc<Wide>(parms)(phi) * parms.a;
    return {off(parms.merc_k, std::cos(phi) / std::sqrt(1 - sine * sine * parms.e2)), off(parms.poly_m0, arc),
            off(parms.utm_m0, arc), off(rho0, cone[2]) / std::fabs(rho0) * (other - lat)};
}

Triple<double> draw_place(const Row& row) {
    return {draw(row.lat.from, row.lat.to), draw(-180.0, 180.0), draw(-100.0, row.side)};
}

Triple<Wide> wide(const Triple<double>& at) {
    return {at[0], at[1], at[2]};
}

Errors off(const Triple<double>& result, const Triple<Wide>& expected) {
    return {off(result[0], expected[0]), off(result[1], expected[1]), off(result[2], expected[2])};
}

// Latitude, longitude and height, on any row of the table: rounding, and last places.
Errors molodensky(const Row& row) {
    const Triple<double> at = draw_place(row);
    Triple<double> to = at;
    const int datum = static_cast<int>(generator() % 120);
    const bool to_wgs = generator() % 2 == 0;
    (to_wgs ? datum_to_WGS : WGS_to_datum)(&to[0], &to[1], &to[2], datum);
    const Triple<double> word = plain::molodensky(at, to_wgs, datum);
    const Errors errors = off(to, plain::molodensky(wide(at), to_wgs, datum));
    return {errors[0],
            errors[1],
            errors[2],
            places(to[0], word[0], 0.0),
            places(to[1], word[1], 0.0),
            places(to[2], word[2], at[2])};
}

// Latitude, longitude and height that a journey there and back leaves.
Errors there_and_back(const Row& row) {
    const Triple<double> at = draw_place(row);
    Triple<double> to = at;
    const int datum = static_cast<int>(generator() % 120);
    datum_to_WGS(&to[0], &to[1], &to[2], datum);
    WGS_to_datum(&to[0], &to[1], &to[2], datum);
    return off(to, wide(at));
}

// Metres between the two roads: on the ground, and in height.
Errors two_roads(const Row& row) {
    const Triple<double> at = draw_place(row);
    Triple<double> one = at, xyz{}, other{};
    const int datum = static_cast<int>(generator() % 120);
    datum_to_WGS(&one[0], &one[1], &one[2], datum);
    llhxyz(at[0], at[1], at[2], datum, &xyz[0], &xyz[1], &xyz[2]);
    shxyz(datum, 117, &xyz[0], &xyz[1], &xyz[2]);
    xyzllh(xyz[0], xyz[1], xyz[2], 117, &other[0], &other[1], &other[2]);
    const double degree = 111320.0, east = std::remainder(one[1] - other[1], 360.0) * std::cos(at[0] / 57.3);
    return {std::hypot(one[0] - other[0], east) * degree, std::fabs(one[2] - other[2])};
}

// The largest of x, y and z.
Errors earth_centred(const Row& row) {
    const Triple<double> at = draw_place(row);
    const int datum = static_cast<int>(generator() % 120);
    Triple<double> xyz{};
    llhxyz(at[0], at[1], at[2], datum, &xyz[0], &xyz[1], &xyz[2]);
    const Errors errors = off(xyz, plain::llhxyz(wide(at), datum));
    return {*std::max_element(errors.begin(), errors.end())};
}

// Latitude, longitude and height: rounding; latitude and height: what the closed form misses.
Errors geodetic(const Row& row) {
    const Triple<double> place = draw_place(row);
    const int datum = static_cast<int>(generator() % 120);
    const Triple<Wide> from = plain::llhxyz(wide(place), datum);
    const Triple<double> xyz{double(from[0]), double(from[1]), double(from[2])};
    Triple<double> at{};
    xyzllh(xyz[0], xyz[1], xyz[2], datum, &at[0], &at[1], &at[2]);
    const Errors errors = off(at, plain::xyzllh(wide(xyz), datum));
    const Triple<Wide> back = plain::xyzllh(from, datum);
    return {errors[0], errors[1], errors[2], off(back[0], place[0]), off(back[2], place[2])};
}

// The parts of a latitude, the latitude of parts, and what its refinements leave.
Errors parts(const Row& row) {
    const double lat = draw(row.lat.from, row.lat.to), phi = lat * plain::DEG_TO_RAD;
    const double minutes = m_parts(phi);
    const Wide back = plain::m_parts_inv<Wide>(minutes);
    return {off(minutes, plain::m_parts<Wide>(phi)), off(m_parts_inv(minutes), back),
            off(back, plain::m_parts_inv<Wide>(minutes, 9))};
}

// Bearing and direction, times the degrees of latitude where these are less than one, the distance as a part
// of it and times the degrees of latitude, and the bearing of a vector.
Errors course(const Row& row) {
    const double lat1 = draw(row.lat.from, row.lat.to), lon1 = draw(-90.0, 90.0), lon2 = draw(-90.0, 90.0);
    const double lat2 = std::clamp(lat1 + draw(-row.side, row.side), row.lat.from, row.lat.to);
    const double apart = std::fabs(lat2 - lat1), part_of_degree = std::min(apart, 1.0);
    const Wide x = (Wide(lon2) - lon1) * 60, y = plain::m_diff<Wide>(lat1, lat2), dlat = Wide(lat2) - lat1;
    const Wide distance = plain::m_distance<Wide>(dlat, Wide(lon2) - lon1, lat1, lat2);
    const double part = off(m_distance(lat1, lon1, lat2, lon2), distance) / static_cast<double>(distance);
    return {off(m_bearing(lat1, lon1, lat2, lon2), plain::m_angle<Wide>(x, y)) * part_of_degree,
            off(m_theta(lat1, lon1, lat2, lon2), std::atan2(y, x)) * part_of_degree, part * apart,
            off(m_angle(lon1, lon2), plain::m_angle<Wide>(lon1, lon2))};
}

// The distance along a parallel, as a part of it.
Errors parallel(const Row& row) {
    const double lat = draw(row.lat.from, row.lat.to), lon = draw(-90.0, 90.0);
    const Wide distance = plain::m_distance<Wide>(0, lon, lat, lat);
    return {off(m_distance(lat, 0.0, lat, lon), distance) / static_cast<double>(distance)};
}

Errors advanced(const Row& row, double course) {
    double lat = draw(row.lat.from, row.lat.to), lon = draw(-180.0, 180.0);
    const double distance = draw(0.0, row.side);
    const Pair<Wide> expected = plain::m_advance_d<Wide>(lat, lon, distance, course);
    if (std::fabs(expected[0]) > 85.0) return {};
    m_advance_d(&lat, &lon, distance, course);
    return {off(lat, expected[0]), off(lon, expected[1])};
}

// Latitude and longitude, for courses a degree and more off east and west.
Errors advance(const Row& row) {
    const double course = draw(-89.0, 269.0);
    return std::fabs(course - 90.0) < 1.0 ? Errors{} : advanced(row, course < 0.0 ? course + 360.0 : course);
}

Errors advance_along_a_parallel(const Row& row) {
    return advanced(row, generator() % 2 == 0 ? 90.0 : 270.0);
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
    // name                     measure         projection   latitudes        sides  stated
    {"mercator",                projection,     kMercator,   {-89.0, 89.0},  180.0, {4e-9, 9e-8, 5e-14, 5e-14, 0, 0, 2, 0, 7e-10, 1e-14}},
    {"transverse mercator",     projection,     kTransverse, {-85.0, 85.0},    4.0, {5e-10, 7e-9, 6e-14, 6e-14, 2, 2, 2, 2, 8e-9, 7e-8}},
    {"polyconic",               projection,     kPolyconic,  {1.0, 85.0},     20.0, {3e-9, 3e-8, 8e-13, 3e-12, 0, 2, 0, 0, 4e-11, 1.1e-4}},
    {"polyconic at the equator", projection,    kPolyconic,  {-1.0, 1.0},     20.0, {3e-9, kAny, kAny, kAny, 0, 2, 0, 0, 3e-7, kAny}},
    {"lambert",                 projection,     kAnyLambert, {0.0, 89.0},     60.0, {6e-9, 3e-8, 2e-13, 5e-14, 0, 0, 2, 0, 4e-8, 1e-14}},
    {"lambert, southern cone",  projection,     kSouthern,   {-89.0, 0.0},    60.0, {6e-9, 3e-8, 2e-13, 5e-14, 0, 0, 2, 0, 4e-8, 1e-14}},
    {"set-up",                  setup,          kNone,       {5.0, 75.0},      0.0, {2e-16, 4e-9, 4e-9, 2e-13}},
    {"molodensky",              molodensky,     kNone,       {-85.0, 85.0}, 9000.0, {4e-14, 4e-14, 2e-12, 4, 0, 0}},
    {"molodensky and back",     there_and_back, kNone,       {-85.0, 85.0}, 9000.0, {2e-5, 2e-4, 0.45}},
    {"two roads, up to 60",     two_roads,      kNone,       {-60.0, 60.0}, 9000.0, {0.3, 0.3}},
    {"two roads, up to 85",     two_roads,      kNone,       {-85.0, 85.0}, 9000.0, {1.1, 0.3}},
    {"earth-centred",           earth_centred,  kNone,       {-90.0, 90.0}, 9000.0, {3e-9}},
    {"geodetic",                geodetic,       kNone,       {-85.0, 85.0}, 9000.0, {3e-14, 3e-14, 1.2e-8, 7e-12, 9e-7}},
    {"meridional parts",        parts,          kNone,       {-88.0, 88.0},    0.0, {4e-11, 4e-14, 3e-8}},
    {"course",                  course,         kNone,       {-85.0, 85.0},   90.0, {2e-12, 2e-14, 6e-14, 6e-14}},
    {"parallel",                parallel,       kNone,       {-85.0, 85.0},    0.0, {3e-10}},
    {"advance",                 advance,        kNone,       {-80.0, 80.0}, 1000.0, {2e-14, 1e-11}},
    {"advance on a parallel",   advance_along_a_parallel, kNone, {-80.0, 80.0}, 1000.0, {0, 2e-8}},
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

struct LimitRow {
    const char* name;
    Cone cone;
    int most;        // passes of the inverse
    Range e2, x, y;  // records of any ellipsoid, and places on their plane
    int places;
    bool goes_on;  // with what the last pass gives
};

// clang-format off
const LimitRow kLimitRows[] = {
    // name       projection             most  e2                  x             y              places  goes on
    {"mercator",  kMercator,             1000, {0.9882, 0.989},    {0.0, 0.0},   {1e3, 1e3},       500, false},
    {"lambert",   {4, 40., 0., 33., 45.},  20, {0.5, 0.55},        {0.0, 0.0},   {-4e6, -4e6},      50, true},
    {"polyconic", kPolyconic,             100, {0.00669, 0.00670}, {0.0, 1.2e7}, {1e4, 1.2e7},   50000, false},
};
// clang-format on

// Some places settle in the last pass that an inverse has, and some in one more. Where the passes wander,
// rounding may send one another way.
TEST(PassLimits, EndAnInverseInNoPositionOrTheLastLatitude) {
    for (const LimitRow& row : kLimitRows) {
        generator.seed(1);
        int last = 0, one_more = 0, otherwise = 0;
        for (int i = 0; i < row.places; ++i) {
            tagPPARMS parms = record_of(row.cone);
            parms.e2 = draw(row.e2.from, row.e2.to);
            parms.e = std::sqrt(parms.e2);
            const Pair<double> plane = {draw(row.x.from, row.x.to), draw(row.y.from, row.y.to)};
            plain::Passes passes;
            passes.most = row.most + 2;
            plain_i(row.cone.code, parms, plane, passes);
            const bool ends = passes.count > row.most;
            last += passes.count == row.most;
            one_more += passes.count == row.most + 1;
            passes.count = std::min(passes.count, row.most);
            const double expected = plain_i(row.cone.code, parms, plane, passes)[0];
            double lat = 0.0, lon = 0.0;
            project_i(row.cone.code, &parms, plane[0], plane[1], &lat, &lon);
            const bool none = std::isnan(expected) || (ends && !row.goes_on);
            otherwise += none ? !std::isnan(lat) : !(std::fabs(lat - expected) < 1e-9);
        }
        EXPECT_LT(otherwise, std::min(last, one_more)) << row.name;
    }
}

}  // namespace
