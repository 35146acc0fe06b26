#pragma once

#include <string>

namespace viewer {

/// A folder of the user's own, by the rules of desktops (XDG).
///
/// @param key   such as "PICTURES"
/// @param name  of the folder in the home folder if the desktop has not named another, such as "Pictures"
/// @return      the path; the home folder, or the present one, if there is none
std::string user_folder(const std::string& key, const std::string& name);

/// The path of a new file in a folder: STEM-1, STEM-2 and so on with an extension such as ".png".
std::string free_path(const std::string& folder, const std::string& stem, const std::string& extension);

}  // namespace viewer
