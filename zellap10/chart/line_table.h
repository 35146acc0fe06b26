#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

namespace zellap10::chart {

/// Closes a file that is not handed on.
struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// What stands around the scan lines of a chart file. Numbers are big-endian; S is the file's size.
///
///     offset   size         content
///     0        T            text part, without a byte 0x1A
///     T        1            0x1A
///     T + 1    1            skipped
///     T + 2    1            bits per pixel, 1 to 7
///     T + 3    as needed    scan lines, in any order, gaps between them
///     P        4 x height   line table: the offset of each scan line
///     S - 4    4            P
struct BinaryPart {
    int bits_per_pixel;
    int line_count;
    std::unique_ptr<std::int32_t[]> line_offsets;  ///< line_count offsets and P
};

/// Reads the binary part. Refuses a file whose text has no end, whose bits per pixel are out of range, whose
/// size is above 2 GiB or too small for P, and a line table that is not wholly inside the file: what the text
/// part claims is compared with the file's size before any memory is asked for.
///
/// @param height  lines, from the text part; below 0 is taken as 0
/// @param part    written only on success
/// @return        1, or 0 for a refusal or memory that runs out
int read_binary_part(std::FILE* file, int height, BinaryPart& part);

}  // namespace zellap10::chart
