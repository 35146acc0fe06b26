#pragma once

#include <string>
#include <string_view>

namespace viewer {

/// Writes a file: a new one beside it, flushed to the disk, which then takes its name. A file of that name
/// stays as it was if anything fails. A link to a file stays, and the file is replaced; a dangling link is
/// replaced.
///
/// @return  why it failed; empty on success
std::string save_file(const std::string& path, std::string_view bytes);

}  // namespace viewer
