#pragma once

#include <samples/canvas.h>
#include <samples/coast.h>
#include <samples/layout.h>
#include <samples/sheet.h>

/// The steps of drawing a sheet. Each draws over the ones before.
namespace samples {

/// The outline of the layout's area, which may have curved sides, moved outward by `outward` pixels.
Line area_outline(const Layout& layout, double outward);

/// The outer edge of the border.
Line frame_outline(const Sheet& sheet, const Layout& layout);

/// The tints around the land, the land and its shore line.
void draw_land(Canvas& canvas, const Sheet& sheet, const Layout& layout, const Coast& coast);

void draw_piers(Canvas& canvas, const Sheet& sheet, const Layout& layout);

void draw_grid(Canvas& canvas, const Sheet& sheet, const Layout& layout);

/// The border with its graduation and figures.
void draw_border(Canvas& canvas, const Sheet& sheet, const Layout& layout);

/// Names, towns and lights.
void draw_places(Canvas& canvas, const Sheet& sheet, const Layout& layout);

/// A compass rose on true north, if the sheet has one.
void draw_rose(Canvas& canvas, const Sheet& sheet, const Layout& layout);

void draw_title(Canvas& canvas, const Sheet& sheet, const Layout& layout);

}  // namespace samples
