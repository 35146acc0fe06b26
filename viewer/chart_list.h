#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <zellap10/plotter/background_task.h>
#include <zellap10/plotter/catalogue.h>

namespace viewer {

using namespace zellap10::plotter;

/// The charts to show.
struct ChartList {
    /// Those with positions; never null.
    std::shared_ptr<const Catalogue> catalogue = std::make_shared<const Catalogue>();
    std::string first;                     ///< path of the first one with positions
    std::vector<std::string> bare_charts;  ///< paths of those without, which can only be shown as printed
    std::vector<std::string> problems;     ///< files and folders that cannot be read, with the reason
    bool complete = false;                 ///< false while files are being read
};

/// Lists charts in a thread of its own, and again when files appear, change or vanish.
class ChartLister {
public:
    /// @param arguments  charts, and folders, of which every chart below is listed
    /// @param on_change  called by the thread when there is a new list; may be empty
    ChartLister(std::vector<std::string> arguments, std::function<void()> on_change);

    /// The newest list, if there is one that was not taken yet.
    std::optional<ChartList> take();

    void stop() { task_.stop(); }  ///< as BackgroundTask::stop

private:
    class Job;

    std::shared_ptr<Job> job_;
    BackgroundTask task_;
};

}  // namespace viewer
