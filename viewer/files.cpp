#include "viewer/files.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace viewer {

namespace fs = std::filesystem;

namespace {

std::string environment(const char* name, const std::string& otherwise) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

// Where the system has no such call, nothing is done.
bool flush_to_disk([[maybe_unused]] const std::string& path) {
#ifdef _WIN32
    return true;
#else
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool is_flushed = file >= 0 && fsync(file) == 0;
    return file >= 0 && close(file) == 0 && is_flushed;
#endif
}

std::error_code write_file(const std::string& path, std::string_view bytes) {
    errno = 0;
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file && flush_to_disk(path)) return {};
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

}  // namespace

std::string user_folder(const std::string& key, const std::string& name) {
    const std::string home = environment("HOME", environment("USERPROFILE", ""));  // the latter on Windows
    if (home.empty()) return ".";
    const std::string config = environment("XDG_CONFIG_HOME", home + "/.config");

    std::string folder = home + "/" + name;
    const std::string start = "XDG_" + key + "_DIR=\"";
    std::ifstream file(config + "/user-dirs.dirs");
    for (std::string line; std::getline(file, line);) {
        const std::size_t end = line.rfind('"');
        if (line.compare(0, start.size(), start) != 0 || end < start.size()) continue;
        folder = line.substr(start.size(), end - start.size());
        if (folder.rfind("$HOME", 0) == 0) folder.replace(0, 5, home);
    }
    std::error_code ignored;
    return fs::is_directory(folder, ignored) ? folder : home;
}

std::string free_path(const std::string& folder, const std::string& stem, const std::string& extension) {
    for (int i = 1;; ++i) {
        const auto path = fs::path(folder) / (stem + "-" + std::to_string(i) + extension);
        std::error_code ignored;
        if (!fs::exists(fs::symlink_status(path, ignored))) return path.string();
    }
}

std::string save_file(const std::string& path, std::string_view bytes) {
    std::error_code error;
    fs::path target = fs::canonical(path, error);
    if (error) target = path;
    const fs::file_status status = fs::status(target, error);
    if (fs::exists(status) && !fs::is_regular_file(status))
        return "cannot save " + path + ": no regular file";

    const std::string fresh = target.string() + "." + std::to_string(std::random_device()()) + ".new";
    error = write_file(fresh, bytes);
    std::error_code ignored;
    if (!error && fs::exists(status)) fs::permissions(fresh, status.permissions(), ignored);
    if (!error) fs::rename(fresh, target, error);
    if (!error) return {};
    fs::remove(fresh, ignored);
    return "cannot save " + path + ": " + error.message();
}

}  // namespace viewer
