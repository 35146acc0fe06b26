#pragma once

#include <functional>
#include <memory>
#include <string>

#include <viewer/fix_source.h>

namespace viewer {

/// Reads the fixes of a gpsd and connects again whenever the connection is lost.
///
/// @param address  HOST or HOST:PORT; an IPv6 address with a port is in brackets. The port is 2947 by default
/// @param on_news  as in FixSource
/// @return         null if the viewer was built without libgps
std::unique_ptr<FixSource> read_gpsd(const std::string& address, std::function<void()> on_news);

}  // namespace viewer
