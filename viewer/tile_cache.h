#pragma once

#include <cstddef>
#include <list>
#include <map>

#include <viewer/tile.h>

namespace viewer {

/// The tiles that were used last, as many as there is room for.
class TileCache {
public:
    explicit TileCache(std::size_t bytes) { set_room(bytes); }

    void set_room(std::size_t bytes);

    /// The tile, which now counts as the one used last, or null.
    Tile find(const TileKey& key);

    /// Puts a tile in; the one whose use lies longest back goes where there is no more room.
    void insert(const TileKey& key, Tile tile);

    std::size_t bytes() const { return tiles_.size() * kTileBytes; }

private:
    struct Entry {
        TileKey key;
        Tile tile;
    };
    void shrink();

    std::size_t room_ = 0;     // tiles
    std::list<Entry> by_use_;  // the last used stands first
    std::map<TileKey, std::list<Entry>::iterator> tiles_;
};

}  // namespace viewer
