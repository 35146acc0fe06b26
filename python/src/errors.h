#pragma once

#include <stdexcept>
#include <string>

/// @file
///
/// The package's exception, and texts of charts for Python.

namespace zellap10::python {

/// A chart that cannot be opened or read, with the reason in words; `ChartError` in Python.
struct ChartError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace zellap10::python
