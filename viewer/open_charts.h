#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>

#include <zellap10/chart/zellap.h>

namespace viewer {

/// The charts that one thread has open: the last ones that it asked for.
class OpenCharts {
public:
    /// @param most  how many stay open, 1 or more
    explicit OpenCharts(std::size_t most) : most_(most) {}

    /// The chart, opened if need be; null where that fails. Good until the next call.
    CZellap* open(const std::string& path);

private:
    struct Entry {
        std::string path;
        std::unique_ptr<CZellap> chart;
    };

    std::size_t most_;
    std::list<Entry> by_use_;  // the last used stands first
};

}  // namespace viewer
