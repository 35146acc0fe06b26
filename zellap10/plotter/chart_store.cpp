#include <algorithm>
#include <chrono>
#include <new>
#include <tuple>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/chart_store.h>
#include <zellap10/plotter/diagnosis.h>
#include <zellap10/plotter/file_stamp.h>

namespace zellap10::plotter {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostFiles = 2048;  // kept in files_; their tiles have a limit of their own
constexpr int kMostOpen = 64;             // chart objects, each with an open file
constexpr int kMostTilesOfJob = 8;        // decoded together, which bounds the memory of a worker
constexpr int kMostWidth = 1 << 24;       // a line of more pixels may take longer than 0.1 s
constexpr auto kCheckEvery = std::chrono::seconds(1);

std::size_t bytes_of(const OpenedChart& chart, const TileKey& key) {
    return tile_bytes(level_size(chart.size, key.level), key.column, key.row);
}

std::size_t bytes_of(const std::shared_ptr<const Tile>& tile) {
    return tile != nullptr ? tile->pixels.size() * sizeof(Argb) : 0;
}

}  // namespace

bool operator<(const TileKey& a, const TileKey& b) {
    return std::tie(a.level, a.row, a.column) < std::tie(b.level, b.row, b.column);
}

struct ChartStore::File {
    struct Cached {
        std::shared_ptr<const Tile> tile;  // null while it is only requested
        std::uint64_t used = 0;            // the last drawing that wanted it
    };

    std::string path;
    std::shared_ptr<const OpenedChart> opened;
    std::map<TileKey, Cached> tiles;
    Failure failure = Failure::kNone;
    std::string reason;
    FileStamp stamp;
    Clock::time_point checked;
    std::uint64_t used = 0;       // the last drawing that asked for it
    std::uint64_t requested = 0;  // the last drawing that requested to open or compare it
    bool busy = false;            // a worker uses it; only that worker touches the chart object
    std::unique_ptr<CZellap> object;
};

ChartStore::ChartStore(std::size_t memory_bytes, int workers, std::function<void()> on_more)
    : most_bytes_(memory_bytes), on_more_(std::move(on_more)) {
    for (int i = 0; i < workers; ++i)
        workers_.emplace_back([this] { work(); });
}

ChartStore::~ChartStore() {
    {
        const Lock lock(mutex_);
        stop_ = true;
    }
    has_work_.notify_all();
    for (std::thread& worker : workers_)
        worker.join();
}

void ChartStore::begin() {
    const Lock lock(mutex_);
    ++drawing_;
    requests_.clear();
    wanted_bytes_ = 0;
    if (files_.size() <= kMostFiles) return;
    queue_.clear();
    for (auto each = files_.begin(); each != files_.end();) {
        File& file = *each->second;
        if (file.busy || file.used + 1 >= drawing_) {
            ++each;
            continue;
        }
        forget(file);
        each = files_.erase(each);
    }
}

ChartStore::File& ChartStore::file(const std::string& path) {
    const Lock lock(mutex_);
    auto found = files_.find(path);
    if (found == files_.end()) {
        auto file = std::make_unique<File>();
        file->path = path;
        found = files_.emplace(path, std::move(file)).first;
    }
    found->second->used = drawing_;
    return *found->second;
}

ChartStore::Failure ChartStore::failure(const File& file) {
    const Lock lock(mutex_);
    return file.failure;
}

std::shared_ptr<const OpenedChart> ChartStore::chart(File& file) {
    const Lock lock(mutex_);
    const bool is_open = file.opened != nullptr || file.failure != Failure::kNone;
    if ((!is_open || Clock::now() - file.checked > kCheckEvery) && file.requested != drawing_) {
        file.requested = drawing_;
        requests_.emplace_back(&file, std::nullopt);
    }
    return file.opened;
}

std::shared_ptr<const Tile> ChartStore::tile(File& file, const OpenedChart& opened, const TileKey& key,
                                             bool wanted) {
    const Lock lock(mutex_);
    if (file.opened.get() != &opened) return nullptr;
    const auto found = file.tiles.find(key);
    if (!wanted) return found != file.tiles.end() ? found->second.tile : nullptr;
    File::Cached& cached = found != file.tiles.end() ? found->second : file.tiles[key];
    if (cached.used != drawing_) {
        cached.used = drawing_;
        wanted_bytes_ += bytes_of(opened, key);
        if (cached.tile == nullptr) requests_.emplace_back(&file, key);
    }
    return cached.tile;
}

