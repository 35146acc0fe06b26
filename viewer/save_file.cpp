#include "viewer/save_file.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace viewer {

namespace fs = std::filesystem;

namespace {

// 0, or the number of the error.
int write_all(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return fsync(file) == 0 ? 0 : errno;
}

int write_new(const std::string& path, std::string_view bytes) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) return errno;
    int error = write_all(file, bytes);
    if (close(file) != 0 && error == 0) error = errno;
    if (error != 0) unlink(path.c_str());
    return error;
}

}  // namespace

std::string save_file(const std::string& path, std::string_view bytes) {
    std::error_code error;
    fs::path target = fs::canonical(path, error);
    if (error) target = path;
    const fs::file_status status = fs::status(target, error);
    if (fs::exists(status) && !fs::is_regular_file(status))
        return "cannot save " + path + ": no regular file";

    const std::string fresh = target.string() + ".new" + std::to_string(getpid());
    error.assign(write_new(fresh, bytes), std::generic_category());
    if (error) return "cannot save " + path + ": " + error.message();
    if (fs::exists(status)) fs::permissions(fresh, status.permissions(), error);
    fs::rename(fresh, target, error);
    if (!error) return {};
    unlink(fresh.c_str());
    return "cannot save " + path + ": " + error.message();
}

}  // namespace viewer
