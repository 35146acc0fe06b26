#pragma once

#include <vector>

#include <viewer/camera.h>
#include <viewer/tile_store.h>

namespace viewer {

/// What of a chart is looked at.
struct Look {
    const Camera& camera;
    int chart;  ///< its place in the list of charts
    ColourScheme light;
};

/// Puts the tiles that are there together to a picture of the camera's window. Where a tile is missing, a
/// part of a coarser one is stretched, and where there is none either, the picture is grey. Outside the chart
/// it is in the background's colour.
///
/// @return  whether no tile was missing
bool put_together(TileStore& tiles, const Look& look, Argb background, const Bitmap& picture);

/// The strips whose tiles are missing, the most wanted first: those in the window from its middle outward,
/// those around it, and the whole chart in the coarsest reduction.
std::vector<Strip> missing_strips(TileStore& tiles, const Look& look);

}  // namespace viewer
