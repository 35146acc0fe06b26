#include "viewer/receivers.h"

#include <exception>

namespace viewer {

void FixFeed::run() {
    try {
        read_(*this);
    } catch (const std::exception& problem) {
        set_status(problem.what());
    }
}

void FixFeed::put(const std::vector<Fix>& fixes, std::int64_t broken_lines) {
    constexpr std::ptrdiff_t kMostFixes = 1000;
    const Lock lock(mutex_);
    news_.broken_lines = broken_lines;
    if (fixes.empty()) return;
    std::vector<Fix>& kept = news_.fixes;
    kept.insert(kept.end(), fixes.begin(), fixes.end());
    const auto surplus = static_cast<std::ptrdiff_t>(kept.size()) - kMostFixes;
    if (surplus > 0) kept.erase(kept.begin(), kept.begin() + surplus);
    news_.status.clear();
    announce(lock);
}

void FixFeed::set_status(const std::string& status) {
    const Lock lock(mutex_);
    news_.status = status;
    announce(lock);
}

FixNews FixFeed::take() {
    const Lock lock(mutex_);
    FixNews taken = news_;
    news_.fixes.clear();
    return taken;
}

}  // namespace viewer
