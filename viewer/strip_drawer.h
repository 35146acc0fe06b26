#pragma once

#include <string>
#include <vector>

#include <viewer/tile_store.h>

namespace viewer {

/// What draws strips of charts. It has chart objects of its own and keeps a few of them open, so that it is
/// for one thread. A chart that cannot be opened, or a line of it that cannot be read, is grey.
///
/// @param paths  the charts, in the order of Layer::chart
TileStore::Draw strip_drawer(std::vector<std::string> paths);

}  // namespace viewer
