#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include <zellap10/plotter/diagnosis.h>

/// @file
///
/// The package's exception, and why a chart does not open, in words.

namespace zellap10::python {

/// A chart that cannot be opened or read, with the reason in words; `ChartError` in Python.
struct ChartError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Why a chart does not open; empty if it does.
inline std::optional<std::string> chart_fault(const std::string& path) {
    const auto diagnosis = plotter::diagnose_chart(path);
    return diagnosis ? std::optional<std::string>(diagnosis->text) : std::nullopt;
}

/// Why a chart has no georeference; empty if it has one.
inline std::optional<std::string> georeference_fault(const std::string& path) {
    const auto diagnosis = plotter::diagnose_georeference(path);
    return diagnosis ? std::optional<std::string>(diagnosis->text) : std::nullopt;
}

}  // namespace zellap10::python
