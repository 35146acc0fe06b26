#include "harness.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <memory>
#include <random>
#include <system_error>

namespace fuzz {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

class Folder {
public:
    Folder() : path_(std::filesystem::temp_directory_path() / unique_name()) {
        std::filesystem::create_directories(path_);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::string file(const char* name) const { return (path_ / name).string(); }

private:
    static std::string unique_name() {
        std::random_device random;
        return "zellap10_fuzz_" + std::to_string(random()) + "_" + std::to_string(random());
    }

    std::filesystem::path path_;
};

// Written and never read; volatile, so that nothing that leads here can be left out.
volatile std::uint64_t kept;

const Folder& folder() {
    static const Folder own;
    return own;
}

// Where the ways of arithmetic part: ends of ranges, poles, seams, and the neighbours of a split.
constexpr double kSpecial[] = {
    0.0,
    -0.0,
    1.0,
    -1.0,
    90.0,
    -90.0,
    180.0,
    -180.0,
    360.0,
    0.5,
    1e-12,
    1e-160,
    -1e-160,
    1e-308,
    5e-324,
    1e160,
    -1e160,
    1e308,
    -1e308,
    2147483647.0,
    -2147483648.0,
    4294967296.0,
    std::numeric_limits<double>::max(),
    std::numeric_limits<double>::lowest(),
    std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::quiet_NaN(),
    1.5707963267948966,
    3.14159265359,
    270.0,
    89.99999999999,
    179.9999999,
};

}  // namespace

void must(bool holds, const char* message) {
    if (holds) return;
    std::fprintf(stderr, "\nMUST HOLD: %s\n", message);
    std::abort();
}

int Input::around(int low, int high) {
    const auto raw = take<std::int32_t>();
    if ((raw & 7) == 7 || high < low) return raw;
    const std::int64_t count = static_cast<std::int64_t>(high) - low + 1;
    return static_cast<int>(low + ((static_cast<std::int64_t>(raw) & 0x7FFFFFFF) >> 3) % count);
}

double Input::real() {
    constexpr int kSpecialCount = sizeof kSpecial / sizeof *kSpecial;
    const int kind = take<std::uint8_t>();
    if (kind < kSpecialCount) return kSpecial[kind];
    if (kind < 96) return take<double>();
    if (kind < 160) return take<std::int32_t>() / 10000000.0;  // degrees, and some beyond
    if (kind < 208) return take<std::int16_t>();
    return take<std::int32_t>() * (kind < 232 ? 0.01 : 1.0);
}

Input Input::part(std::size_t count) {
    const Input front(data_, std::min(count, size_));
    drop(front.size_);
    return front;
}

Kept::~Kept() {
    kept = sum_;
}

void Kept::bytes(const void* data, std::size_t size) {
    const auto* at = static_cast<const unsigned char*>(data);
    for (std::size_t i = 0; i < size; ++i) {
        // A branch on each byte: what is not initialised is reported here, not somewhere behind.
        if (at[i] == 0) ++sum_;
        sum_ = (sum_ << 7 | sum_ >> 57) ^ at[i];
    }
}

std::string write_file(const char* name, const std::string& bytes) {
    const std::string path = folder().file(name);
    // A new file each time: a file system may put one that is written over on its disk at once.
    remove_file(name);
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "wb"));
    must(file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size(),
         "an input can be written to a file");
    return path;
}

void remove_file(const char* name) {
    std::error_code ignored;
    std::filesystem::remove(folder().file(name), ignored);
}

}  // namespace fuzz
