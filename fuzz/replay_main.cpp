#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "harness.h"

// Runs a fuzz target on files, without the fuzzer. Each argument is a file, or a folder whose files are run
// in the order of their names. A missing folder counts as empty. Each file is run unchanged, then truncated
// and with one byte changed: at every place after the arguments of a small file, and at some places of a
// larger one.

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSmallFile = 180;     // damaged at every place
constexpr std::size_t kPlacesOfLarge = 60;  // in a larger file

void add_files(const fs::path& path, std::vector<fs::path>& files) {
    if (fs::is_regular_file(path)) files.push_back(path);
    if (!fs::is_directory(path)) return;
    std::vector<fs::path> inside;
    for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
        if (entry.is_regular_file()) inside.push_back(entry.path());
    }
    std::sort(inside.begin(), inside.end());
    files.insert(files.end(), inside.begin(), inside.end());
}

void run(const std::string& bytes) {
    // A block of the exact size, so that a memory checker sees a read past its end.
    const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
}

void run_damaged(const std::string& bytes) {
    constexpr int kChanges[] = {0x01, 0x80, 0xFF, 0x04};
    const std::size_t size = bytes.size() - std::min(bytes.size(), fuzz::kArguments);
    const std::size_t step = size <= kSmallFile ? 1 : size / kPlacesOfLarge;
    std::size_t change = 0;
    for (std::size_t at = fuzz::kArguments; at < bytes.size(); at += step) {
        run(bytes.substr(0, at));
        std::string changed = bytes;
        changed[at] = static_cast<char>(changed[at] ^ kChanges[change++ % std::size(kChanges)]);
        run(changed);
    }
}

}  // namespace

int main(int count, char** arguments) {
    std::vector<fs::path> files;
    for (int i = 1; i < count; ++i)
        add_files(arguments[i], files);
    for (const fs::path& file : files) {
        std::printf("%s\n", file.filename().string().c_str());
        std::fflush(stdout);
        std::ifstream stream(file, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        run(bytes);
        run_damaged(bytes);
    }
    std::printf("%zu files\n", files.size());
    return files.empty() ? 1 : 0;
}
