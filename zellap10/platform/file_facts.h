#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#if defined(__linux__)
#include <sys/stat.h>
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
    namespace fs = std::filesystem;
    try {
        std::error_code error;
        const std::uintmax_t size = fs::file_size(path, error);
        if (error) return std::nullopt;
        const fs::file_time_type written = fs::last_write_time(path, error);
        if (error) return std::nullopt;
        return FileFacts{size, static_cast<std::int64_t>(written.time_since_epoch().count())};
    } catch (const std::system_error&) {
        return std::nullopt;  // the path cannot be converted
    }
#endif
}

}  // namespace zellap10::platform
