#include <zellap10/platform/file.h>

#if defined(_WIN32)
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <sys/stat.h>
#endif

namespace {

#if defined(_WIN32)

bool is_regular_file(const char* path) {
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

#else

bool is_regular_file(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

#endif

}  // namespace

bool zellap10::platform::open_for_reading(std::ifstream& stream, const char* path) {
    if (!is_regular_file(path)) return false;
    stream.clear();
    stream.open(path, std::ios::in | std::ios::binary);
    return stream.is_open();
}
