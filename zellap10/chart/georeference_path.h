#pragma once

#include <cstddef>
#include <string>

namespace zellap10::chart {

/// The path of a chart's georeference file: ".GEO" replaces everything from the last dot of the chart's path,
/// even a dot in a folder's name. A dot at the very start does not count.
inline std::string georeference_path(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    return (dot == std::string::npos || dot == 0 ? path : path.substr(0, dot)) + ".GEO";
}

}  // namespace zellap10::chart
