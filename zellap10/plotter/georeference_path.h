#pragma once

#include <string>

namespace zellap10::plotter {

/// The path at which a chart's georeference file stands.
inline std::string georeference_path(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    return (dot == std::string::npos || dot == 0 ? path : path.substr(0, dot)) + ".GEO";
}

}  // namespace zellap10::plotter
