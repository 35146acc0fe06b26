#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include <zellap10/plotter/outline.h>

namespace zellap10::plotter {

/// Numbered extents in a grid of latitude and longitude, so that a query looks only at those nearby.
class ExtentIndex {
public:
    /// Adds the extent of the next number, from 0 up.
    void add(const Extent& extent);

    /// The numbers of the extents that may overlap one, each once, in order. Others may be among them.
    [[nodiscard]] std::vector<std::size_t> candidates(const Extent& extent) const;

private:
    std::unordered_map<int, std::vector<std::size_t>> cells_;
    std::vector<std::size_t> large_;  // in too many cells
    std::size_t count_ = 0;
};

}  // namespace zellap10::plotter
