#pragma once

#include <vector>

#include <examples/image.h>
#include <examples/route.h>

/// Draws what a navigator plots on a chart: meridians and parallels (red, broken), the outline by its
/// vertices (orange), the reference points (green rings) and a route along its rhumb lines (blue). Each
/// position goes through a record's transform to its place, so that a wrong transform shows.
///
/// What is plotted on the chart stays off its insets, and what is plotted on an inset stays inside it.
void draw_overlay(Image& image, const CGEORec& base, const std::vector<Waypoint>& route);

/// Minutes of arc between the meridians and parallels that are drawn.
double grid_step(const CGEORec& record);
