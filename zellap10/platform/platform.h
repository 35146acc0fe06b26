#pragma once

/// @file
///
/// The framework types and the palette object, as the rest of the library and its users include them.

#include <zellap10/platform/export.h>
#include <zellap10/platform/palette.h>
#include <zellap10/platform/types.h>
