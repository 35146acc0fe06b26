#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "harness.h"
#include <zellap10/zellap10.h>

// Projections, datums, navigation and the solver with any numbers. An input is a sequence of calls, each a
// byte that selects the function and its arguments.

namespace {

using fuzz::Input;
using fuzz::Kept;
using fuzz::must;

constexpr int kMostCalls = 64;

struct Pair {
    double first = 0.125;
    double second = 0.375;
    bool untouched() const { return first == 0.125 && second == 0.375; }
};

void keep(Kept& kept, const Pair& pair) {
    kept.add(pair.first);
    kept.add(pair.second);
}

// If an argument is NaN, the results that depend on it are NaN.
void must_hand_on(std::initializer_list<double> arguments, double result) {
    const bool all_numbers =
        std::none_of(arguments.begin(), arguments.end(), [](double number) { return std::isnan(number); });
    must(all_numbers || std::isnan(result), "NaN in, NaN out");
}

// A code, or a datum number, sometimes just out of range. The ends of the datum table are more likely.
int draw_code(Input& input) {
    return input.around(-1, 5);
}

int draw_datum(Input& input) {
    constexpr int kEnds[] = {-1, 0, 119, 120};
    const int kind = input.take<std::uint8_t>() & 15;
    return kind < 4 ? kEnds[kind] : input.around(-1, 120);
}

bool is_projection(int code) {
    return code >= 1 && code <= 4;
}

// A record from a set-up function returns NaN for NaN, except a cone with infinite n: any number to the power
// 0 is 1.
void project(int code, const tagPPARMS* parms, bool hands_nan_on, Input& input, Kept& kept) {
    const double a = input.real();
    const double b = input.real();
    Pair plane;
    Pair again;
    project_f(code, parms, a, b, &plane.first, &plane.second);
    project_f(code, parms, a, b, &again.first, &again.second);
    must(is_projection(code) || plane.untouched(), "no projection writes nothing");
    must(fuzz::same(plane.first, again.first) && fuzz::same(plane.second, again.second),
         "a projection repeats its result");
    keep(kept, plane);
    hands_nan_on = hands_nan_on && is_projection(code);
    if (hands_nan_on) {
        must_hand_on({a}, plane.second);
        must_hand_on({b}, plane.first);
    }
    for (const Pair& from : {plane, Pair{a, b}}) {
        Pair position;
        project_i(code, parms, from.first, from.second, &position.first, &position.second);
        must(is_projection(code) || position.untouched(), "no projection writes nothing");
        keep(kept, position);
        if (!hands_nan_on) continue;
        must_hand_on({from.first}, position.second);
        must_hand_on({from.second}, position.first);
    }
}

void call_projection(Input& input, Kept& kept) {
    const int code = draw_code(input);
    const int datum = draw_datum(input);
    const double lat0 = input.real();
    const double lon0 = input.real();
    tagPPARMS parms;
    if (input.flag()) {
        project_init(code, lat0, lon0, datum, &parms);
    } else {
        const double lat1 = input.real();
        project_init2(code, lat0, lon0, lat1, input.real(), datum, &parms);
    }
    must(datum >= 0 && datum < 120 ? parms.a > 6e6 && parms.a < 7e6 : std::isnan(parms.a),
         "a datum has an ellipsoid of the earth's size");
    kept.bytes(&parms, sizeof parms);
    project(code, &parms, !std::isinf(parms.lam_n), input, kept);
}

// A record with any contents.
void call_any_record(Input& input, Kept& kept) {
    double numbers[sizeof(tagPPARMS) / sizeof(double)];
    for (double& number : numbers)
        number = input.real();
    tagPPARMS parms;
    std::memcpy(&parms, numbers, sizeof parms);
    project(draw_code(input), &parms, false, input, kept);
}

void call_null_record(Input& input, Kept& kept) {
    project_init(draw_code(input), input.real(), 0.0, draw_datum(input), nullptr);
    project(draw_code(input), nullptr, false, input, kept);
}

void call_shift(Input& input, Kept& kept) {
    const int datum = draw_datum(input);
    const bool known = datum >= 0 && datum < 120;
    const double lat = input.real();
    const double lon = input.real();
    const double h = input.real();
    for (const auto shift : {datum_to_WGS, WGS_to_datum}) {
        double to[3] = {lat, lon, h};
        shift(&to[0], &to[1], &to[2], datum);
        kept.bytes(to, sizeof to);
        must(known || (std::isnan(to[0]) && std::isnan(to[1]) && std::isnan(to[2])),
             "an unknown datum gives NaN");
        for (const double result : to)
            must_hand_on({lat, lon}, result);
        must_hand_on({h}, to[2]);
    }
    double xyz[3] = {0.0, 0.0, 0.0};
    llhxyz(lat, lon, h, datum, &xyz[0], &xyz[1], &xyz[2]);
    kept.bytes(xyz, sizeof xyz);
    must(known || (std::isnan(xyz[0]) && std::isnan(xyz[1]) && std::isnan(xyz[2])),
         "an unknown datum gives NaN");
    for (const double axis : xyz)
        must_hand_on({lat, h}, axis);
    must_hand_on({lon}, xyz[0]);
    if (input.flag()) {
        for (double& axis : xyz)
            axis = input.real();
    }
    double moved[3] = {xyz[0], xyz[1], xyz[2]};
    shxyz(datum, draw_datum(input), &moved[0], &moved[1], &moved[2]);
    kept.bytes(moved, sizeof moved);
    must(known || std::isnan(moved[0]), "an unknown datum gives NaN");
    double llh[3] = {0.0, 0.0, 0.0};
    xyzllh(xyz[0], xyz[1], xyz[2], datum, &llh[0], &llh[1], &llh[2]);
    kept.bytes(llh, sizeof llh);
    must(known || (std::isnan(llh[0]) && std::isnan(llh[1]) && std::isnan(llh[2])),
         "an unknown datum gives NaN");
    must_hand_on({xyz[0], xyz[1], xyz[2]}, llh[0]);
    must_hand_on({xyz[0], xyz[1]}, llh[1]);
    must_hand_on({xyz[0], xyz[1], xyz[2]}, llh[2]);
    must(std::isnan(llh[0]) || std::fabs(llh[0]) <= 90.0, "a latitude ends at the poles");
    must(std::isnan(llh[1]) || std::fabs(llh[1]) <= 180.0, "a longitude ends at 180");
}

void check_bearing(double bearing) {
    must(std::isnan(bearing) || (bearing >= 0.0 && bearing < 360.0), "a bearing is from 0 to 360");
}

void call_course(Input& input, Kept& kept) {
    double at[4];
    for (double& number : at)
        number = input.real();
    const double bearing = m_bearing(at[0], at[1], at[2], at[3]);
    double other = -1.0;
    const double distance = m_b_d(at[0], at[1], at[2], at[3], &other);
    check_bearing(bearing);
    check_bearing(other);
    must(fuzz::equal_or_nan(distance, m_distance(at[0], at[1], at[2], at[3])), "m_b_d returns m_distance");
    must(!(distance < 0.0), "a distance is not negative");
    const double theta = m_theta(at[0], at[1], at[2], at[3]);
    for (const double direction : {bearing, other, theta})
        must_hand_on({at[0], at[1], at[2], at[3]}, direction);
    must_hand_on({at[0], at[2]}, distance);
    const double angle = m_angle(at[0], at[1]);
    check_bearing(angle);
    for (const double number :
         {bearing, other, distance, angle, theta, m_diff(at[0], at[2]), m_parts(at[1])}) {
        kept.add(number);
    }
    const double back = m_parts_inv(at[3]);
    must(std::isnan(back) || std::fabs(back) <= 90.0000001, "parts have a latitude up to 90");
    must_hand_on({at[3]}, back);
    must_hand_on({at[0], at[2]}, m_diff(at[0], at[2]));
    must_hand_on({at[0], at[1]}, angle);
    const double speed = input.real();
    const long seconds = m_ttg(at[0], at[1], at[2], at[3], speed);
    must(seconds == 0 || !std::isnan(distance / speed), "an undefined time is 0");
    kept.add(seconds);
}

void call_advance(Input& input, Kept& kept) {
    const double lat = input.real();
    const double lon = input.real();
    const double a = input.real();
    const double b = input.real();
    const double course = input.real();
    Pair to{lat, lon};
    must(fuzz::equal_or_nan(m_advance_d(&to.first, &to.second, a, course), a), "the distance is returned");
    keep(kept, to);
    must_hand_on({lat, course}, to.first);
    must_hand_on({lat, lon, a, course}, to.second);
    to = {lat, lon};
    kept.add(m_advance_t(&to.first, &to.second, a, b, course));
    keep(kept, to);
    to = {lat, lon};
    m_line(a, b, &to.first, &to.second, course);
    keep(kept, to);
    for (const double result : {to.first, to.second})
        must_hand_on({lat, lon, a, b, course}, result);
}

void call_polynomial(Input& input, Kept& kept) {
    static const CGEORec record;
    const double a = input.real();
    const double b = input.real();
    double coefficients[21];
    for (double& coefficient : coefficients)
        coefficient = input.real();
    const int index = input.around(-1, 21);
    const double term = record.polyfunc(index, a, b);
    must((index >= 0 && index <= 20) || term == 0.0, "there are 21 terms");
    kept.add(term);
    double sum = 0.0;
    for (int i = 0; i <= 20; ++i)
        sum += coefficients[i] * record.polyfunc(i, a, b);
    must(fuzz::equal_or_nan(record.Evaluate(coefficients, a, b), sum),
         "a polynomial is the sum of its terms in order");
    const double size = record.pythag(a, b);
    must(!(size < 0.0), "a length is not negative");
    kept.add(size);
    kept.text(record.deg2dms(a));
}

// Any small matrix and right-hand side. Without convergence the result may be anything, but the call must
// end.
void call_solver(Input& input, Kept& kept) {
    static const CGEORec record;
    const int m = input.take<std::uint8_t>() % 9;
    const int n = input.take<std::uint8_t>() % 8 + 1;
    double** a = record.dmatrix(1, m, 1, n);
    double** v = record.dmatrix(1, n, 1, n);
    double* w = record.dvector(1, n);
    double* b = record.dvector(1, m);
    double* x = record.dvector(1, n);
    bool finite = true;
    for (int i = 1; i <= m; ++i) {
        for (int j = 1; j <= n; ++j) {
            a[i][j] = input.real();
            finite = finite && std::fabs(a[i][j]) < 1e100;
        }
        b[i] = input.real();
    }
    record.svdcmp(a, m, n, w, v);
    record.svbksb(a, w, v, m, n, b, x);
    for (int j = 1; j <= n; ++j) {
        must(!finite || !std::isinf(w[j]), "a matrix of moderate size has singular values");
        kept.add(w[j]);
        kept.add(x[j]);
        kept.bytes(v[j] + 1, static_cast<std::size_t>(n) * sizeof(double));
    }
    for (int i = 1; i <= m; ++i)
        kept.bytes(a[i] + 1, static_cast<std::size_t>(n) * sizeof(double));
    record.free_dvector(x, 1, n);
    record.free_dvector(b, 1, m);
    record.free_dvector(w, 1, n);
    record.free_dmatrix(v, 1, n, 1, n);
    record.free_dmatrix(a, 1, m, 1, n);
}

using Call = void (*)(Input& input, Kept& kept);
constexpr Call kCalls[] = {call_projection, call_any_record, call_null_record, call_shift,
                           call_course,     call_advance,    call_polynomial,  call_solver};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Kept kept;
    for (int i = 0; i < kMostCalls && !input.empty(); ++i) {
        kCalls[input.take<std::uint8_t>() % (sizeof kCalls / sizeof *kCalls)](input, kept);
    }
    return 0;
}
