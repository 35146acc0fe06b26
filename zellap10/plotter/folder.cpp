#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include <zellap10/platform/path_text.h>
#include <zellap10/plotter/catalogue.h>

namespace zellap10::plotter {

namespace {

namespace fs = std::filesystem;

// Adds the files of a folder, and the folders below it to those that are still to be searched.
bool search(const fs::path& folder, std::vector<std::string>& files, std::vector<fs::path>& folders) {
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_symlink(ignored) && entry->is_directory(ignored)) {
            folders.push_back(entry->path());
            continue;
        }
        if (!entry->is_regular_file(ignored)) continue;
        std::string path = platform::text_of(entry->path());
        if (!path.empty()) files.push_back(std::move(path));  // otherwise the file could not be opened
    }
    return !error;
}

}  // namespace

FolderFiles files_below(const std::string& folder) {
    FolderFiles found;
    std::vector<fs::path> folders{platform::path_of(folder)};
    while (!folders.empty()) {
        const fs::path next = folders.back();
        folders.pop_back();
        if (!search(next, found.paths, folders)) ++found.skipped_folders;
    }
    std::sort(found.paths.begin(), found.paths.end());
    return found;
}

}  // namespace zellap10::plotter
