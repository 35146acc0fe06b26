#include "viewer/tile_store.h"

#include <algorithm>
#include <utility>

namespace viewer {

namespace {

bool overlap(const Strip& a, const Strip& b) {
    return a.layer.fields() == b.layer.fields() && a.row == b.row &&
           a.first_column < b.first_column + b.columns && b.first_column < a.first_column + a.columns;
}

// Cuts one tile off the picture of a strip.
Tile tile_of(const Argb* pixels, std::size_t pixels_a_line) {
    const std::shared_ptr<Argb[]> tile(new Argb[std::size_t{kTileWidth} * kTileHeight]);
    for (int y = 0; y < kTileHeight; ++y)
        std::copy_n(pixels + static_cast<std::size_t>(y) * pixels_a_line, kTileWidth,
                    tile.get() + std::ptrdiff_t{y} * kTileWidth);
    return tile;
}

}  // namespace

TileStore::TileStore(std::size_t bytes, Workers workers) : workers_(std::move(workers)), cache_(bytes) {
    for (int i = 0; i < workers_.count; ++i)
        threads_.emplace_back([this] { work(); });
}

TileStore::~TileStore() {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        ending_ = true;
        wanted_.clear();
    }
    changed_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

void TileStore::set_room(std::size_t bytes) {
    const std::lock_guard<std::mutex> lock(mutex_);
    cache_.set_room(bytes);
}

Tile TileStore::find(const TileKey& key) {
    const std::lock_guard<std::mutex> lock(mutex_);
    return cache_.find(key);
}

void TileStore::want(std::vector<Strip> strips) {
    std::reverse(strips.begin(), strips.end());
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        wanted_ = std::move(strips);
    }
    changed_.notify_all();
}

bool TileStore::is_idle() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return wanted_.empty() && under_way_.empty();
}

// Takes the most wanted strip off; false where there is none. One that overlaps what is being drawn is passed
// over: when that is there, the rest of it will be wanted again.
bool TileStore::take(Strip& strip) {
    while (!wanted_.empty()) {
        strip = wanted_.back();
        wanted_.pop_back();
        const auto is_under_way = [&](const Strip& other) { return overlap(strip, other); };
        if (std::none_of(under_way_.begin(), under_way_.end(), is_under_way)) {
            under_way_.push_back(strip);
            return true;
        }
    }
    return false;
}

void TileStore::keep(const Strip& strip, const std::vector<Argb>& pixels) {
    const auto columns = static_cast<std::size_t>(strip.columns);
    std::vector<Tile> tiles;
    for (std::size_t i = 0; i < columns; ++i)
        tiles.push_back(tile_of(pixels.data() + i * kTileWidth, columns * kTileWidth));

    const std::lock_guard<std::mutex> lock(mutex_);
    for (std::size_t i = 0; i < columns; ++i)
        cache_.insert({strip.layer, strip.first_column + static_cast<int>(i), strip.row},
                      std::move(tiles[i]));
    const auto is_this = [&](const Strip& other) { return overlap(strip, other); };
    under_way_.erase(std::find_if(under_way_.begin(), under_way_.end(), is_this));
}

void TileStore::work() {
    const Draw draw = workers_.make_draw();
    std::vector<Argb> pixels;
    for (;;) {
        Strip strip;
        {
            std::unique_lock<std::mutex> lock(mutex_);
            bool taken = false;
            changed_.wait(lock, [&] { return (taken = take(strip)) || ending_; });
            if (!taken) return;
        }
        pixels.resize(static_cast<std::size_t>(strip.columns) * kTileWidth * kTileHeight);
        draw(strip, pixels.data());
        keep(strip, pixels);
        workers_.on_drawn();
    }
}

}  // namespace viewer
