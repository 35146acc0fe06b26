#pragma once

/// @file
///
/// Open charts and their decoded tiles, which worker threads fetch.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include <zellap10/plotter/opened_chart.h>
#include <zellap10/plotter/raster_levels.h>

namespace zellap10::plotter {

/// A tile of a chart: its level, and its place among the tiles of the level.
struct TileKey {
    int level, column, row;
};

bool operator<(const TileKey& a, const TileKey& b);

/// Chart files with their tiles, up to a limit of memory, and the threads that decode them.
///
/// A drawing is: `begin`; any number of `chart` and `tile`, from several threads; `end`, after which the
/// workers fetch what was missing, in the order of the requests.
class ChartStore {
public:
    /// A chart file, open or not. Valid until the second `begin` after the last call of `file` for it.
    struct File;

    /// A chart, or one of its tiles, that a drawing lacked.
    struct Missing {
        File* file;
        std::optional<TileKey> tile;  // empty for the chart itself
    };

    enum class Failure {
        kNone,
        kFile,    ///< until it changes
        kMemory,  ///< for a second
    };

    /// @param on_more  called by a worker once after each `end` with something missing; may be empty
    ChartStore(std::size_t memory_bytes, int workers, std::function<void()> on_more);
    ~ChartStore();
    ChartStore(const ChartStore&) = delete;
    ChartStore& operator=(const ChartStore&) = delete;

    void begin();

    /// @param level  if all of it is one tile, the tile is decoded as soon as the chart is open
    [[nodiscard]] File& file(const std::string& path, int level);
    [[nodiscard]] Failure failure(const File& file);

    /// An open chart; null if it is not open, and then it is opened. Once in a second it is compared with its
    /// file, and forgotten if that has changed.
    [[nodiscard]] std::shared_ptr<const OpenedChart> chart(File& file);

    /// A decoded tile; null if there is none, and if the file has changed since it was opened.
    ///
    /// @param wanted  decode it if it is missing
    [[nodiscard]] std::shared_ptr<const Tile> tile(File& file, const OpenedChart& opened, const TileKey& key,
                                                   bool wanted);

    /// Whether everything in a list is still missing. If so, all of it is requested again.
    [[nodiscard]] bool is_missing(const std::vector<Missing>& list);

    /// Passes the requests since `begin` to the workers, in place of earlier ones.
    ///
    /// @param announces  call on_more when one of them is done
    void end(bool announces);

    /// Waits until all requests are done.
    void wait();

    /// Lets the workers wait until `resume`, for at most 10 ms: to draw is more urgent.
    void pause();
    void resume();

    /// Grows when a chart was forgotten.
    [[nodiscard]] std::uint64_t changes();

    /// Whether the tiles that were wanted since `begin` take more memory than there is.
    [[nodiscard]] bool is_too_small();

    /// Path and reason of each failed file.
    [[nodiscard]] std::vector<std::pair<std::string, std::string>> problems();

private:
    struct Job {
        File* file;
        std::optional<TileRow> tiles;  // empty to open the chart or to compare it with its file
    };
    using Lock = std::unique_lock<std::mutex>;
    using Requests = std::deque<Missing>;

    [[nodiscard]] const OpenedChart* requested_chart(File& file);
    [[nodiscard]] const std::shared_ptr<const Tile>& requested_tile(File& file, const TileKey& key);
    void work();
    [[nodiscard]] bool goes_on();
    [[nodiscard]] std::optional<Job> take_job();
    [[nodiscard]] bool run(const Job& job, Lock& lock);
    [[nodiscard]] bool check(File& file, Lock& lock);
    [[nodiscard]] bool open(File& file, Lock& lock);
    [[nodiscard]] bool decode(File& file, const TileRow& row, Lock& lock);
    void fail(File& file, Failure failure, std::string reason);
    void forget(File& file);
    [[nodiscard]] std::size_t most_tile_bytes() const;
    void make_room();
    void drop_files();
    void keep_open(File& file, std::unique_ptr<CZellap> object);

    const std::size_t most_bytes_;
    const std::function<void()> on_more_;
    std::atomic<bool> stop_{false};
    std::mutex mutex_;
    std::condition_variable has_work_;
    std::condition_variable is_idle_;
    std::condition_variable has_resumed_;
    std::atomic<bool> is_paused_{false};
    std::chrono::steady_clock::time_point pause_ends_;
    std::unordered_map<std::string, std::unique_ptr<File>> files_;
    // Least recently used last.
    std::list<File*> recent_files_;
    std::list<File*> open_files_;
    std::list<Missing> recent_tiles_;
    Requests requests_;             // since begin
    Requests queue_;                // of the workers
    std::size_t bytes_ = 0;         // of all tiles
    std::size_t opened_bytes_ = 0;  // of all open charts
    std::size_t wanted_bytes_ = 0;  // since begin, of tiles decoded or not
    std::uint64_t drawing_ = 0;
    std::uint64_t changes_ = 0;
    int running_ = 0;
    bool announces_ = false;
    std::vector<std::thread> workers_;
};

}  // namespace zellap10::plotter
