#pragma once

#include <samples/canvas.h>
#include <samples/coast.h>
#include <samples/layout.h>
#include <samples/sheet.h>

/// The steps of drawing a sheet, in the order in which they cover each other.
namespace samples {

/// The outline of the layout's area, followed along its sides, moved outward by so many pixels.
Line area_outline(const Layout& layout, double outward);

/// The outer edge of the border.
Line frame_outline(const Sheet& sheet, const Layout& layout);

/// Tints around the land, the land and its shore.
void draw_land(Canvas& canvas, const Sheet& sheet, const Layout& layout, const Coast& coast);

/// Piers and breakwaters.
void draw_piers(Canvas& canvas, const Sheet& sheet, const Layout& layout);

/// Meridians and parallels.
void draw_grid(Canvas& canvas, const Sheet& sheet, const Layout& layout);

/// The graduated border with its figures.
void draw_border(Canvas& canvas, const Sheet& sheet, const Layout& layout);

/// Names, towns and lights.
void draw_places(Canvas& canvas, const Sheet& sheet, const Layout& layout);

/// A compass rose on true north, where the sheet has one.
void draw_rose(Canvas& canvas, const Sheet& sheet, const Layout& layout);

void draw_title(Canvas& canvas, const Sheet& sheet, const Layout& layout);

}  // namespace samples
