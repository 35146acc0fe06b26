#pragma once

namespace zellap10::plotter {

/// Metres in a nautical mile.
constexpr double kMetresOfMile = 1852.0;

}  // namespace zellap10::plotter
