#include "zellap10/plotter/window.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace zellap10::plotter {

namespace {

// What of a row of blocks stands in the picture; columns of the picture are relative to its left edge.
struct Span {
    int first = 0;   // column of the picture
    int block = 0;   // column of the chart, in blocks
    int length = 0;  // blocks
};

// Blocks along a side of the chart, the last one perhaps in part.
std::int64_t blocks_along(int pixels, int reduction) {
    return (std::max<std::int64_t>(pixels, 0) + reduction - 1) / reduction;
}

Span span_of(const Window& window, int picture_width, int chart_width) {
    const std::int64_t blocks = blocks_along(chart_width, window.reduction);
    const std::int64_t begin = std::clamp<std::int64_t>(window.column, 0, blocks);
    const std::int64_t end =
        std::clamp<std::int64_t>(std::int64_t{window.column} + picture_width, begin, blocks);
    if (begin == end) return {};
    return {static_cast<int>(begin - window.column), static_cast<int>(begin), static_cast<int>(end - begin)};
}

// Reads a row of blocks.
bool read_blocks(CZellap& chart, int row, const Span& span, int reduction, unsigned char* indexes) {
    if (reduction == 1) return chart.getMultiLines(row, 1, span.block, span.length, indexes) != 0;
    const CSize size = chart.GetDocumentSize();
    const int first_line = row * reduction;
    const int lines = std::min(reduction, size.cy - first_line);
    const int whole = std::min(span.length, size.cx / reduction - span.block);
    const auto read = [&](int block, int columns, unsigned char* dest, int block_width) {
        return chart.getAALine(first_line, block * reduction, columns, dest, block_width, lines) != 0;
    };
    if (whole > 0 && !read(span.block, whole * reduction, indexes, reduction)) return false;
    const int rest = size.cx % reduction;
    return whole == span.length || read(size.cx / reduction, rest, indexes + whole, rest);
}

// A row of the picture. Its address may be odd, so that pixels are copied to it.
class Row {
public:
    Row(const Picture& picture, int y)
        : pixels_(static_cast<unsigned char*>(picture.pixels) + y * picture.stride) {}

    void fill(int first, int last, Argb colour) const {
        for (int x = first; x < last; ++x)
            set(x, colour);
    }
    void set(int x, Argb colour) const {
        std::memcpy(pixels_ + static_cast<std::ptrdiff_t>(x) * 4, &colour, sizeof colour);
    }

private:
    unsigned char* pixels_;
};

}  // namespace

Pixel Window::on_chart(Pixel on_picture) const {
    return {(on_picture.x + column + 0.5) * reduction - 0.5, (on_picture.y + row + 0.5) * reduction - 0.5};
}

Pixel Window::on_picture(Pixel on_chart) const {
    return {(on_chart.x + 0.5) / reduction - 0.5 - column, (on_chart.y + 0.5) / reduction - 0.5 - row};
}

bool draw_window(CZellap& chart, const Window& window, const ColourTable& colours, Argb background,
                 const Picture& picture) {
    const bool drawable = window.reduction >= 1;
    const CSize size = chart.GetDocumentSize();
    const Span span = drawable ? span_of(window, picture.width, size.cx) : Span{};
    const std::int64_t rows = span.length > 0 ? blocks_along(size.cy, window.reduction) : 0;
    std::vector<unsigned char> indexes(static_cast<std::size_t>(span.length));
    bool complete = drawable;
    for (int y = 0; y < picture.height; ++y) {
        const Row row(picture, y);
        const std::int64_t block_row = std::int64_t{window.row} + y;
        const bool inside = block_row >= 0 && block_row < rows;
        if (!inside ||
            !read_blocks(chart, static_cast<int>(block_row), span, window.reduction, indexes.data())) {
            row.fill(0, picture.width, background);
            complete = complete && !inside;
            continue;
        }
        row.fill(0, span.first, background);
        for (int i = 0; i < span.length; ++i)
            row.set(span.first + i, colours[indexes[static_cast<std::size_t>(i)]]);
        row.fill(span.first + span.length, picture.width, background);
    }
    return complete;
}

}  // namespace zellap10::plotter
