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

/// Reads NMEA 0183 from a file. A regular file is a log: it is replayed by the times of its sentences, and a
/// gap of more than a minute takes a minute. Pipes, devices and the standard input are read as they come.
///
/// @param path     "-" is the standard input
/// @param pace     how many times faster than it was recorded a log is replayed, above 0
/// @param on_news  as in FixSource
std::unique_ptr<FixSource> read_nmea(const std::string& path, double pace, std::function<void()> on_news);

}  // namespace viewer
