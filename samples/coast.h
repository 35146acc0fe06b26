#pragma once

#include <string>
#include <vector>

#include <samples/layout.h>

/// Coast lines from the files of samples/coast.
namespace samples {

struct Coast {
    std::vector<std::vector<Position>> land;    ///< closed rings, cut off at the edge of what the file covers
    std::vector<std::vector<Position>> shores;  ///< the same without the cuts, so lines from cut to cut
};

/// Reads a file of rings: one vertex a line, longitude and latitude; an empty line ends a ring; lines that
/// begin with "#" are notes.
///
/// @param covered  what the file covers. An edge along its sides, or along the 180th meridian where the data
///                 cut the islands in two, is no shore.
///
/// Throws std::runtime_error, with the path, for a file that cannot be read or a line that is neither.
Coast read_coast(const std::string& path, const Area& covered);

}  // namespace samples
