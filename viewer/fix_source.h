#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <viewer/background_task.h>
#include <viewer/fix.h>

namespace viewer {

/// What a receiver sent.
struct FixNews {
    std::vector<Fix> fixes;         ///< since the last look, the oldest first; the newest 1000 at most
    std::string status;             ///< why no fixes come; empty if they do
    std::int64_t broken_lines = 0;  ///< since the start
};

/// What the thread of a receiver and the others share.
class FixFeed {
public:
    using Clock = std::chrono::steady_clock;

    explicit FixFeed(std::function<void()> on_news) : on_news_(std::move(on_news)) {}

    void put(const std::vector<Fix>& fixes, std::int64_t broken_lines = 0);
    void set_status(const std::string& status);

    /// Waits until then; returns false at once if the thread must end.
    bool wait_until(Clock::time_point time);
    bool wait_for(Clock::duration duration) { return wait_until(Clock::now() + duration); }

    FixNews take();
    void end();  ///< on_news is not called after it

private:
    std::mutex mutex_;  // of all below
    std::condition_variable changed_;
    std::function<void()> on_news_;
    FixNews news_;
    bool ending_ = false;
};

/// A receiver that is read in a thread of its own.
class FixSource {
public:
    /// @param run      reads the receiver until a wait of the feed returns false
    /// @param on_news  called by the thread for a new fix or status; must not call this object
    FixSource(std::function<void(FixFeed&)> run, std::function<void()> on_news);

    ~FixSource() { feed_->end(); }
    FixSource(const FixSource&) = delete;
    FixSource& operator=(const FixSource&) = delete;

    FixNews take() { return feed_->take(); }

private:
    std::shared_ptr<FixFeed> feed_;
    BackgroundTask task_;
};

}  // namespace viewer
