#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "plain_polynomial.h"
#include <testing/point_lists.h>
#include <testing/temp_folder.h>
#include <zellap10/georef/geo_record.h>

#if defined(ZELLAP10_BENCH_LAPACK)
#include <lapacke.h>
#endif
#if defined(ZELLAP10_BENCH_EIGEN)
#include <Eigen/SVD>
#endif

// Fits next to the same least-squares problems in LAPACK and Eigen, and polynomials next to a loop over their
// terms.

namespace {

constexpr int kTerms = 21;
constexpr int kTermsOfOrder[] = {1, 3, 6, 10};

// Points of a chart of 9000 by 10500 pixels with a slightly curved latitude scale.
std::vector<PointRow> rows_of_points(int count) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> x(0, 9000);
    std::uniform_int_distribution<int> y(0, 10500);
    std::vector<PointRow> rows;
    for (int i = 0; i < count; ++i) {
        const int column = x(random);
        const int row = y(random);
        rows.push_back({column, row, -70 + 0.00012 * column, 42 - 0.00009 * row - 1e-10 * row * row});
    }
    return rows;
}

void fit(benchmark::State& state) {
    PointList points(rows_of_points(static_cast<int>(state.range(0))));
    const CGEORec record;
    double first[kTerms] = {};
    double second[kTerms] = {};
    double error = 0.0;
    for (auto _ : state) {
        record.SolveSVDpw(static_cast<int>(state.range(1)), points.list(), first, second, &error);
        benchmark::DoNotOptimize(error);
    }
}

[[maybe_unused]] double term_at(const PointRow& point, int term) {
    return CGEORec().polyfunc(term, point.x, point.y);
}

#if defined(ZELLAP10_BENCH_LAPACK)
void fit_lapack(benchmark::State& state) {
    const std::vector<PointRow> points = rows_of_points(static_cast<int>(state.range(0)));
    const int m = static_cast<int>(state.range(0));
    const int n = kTermsOfOrder[state.range(1)];
    std::vector<double> design;
    for (int j = 0; j < n; ++j) {
        for (const PointRow& point : points)
            design.push_back(term_at(point, j));
    }
    const int rows = std::max(m, n);
    std::vector<double> results(static_cast<std::size_t>(2 * rows), 0.0);
    for (int i = 0; i < m; ++i) {
        const PointRow& point = points[static_cast<std::size_t>(i)];
        results[static_cast<std::size_t>(i)] = point.longitude;
        results[static_cast<std::size_t>(rows + i)] = point.latitude;
    }
    std::vector<double> values(static_cast<std::size_t>(std::min(m, n)));
    int rank = 0;
    double size = 0.0;
    LAPACKE_dgelss_work(LAPACK_COL_MAJOR, m, n, 2, nullptr, m, nullptr, rows, nullptr, 1e-10, &rank, &size,
                        -1);
    std::vector<double> work(static_cast<std::size_t>(size));
    for (auto _ : state) {
        std::vector<double> a = design;
        std::vector<double> b = results;
        LAPACKE_dgelss_work(LAPACK_COL_MAJOR, m, n, 2, a.data(), m, b.data(), rows, values.data(), 1e-10,
                            &rank, work.data(), static_cast<int>(work.size()));
        benchmark::DoNotOptimize(b.data());
    }
}
#endif

#if defined(ZELLAP10_BENCH_EIGEN)
void fit_eigen(benchmark::State& state) {
    const std::vector<PointRow> points = rows_of_points(static_cast<int>(state.range(0)));
    const auto m = static_cast<Eigen::Index>(state.range(0));
    const Eigen::Index n = kTermsOfOrder[state.range(1)];
    Eigen::MatrixXd design(m, n);
    Eigen::MatrixXd results(m, 2);
    for (Eigen::Index i = 0; i < m; ++i) {
        const PointRow& point = points[static_cast<std::size_t>(i)];
        for (Eigen::Index j = 0; j < n; ++j)
            design(i, j) = term_at(point, static_cast<int>(j));
        results(i, 0) = point.longitude;
        results(i, 1) = point.latitude;
    }
    for (auto _ : state) {
        Eigen::JacobiSVD<Eigen::MatrixXd> svd(design, Eigen::ComputeThinU | Eigen::ComputeThinV);
        svd.setThreshold(1e-10);
        const Eigen::MatrixXd solution = svd.solve(results);
        benchmark::DoNotOptimize(solution.data());
    }
}
#endif

void sizes_and_orders(benchmark::internal::Benchmark* bench) {
    for (const int points : {4, 16, 60}) {
        for (const int order : {1, 2, 3})
            bench->Args({points, order});
    }
}
BENCHMARK(fit)->Apply(sizes_and_orders);
#if defined(ZELLAP10_BENCH_LAPACK)
BENCHMARK(fit_lapack)->Apply(sizes_and_orders);
#endif
#if defined(ZELLAP10_BENCH_EIGEN)
BENCHMARK(fit_eigen)->Apply(sizes_and_orders);
#endif

// Fills and fits a record, in direct mode or in projection mode.
void fill(CGEORec& record, int count, const char* projection) {
    add_points(record, rows_of_points(count));
    add_vertex(record, -70, 42);
    add_vertex(record, -69, 41);
    record.Projection = projection;
    record.solvepoly();
}

