#include <viewer/receivers.h>

namespace viewer {

// The other build of this function keeps the callback.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
std::unique_ptr<FixSource> read_gpsd(const std::string& /*address*/, std::function<void()> /*on_news*/) {
    return nullptr;
}

}  // namespace viewer
