#include "viewer/save_file.h"

#include <cerrno>
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