void record_fit(benchmark::State& state, const char* projection) {
    CGEORec record;
    fill(record, static_cast<int>(state.range(0)), projection);
    for (auto _ : state) {
        record.solvepoly();
        benchmark::DoNotOptimize(record.pwxPoly);
    }
}
BENCHMARK_CAPTURE(record_fit, direct, "")->Arg(16)->Arg(60);
BENCHMARK_CAPTURE(record_fit, projection, "MERCATOR")->Arg(16)->Arg(60);

double plain_sum(const double* coefficients, double a, double b) {
    double sum = 0.0;
    for (int i = 0; i < kTerms; ++i)
        sum += coefficients[i] * plain_term(i, a, b);
    return sum;
}

// Coefficients of different sizes, and arguments that change from call to call.
struct Polynomial {
    double coefficients[2][kTerms];
    std::vector<double> places;

    Polynomial() {
        std::mt19937 random(2);
        std::uniform_real_distribution<double> spread(-1.0, 1.0);
        for (auto& row : coefficients) {
            for (double& coefficient : row)
                coefficient = spread(random);
        }
        for (int i = 0; i < 1024; ++i)
            places.push_back(100 * spread(random));
    }
};

template <class Evaluate>
void evaluate_everywhere(benchmark::State& state, const Polynomial& polynomial, Evaluate evaluate) {
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(evaluate(polynomial.places[i], polynomial.places[i + 1]));
        i = (i + 1) % (polynomial.places.size() - 1);
    }
}

void evaluate(benchmark::State& state) {
    const Polynomial polynomial;
    const CGEORec record;
    for (const double place : polynomial.places) {
        if (record.Evaluate(polynomial.coefficients[0], place, 3.0) !=
            plain_sum(polynomial.coefficients[0], place, 3.0)) {
            std::fprintf(stderr, "fit_bench: sums differ\n");
            std::exit(1);
        }
    }
    evaluate_everywhere(state, polynomial, [&](double a, double b) {
        return record.Evaluate(polynomial.coefficients[0], a, b);
    });
}
BENCHMARK(evaluate);

void evaluate_plain(benchmark::State& state) {
    const Polynomial polynomial;
    evaluate_everywhere(state, polynomial,
                        [&](double a, double b) { return plain_sum(polynomial.coefficients[0], a, b); });
}
BENCHMARK(evaluate_plain);

void pixel_to_world_plain(benchmark::State& state) {
    const Polynomial polynomial;
    evaluate_everywhere(state, polynomial, [&](double a, double b) {
        return plain_sum(polynomial.coefficients[0], a, b) + plain_sum(polynomial.coefficients[1], a, b);
    });
}
BENCHMARK(pixel_to_world_plain);

void pixel_to_world(benchmark::State& state, const char* projection) {
    CGEORec record;
    fill(record, 16, projection);
    double x = 0.0;
    for (auto _ : state) {
        double longitude = 0.0;
        double latitude = 0.0;
        record.pwxy(x, 1000 - x, &longitude, &latitude);
        benchmark::DoNotOptimize(longitude + latitude);
        x = x < 9000 ? x + 1 : 0;
    }
}
void world_to_pixel(benchmark::State& state, const char* projection) {
    CGEORec record;
    fill(record, 16, projection);
    double step = 0.0;
    for (auto _ : state) {
        double x = 0.0;
        double y = 0.0;
        record.wpxy(-70 + step, 42 - step, &x, &y);
        benchmark::DoNotOptimize(x + y);
        step = step < 1 ? step + 1e-4 : 0;
    }
}
constexpr const char* kProjections[][2] = {{"direct", ""},
                                           {"mercator", "MERCATOR"},
                                           {"polyconic", "POLYCONIC"},
                                           {"transverse_mercator", "UTM"},
                                           {"lambert", "LAMBERT"}};

// A file of 500 lines: texts, vertices, points and an inset.
std::string geo_of_500_lines() {
    std::string text = "Name=Bench\nScale=40000\nProjection=MERCATOR\nPP=-69.5\nP1=41\nDatum=WGS84\n";
    for (int i = 0; i < 193; ++i)
        text += "Vertex" + std::to_string(i) + "=41." + std::to_string(i) + " -69.5\n";
    text += "; a comment\n[Inset 1]\nName=Harbour\n";
    for (int i = 0; i < 298; ++i) {
        text += "Point" + std::to_string(i) + "=-69." + std::to_string(100 + i) + " 41." +
                std::to_string(900 - i) + " " + std::to_string(i * 30) + " " + std::to_string(i * 31) + "\n";
    }
    return text;
}

void read_geo(benchmark::State& state) {
    const TempFolder folder;
    const std::string path = folder.write("bench.GEO", geo_of_500_lines());
    for (auto _ : state) {
        CGEORec record;
        record.ReadGEO(path.c_str(), 1);
        delete *record.Insets.begin();
    }
}
BENCHMARK(read_geo);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (const auto& [name, projection] : kProjections) {
        benchmark::RegisterBenchmark((std::string("pixel_to_world/") + name).c_str(), pixel_to_world,
                                     projection);
        benchmark::RegisterBenchmark((std::string("world_to_pixel/") + name).c_str(), world_to_pixel,
                                     projection);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
