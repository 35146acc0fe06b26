#pragma once

/// @file
///
/// Threads that share the parts of a task.

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace zellap10::plotter {

/// Threads that wait for tasks. The calling thread is one of them.
class Team {
public:
    explicit Team(int threads);
    ~Team();
    Team(const Team&) = delete;
    Team& operator=(const Team&) = delete;

    /// Calls `part` once with each number below `count`, and returns when all calls have. They must not
    /// throw.
    void run(int count, const std::function<void(int)>& part);

private:
    void help();
    void take_parts();

    std::mutex mutex_;
    std::condition_variable has_task_;
    std::condition_variable is_done_;
    const std::function<void(int)>* part_ = nullptr;
    int count_ = 0;
    std::atomic<int> next_{0};
    unsigned task_ = 0;
    int helping_ = 0;
    bool stop_ = false;
    std::vector<std::thread> helpers_;
};

}  // namespace zellap10::plotter
