#pragma once

#include <vector>

#include <samples/sheet.h>

/// What the charts of the English Channel share.
namespace samples {

/// A sheet with the coast file, the colours and the places of the Channel, all else still to be set.
Sheet channel_sheet();

}  // namespace samples
