#include <algorithm>
#include <cerrno>
#include <cmath>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#ifdef _WIN32
#include <io.h>
constexpr int kOpenFlags = O_BINARY;
#else
#include <unistd.h>
constexpr int kOpenFlags = O_NOCTTY | O_CLOEXEC;
#endif

#include <viewer/receivers.h>

namespace viewer {

namespace {

using namespace std::chrono_literals;

constexpr double kLongestGap = 60.0;  // seconds

// An open file; the standard input stays open. Streams of the standard library would wait for a full buffer,
// and hold up the end of the program while one waits.
class Input {
public:
    explicit Input(const std::string& path)
        : file_(path == "-" ? 0 : open(path.c_str(), O_RDONLY | kOpenFlags)) {
        if (file_ < 0) throw std::system_error(errno, std::generic_category(), path);
    }
    ~Input() {
        if (file_ != 0) close(file_);
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    /// Waits for the next bytes; none are the end.
    std::string_view read() {
        errno = 0;
        const auto count = ::read(file_, block_, sizeof block_);
        if (count >= 0) return {block_, static_cast<std::size_t>(count)};
        if (errno == EINTR) return read();
        throw std::system_error(errno, std::generic_category(), "cannot read NMEA 0183");
    }

private:
    int file_;
    char block_[4096] = {};
};

void read_all(const std::string& path, double pace, FixFeed& feed) {
    Input input(path);
    NmeaReader reader;
    std::error_code ignored;
    const bool is_log = path != "-" && std::filesystem::is_regular_file(path, ignored);
    std::optional<double> last;
    auto due = FixFeed::Clock::now();
    while (feed.wait_for(0s)) {
        std::string_view bytes = input.read();
        const bool at_end = bytes.empty();
        if (at_end) bytes = "\n";
        while (!bytes.empty()) {
            const std::size_t length = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
            const std::vector<Fix> fixes = reader.read(bytes.substr(0, length));
            bytes.remove_prefix(length);
            const std::optional<double> time = reader.time_of_day();
            const double gap = last ? std::remainder(*time - *last, 86400.0) : 0.0;
            last = time;
            if (is_log && gap > 0.0) {
                const std::chrono::duration<double> wait(std::min(gap, kLongestGap) / pace);
                due += std::chrono::duration_cast<FixFeed::Clock::duration>(wait);
            }
            if (is_log && !feed.wait_until(due)) return;
            feed.put(fixes, reader.broken_lines());
        }
        if (at_end) return feed.set_status(path + " has ended");
    }
}

}  // namespace

std::unique_ptr<FixSource> read_nmea(const std::string& path, double pace, std::function<void()> on_news) {
    return std::make_unique<FixSource>([path, pace](FixFeed& feed) { read_all(path, pace, feed); },
                                       std::move(on_news));
}

}  // namespace viewer