void ChartStore::end(bool announces) {
    {
        const Lock lock(mutex_);
        // Drops requests for tiles of charts that were forgotten meanwhile. They are requested again later.
        requests_.erase(std::remove_if(requests_.begin(), requests_.end(),
                                       [](const auto& request) {
                                           return request.second && request.first->opened == nullptr;
                                       }),
                        requests_.end());
        // Decoded tiles that were wanted stay. Requests that fit into the rest of the memory are queued.
        std::size_t missing = 0;
        for (const auto& request : requests_)
            missing += request.second ? bytes_of(*request.first->opened, *request.second) : 0;
        const std::size_t present = wanted_bytes_ - std::min(missing, wanted_bytes_);
        std::size_t room = most_bytes_ - std::min(most_bytes_, present);
        queue_.clear();
        for (const auto& request : requests_) {
            const std::size_t bytes = request.second ? bytes_of(*request.first->opened, *request.second) : 0;
            if (bytes > room) continue;
            room -= bytes;
            queue_.push_back(request);
        }
        requests_.clear();
        announces_ = announces;
    }
    has_work_.notify_all();
}

void ChartStore::wait() {
    Lock lock(mutex_);
    is_idle_.wait(lock, [this] { return queue_.empty() && running_ == 0; });
}

std::uint64_t ChartStore::changes() {
    const Lock lock(mutex_);
    return changes_;
}

bool ChartStore::is_too_small() {
    const Lock lock(mutex_);
    return wanted_bytes_ > most_bytes_;
}

std::vector<std::pair<std::string, std::string>> ChartStore::problems() {
    const Lock lock(mutex_);
    std::vector<std::pair<std::string, std::string>> result;
    for (const auto& [path, file] : files_) {
        if (file->failure != Failure::kNone) result.emplace_back(path, file->reason);
    }
    return result;
}

// Takes the first request whose file no worker uses, and the requests for the tiles to the right of it.
std::optional<ChartStore::Job> ChartStore::take_job() {
    const auto is_free = [](const auto& request) { return !request.first->busy; };
    const auto first = std::find_if(queue_.begin(), queue_.end(), is_free);
    if (first == queue_.end()) return std::nullopt;
    Job job{first->first, std::nullopt};
    const std::optional<TileKey> key = first->second;
    queue_.erase(first);
    if (!key) return job;
    job.tiles = TileRow{key->level, key->row, key->column, 1};
    for (auto next = queue_.begin(); next != queue_.end() && job.tiles->count < kMostTilesOfJob;) {
        const bool is_next = next->first == job.file && next->second && next->second->level == key->level &&
                             next->second->row == key->row &&
                             next->second->column == key->column + job.tiles->count;
        if (!is_next) {
            ++next;
            continue;
        }
        ++job.tiles->count;
        next = queue_.erase(next);
    }
    return job;
}

void ChartStore::work() {
    Lock lock(mutex_);
    for (;;) {
        std::optional<Job> job;
        has_work_.wait(lock, [&] { return stop_ || (job = take_job()); });
        if (stop_) return;
        File& file = *job->file;
        file.busy = true;
        ++running_;
        bool has_more = false;
        try {
            has_more = run(*job, lock);
        } catch (const std::bad_alloc&) {
            if (!lock.owns_lock()) lock.lock();
            fail(file, Failure::kMemory, "Memory ran out.");
        }
        file.busy = false;
        --running_;
        const bool announces = has_more && announces_ && on_more_;
        if (has_more) announces_ = false;
        has_work_.notify_all();
        is_idle_.notify_all();
        if (!announces) continue;
        lock.unlock();
        on_more_();
        lock.lock();
    }
}

// The functions with a parameter `lock` are called with the lock held, release it while they work, and return
// with it held. run and decode return whether there is more to draw.
bool ChartStore::run(const Job& job, Lock& lock) {
    File& file = *job.file;
    const bool has_changed = check(file, lock);
    if (file.failure != Failure::kNone) return has_changed;
    if (file.opened == nullptr || file.object == nullptr) {
        const bool is_new = file.opened == nullptr;
        if (!open(file, lock) || is_new) return true;
    }
    return job.tiles ? decode(file, *job.tiles, lock) || has_changed : has_changed;
}

bool ChartStore::check(File& file, Lock& lock) {
    const std::string path = file.path;
    lock.unlock();
    const FileStamp stamp = file_stamp(path);
    lock.lock();
    const bool waits = file.failure == Failure::kMemory && Clock::now() - file.checked <= kCheckEvery;
    const bool is_known = file.opened != nullptr || file.failure != Failure::kNone;
    if (is_known && stamp == file.stamp && (file.failure != Failure::kMemory || waits)) {
        if (!waits) file.checked = Clock::now();
        return false;
    }
    forget(file);
    file.stamp = stamp;
    file.checked = Clock::now();
    return is_known;
}

