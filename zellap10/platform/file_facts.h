#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#if defined(__linux__)
#include <sys/stat.h>
#else
#include <zellap10/platform/path_text.h>
#endif

namespace zellap10::platform {

/// Size and time of a file.
struct FileFacts {
    std::uint64_t size;
    std::int64_t time;  ///< of the last change, in a unit and from an epoch of the system
};

/// The facts of a file; empty if it cannot be looked at. On Linux this takes one system call.
inline std::optional<FileFacts> file_facts(const std::string& path) {
#if defined(__linux__)
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileFacts{static_cast<std::uint64_t>(status.st_size),
                     std::int64_t{status.st_mtim.tv_sec} * 1000000000 + status.st_mtim.tv_nsec};
#else
    const std::filesystem::path native = path_of(path);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(native, error);
    if (error) return std::nullopt;
    const std::filesystem::file_time_type written = std::filesystem::last_write_time(native, error);
    if (error) return std::nullopt;
    return FileFacts{size, static_cast<std::int64_t>(written.time_since_epoch().count())};
#endif
}

}  // namespace zellap10::platform
