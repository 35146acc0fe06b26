#include "viewer/gpsd.h"

#include <cerrno>
#include <cmath>
#include <csignal>
#include <optional>

#include <gps.h>

namespace viewer {

namespace {

using namespace std::chrono_literals;

constexpr auto kRetry = 2s;
constexpr auto kRecent = 3s;
constexpr auto kSilence = 60s;            // of a connection that may be dead
constexpr int kWaitMicroseconds = 50000;  // so that the thread ends in time
constexpr double kKnotsPerMetrePerSecond = 3600.0 / 1852.0;

struct Address {
    std::string host;
    std::string port = DEFAULT_GPSD_PORT;
};

Address address_of(const std::string& text) {
    Address address;
    const std::size_t bracket = text.find(']');
    const bool is_bare_ipv6 = bracket == std::string::npos && text.find(':') != text.rfind(':');
    const std::size_t colon =
        is_bare_ipv6 ? std::string::npos : text.find(':', bracket == std::string::npos ? 0 : bracket);
    address.host = text.substr(0, colon);
    if (colon != std::string::npos) address.port = text.substr(colon + 1);
    if (bracket != std::string::npos && text[0] == '[') address.host = text.substr(1, bracket - 1);
    return address;
}

std::optional<double> finite(double value, double factor = 1.0) {
    if (!std::isfinite(value)) return std::nullopt;
    return value * factor;
}

// A connection; libgps keeps what was read in a large structure.
class Connection {
public:
    explicit Connection(const Address& address) : data_(std::make_unique<gps_data_t>()) {
        // A failure is in errno, as a number of libgps or of the system.
        if (gps_open(address.host.c_str(), address.port.c_str(), data_.get()) != 0)
            error_ = errno != 0 ? errno : ECONNREFUSED;
        if (error_ == 0) is_open_ = gps_stream(data_.get(), WATCH_ENABLE | WATCH_JSON, nullptr) == 0;
    }
    ~Connection() {
        if (error_ == 0) gps_close(data_.get());
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool is_open() const { return is_open_; }
    std::string state() const { return error_ == 0 ? "waiting for a fix" : gps_errstr(error_); }

    /// Reads one message; false if none comes within the wait, and then is_open() is false if none will.
    bool read() {
        if (!gps_waiting(data_.get(), kWaitMicroseconds)) return false;
        is_open_ = gps_read(data_.get(), nullptr, 0) >= 0;
        return is_open_;
    }

    /// The fix of the last message, if it has one.
    std::optional<Fix> fix() {
        const gps_fix_t& from = data_->fix;
        const auto has = [this](gps_mask_t mask) { return (data_->set & mask) != 0; };
        if (has(ATTITUDE_SET)) {
            heading_ = finite(data_->attitude.heading);
            heading_time_ = FixFeed::Clock::now();
        }
        if (!has(LATLON_SET) || from.mode < MODE_2D) return std::nullopt;
        if (!std::isfinite(from.latitude) || !std::isfinite(from.longitude)) return std::nullopt;
        Fix fix;
        fix.position = {from.latitude, from.longitude};
        if (has(TIME_SET))
            fix.time = static_cast<double>(from.time.tv_sec) + 1e-9 * static_cast<double>(from.time.tv_nsec);
        if (has(SPEED_SET)) fix.speed = finite(from.speed, kKnotsPerMetrePerSecond);
        if (has(TRACK_SET)) fix.course = finite(from.track);
        if (FixFeed::Clock::now() - heading_time_ < kRecent) fix.heading = heading_;
        return fix;
    }

private:
    std::unique_ptr<gps_data_t> data_;
    int error_ = 0;
    bool is_open_ = false;
    std::optional<double> heading_;
    FixFeed::Clock::time_point heading_time_;
};

// Writing to a connection that was closed must not end the program.
void block_broken_pipe_signal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

void read_all(const std::string& text, FixFeed& feed) {
    block_broken_pipe_signal();
    const Address address = address_of(text);
    const std::string name = "gpsd at " + text + ": ";
    feed.set_status(name + "connecting");
    do {
        Connection connection(address);
        feed.set_status(name + connection.state());
        if (!connection.is_open()) continue;
        auto heard = FixFeed::Clock::now();
        while (connection.is_open() && FixFeed::Clock::now() - heard < kSilence) {
            if (!feed.wait_for(0s)) return;
            if (!connection.read()) continue;
            heard = FixFeed::Clock::now();
            if (const auto fix = connection.fix()) feed.put({*fix});
        }
        feed.set_status(name + "connection lost");
    } while (feed.wait_for(kRetry));
}

}  // namespace

std::unique_ptr<FixSource> read_gpsd(const std::string& address, std::function<void()> on_news) {
    return std::make_unique<FixSource>([address](FixFeed& feed) { read_all(address, feed); },
                                       std::move(on_news));
}

}  // namespace viewer
