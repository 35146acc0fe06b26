#include <zellap10/plotter/team.h>

namespace zellap10::plotter {

Team::Team(int threads) {
    for (int i = 1; i < threads; ++i)
        helpers_.emplace_back([this] { help(); });
}

Team::~Team() {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        stop_ = true;
    }
    has_task_.notify_all();
    for (std::thread& helper : helpers_)
        helper.join();
}

void Team::run(int count, const std::function<void(int)>& part) {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        part_ = &part;
        count_ = count;
        next_ = 0;
        ++task_;
        helping_ = static_cast<int>(helpers_.size());
    }
    has_task_.notify_all();
    take_parts();
    std::unique_lock<std::mutex> lock(mutex_);
    is_done_.wait(lock, [this] { return helping_ == 0; });
}

void Team::help() {
    unsigned done = 0;
    for (;;) {
        {
            std::unique_lock<std::mutex> lock(mutex_);
            has_task_.wait(lock, [&] { return stop_ || task_ != done; });
            if (stop_) return;
            done = task_;
        }
        take_parts();
        const std::lock_guard<std::mutex> lock(mutex_);
        if (--helping_ == 0) is_done_.notify_one();
    }
}

void Team::take_parts() {
    for (int i = next_++; i < count_; i = next_++)
        (*part_)(i);
}

}  // namespace zellap10::plotter
