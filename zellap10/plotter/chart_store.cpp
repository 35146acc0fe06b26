#include <algorithm>
#include <tuple>

#include <zellap10/plotter/chart_store_file.h>

namespace zellap10::plotter {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kLongestPause = std::chrono::milliseconds(10);
constexpr std::size_t kMostFiles = 4096;  // kept in files_; their tiles have a limit of their own

std::size_t bytes_of(const OpenedChart& chart, const TileKey& key) {
    return tile_bytes(level_size(chart.size, key.level), key.column, key.row);
}

}  // namespace

bool operator<(const TileKey& a, const TileKey& b) {
    return std::tie(a.level, a.row, a.column) < std::tie(b.level, b.row, b.column);
}

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
    has_resumed_.notify_all();
    for (std::thread& worker : workers_)
        worker.join();
}

void ChartStore::begin() {
    const Lock lock(mutex_);
    ++drawing_;
    requests_.clear();
    wanted_bytes_ = 0;
    drop_files();
}

// Drops files that were not used for the longest time, but none of the last drawing.
void ChartStore::drop_files() {
    const std::uint64_t changes = changes_;
    const auto are_too_many = [this] {
        return files_.size() > kMostFiles || opened_bytes_ > most_bytes_ / 4;
    };
    for (auto each = recent_files_.end(); are_too_many() && each != recent_files_.begin();) {
        File& file = **--each;
        if (file.used + 1 >= drawing_) break;
        if (file.busy) continue;
        queue_.clear();
        forget(file);
        each = recent_files_.erase(each);
        const std::string path = file.path;
        files_.erase(path);
    }
    changes_ = changes;
}

ChartStore::File& ChartStore::file(const std::string& path, int level) {
    const Lock lock(mutex_);
    std::unique_ptr<File>& file = files_[path];
    if (file == nullptr) {
        auto added = std::make_unique<File>();
        added->path = path;
        added->recent = recent_files_.insert(recent_files_.begin(), added.get());
        file = std::move(added);
    }
    recent_files_.splice(recent_files_.begin(), recent_files_, file->recent);
    file->used = drawing_;
    file->level = level;
    return *file;
}

ChartStore::Failure ChartStore::failure(const File& file) {
    const Lock lock(mutex_);
    return file.failure;
}

std::shared_ptr<const OpenedChart> ChartStore::chart(File& file) {
    const Lock lock(mutex_);
    return requested_chart(file) != nullptr ? file.opened : nullptr;
}

const OpenedChart* ChartStore::requested_chart(File& file) {
    const bool is_open = file.opened != nullptr || file.failure != Failure::kNone;
    if ((!is_open || Clock::now() - file.checked > kCheckEvery) && file.requested != drawing_) {
        file.requested = drawing_;
        requests_.push_back({&file, std::nullopt});
    }
    return file.opened.get();
}

std::shared_ptr<const Tile> ChartStore::tile(File& file, const OpenedChart& opened, const TileKey& key,
                                             bool wanted) {
    const Lock lock(mutex_);
    if (file.opened.get() != &opened) return nullptr;
    if (wanted) return requested_tile(file, key);
    const auto found = file.tiles.find(key);
    return found != file.tiles.end() ? found->second.tile : nullptr;
}

const std::shared_ptr<const Tile>& ChartStore::requested_tile(File& file, const TileKey& key) {
    File::Cached& cached = file.tiles[key];
    if (cached.used != drawing_) {
        cached.used = drawing_;
        wanted_bytes_ += bytes_of(*file.opened, key);
        if (cached.tile == nullptr)
            requests_.push_back({&file, key});
        else
            recent_tiles_.splice(recent_tiles_.begin(), recent_tiles_, cached.place);
    }
    return cached.tile;
}

bool ChartStore::is_missing(const std::vector<Missing>& list) {
    const Lock lock(mutex_);
    bool result = true;
    for (const Missing& missing : list) {
        File& file = *missing.file;
        if (file.used != drawing_)
            result = false;
        else if (!missing.tile)
            result = requested_chart(file) == nullptr && file.failure != Failure::kFile && result;
        else
            result = file.opened != nullptr && requested_tile(file, *missing.tile) == nullptr && result;
    }
    return result;
}

void ChartStore::end(bool announces) {
    {
        const Lock lock(mutex_);
        // Drops requests for tiles of charts that were forgotten meanwhile. They are requested again later.
        requests_.erase(std::remove_if(requests_.begin(), requests_.end(),
                                       [](const Missing& request) {
                                           return request.tile && request.file->opened == nullptr;
                                       }),
                        requests_.end());
        // Decoded tiles that were wanted stay. Requests that fit into the rest of the memory are queued.
        const auto bytes_of_request = [](const Missing& request) {
            return request.tile ? bytes_of(*request.file->opened, *request.tile) : 0;
        };
        std::size_t missing = 0;
        for (const Missing& request : requests_)
            missing += bytes_of_request(request);
        const std::size_t present = wanted_bytes_ - std::min(missing, wanted_bytes_);
        std::size_t room = most_tile_bytes() - std::min(most_tile_bytes(), present);
        queue_.clear();
        for (const Missing& request : requests_) {
            const std::size_t bytes = bytes_of_request(request);
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

void ChartStore::pause() {
    const Lock lock(mutex_);
    pause_ends_ = Clock::now() + kLongestPause;
    is_paused_ = true;
}

void ChartStore::resume() {
    {
        const Lock lock(mutex_);
        is_paused_ = false;
    }
    has_resumed_.notify_all();
}

std::uint64_t ChartStore::changes() {
    const Lock lock(mutex_);
    return changes_;
}

bool ChartStore::is_too_small() {
    const Lock lock(mutex_);
    return wanted_bytes_ > most_tile_bytes();
}

// Open charts may take a quarter of the memory, and more if the view shows them.
std::size_t ChartStore::most_tile_bytes() const {
    return most_bytes_ - std::min(opened_bytes_, most_bytes_ / 4);
}

std::vector<std::pair<std::string, std::string>> ChartStore::problems() {
    const Lock lock(mutex_);
    std::vector<std::pair<std::string, std::string>> result;
    for (const auto& [path, file] : files_) {
        if (file->failure != Failure::kNone) result.emplace_back(path, file->reason);
    }
    std::sort(result.begin(), result.end());
    return result;
}

}  // namespace zellap10::plotter
