// Nanoseconds per point of projections, datum shifts and navigation, next to PROJ (proj_trans, in radians)
// and the rhumb lines of GeographicLib if these were found by the build.

#include <array>
#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include <zellap10/zellap10.h>

#if defined(ZELLAP10_BENCH_PROJ)
#include <proj.h>
#endif
#if defined(ZELLAP10_BENCH_GEOGRAPHICLIB)
#include <GeographicLib/Rhumb.hpp>
#endif

namespace {

constexpr int kWgs84 = 117;
constexpr int kDatum = 38;

// A position or a point of the plane, two or three numbers in the order of the function that is measured.
struct Point {
    double a, b, c, d;
};

constexpr std::size_t kPoints = 1024;
using Points = std::array<Point, kPoints>;

struct Range {
    double from, to;
};

Points random_points(Range a, Range b, Range c = {0.0, 0.0}, Range d = {0.0, 0.0}) {
    std::mt19937_64 generator(7);
    const auto draw = [&](Range range) {
        return range.from + (range.to - range.from) * (static_cast<double>(generator() >> 11) * 0x1p-53);
    };
    Points points;
    for (Point& point : points)
        point = {draw(a), draw(b), draw(c), draw(d)};
    return points;
}

// Measures one call per iteration, over all points in turn.
template <class Call>
void add_row(const std::string& name, const Points& points, Call call) {
    benchmark::RegisterBenchmark(name.c_str(), [points, call](benchmark::State& state) {
        std::size_t next = 0;
        for (auto _ : state) {
            call(points[next]);
            next = (next + 1) % kPoints;
        }
    });
}

#if defined(ZELLAP10_BENCH_PROJ)
void add_proj_row(const std::string& name, const char* definition, PJ_DIRECTION direction,
                  const Points& points) {
    PJ* const proj = proj_create(PJ_DEFAULT_CTX, definition);  // kept until the program ends
    add_row(name + "/PROJ", points, [proj, direction](const Point& p) {
        benchmark::DoNotOptimize(proj_trans(proj, direction, proj_coord(p.a, p.b, p.c, 0.0)));
    });
}

// The same positions for PROJ: longitude first, in radians.
Points for_proj(Points points) {
    for (Point& p : points)
        p = {proj_torad(p.b), proj_torad(p.a), p.c, 0.0};
    return points;
}
#endif

struct Family {
    const char* name;
    int code;
    double lat0, lon0, lat1, lat2;
    const char* definition;
    Range lat, lon;
};

// clang-format off
const Family kFamilies[] = {
    {"mercator",            1,  0.0, -30.0,  0.0,  0.0, "+proj=merc +ellps=WGS84 +lon_0=-30",                            {-80.0, 80.0}, {-120.0, 60.0}},
    {"transverse_mercator", 3, 49.0,  -2.0,  0.0,  0.0, "+proj=tmerc +approx +ellps=WGS84 +k=0.9996 +lat_0=49 +lon_0=-2", {-80.0, 80.0}, {-5.0, 1.0}},
    {"polyconic",           2,  0.0, 100.0,  0.0,  0.0, "+proj=poly +ellps=WGS84 +lat_0=0 +lon_0=100",                   {-80.0, 80.0}, {97.0, 103.0}},
    {"lambert",             4, 40.0, -96.0, 33.0, 45.0, "+proj=lcc +ellps=WGS84 +lat_0=40 +lon_0=-96 +lat_1=33 +lat_2=45", {20.0, 60.0}, {-126.0, -66.0}},
};
// clang-format on

void add_projections() {
    for (const Family& family : kFamilies) {
        const int code = family.code;
        PPARMS parms;
        project_init2(code, family.lat0, family.lon0, family.lat1, family.lat2, kWgs84, &parms);
        const Points positions = random_points(family.lat, family.lon);
        Points planes{};
        for (std::size_t i = 0; i < kPoints; ++i) {
            project_f(code, &parms, positions[i].a, positions[i].b, &planes[i].a, &planes[i].b);
        }
        const std::string forward = std::string(family.name) + "_f";
        const std::string inverse = std::string(family.name) + "_i";
        add_row(forward, positions, [code, parms](const Point& p) {
            double x, y;
            project_f(code, &parms, p.a, p.b, &x, &y);
            benchmark::DoNotOptimize(x);
            benchmark::DoNotOptimize(y);
        });
#if defined(ZELLAP10_BENCH_PROJ)
        add_proj_row(forward, family.definition, PJ_FWD, for_proj(positions));
#endif
        add_row(inverse, planes, [code, parms](const Point& p) {
            double lat, lon;
            project_i(code, &parms, p.a, p.b, &lat, &lon);
            benchmark::DoNotOptimize(lat);
            benchmark::DoNotOptimize(lon);
        });
#if defined(ZELLAP10_BENCH_PROJ)
        add_proj_row(inverse, family.definition, PJ_INV, planes);
#endif
    }
}

void add_shifts() {
    const Points positions = random_points({-80.0, 80.0}, {-180.0, 180.0}, {0.0, 3000.0});
    Points cartesian{};
    for (std::size_t i = 0; i < kPoints; ++i) {
        const Point& p = positions[i];
        llhxyz(p.a, p.b, p.c, kDatum, &cartesian[i].a, &cartesian[i].b, &cartesian[i].c);
    }
    add_row("datum_to_WGS", positions, [](Point p) {
        datum_to_WGS(&p.a, &p.b, &p.c, kDatum);
        benchmark::DoNotOptimize(p);
    });
#if defined(ZELLAP10_BENCH_PROJ)
    add_proj_row("datum_to_WGS",
                 "+proj=molodensky +ellps=intl +da=-251 +df=-1.41927e-05 +dx=-87 +dy=-96 +dz=-120", PJ_FWD,
                 for_proj(positions));
#endif
    add_row("WGS_to_datum", positions, [](Point p) {
        WGS_to_datum(&p.a, &p.b, &p.c, kDatum);
        benchmark::DoNotOptimize(p);
    });
#if defined(ZELLAP10_BENCH_PROJ)
    add_proj_row("WGS_to_datum",
                 "+proj=molodensky +ellps=WGS84 +da=251 +df=1.41927e-05 +dx=87 +dy=96 +dz=120", PJ_FWD,
                 for_proj(positions));
#endif
    add_row("llhxyz", positions, [](const Point& p) {
        Point out;
        llhxyz(p.a, p.b, p.c, kDatum, &out.a, &out.b, &out.c);
        benchmark::DoNotOptimize(out);
    });
#if defined(ZELLAP10_BENCH_PROJ)
    add_proj_row("llhxyz", "+proj=cart +ellps=intl", PJ_FWD, for_proj(positions));
#endif
    add_row("xyzllh", cartesian, [](const Point& p) {
        Point out;
        xyzllh(p.a, p.b, p.c, kDatum, &out.a, &out.b, &out.c);
        benchmark::DoNotOptimize(out);
    });
#if defined(ZELLAP10_BENCH_PROJ)
    add_proj_row("xyzllh", "+proj=cart +ellps=intl", PJ_INV, cartesian);
#endif
}

void add_navigation() {
    const Points pairs = random_points({-75.0, 75.0}, {-180.0, 180.0}, {-75.0, 75.0}, {-180.0, 180.0});
    const Points legs = random_points({-75.0, 75.0}, {-180.0, 180.0}, {1.0, 100.0}, {0.0, 360.0});
    add_row("m_b_d", pairs, [](const Point& p) {
        double bearing;
        benchmark::DoNotOptimize(m_b_d(p.a, p.b, p.c, p.d, &bearing));
        benchmark::DoNotOptimize(bearing);
    });
    add_row("m_advance_d", legs, [](Point p) {
        m_advance_d(&p.a, &p.b, p.c, p.d);
        benchmark::DoNotOptimize(p);
    });
#if defined(ZELLAP10_BENCH_GEOGRAPHICLIB)
    add_row("m_b_d/GeographicLib", pairs, [](const Point& p) {
        double distance, bearing;
        GeographicLib::Rhumb::WGS84().Inverse(p.a, p.b, p.c, p.d, distance, bearing);
        benchmark::DoNotOptimize(distance);
        benchmark::DoNotOptimize(bearing);
    });
    add_row("m_advance_d/GeographicLib", legs, [](const Point& p) {
        double lat, lon;
        GeographicLib::Rhumb::WGS84().Direct(p.a, p.b, p.d, p.c * 1852.0, lat, lon);
        benchmark::DoNotOptimize(lat);
        benchmark::DoNotOptimize(lon);
    });
#endif
}

}  // namespace

int main(int argc, char** argv) {
    add_projections();
    add_shifts();
    add_navigation();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
