#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <zellap10/plotter/background_task.h>
#include <zellap10/plotter/nmea.h>

namespace viewer {

using namespace zellap10::plotter;

/// What a receiver sent.
struct FixNews {
    std::vector<Fix> fixes;         ///< since the last look, the oldest first; the newest 1000 at most
    std::string status;             ///< why no fixes come; empty if they do
    std::int64_t broken_lines = 0;  ///< since the start
};

/// Passes fixes from the thread of a receiver to the others.
class FixFeed : public BackgroundJob {
public:
    /// @param read  reads the receiver until a wait of the feed returns false
    FixFeed(std::function<void(FixFeed&)> read, std::function<void()> on_news)
        : BackgroundJob(std::move(on_news)), read_(std::move(read)) {}

    void run() override;
    void put(const std::vector<Fix>& fixes, std::int64_t broken_lines = 0);
    void set_status(const std::string& status);
    FixNews take();

private:
    std::function<void(FixFeed&)> read_;
    FixNews news_;
};

/// A receiver that is read in a thread of its own.
class FixSource {
public:
    /// @param read     as in FixFeed
    /// @param on_news  called by the thread for a new fix or status; must not call this object
    FixSource(std::function<void(FixFeed&)> read, std::function<void()> on_news)
        : feed_(std::make_shared<FixFeed>(std::move(read), std::move(on_news))), task_(feed_) {}

    FixNews take() { return feed_->take(); }
    void stop() { task_.stop(); }  ///< as BackgroundTask::stop

private:
    std::shared_ptr<FixFeed> feed_;
    BackgroundTask task_;
};

/// Reads the fixes of a gpsd and connects again whenever the connection is lost.
///
/// @param address  HOST or HOST:PORT; an IPv6 address with a port is in brackets. The port is 2947 by default
/// @param on_news  as in FixSource
/// @return         null if the viewer was built without libgps
std::unique_ptr<FixSource> read_gpsd(const std::string& address, std::function<void()> on_news);

/// Reads NMEA 0183 from a file. A regular file is a log: it is replayed by the times of its sentences, and a
/// gap of more than a minute takes a minute. Pipes, devices and the standard input are read as they come.
///
/// @param path     "-" is the standard input
/// @param pace     how many times faster than it was recorded a log is replayed, above 0
/// @param on_news  as in FixSource
std::unique_ptr<FixSource> read_nmea(const std::string& path, double pace, std::function<void()> on_news);

}  // namespace viewer
