#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

namespace zellap10::chart {

/// What an open keeps of a chart file's layout.
struct BinaryPart {
    int bits_per_pixel;
    int line_count;
    std::unique_ptr<std::int32_t[]> line_offsets;  ///< line_count offsets and that of the line table
};

/// Checks the layout of a chart file and reads its line table.
///
/// @param height  lines, from the text part; below 0 counts as 0
/// @param part    written only on success
/// @return        1, or 0 if the layout is refused or memory runs out
int read_binary_part(std::FILE* file, int height, BinaryPart& part);

}  // namespace zellap10::chart
