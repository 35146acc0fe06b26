#include <cerrno>
#include <cmath>
#include <csignal>
#include <optional>

#include <libgpsmm.h>

#include <viewer/receivers.h>

namespace viewer {

namespace {

using namespace std::chrono_literals;

constexpr auto kRetry = 1s;
constexpr auto kRecent = 3s;
constexpr auto kSilence = 60s;            // of a connection that may be dead
constexpr int kWaitMicroseconds = 50000;  // so that the thread ends in time
constexpr double kKnotsPerMetrePerSecond = 3600.0 / 1852.0;

struct Address {
    std::string host;
    std::string port = DEFAULT_GPSD_PORT;
};

Address address_of(const std::string& text) {
    // Without brackets, more than one colon belongs to an IPv6 address.
    const std::size_t colon = text.rfind(':');
    const bool has_port =
        colon != std::string::npos && colon > 0 && (text.find(':') == colon || text[colon - 1] == ']');
    Address address;
    address.host = has_port ? text.substr(0, colon) : text;
    if (has_port) address.port = text.substr(colon + 1);
    if (address.host.size() > 1 && address.host.front() == '[')
        address.host = address.host.substr(1, address.host.size() - 2);
    return address;
}

struct Heading {
    std::optional<double> value;
    FixFeed::Clock::time_point time;
};

// The fix of a message, if it has one. Headings come in messages of their own.
std::optional<Fix> fix_of(const gps_data_t& data, Heading& heading) {
    const gps_fix_t& from = data.fix;
    const auto value = [&](gps_mask_t mask, double number) {
        return (data.set & mask) != 0 && std::isfinite(number) ? std::optional(number) : std::nullopt;
    };
    const auto now = FixFeed::Clock::now();
    if ((data.set & ATTITUDE_SET) != 0) heading = {value(ATTITUDE_SET, data.attitude.heading), now};
    if (from.mode < MODE_2D || !value(LATLON_SET, from.latitude + from.longitude)) return std::nullopt;
    const auto seconds = static_cast<double>(from.time.tv_sec % 86400);
    return Fix{value(TIME_SET, seconds + 1e-9 * static_cast<double>(from.time.tv_nsec)),
               {from.latitude, from.longitude},
               value(SPEED_SET, from.speed * kKnotsPerMetrePerSecond),
               value(TRACK_SET, from.track),
               now - heading.time < kRecent ? heading.value : std::nullopt};
}

// Returns why it ended.
std::string read_connection(const Address& address, const std::string& name, FixFeed& feed) {
    errno = 0;
    gpsmm connection(address.host.c_str(), address.port.c_str());
    // A failure is in errno, as a number of libgps or of the system.
    if (!connection.is_open()) return gps_errstr(errno != 0 ? errno : ECONNREFUSED);
    bool is_open = connection.stream(WATCH_ENABLE | WATCH_JSON) != nullptr;
    feed.set_status(name + "waiting for a fix");
    Heading heading;
    auto heard = FixFeed::Clock::now();
    while (is_open && feed.wait_for(0s) && FixFeed::Clock::now() - heard < kSilence) {
        if (!connection.waiting(kWaitMicroseconds)) continue;
        heard = FixFeed::Clock::now();
        const gps_data_t* const data = connection.read();
        is_open = data != nullptr;
        const auto fix = is_open ? fix_of(*data, heading) : std::nullopt;
        if (fix) feed.put({*fix});
    }
    return "connection lost";
}

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
        feed.set_status(name + read_connection(address, name, feed));
    } while (feed.wait_for(kRetry));
}

}  // namespace

std::unique_ptr<FixSource> read_gpsd(const std::string& address, std::function<void()> on_news) {
    return std::make_unique<FixSource>([address](FixFeed& feed) { read_all(address, feed); },
                                       std::move(on_news));
}

}  // namespace viewer
