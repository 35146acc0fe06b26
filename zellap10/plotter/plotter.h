#pragma once

/// @file
///
/// What a plotter needs on top of the library, in one include.

#include <zellap10/plotter/catalogue.h>
#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/map_view.h>
#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/parse_position.h>
#include <zellap10/plotter/position.h>
#include <zellap10/plotter/route.h>
#include <zellap10/plotter/text.h>
#include <zellap10/plotter/trouble.h>
#include <zellap10/plotter/window.h>
