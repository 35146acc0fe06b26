#pragma once

#include <string>
#include <vector>

#include <samples/layout.h>

/// Coast lines from the files of samples/coast, in WGS 84.
namespace samples {

struct Coast {
    std::vector<std::vector<Position>> land;    ///< closed rings, clipped to the area of the file
    std::vector<std::vector<Position>> shores;  ///< their edges without the cuts: lines from cut to cut
};

/// Reads a file of rings. A line has the longitude and latitude of a vertex, an empty line ends a ring, and
/// "#" starts a comment line.
///
/// @param covered  the area that the file covers. An edge along its sides is a cut, not a shore; so is one
///                 along the 180th meridian, at which the data divide islands.
///
/// Throws std::runtime_error with the path if the file cannot be read or has any other line.
Coast read_coast(const std::string& path, const Area& covered);

}  // namespace samples
