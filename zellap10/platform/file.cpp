#include "zellap10/platform/file.h"

#include <string>

#if defined(_WIN32)
#include <locale.h>
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <sys/stat.h>
#endif

namespace {

#if defined(_WIN32)

// The path in UTF-16, from the code page that the C library opens files by: UTF-8 if the locale has it,
// otherwise that of the system. Empty if the path has characters that the code page lacks.
std::wstring wide_path(const char* path) {
    const UINT of_system = AreFileApisANSI() != 0 ? CP_ACP : CP_OEMCP;
    const UINT page = ___lc_codepage_func() == CP_UTF8 ? CP_UTF8 : of_system;
    const int length = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, path, -1, nullptr, 0);
    std::wstring wide(length > 0 ? static_cast<std::size_t>(length) : 1, L'\0');
    MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, path, -1, &wide[0], length);
    return wide;
}

// The attributes of a path do not suffice: devices such as CON have those of a plain file. An open without
// access reads nothing and so never waits.
bool is_regular_file(const char* path) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(wide_path(path).c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
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
