#include "viewer/fix_source.h"

#include <exception>
#include <utility>

namespace viewer {

namespace {

constexpr std::ptrdiff_t kMostFixes = 1000;

}  // namespace

void FixFeed::put(const std::vector<Fix>& fixes, std::int64_t broken_lines) {
    const std::lock_guard<std::mutex> lock(mutex_);
    news_.broken_lines = broken_lines;
    if (fixes.empty()) return;
    std::vector<Fix>& kept = news_.fixes;
    kept.insert(kept.end(), fixes.begin(), fixes.end());
    const auto surplus = static_cast<std::ptrdiff_t>(kept.size()) - kMostFixes;
    if (surplus > 0) kept.erase(kept.begin(), kept.begin() + surplus);
    news_.status.clear();
    if (!ending_ && on_news_) on_news_();
}

void FixFeed::set_status(const std::string& status) {
    const std::lock_guard<std::mutex> lock(mutex_);
    news_.status = status;
    if (!ending_ && on_news_) on_news_();
}

bool FixFeed::wait_until(Clock::time_point time) {
    std::unique_lock<std::mutex> lock(mutex_);
    return !changed_.wait_until(lock, time, [this] { return ending_; });
}

FixNews FixFeed::take() {
    const std::lock_guard<std::mutex> lock(mutex_);
    FixNews taken = news_;
    news_.fixes.clear();
    return taken;
}

void FixFeed::end() {
    const std::lock_guard<std::mutex> lock(mutex_);
    ending_ = true;
    changed_.notify_all();
}

FixSource::FixSource(std::function<void(FixFeed&)> run, std::function<void()> on_news)
    : feed_(std::make_shared<FixFeed>(std::move(on_news))), task_([feed = feed_, run = std::move(run)] {
          try {
              run(*feed);
          } catch (const std::exception& problem) {
              feed->set_status(problem.what());
          }
      }) {}

}  // namespace viewer
