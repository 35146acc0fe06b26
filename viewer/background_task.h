#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <utility>

namespace viewer {

/// A function that runs in a thread of its own.
///
/// The destructor waits 0.15 s for the function to return. A thread that the system holds longer, as in a
/// look-up of a host's name, ends by itself later; so the function owns or shares all that it uses.
class BackgroundTask {
public:
    explicit BackgroundTask(std::function<void()> run) {
        std::packaged_task<void()> task(std::move(run));
        ended_ = task.get_future();
        thread_ = std::thread(std::move(task));
    }
    ~BackgroundTask() {
        if (ended_.wait_for(std::chrono::milliseconds(150)) == std::future_status::ready) {
            thread_.join();
        } else {
            thread_.detach();
        }
    }
    BackgroundTask(const BackgroundTask&) = delete;
    BackgroundTask& operator=(const BackgroundTask&) = delete;

private:
    std::future<void> ended_;
    std::thread thread_;
};

}  // namespace viewer
