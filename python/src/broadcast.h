#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <vector>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

/// @file
///
/// Functions of doubles on arrays, with the broadcasting rules of numpy.

namespace zellap10::python {

namespace py = pybind11;

/// An argument: a scalar or anything that numpy turns into an array of doubles.
using Doubles = py::array_t<double, py::array::forcecast>;

constexpr std::size_t kMaxAxes = 64;  // the limit of numpy 2; numpy 1 has 32

/// A number for each axis, the last axis first, as broadcasting aligns them.
using PerAxis = std::array<py::ssize_t, kMaxAxes>;

struct Shape {
    std::size_t axes = 0;
    PerAxis extents{};
};

/// The common shape of arrays. Throws std::invalid_argument, a ValueError in Python, without one.
template <std::size_t N>
Shape common_shape(const std::array<Doubles, N>& arrays) {
    Shape shape;
    shape.extents.fill(1);
    for (const Doubles& array : arrays) {
        const auto axes = static_cast<std::size_t>(array.ndim());
        shape.axes = std::max(shape.axes, axes);
        for (std::size_t axis = 0; axis < axes; ++axis) {
            const py::ssize_t extent = array.shape(static_cast<py::ssize_t>(axes - 1 - axis));
            py::ssize_t& common = shape.extents[axis];
            if (common == 1) common = extent;
            if (extent != common && extent != 1) {
                throw std::invalid_argument("the shapes of the arrays do not fit each other");
            }
        }
    }
    return shape;
}

/// An argument as the loop reads it: its first element, and its steps in BYTES, 0 if one element serves all.
struct Reader {
    const char* start = nullptr;
    PerAxis steps{};

    double at(py::ssize_t offset) const {
        double value;
        std::memcpy(&value, start + offset, sizeof value);
        return value;
    }
};

inline Reader reader_of(const Doubles& array) {
    Reader reader{reinterpret_cast<const char*>(array.data()), {}};
    const auto axes = static_cast<std::size_t>(array.ndim());
    for (std::size_t axis = 0; axis < axes; ++axis) {
        const auto from_start = static_cast<py::ssize_t>(axes - 1 - axis);
        if (array.shape(from_start) > 1) reader.steps[axis] = array.strides(from_start);
    }
    return reader;
}

/// Calls `function(const std::array<double, In>&)`, which returns a std::array<double, Out>, for each element
/// while the interpreter is free for other threads.
template <std::size_t Out, std::size_t In, class Function>
void for_each(const std::array<Reader, In>& readers, const std::array<double*, Out>& results,
              const Shape& shape, const Function& function) {
    py::ssize_t rows = 1;
    for (std::size_t axis = 1; axis < shape.axes; ++axis)
        rows *= shape.extents[axis];
    PerAxis index{};
    std::size_t done = 0;
    for (py::ssize_t row = 0; row < rows; ++row) {
        std::array<py::ssize_t, In> offsets{};
        for (std::size_t i = 0; i < In; ++i) {
            for (std::size_t axis = 1; axis < shape.axes; ++axis) {
                offsets[i] += index[axis] * readers[i].steps[axis];
            }
        }
        for (py::ssize_t column = 0; column < shape.extents[0]; ++column, ++done) {
            std::array<double, In> arguments;
            for (std::size_t n = 0; n < In; ++n) {
                arguments[n] = readers[n].at(offsets[n]);
                offsets[n] += readers[n].steps[0];
            }
            const std::array<double, Out> values = function(arguments);
            for (std::size_t n = 0; n < Out; ++n)
                results[n][done] = values[n];
        }
        for (std::size_t axis = 1; axis < shape.axes && ++index[axis] == shape.extents[axis]; ++axis) {
            index[axis] = 0;
        }
    }
}

/// A function of doubles on arguments that broadcast: a float, or a tuple of floats, for scalars, and else
/// arrays of the common shape.
template <std::size_t Out, std::size_t In, class Function>
py::object broadcast(const std::array<Doubles, In>& arguments, const Function& function) {
    const Shape shape = common_shape(arguments);
    const std::vector<py::ssize_t> numpy_shape(shape.extents.rend() - static_cast<std::ptrdiff_t>(shape.axes),
                                               shape.extents.rend());
    std::array<Reader, In> readers;
    for (std::size_t i = 0; i < In; ++i)
        readers[i] = reader_of(arguments[i]);
    std::vector<py::array_t<double>> arrays;
    std::array<double*, Out> results;
    for (std::size_t i = 0; i < Out; ++i) {
        arrays.emplace_back(numpy_shape);
        results[i] = arrays.back().mutable_data();
    }
    {
        const py::gil_scoped_release free;
        for_each<Out, In>(readers, results, shape, function);
    }
    const auto result = [&](std::size_t i) -> py::object {
        if (shape.axes == 0) return py::float_(*results[i]);
        return arrays[i];
    };
    if constexpr (Out == 1) return result(0);
    py::tuple all(Out);
    for (std::size_t i = 0; i < Out; ++i)
        all[i] = result(i);
    return all;
}

}  // namespace zellap10::python
