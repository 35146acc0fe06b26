#include "zellap10/chart/line_table.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

namespace zellap10::chart {

namespace {

constexpr unsigned char kEndOfText = 0x1A;
constexpr long kOffsetBytes = 4;
constexpr long kLargestFile = std::numeric_limits<std::int32_t>::max();

// Offsets are signed in the table: one of 2 GiB or more comes out negative, which is outside every file.
std::int32_t big_endian(const unsigned char* bytes) {
    const std::uint32_t value =
        static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
        static_cast<std::uint32_t>(bytes[2]) << 8 | static_cast<std::uint32_t>(bytes[3]);
    return static_cast<std::int32_t>(value);
}

// The file's size, -1 where it has none or is too large for a 32-bit offset.
long size_of(std::FILE* file) {
    if (std::fseek(file, 0, SEEK_END) != 0) return -1;
    const long size = std::ftell(file);
    return size <= kLargestFile ? size : -1;
}

// The byte behind the 0x1A and the one behind that, -1 where the file has no such byte.
int read_bits_per_pixel(std::FILE* file) {
    std::rewind(file);
    unsigned char block[4096];
    for (std::size_t count; (count = std::fread(block, 1, sizeof block, file)) > 0;) {
        const void* end = std::memchr(block, kEndOfText, count);
        if (end == nullptr) continue;
        const auto behind = static_cast<long>(static_cast<const unsigned char*>(end) - block) + 2;
        if (std::fseek(file, behind - static_cast<long>(count), SEEK_CUR) != 0) return -1;
        return std::getc(file);
    }
    return -1;
}

// Reads them as one block and turns its bytes to numbers in place.
int read_offsets(std::FILE* file, long at, int count, std::int32_t* offsets) {
    if (count == 0) return 1;
    const auto size = static_cast<std::size_t>(count);
    if (std::fseek(file, at, SEEK_SET) != 0) return 0;
    if (std::fread(offsets, kOffsetBytes, size, file) != size) return 0;
    for (std::size_t i = 0; i < size; ++i) {
        unsigned char bytes[kOffsetBytes];
        std::memcpy(bytes, offsets + i, sizeof bytes);
        offsets[i] = big_endian(bytes);
    }
    return 1;
}

}  // namespace

int read_binary_part(std::FILE* file, int height, BinaryPart& part) {
    const long size = size_of(file);
    if (size < kOffsetBytes) return 0;
    std::int32_t table = 0;
    if (!read_offsets(file, size - kOffsetBytes, 1, &table)) return 0;
    const int count = std::max(height, 0);
    if (count > 0 && (table < 0 || table > size || count > (size - table) / kOffsetBytes)) return 0;
    const int bits_per_pixel = read_bits_per_pixel(file);
    if (bits_per_pixel < 1 || bits_per_pixel > 7) return 0;

    const auto entries = static_cast<std::size_t>(count) + 1;
    std::unique_ptr<std::int32_t[]> offsets(new (std::nothrow) std::int32_t[entries]);
    if (offsets == nullptr || !read_offsets(file, table, count, offsets.get())) return 0;
    offsets[entries - 1] = table;
    part = {bits_per_pixel, count, std::move(offsets)};
    return 1;
}

}  // namespace zellap10::chart
