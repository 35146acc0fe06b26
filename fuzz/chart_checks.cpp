#include "chart_checks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

#include <testing/guarded_pixels.h>

namespace fuzz {

namespace {

constexpr int kSmallest = std::numeric_limits<int>::min();
constexpr int kLargest = std::numeric_limits<int>::max();
constexpr int kWidestLine = 1 << 14;  // only a part of wider lines is read
constexpr int kEndLines = 4;          // lines read at each end of the chart

// A line decoded by seekLine and vNextCRL, cut after some column.
struct Line {
    std::vector<unsigned char> pixels;
    std::int64_t valid = 0;  // pixels before the first run that passes Width
};

Line line_by_runs(PlainChart& chart, int line, int columns) {
    Line decoded;
    std::int64_t x = 0;
    bool inside = true;
    chart.seekLine(line);
    while (x < columns) {
        int colour = -1;
        int length = -1;
        chart.vNextCRL(&colour, &length);
        must(length >= 1 && colour >= 0 && colour < 1 << chart.BitsPerPixel,
             "a run has a length and a valid colour");
        inside = inside && x + length <= chart.Width;
        const std::int64_t end = std::min<std::int64_t>(x + length, columns);
        decoded.pixels.resize(static_cast<std::size_t>(end), static_cast<unsigned char>(colour));
        x += length;
        if (inside) decoded.valid = x;
    }
    return decoded;
}

void check_line(PlainChart& chart, int line, Budget& budget, Kept& kept) {
    const int width = std::max(chart.Width, 0);
    if (width > kWidestLine || !budget.spend(3 * width)) return;
    const Line decoded = line_by_runs(chart, line, width);

    GuardedPixels pixels(static_cast<std::size_t>(width));
    const int accepted = chart.getLine(line, pixels.data());
    kept.bytes(pixels.data(), pixels.size());
    must(accepted == (decoded.valid == width ? 1 : 0), "getLine refuses only runs that pass Width");
    const auto valid = static_cast<std::size_t>(decoded.valid);
    must(std::equal(pixels.data(), pixels.data() + valid, decoded.pixels.begin()),
         "getLine decodes the runs");
    must(pixels.untouched_from(valid), "getLine writes only its runs");

    GuardedPixels cut(static_cast<std::size_t>(width));
    must(chart.getMultiLines(line, 1, 0, width, cut.data()) == 1, "a complete line is inside the chart");
    kept.bytes(cut.data(), cut.size());
    must(std::equal(cut.data(), cut.data() + cut.size(), decoded.pixels.begin()),
         "getMultiLines decodes the runs and cuts the last one");
    must(cut.guards_untouched(), "getMultiLines writes nothing else");
}

struct Rectangle {
    int line, lines, column, columns;
};

bool is_inside(const CZellap& chart, const Rectangle& r) {
    return r.line >= 0 && static_cast<std::int64_t>(r.line) + r.lines <= std::max(chart.Height, 0) &&
           r.column >= 0 && static_cast<std::int64_t>(r.column) + r.columns <= std::max(chart.Width, 0);
}

// The pixels to decode for a rectangle: each line from its start.
std::int64_t cost_of(const Rectangle& r) {
    return std::max<std::int64_t>(r.lines, 0) * (static_cast<std::int64_t>(r.column) + r.columns);
}

void check_rectangle(PlainChart& chart, const Rectangle& r, Budget& budget, Kept& kept) {
    if (!is_inside(chart, r)) {
        GuardedPixels pixels(16);
        must(chart.getMultiLines(r.line, r.lines, r.column, r.columns, pixels.data()) == 0,
             "a rectangle outside the chart is refused");
        must(pixels.untouched(), "a refused rectangle writes nothing");
        return;
    }
    const std::int64_t size = static_cast<std::int64_t>(std::max(r.lines, 0)) * std::max(r.columns, 0);
    if (size > 0 && !budget.spend(2 * cost_of(r))) return;
    GuardedPixels pixels(static_cast<std::size_t>(size));
    must(chart.getMultiLines(r.line, r.lines, r.column, r.columns, pixels.data()) == 1,
         "a rectangle inside the chart is accepted");
    kept.bytes(pixels.data(), pixels.size());
    must(pixels.guards_untouched(), "a rectangle stays inside its buffer");
    for (int i = 0; size > 0 && i < r.lines; ++i) {
        const Line decoded = line_by_runs(chart, r.line + i, r.column + r.columns);
        must(std::equal(decoded.pixels.begin() + r.column, decoded.pixels.end(),
                        pixels.data() + static_cast<std::int64_t>(i) * r.columns),
             "a rectangle has the pixels of its lines");
    }
}

struct Reduction {
    Rectangle from;
    int x_factor;
};

void check_reduction(PlainChart& chart, const Reduction& r, Budget& budget, Kept& kept) {
    const Rectangle& from = r.from;
    if (r.x_factor < 1 || from.lines < 1 || from.columns < 0 || !is_inside(chart, from)) {
        GuardedPixels pixels(16);
        must(
            chart.getAALine(from.line, from.column, from.columns, pixels.data(), r.x_factor, from.lines) == 0,
            "a reduction outside the chart is refused");
        must(pixels.untouched(), "a refused reduction writes nothing");
        return;
    }
    if (!budget.spend(3 * cost_of(from) + 3)) return;
    const int count = from.columns / r.x_factor;
    GuardedPixels reduced(static_cast<std::size_t>(count));
    must(chart.getAALine(from.line, from.column, from.columns, reduced.data(), r.x_factor, from.lines) == 1,
         "a reduction inside the chart is accepted");
    kept.bytes(reduced.data(), reduced.size());
    must(reduced.guards_untouched(), "a reduction stays inside its buffer");
    std::vector<unsigned char> pixels(static_cast<std::size_t>(from.lines) *
                                      static_cast<std::size_t>(from.columns));
    must(chart.getMultiLines(from.line, from.lines, from.column, from.columns, pixels.data()) == 1,
         "the rectangle of a reduction can be read");
    for (int o = 0; o < count; ++o) {
        must(reduced.data()[o] ==
                 chart.plain_mean(pixels.data(), from.columns, o * r.x_factor, r.x_factor, from.lines),
             "a reduced pixel is the mean of its block");
    }
}

// Draws start and length of a range of `limit` columns or lines; it may be one too long.
void draw_range(Input& input, int limit, int& first, int& count) {
    first = input.around(0, std::max(limit, 0));
    const int left = first >= 0 && first <= limit ? limit - first : limit;
    count = input.around(0, left < kLargest ? left + 1 : left);
}

Rectangle draw_rectangle(const CZellap& chart, Input& input) {
    Rectangle r{};
    draw_range(input, chart.Height, r.line, r.lines);
    draw_range(input, chart.Width, r.column, r.columns);
    return r;
}

void check_colours(const PlainChart& chart, Input& input, Kept& kept) {
    const int count = chart.LogPalette.palNumEntries;
    const PALETTEENTRY* entries = chart.LogPalette.palPalEntry;
    must(count <= 256 && count >= chart.HeaderColourCount, "a palette contains the chart's colours");
    PALETTEENTRY copied[512] = {};
    const HPALETTE handle = chart.GetPaletteHandle();
    must(handle != nullptr, "an open chart has a palette object");
    const auto size = static_cast<unsigned>(count);
    must(count == 0 || (GetPaletteEntries(handle, 0, 0, nullptr) == size &&
                        GetPaletteEntries(handle, 0, 1, copied) == 1 &&
                        GetPaletteEntries(handle, 0, size, copied) == size &&
                        GetPaletteEntries(handle, size - 1, 256, copied + count - 1) == 1 &&
                        GetPaletteEntries(handle, size + 1, 1, copied) == 0 &&
                        std::memcmp(entries, copied, size * sizeof *entries) == 0),
         "the palette object has the entries of the palette");
    for (int i = 0; i < count; ++i) {
        const PALETTEENTRY& entry = entries[i];
        const PALETTEENTRY& of = i < chart.HeaderColourCount ? chart.HeaderColours[i] : entry;
        must(entry.peRed == of.peRed && entry.peGreen == of.peGreen && entry.peBlue == of.peBlue &&
                 entry.peFlags == 0,
             "the first entries are the chart's colours");
        must(i < chart.HeaderColourCount || ((entry.peRed | entry.peGreen | entry.peBlue) & 7) == 0,
             "added colours have no low bits");
    }
    kept.bytes(copied, sizeof copied);
    kept.bytes(chart.ColourIndex, sizeof chart.ColourIndex);

    for (int i = 0; i < 8; ++i) {
        const int cell = input.take<std::uint16_t>() & 0x7FFF;
        must(chart.ColourIndex[cell] ==
                 chart.plain_nearest((cell >> 10) * 8, (cell >> 5 & 31) * 8, (cell & 31) * 8),
             "a cell contains the nearest entry");
    }
}

// Rectangles that begin outside the chart or end one line or column past it.
void check_edges(PlainChart& chart, Budget& budget, Kept& kept) {
    for (const int line : {-1, chart.Height, kSmallest, kLargest}) {
        if (line >= 0 && line < chart.Height) continue;
        GuardedPixels pixels(16);
        must(chart.getLine(line, pixels.data()) == 0, "a line outside the chart is refused");
        must(pixels.untouched(), "a refused line writes nothing");
    }
    const int width = chart.Width;
    const int height = chart.Height;
    if (width < 0 || height < 0 || width == kLargest) return;
    for (const Rectangle& r :
         {Rectangle{0, 1, 0, width + 1}, Rectangle{0, 1, width, 1}, Rectangle{0, height + 1, 0, 1},
          Rectangle{height, 1, 0, 1}, Rectangle{0, 1, -1, 1}, Rectangle{-1, 1, 0, 1},
          Rectangle{height, 0, width, 0}, Rectangle{1, kLargest, 0, 1}, Rectangle{0, 1, 1, kLargest},
          Rectangle{0, 0, 0, 1}, Rectangle{0, -1, 0, 1}, Rectangle{0, 1, 0, -1}}) {
        check_rectangle(chart, r, budget, kept);
        check_reduction(chart, {r, 1}, budget, kept);
    }
    for (const int x_factor : {0, -1, kSmallest})
        check_reduction(chart, {{0, 1, 0, width}, x_factor}, budget, kept);
}

}  // namespace

void keep_header(const CZellap& chart, Kept& kept) {
    kept.bytes(chart.ChartName, sizeof chart.ChartName);
    must(chart.ChartName[sizeof chart.ChartName - 1] == '\0', "a name is terminated");
    kept.add(chart.DU);
    kept.add(chart.GetDocumentSize().cx);
    kept.add(chart.GetDocumentSize().cy);
    kept.bytes(chart.HeaderColours, sizeof chart.HeaderColours);
    must(chart.HeaderColourCount >= 0 && chart.HeaderColourCount <= 256, "colours fit their table");
    must(!chart.TextStream.is_open(), "the text is closed after an open");
}

void check_open_chart(PlainChart& chart, Input& input, Budget& budget, Kept& kept) {
    keep_header(chart, kept);
    must(chart.BitsPerPixel >= 1 && chart.BitsPerPixel <= 7, "bits per pixel are in range");
    must(chart.LineCount == std::max(chart.Height, 0), "the line table has the lines of the chart");
    kept.bytes(chart.LineOffsets, (static_cast<std::size_t>(chart.LineCount) + 1) * sizeof(std::int32_t));
    check_colours(chart, input, kept);
    check_edges(chart, budget, kept);
    for (int i = 0; i < std::min(chart.LineCount, kEndLines); ++i) {
        check_line(chart, i, budget, kept);
        check_line(chart, chart.LineCount - 1 - i, budget, kept);
    }
    for (int i = 0; i < 3; ++i)
        check_rectangle(chart, draw_rectangle(chart, input), budget, kept);
    for (int i = 0; i < 3; ++i) {
        const Rectangle from = draw_rectangle(chart, input);
        check_reduction(chart, {from, input.around(1, 12)}, budget, kept);
    }
    // The complete chart as one pixel. Blocks of some thousand pixels are summed differently.
    check_reduction(chart, {{0, chart.Height, 0, chart.Width}, std::max(chart.Width, 1)}, budget, kept);
    // Any line number is valid: the nearest line is used.
    chart.seekLine(input.take<std::int32_t>());
    int colour = 0;
    int length = 0;
    chart.vNextCRL(&colour, &length);
    kept.add(colour);
    kept.add(length);
}

void check_refusals(PlainChart& chart, Kept& kept) {
    keep_header(chart, kept);
    must(chart.ChartFile == nullptr && chart.LineOffsets == nullptr && chart.GetPaletteHandle() == nullptr,
         "a closed object has no file and no palette");
    GuardedPixels pixels(16);
    int colour = 41;
    int length = 42;
    must(chart.getLine(0, pixels.data()) == 0 && chart.getMultiLines(0, 1, 0, 1, pixels.data()) == 0 &&
             chart.getMultiLines(0, 0, 0, 0, pixels.data()) == 0 &&
             chart.getAALine(0, 0, 1, pixels.data(), 1, 1) == 0,
         "a closed object returns no pixels");
    chart.seekLine(0);
    chart.vNextCRL(&colour, &length);
    must(pixels.untouched() && colour == 41 && length == 42, "a closed object writes nothing");
}

void read_changed_chart(PlainChart& chart, Budget& budget, Kept& kept) {
    const int width = std::clamp(chart.Width, 0, kWidestLine);
    for (int line = 0; line < std::min(chart.LineCount, kEndLines); ++line) {
        if (!budget.spend(3 * width)) return;
        GuardedPixels pixels(static_cast<std::size_t>(width));
        must(chart.getMultiLines(line, 1, 0, width, pixels.data()) == 1,
             "a changed file returns every rectangle");
        kept.bytes(pixels.data(), pixels.size());
        must(std::all_of(pixels.data(), pixels.data() + pixels.size(),
                         [&chart](int pixel) { return pixel < 1 << chart.BitsPerPixel; }),
             "a changed file has valid colours");
        must(pixels.guards_untouched(), "a changed file stays inside its buffer");
        must(chart.getAALine(line, 0, width, pixels.data(), 2, 1) == 1,
             "a changed file returns every reduction");
        must(pixels.guards_untouched(), "a reduction of a changed file stays inside its buffer");
        if (width == chart.Width) chart.getLine(line, pixels.data());
        must(pixels.guards_untouched(), "a line of a changed file stays inside its buffer");
    }
}

}  // namespace fuzz
