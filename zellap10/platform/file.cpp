#include "zellap10/platform/file.h"

#if defined(_WIN32)
#include <zellap10/platform/path_text.h>
#else
#include <sys/stat.h>
#endif

namespace {

#if defined(_WIN32)

// The attributes of a path do not suffice: devices such as CON have those of a plain file. An open without
// access reads nothing and so never waits.
bool is_regular_file(const char* path) {
    using namespace zellap10::platform;
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(to_wide(path, code_page_of_paths()).c_str(), 0, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    BY_HANDLE_FILE_INFORMATION information = {};
    const bool regular = GetFileType(file) == FILE_TYPE_DISK &&
                         GetFileInformationByHandle(file, &information) != 0 &&
                         (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    CloseHandle(file);
    return regular;
}

#else

bool is_regular_file(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

#endif

}  // namespace

bool zellap10::platform::open_for_reading(std::ifstream& stream, const char* path) {
    if (stream.is_open() || !is_regular_file(path)) return false;
    stream.clear();
    stream.open(path, std::ios::in | std::ios::binary);
    return stream.is_open();
}
