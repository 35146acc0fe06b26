#include "viewer/open_charts.h"

#include <algorithm>

namespace viewer {

CZellap* OpenCharts::open(const std::string& path) {
    const auto has_path = [&](const Entry& entry) { return entry.path == path; };
    const auto found = std::find_if(by_use_.begin(), by_use_.end(), has_path);
    if (found != by_use_.end()) {
        by_use_.splice(by_use_.begin(), by_use_, found);
        return found->chart.get();
    }
    auto chart = std::make_unique<CZellap>();
    if (!chart->OpenZellap(path.c_str(), 0)) return nullptr;
    if (by_use_.size() == most_) by_use_.pop_back();
    by_use_.push_front({path, std::move(chart)});
    return by_use_.front().chart.get();
}

}  // namespace viewer
