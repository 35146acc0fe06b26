#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace zellap10::plotter {

/// What a thread works on. The thread and its owner share it, since the thread may outlive the owner.
class BackgroundJob {
public:
    using Clock = std::chrono::steady_clock;

    /// @param on_change  called by the thread when there is something new; may be empty
    explicit BackgroundJob(std::function<void()> on_change) : on_change_(std::move(on_change)) {}
    virtual ~BackgroundJob() = default;
    BackgroundJob(const BackgroundJob&) = delete;
    BackgroundJob& operator=(const BackgroundJob&) = delete;

    /// Runs in the thread, until a wait returns false.
    virtual void run() = 0;

    /// Waits until then; returns false at once if the thread must end.
    bool wait_until(Clock::time_point time) {
        Lock lock(mutex_);
        return !changed_.wait_until(lock, time, [this] { return ending_; });
    }
    bool wait_for(Clock::duration duration) { return wait_until(Clock::now() + duration); }

    /// Ends the waits. on_change is not called after it.
    void end() {
        const Lock lock(mutex_);
        ending_ = true;
        on_change_ = nullptr;
        changed_.notify_all();
    }

protected:
    using Lock = std::unique_lock<std::mutex>;

    void announce([[maybe_unused]] const Lock& lock) const {
        if (on_change_) on_change_();
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    bool ending_ = false;

private:
    std::function<void()> on_change_;
};

/// The thread of a job. The destructor waits until 0.15 s after the first `stop`. A thread that the system
/// holds longer, as in a look-up of a host's name, ends by itself later.
class BackgroundTask {
public:
    explicit BackgroundTask(std::shared_ptr<BackgroundJob> job) : job_(std::move(job)) {
        std::packaged_task<void()> task([job = job_] { job->run(); });
        ended_ = task.get_future();
        thread_ = std::thread(std::move(task));
    }
    ~BackgroundTask() {
        stop();
        if (ended_.wait_until(deadline_) == std::future_status::ready) {
            thread_.join();
        } else {
            thread_.detach();
        }
    }
    BackgroundTask(const BackgroundTask&) = delete;
    BackgroundTask& operator=(const BackgroundTask&) = delete;

    /// Asks the thread to end and does not wait for it, so that several can end at the same time.
    void stop() {
        job_->end();
        deadline_ = std::min(deadline_, BackgroundJob::Clock::now() + std::chrono::milliseconds(150));
    }

private:
    std::shared_ptr<BackgroundJob> job_;
    BackgroundJob::Clock::time_point deadline_ = BackgroundJob::Clock::time_point::max();
    std::future<void> ended_;
    std::thread thread_;
};

}  // namespace zellap10::plotter
