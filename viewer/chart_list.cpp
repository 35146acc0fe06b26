#include "viewer/chart_list.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/plotter/diagnosis.h>
#include <zellap10/plotter/file_stamp.h>

namespace viewer {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::milliseconds kFirstPart{250};
constexpr std::chrono::seconds kBetweenLooks{2};
constexpr int kRest = 20;  // looks at the files take no more than one part in so many of the time

// A file, and how a change of it shows.
struct FileState {
    std::string path;
    bool is_named;  // on the command line, not found in a folder
    FileStamp stamp;

    bool operator==(const FileState& other) const { return path == other.path && stamp == other.stamp; }
};

struct Files {
    std::vector<FileState> states;
    std::vector<std::string> problems;

    bool operator==(const Files& other) const { return states == other.states && problems == other.problems; }
};

bool has_georeference(const FileState& file) {
    return file.stamp.georeference_time != 0;
}

void add_folder(const std::string& folder, Files& files) {
    const auto below = files_below(folder);
    for (const std::string& path : below.paths)
        files.states.push_back({path, false, file_stamp(path)});
    if (below.skipped_folders == 0) return;
    const bool is_all = below.paths.empty() && below.skipped_folders == 1;
    files.problems.push_back(folder + ": " +
                             (is_all ? "The folder cannot be read."
                                     : std::to_string(below.skipped_folders) + " folders cannot be read."));
}

}  // namespace

// What the thread and its owner share.
class ChartLister::Job : public BackgroundJob {
public:
    Job(std::vector<std::string> arguments, std::function<void()> on_change)
        : BackgroundJob(std::move(on_change)), arguments_(std::move(arguments)) {}

    // If memory runs out, the thread ends and the list stays as it is.
    void run() override {
        std::optional<Files> last;
        auto took = Clock::duration::zero();
        do {
            const Clock::time_point start = Clock::now();
            Files files;
            for (const std::string& argument : arguments_) {
                std::error_code ignored;
                if (fs::is_directory(argument, ignored))
                    add_folder(argument, files);
                else
                    files.states.push_back({argument, true, file_stamp(argument)});
            }
            took = Clock::now() - start;
            if (!last || !(files == *last)) list(files);
            last = std::move(files);
        } while (wait_for(std::max<Clock::duration>(kBetweenLooks, kRest * took)));
    }

    std::optional<ChartList> take() {
        const Lock lock(mutex_);
        return std::exchange(newest_, std::nullopt);
    }

private:
    // Reads the files that are new or have changed. Parts of a long list are published as it grows, at times
    // that double, since a catalogue is made anew for each.
    void list(const Files& files) {
        ChartList list;
        list.problems = files.problems;
        Catalogue catalogue = known_catalogue();
        Clock::duration until_next = kFirstPart;
        Clock::time_point next = Clock::now() + until_next;
        for (std::size_t i = 0; i < files.states.size(); ++i) {
            if (!wait_for({})) return;
            add(files.states[i], catalogue, list);
            if (last_catalogue_complete_ || Clock::now() < next) continue;
            publish(list, std::move(catalogue));
            catalogue = known_catalogue();
            for (std::size_t again = 0; again <= i; ++again) {
                if (has_georeference(files.states[again])) catalogue.add_file(files.states[again].path);
            }
            until_next *= 2;
            next = Clock::now() + until_next;
        }
        list.complete = last_catalogue_complete_ = true;
        publish(list, std::move(catalogue));
    }

    Catalogue known_catalogue() const {
        Catalogue catalogue;
        if (last_catalogue_) catalogue.know(*last_catalogue_);
        return catalogue;
    }

    static void add(const FileState& file, Catalogue& catalogue, ChartList& list) {
        if (has_georeference(file) && catalogue.add_file(file.path)) {
            if (list.first.empty()) list.first = file.path;
            return;
        }
        const auto diagnosis = diagnose_chart(file.path);
        if (!diagnosis) list.bare_charts.push_back(file.path);
        // A file in a folder that has nothing of a chart is none.
        const bool is_georeference = zellap10::chart::georeference_path(file.path) == file.path;
        if (diagnosis && (file.is_named || (has_georeference(file) && !is_georeference)))
            list.problems.push_back(file.path + ": " + diagnosis->text);
    }

    void publish(ChartList list, Catalogue catalogue) {
        list.catalogue = last_catalogue_ = std::make_shared<const Catalogue>(std::move(catalogue));
        const Lock lock(mutex_);
        newest_ = std::move(list);
        announce(lock);
    }

    const std::vector<std::string> arguments_;
    std::shared_ptr<const Catalogue> last_catalogue_;
    bool last_catalogue_complete_ = false;
    std::optional<ChartList> newest_;  // under mutex_
};

ChartLister::ChartLister(std::vector<std::string> arguments, std::function<void()> on_change)
    : job_(std::make_shared<Job>(std::move(arguments), std::move(on_change))), task_(job_) {}

std::optional<ChartList> ChartLister::take() {
    return job_->take();
}

}  // namespace viewer
