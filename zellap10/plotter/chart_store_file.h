#pragma once

#include <chrono>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/chart_store.h>
#include <zellap10/plotter/file_stamp.h>

namespace zellap10::plotter {

constexpr auto kCheckEvery = std::chrono::seconds(1);  // chart files

struct ChartStore::File {
    struct Cached {
        std::shared_ptr<const Tile> tile;    // null while it is only requested
        std::uint64_t used = 0;              // the last drawing that wanted it
        std::list<Missing>::iterator place;  // in recent_tiles_, with a tile
    };

    std::string path;
    std::shared_ptr<const OpenedChart> opened;
    std::map<TileKey, Cached> tiles;
    Failure failure = Failure::kNone;
    std::string reason;
    FileStamp stamp;
    std::chrono::steady_clock::time_point checked;
    std::uint64_t used = 0;       // the last drawing that asked for it
    std::uint64_t requested = 0;  // the last drawing that requested to open or compare it
    int level = 0;                // see ChartStore::file
    bool busy = false;            // a worker uses it; only that worker touches the chart object
    std::unique_ptr<CZellap> object;
    std::list<File*>::iterator recent;  // in recent_files_
    std::list<File*>::iterator open;    // in open_files_, with a chart object
};

}  // namespace zellap10::plotter
