#pragma once

#include <vector>

#include <samples/sheet.h>

/// The parts common to the charts of the English Channel.
namespace samples {

/// A sheet with the coast file, the colours and the places of the Channel. The caller sets the rest.
Sheet channel_sheet();

}  // namespace samples
