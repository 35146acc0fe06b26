// The worker threads of a ChartStore, and what it drops to make room.

#include <algorithm>
#include <new>

#include <zellap10/plotter/chart_store_file.h>
#include <zellap10/plotter/diagnosis.h>

namespace zellap10::plotter {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostOpen = 64;          // chart objects, each with an open file
constexpr int kMostTilesOfJob = 8;             // decoded together, which bounds the memory of a worker
constexpr std::ptrdiff_t kMostSearched = 256;  // requests among which those tiles are looked for
constexpr int kMostWidth = 1 << 24;            // a line of more pixels may take longer than 0.1 s

std::size_t bytes_of(const std::shared_ptr<const Tile>& tile) {
    return tile != nullptr ? tile->pixels.size() * sizeof(Argb) : 0;
}

}  // namespace

// Takes the first request whose file no worker uses, and the requests for the tiles to the right of it.
std::optional<ChartStore::Job> ChartStore::take_job() {
    const auto is_free = [](const Missing& request) { return !request.file->busy; };
    const auto first = std::find_if(queue_.begin(), queue_.end(), is_free);
    if (first == queue_.end()) return std::nullopt;
    const Missing request = *first;
    auto next = queue_.erase(first);
    Job job{request.file, std::nullopt};
    if (!request.tile) return job;
    job.tiles = TileRow{request.tile->level, request.tile->row, request.tile->column, 1};
    std::ptrdiff_t searched = 0;
    while (next != queue_.end() && job.tiles->count < kMostTilesOfJob && searched++ < kMostSearched) {
        const bool is_next = next->file == job.file && next->tile &&
                             next->tile->level == request.tile->level &&
                             next->tile->row == request.tile->row &&
                             next->tile->column == request.tile->column + job.tiles->count;
        job.tiles->count += is_next ? 1 : 0;
        next = is_next ? queue_.erase(next) : next + 1;
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
        if (!open(file, lock)) return true;
        const CSize size = level_size(file.opened->size, file.level);
        if (is_new && size.cx <= kTileSide && size.cy <= kTileSide)
            static_cast<void>(decode(file, {file.level, 0, 0, 1}, lock));
        if (is_new) return true;
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
    if (file.opened == nullptr) opened_bytes_ += opened->bytes;
    file.opened = std::move(opened);
    keep_open(file, std::move(object));
    return true;
}

// Waits while the workers pause. False at the end of the store.
bool ChartStore::goes_on() {
    if (is_paused_) {
        Lock lock(mutex_);
        has_resumed_.wait_until(lock, pause_ends_, [this] { return stop_ || !is_paused_; });
    }
    return !stop_;
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
    if (is_inside) tiles = decode_tiles(object, opened->colours, row, [this] { return goes_on(); });
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
        const TileKey key{row.level, row.first_column + i, row.row};
        File::Cached& cached = file.tiles[key];
        auto tile = std::make_shared<const Tile>(std::move(tiles[static_cast<std::size_t>(i)]));
        if (cached.tile == nullptr) cached.place = recent_tiles_.insert(recent_tiles_.begin(), {&file, key});
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
    for (const auto& [key, cached] : file.tiles) {
        if (cached.tile == nullptr) continue;
        bytes_ -= bytes_of(cached.tile);
        recent_tiles_.erase(cached.place);
    }
    file.tiles.clear();
    if (file.opened != nullptr) {
        ++changes_;
        opened_bytes_ -= file.opened->bytes;
    }
    file.opened = nullptr;
    keep_open(file, nullptr);
    file.failure = Failure::kNone;
}

// Drops the tiles that have not been wanted for the longest time.
void ChartStore::make_room() {
    while (bytes_ > most_tile_bytes() && !recent_tiles_.empty()) {
        const Missing oldest = recent_tiles_.back();
        recent_tiles_.pop_back();
        const auto found = oldest.file->tiles.find(*oldest.tile);
        bytes_ -= bytes_of(found->second.tile);
        oldest.file->tiles.erase(found);
    }
}

// Replaces the chart object of a file, and closes those that have not been opened for the longest time.
void ChartStore::keep_open(File& file, std::unique_ptr<CZellap> object) {
    if (file.object != nullptr) open_files_.erase(file.open);
    file.object = nullptr;
    if (object == nullptr) return;
    file.open = open_files_.insert(open_files_.begin(), &file);
    file.object = std::move(object);
    for (auto each = open_files_.end(); open_files_.size() > kMostOpen && each != open_files_.begin();) {
        File& oldest = **--each;
        if (oldest.busy) continue;
        oldest.object = nullptr;
        each = open_files_.erase(each);
    }
}

}  // namespace zellap10::plotter
