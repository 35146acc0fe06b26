#include "viewer/tile_cache.h"

#include <utility>

namespace viewer {

void TileCache::set_room(std::size_t bytes) {
    room_ = bytes / kTileBytes;
    shrink();
}

Tile TileCache::find(const TileKey& key) {
    const auto found = tiles_.find(key);
    if (found == tiles_.end()) return nullptr;
    by_use_.splice(by_use_.begin(), by_use_, found->second);
    return found->second->tile;
}

void TileCache::insert(const TileKey& key, Tile tile) {
    const auto found = tiles_.find(key);
    if (found != tiles_.end()) {
        found->second->tile = std::move(tile);
        return;
    }
    by_use_.push_front({key, std::move(tile)});
    tiles_[key] = by_use_.begin();
    shrink();
}

void TileCache::shrink() {
    while (tiles_.size() > room_) {
        tiles_.erase(by_use_.back().key);
        by_use_.pop_back();
    }
}

}  // namespace viewer
