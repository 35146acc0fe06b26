#pragma once

#include <vector>

#include <examples/picture.h>
#include <examples/route.h>
#include <zellap10/zellap10.h>

/// Draws what a navigator plots on a chart: each position goes through the record's wpxy, and through nothing
/// else, to its place on the picture.

/// The part of a chart that a picture shows.
struct View {
    Picture& picture;
    int left = 0;  ///< chart column of the picture's first
    int top = 0;
    int factor = 1;                   ///< chart pixels a picture pixel
    std::vector<PixelRect> excluded;  ///< parts of the chart on which nothing is drawn
    std::vector<PixelRect> included;  ///< where not empty, the only parts on which something is drawn
};

/// Meridians and parallels (red, broken), the outline by its vertices (orange), the reference points (green
/// rings) and a route along its rhumb lines (blue).
void draw_overlay(const View& view, const CGEORec& record, const std::vector<Waypoint>& route);

/// Minutes of arc between the meridians and parallels that are drawn.
int grid_step(const CGEORec& record);
