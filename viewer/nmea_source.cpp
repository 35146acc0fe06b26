#include "viewer/nmea_source.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <optional>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <viewer/nmea.h>

namespace viewer {

namespace {

using namespace std::chrono_literals;

constexpr double kLongestGap = 60.0;  // seconds
constexpr int kPollMilliseconds = 50;

// An open file; the standard input stays open.
class Input {
public:
    explicit Input(const std::string& path)
        : descriptor_(path == "-" ? STDIN_FILENO
                                  : open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {
        if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), path);
    }
    ~Input() {
        if (descriptor_ != STDIN_FILENO) close(descriptor_);
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    bool is_log() const {
        struct stat about {};
        return descriptor_ != STDIN_FILENO && fstat(descriptor_, &about) == 0 && S_ISREG(about.st_mode);
    }

    /// The next bytes; none if there are none yet, and nullopt at the end.
    std::optional<std::string_view> read_some() {
        pollfd waiting{descriptor_, POLLIN, 0};
        if (poll(&waiting, 1, kPollMilliseconds) <= 0) return std::string_view();
        const ssize_t count = read(descriptor_, block_, sizeof block_);
        if (count > 0) return std::string_view(block_, static_cast<std::size_t>(count));
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) return std::string_view();
        if (count < 0) throw std::system_error(errno, std::generic_category(), "cannot read NMEA 0183");
        return std::nullopt;
    }

private:
    int descriptor_;
    char block_[4096] = {};
};

void read_all(const std::string& path, double pace, FixFeed& feed) {
    Input input(path);
    NmeaReader reader;
    const bool is_log = input.is_log();
    double time_of_day = std::nan("");
    auto due = FixFeed::Clock::now();
    while (feed.wait_for(0s)) {
        auto bytes = input.read_some();
        if (!bytes) break;
        while (!bytes->empty()) {
            const std::size_t length = std::min(bytes->find('\n'), bytes->size() - 1) + 1;
            const std::vector<Fix> fixes = reader.read(bytes->substr(0, length));
            bytes->remove_prefix(length);
            const double last = time_of_day;
            time_of_day = reader.time_of_day().value_or(last);
            const double gap = std::remainder(time_of_day - last, 86400.0);  // NaN before the second time
            if (is_log && gap > 0.0) {
                const std::chrono::duration<double> wait(std::min(gap, kLongestGap) / pace);
                due += std::chrono::duration_cast<FixFeed::Clock::duration>(wait);
            }
            if (is_log && !feed.wait_until(due)) return;
            feed.put(fixes, reader.broken_lines());
        }
    }
    const std::vector<Fix> fixes = reader.read("\n");
    feed.put(fixes, reader.broken_lines());
    feed.set_status(path + " has ended");
}

}  // namespace

std::unique_ptr<FixSource> read_nmea(const std::string& path, double pace, std::function<void()> on_news) {
    return std::make_unique<FixSource>([path, pace](FixFeed& feed) { read_all(path, pace, feed); },
                                       std::move(on_news));
}

}  // namespace viewer
