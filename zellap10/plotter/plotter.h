#pragma once

/// @file
///
/// All headers of the plotter target in one include.

#include <zellap10/plotter/catalogue.h>
#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/diagnosis.h>
#include <zellap10/plotter/georeference.h>
#include <zellap10/plotter/map_view.h>
#include <zellap10/plotter/nmea.h>
#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/parse_position.h>
#include <zellap10/plotter/pixel_outline.h>
#include <zellap10/plotter/position.h>
#include <zellap10/plotter/printed_sheet.h>
#include <zellap10/plotter/progress.h>
#include <zellap10/plotter/quilt.h>
#include <zellap10/plotter/route.h>
#include <zellap10/plotter/sheet.h>
#include <zellap10/plotter/text.h>
#include <zellap10/plotter/track.h>
#include <zellap10/plotter/viewport.h>
