#include <cstddef>
#include <cstring>
#include <new>

#include <zellap10/chart/layout.h>
#include <zellap10/chart/line_table.h>

namespace zellap10::chart {

namespace {

// Reads the table as one block and converts its bytes to numbers in place.
int read_offsets(std::FILE* file, const Layout& layout, std::int32_t* offsets) {
    if (layout.lines == 0) return 1;
    const auto count = static_cast<std::size_t>(layout.lines);
    if (std::fseek(file, static_cast<long>(layout.table), SEEK_SET) != 0) return 0;
    if (std::fread(offsets, kOffsetBytes, count, file) != count) return 0;
    for (std::size_t i = 0; i < count; ++i) {
        unsigned char bytes[kOffsetBytes];
        std::memcpy(bytes, offsets + i, sizeof bytes);
        offsets[i] = static_cast<std::int32_t>(big_endian(bytes));
    }
    return 1;
}

}  // namespace

int read_binary_part(std::FILE* file, int height, BinaryPart& part) {
    const Layout layout = read_layout(file, height);
    if (layout.refusal != Refusal::kNone) return 0;

    const auto entries = static_cast<std::size_t>(layout.lines) + 1;
    std::unique_ptr<std::int32_t[]> offsets(new (std::nothrow) std::int32_t[entries]);
    if (offsets == nullptr || !read_offsets(file, layout, offsets.get())) return 0;
    offsets[entries - 1] = static_cast<std::int32_t>(layout.table);
    part = {layout.bits_per_pixel, layout.lines, std::move(offsets)};
    return 1;
}

}  // namespace zellap10::chart
