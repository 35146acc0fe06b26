#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "harness.h"

// Runs a fuzz target over files, without the fuzzer: each argument is a file, or a folder whose files are run
// in the order of their names. A folder that is not there counts as empty.

namespace {

namespace fs = std::filesystem;

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
        // In a block of its very size, so that a tool that watches memory sees a read behind its end.
        const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
        LLVMFuzzerTestOneInput(data.data(), data.size());
    }
    std::printf("%zu files\n", files.size());
    return files.empty() ? 1 : 0;
}
