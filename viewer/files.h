#pragma once

#include <string>
#include <string_view>

namespace viewer {

/// A folder of the user's own, by the rules of desktops (XDG).
///
/// @param key   such as "PICTURES"
/// @param name  of the folder in the home folder if the desktop has not named another, such as "Pictures"
/// @return      the path; the home folder, or the present one, if there is none
std::string user_folder(const std::string& key, const std::string& name);

/// The path of a new file in a folder: STEM-1, STEM-2 and so on with an extension such as ".png".
std::string free_path(const std::string& folder, const std::string& stem, const std::string& extension);

/// Writes a file: a new one beside it, flushed to the disk, which then takes its name. A file of that name
/// stays as it was if anything fails. A link to a file stays, and the file is replaced; a dangling link is
/// replaced.
///
/// @return  why it failed; empty on success
std::string save_file(const std::string& path, std::string_view bytes);

}  // namespace viewer
