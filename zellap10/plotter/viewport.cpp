#include "zellap10/plotter/viewport.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include <zellap10/plotter/block_means.h>

namespace zellap10::plotter {

namespace {

// The blocks of a row that are on the chart.
struct Span {
    int first = 0;   // column of the viewport
    int block = 0;   // column of the chart, in blocks
    int length = 0;  // blocks
};

// Blocks along a side of the chart; the last may be incomplete.
std::int64_t blocks_along(int pixels, int reduction) {
    return (std::max<std::int64_t>(pixels, 0) + reduction - 1) / reduction;
}

Span span_of(const Viewport& viewport, int chart_width) {
    const std::int64_t blocks = blocks_along(chart_width, viewport.reduction);
    const std::int64_t begin = std::clamp<std::int64_t>(viewport.column, 0, blocks);
    const std::int64_t end =
        std::clamp<std::int64_t>(std::int64_t{viewport.column} + viewport.width, begin, blocks);
    if (begin == end) return {};
    return {static_cast<int>(begin - viewport.column), static_cast<int>(begin),
            static_cast<int>(end - begin)};
}

bool read_blocks(CZellap& chart, int row, const Span& span, int reduction, unsigned char* indexes) {
    if (reduction == 1) return chart.getMultiLines(row, 1, span.block, span.length, indexes) != 0;
    const CSize size = chart.GetDocumentSize();
    const int first_line = row * reduction;
    const int lines = std::min(reduction, size.cy - first_line);
    const int complete = std::min(span.length, size.cx / reduction - span.block);
    const auto read = [&](int block, int columns, unsigned char* dest, int block_width) {
        return chart.getAALine(first_line, block * reduction, columns, dest, block_width, lines) != 0;
    };
    if (complete > 0 && !read(span.block, complete * reduction, indexes, reduction)) return false;
    const int rest = size.cx % reduction;
    return complete == span.length || read(size.cx / reduction, rest, indexes + complete, rest);
}

// Calls `use` for each row of a viewport with its span and the indexes of that, which are null if the row is
// not on the chart or cannot be read.
template <class Use>
bool read_rows(CZellap& chart, const Viewport& viewport, Use use) {
    const CSize size = chart.GetDocumentSize();
    const bool readable = viewport.reduction >= 1 && chart.ChartFile != nullptr;
    const Span span = readable ? span_of(viewport, size.cx) : Span{};
    const std::int64_t rows = span.length > 0 ? blocks_along(size.cy, viewport.reduction) : 0;
    std::vector<unsigned char> indexes(static_cast<std::size_t>(span.length));
    bool complete = readable;
    for (int y = 0; y < viewport.height; ++y) {
        const std::int64_t row = std::int64_t{viewport.row} + y;
        const bool inside = row >= 0 && row < rows;
        const bool is_read =
            inside && read_blocks(chart, static_cast<int>(row), span, viewport.reduction, indexes.data());
        complete = complete && is_read == inside;
        use(y, span, is_read ? indexes.data() : nullptr);
    }
    return complete;
}

// A row of a bitmap. Pixels are copied because its address may be odd.
class Row {
public:
    Row(const Bitmap& bitmap, int y)
        : pixels_(static_cast<unsigned char*>(bitmap.pixels) + y * bitmap.stride) {}

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

bool draw_means(CZellap& chart, const Viewport& viewport, const ColourTable& colours, Argb background,
                const Bitmap& bitmap) {
    const CSize size = chart.GetDocumentSize();
    const Span span = span_of(viewport, size.cx);
    const std::int64_t rows = span.length > 0 ? blocks_along(size.cy, viewport.reduction) : 0;
    BlockMeans means(chart, colours, viewport.reduction, span.block, span.block + span.length);
    std::vector<Argb> pixels(means.size());
    bool complete = chart.ChartFile != nullptr;
    for (int y = 0; y < bitmap.height; ++y) {
        const Row row(bitmap, y);
        row.fill(0, bitmap.width, background);
        const std::int64_t block_row = std::int64_t{viewport.row} + y;
        if (block_row < 0 || block_row >= rows) continue;
        if (!means.read(static_cast<int>(block_row), pixels.data(), [] { return true; })) {
            complete = false;
            continue;
        }
        for (int i = 0; i < span.length; ++i)
            row.set(span.first + i, pixels[static_cast<std::size_t>(i)]);
    }
    return complete;
}

}  // namespace

ChartPixel Viewport::to_chart(ScreenPixel pixel) const {
    return {(pixel.x + column + 0.5) * reduction - 0.5, (pixel.y + row + 0.5) * reduction - 0.5};
}

ScreenPixel Viewport::to_screen(ChartPixel pixel) const {
    return {(pixel.x + 0.5) / reduction - 0.5 - column, (pixel.y + 0.5) / reduction - 0.5 - row};
}

bool draw_viewport(CZellap& chart, const Viewport& viewport, const ColourTable& colours, Argb background,
                   const Bitmap& bitmap, Averaging averaging) {
    if (viewport.width != bitmap.width || viewport.height != bitmap.height) return false;
    if (averaging == Averaging::kTrueColour && viewport.reduction > 1)
        return draw_means(chart, viewport, colours, background, bitmap);
    return read_rows(chart, viewport, [&](int y, const Span& span, const unsigned char* indexes) {
        const Row row(bitmap, y);
        if (indexes == nullptr) return row.fill(0, bitmap.width, background);
        row.fill(0, span.first, background);
        for (int i = 0; i < span.length; ++i)
            row.set(span.first + i, colours[indexes[i]]);
        row.fill(span.first + span.length, bitmap.width, background);
    });
}

bool read_viewport(CZellap& chart, const Viewport& viewport, unsigned char background,
                   unsigned char* indexes) {
    const std::size_t width = static_cast<std::size_t>(std::max(viewport.width, 0));
    return read_rows(chart, viewport, [&](int y, const Span& span, const unsigned char* read) {
        unsigned char* const row = indexes + static_cast<std::size_t>(y) * width;
        std::fill_n(row, width, background);
        if (read != nullptr) std::copy_n(read, span.length, row + span.first);
    });
}

}  // namespace zellap10::plotter
