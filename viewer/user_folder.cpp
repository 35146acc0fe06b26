#include "viewer/user_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace viewer {

namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

}  // namespace

std::string user_folder(const std::string& key, const std::string& name) {
    const std::string home = environment("HOME");
    if (home.empty()) return ".";
    std::string config = environment("XDG_CONFIG_HOME");
    if (config.empty()) config = home + "/.config";

    std::string folder = home + "/" + name;
    const std::string start = "XDG_" + key + "_DIR=\"";
    std::ifstream file(config + "/user-dirs.dirs");
    for (std::string line; std::getline(file, line);) {
        const std::size_t end = line.rfind('"');
        if (line.compare(0, start.size(), start) != 0 || end < start.size()) continue;
        folder = line.substr(start.size(), end - start.size());
        const std::string variable = "$HOME";
        if (folder.compare(0, variable.size(), variable) == 0) folder.replace(0, variable.size(), home);
    }
    std::error_code ignored;
    return std::filesystem::is_directory(folder, ignored) ? folder : home;
}

std::string free_path(const std::string& folder, const std::string& stem, const std::string& extension) {
    for (int i = 1;; ++i) {
        const auto path = std::filesystem::path(folder) / (stem + "-" + std::to_string(i) + extension);
        std::error_code ignored;
        if (!std::filesystem::exists(std::filesystem::symlink_status(path, ignored))) return path.string();
    }
}

}  // namespace viewer