bool ChartStore::open(File& file, Lock& lock) {
    const std::string path = file.path;
    const std::shared_ptr<const OpenedChart> before = file.opened;
    lock.unlock();
    auto object = std::make_unique<CZellap>();
    std::shared_ptr<const OpenedChart> opened = before;
    std::string reason;
    if (object->OpenZellap(path.c_str(), 0) == 0) {
        const std::optional<Diagnosis> diagnosis = diagnose_chart(path);
        reason = diagnosis ? diagnosis->text : "The chart cannot be opened.";
    } else if (object->GetDocumentSize().cx < 1 || object->GetDocumentSize().cy < 1) {
        reason = "The chart has no pixels.";
    } else if (object->GetDocumentSize().cx > kMostWidth) {
        reason = "The chart is wider than 16777216 pixels.";
    } else if (opened == nullptr) {
        opened = std::make_shared<const OpenedChart>(*object);
    }
    lock.lock();
    if (!reason.empty()) {
        fail(file, Failure::kFile, std::move(reason));
        return false;
    }
    file.opened = std::move(opened);
    file.object = std::move(object);
    close_some(file);
    return true;
}

bool ChartStore::decode(File& file, const TileRow& row, Lock& lock) {
    CZellap& object = *file.object;
    const std::shared_ptr<const OpenedChart> opened = file.opened;
    lock.unlock();
    const CSize size = level_size(opened->size, row.level);
    const bool is_inside = (row.first_column + row.count - 1) * kTileSide < size.cx &&
                           row.row * kTileSide < size.cy && object.GetDocumentSize().cx == opened->size.cx &&
                           object.GetDocumentSize().cy == opened->size.cy;
    std::vector<Tile> tiles;
    if (is_inside) tiles = decode_tiles(object, opened->colours, row, stop_);
    const bool is_same = file_stamp(file.path) == file.stamp;
    lock.lock();
    if (stop_) return false;
    if (!is_same) {
        forget(file);
        return true;
    }
    if (tiles.empty()) {
        fail(file, Failure::kFile, "A line of the chart cannot be read.");
        return true;
    }
    for (int i = 0; i < row.count; ++i) {
        File::Cached& cached = file.tiles[{row.level, row.first_column + i, row.row}];
        auto tile = std::make_shared<const Tile>(std::move(tiles[static_cast<std::size_t>(i)]));
        bytes_ -= bytes_of(cached.tile);
        bytes_ += bytes_of(tile);
        cached.tile = std::move(tile);
        cached.used = std::max(cached.used, drawing_);
        make_room();
    }
    return true;
}

void ChartStore::fail(File& file, Failure failure, std::string reason) {
    forget(file);
    file.failure = failure;
    file.reason = std::move(reason);
}

void ChartStore::forget(File& file) {
    for (const auto& each : file.tiles)
        bytes_ -= bytes_of(each.second.tile);
    file.tiles.clear();
    if (file.opened != nullptr) ++changes_;
    file.opened = nullptr;
    file.object = nullptr;
    file.failure = Failure::kNone;
}

// Drops the tiles that have not been wanted for the longest time.
void ChartStore::make_room() {
    while (bytes_ > most_bytes_) {
        File* oldest_file = nullptr;
        std::map<TileKey, File::Cached>::iterator oldest;
        for (const auto& [path, file] : files_) {
            for (auto each = file->tiles.begin(); each != file->tiles.end(); ++each) {
                if (each->second.tile == nullptr) continue;
                // cppcheck-suppress eraseDereference ; nothing is erased before the search ends
                if (oldest_file != nullptr && each->second.used >= oldest->second.used) continue;
                oldest_file = file.get();
                oldest = each;
            }
        }
        if (oldest_file == nullptr) return;
        bytes_ -= bytes_of(oldest->second.tile);
        oldest_file->tiles.erase(oldest);
    }
}

void ChartStore::close_some(const File& kept) {
    int open = 0;
    for (const auto& each : files_)
        open += each.second->object != nullptr ? 1 : 0;
    while (open > kMostOpen) {
        File* oldest = nullptr;
        for (const auto& [path, file] : files_) {
            if (file->object == nullptr || file->busy || file.get() == &kept) continue;
            if (oldest == nullptr || file->used < oldest->used) oldest = file.get();
        }
        if (oldest == nullptr) return;
        oldest->object = nullptr;
        --open;
    }
}

}  // namespace zellap10::plotter
