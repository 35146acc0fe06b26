#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include <viewer/tile.h>
#include <viewer/tile_cache.h>

namespace viewer {

/// Tiles, and the threads that draw them. Every operation may be called from any thread, and none waits for a
/// tile to be drawn.
class TileStore {
public:
    /// Draws a strip.
    ///
    /// @param pixels  receives the strip as one picture of kTileHeight lines, strip.columns * kTileWidth
    /// pixels
    ///                each
    using Draw = std::function<void(const Strip& strip, Argb* pixels)>;

    struct Workers {
        int count = 1;
        std::function<Draw()> make_draw;  ///< called once by each worker, in its own thread
        std::function<void()> on_drawn;   ///< called by a worker when a strip is in the cache
    };

    TileStore(std::size_t bytes, Workers workers);

    /// Waits for the strips that are being drawn; those that only are wanted are dropped.
    ~TileStore();
    TileStore(const TileStore&) = delete;
    TileStore& operator=(const TileStore&) = delete;

    void set_room(std::size_t bytes);

    /// A tile that is there, or null.
    Tile find(const TileKey& key);

    /// Says which strips are to be drawn, the most wanted first. What was wanted before and is not any more
    /// is not drawn, but for what is being drawn already.
    void want(std::vector<Strip> strips);

    /// Whether nothing is wanted and nothing is being drawn.
    bool is_idle();

private:
    void work();
    bool take(Strip& strip);
    void keep(const Strip& strip, const std::vector<Argb>& pixels);

    const Workers workers_;
    std::mutex mutex_;  // of all below but the threads
    std::condition_variable changed_;
    TileCache cache_;
    std::vector<Strip> wanted_;  // the most wanted stands last
    std::vector<Strip> under_way_;
    bool ending_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace viewer
