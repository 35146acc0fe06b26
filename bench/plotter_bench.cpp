#include <benchmark/benchmark.h>

#include <string>

#include <zellap10/plotter/plotter.h>

// What the plotter target costs, on the dynamic library as an application has it.

namespace {

using zellap10::plotter::pixel_of;
using zellap10::plotter::Position;
using zellap10::plotter::position_of;

// A chart of two degrees by two with 16 points.
void fit(CGEORec& record, const char* projection) {
    for (int x = 0; x <= 9000; x += 3000) {
        for (int y = 0; y <= 9000; y += 3000)
            record.Points.AddTail(new CRefPoint("", x, y, -70 + x / 4500.0, 42 - y / 4500.0 - 1e-10 * y * y));
    }
    record.Vertices.AddTail(new CRefPoint("", 0, 0, -70, 42));
    record.Vertices.AddTail(new CRefPoint("", 0, 0, -68, 40));
    record.Projection = projection;
    record.solvepoly();
}

template <class Use>
void at_positions(benchmark::State& state, const char* projection, Use use) {
    CGEORec record;
    fit(record, projection);
    double step = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(use(record, Position{42 - step, -70 + step}));
        step = step < 2 ? step + 1e-4 : 0;
    }
}

void wpxy(benchmark::State& state, const char* projection) {
    at_positions(state, projection, [](const CGEORec& record, Position position) {
        double x = 0.0;
        double y = 0.0;
        record.wpxy(position.longitude, position.latitude, &x, &y);
        return x + y;
    });
}

void plotter_pixel_of(benchmark::State& state, const char* projection) {
    at_positions(state, projection,
                 [](const CGEORec& record, Position position) { return pixel_of(record, position)->x; });
}

void plotter_position_of(benchmark::State& state, const char* projection) {
    at_positions(state, projection, [](const CGEORec& record, Position position) {
        return position_of(record, {1e4 * (position.longitude + 70), 1e4 * (42 - position.latitude)})
            ->latitude;
    });
}

constexpr const char* kProjections[][2] = {{"direct", ""},
                                           {"mercator", "MERCATOR"},
                                           {"polyconic", "POLYCONIC"},
                                           {"transverse_mercator", "UTM"},
                                           {"lambert", "LAMBERT"}};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (const auto& [name, projection] : kProjections) {
        const std::string behind = std::string("/") + name;
        benchmark::RegisterBenchmark(("wpxy" + behind).c_str(), wpxy, projection);
        benchmark::RegisterBenchmark(("pixel_of" + behind).c_str(), plotter_pixel_of, projection);
        benchmark::RegisterBenchmark(("position_of" + behind).c_str(), plotter_position_of, projection);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
