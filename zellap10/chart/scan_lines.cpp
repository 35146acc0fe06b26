#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

#include <zellap10/chart/line_table.h>
#include <zellap10/chart/run_decoder.h>
#include <zellap10/chart/zellap.h>

namespace {

using zellap10::chart::BlockBytes;
using zellap10::chart::Blocks;
using zellap10::chart::fill_run;
using zellap10::chart::next_run;
using zellap10::chart::PixelBlock;
using zellap10::chart::Run;
using zellap10::chart::RunCoding;

RunCoding coding_of(const CZellap& chart) {
    return {static_cast<unsigned>(chart.RunMask), static_cast<unsigned>(chart.ColourMask), chart.ColourShift};
}

bool is_open(const CZellap& chart) {
    return chart.ChartFile != nullptr && chart.LineOffsets != nullptr;
}

// Lines that can be read: those of the picture that the line table holds, none where no chart is open.
int readable_lines(const CZellap& chart) {
    return is_open(chart) ? std::clamp(chart.Height, 0, std::max(chart.LineCount, 0)) : 0;
}

// Puts the file at a line and gives the scratch to read it with. In most files the next offset of the table
// is where the line ends; where it is not, the scratch only reads some bytes too many or too few at first.
Blocks blocks_of_line(const CZellap& chart, int line) {
    const std::int32_t* offset = chart.LineOffsets + line;
    zellap10::chart::seek_offset(chart.ChartFile, *offset);
    return Blocks(chart.ChartFile, static_cast<std::int64_t>(offset[1]) - offset[0]);
}

// Decodes the columns from `first_col` on of the line that the bytes hold. What passes the range is cut.
//
// `room` is at least col_count; what lies behind the range in it may change.
void read_columns(BlockBytes& bytes, const RunCoding& coding, std::int64_t first_col, int col_count,
                  unsigned char* dest, std::size_t room) {
    skip_line_number(bytes);
    std::int64_t end = 0;
    Run run{};
    while (end < first_col) {
        run = next_run(bytes, coding);
        end += run.length;
    }
    // What of the last run lies in the range stands first; it may be nothing.
    std::size_t count = static_cast<std::size_t>(end - first_col);
    for (std::size_t left = static_cast<std::size_t>(col_count);;) {
        count = std::min(left, count);
        fill_run(dest, count, room, run.colour);
        dest += count;
        room -= count;
        left -= count;
        if (left == 0) return;
        run = next_run(bytes, coding);
        count = run.length;
    }
}

}  // namespace

void CZellap::seekLine(long line) {
    const int lines = readable_lines(*this);
    if (lines == 0) return;
    const long clamped = std::clamp(line, 0L, static_cast<long>(lines) - 1);
    zellap10::chart::seek_offset(ChartFile, LineOffsets[clamped]);
    zellap10::chart::FileBytes bytes(ChartFile);
    skip_line_number(bytes);
}

void CZellap::vNextCRL(int* colour, int* runLength) {
    if (!is_open(*this)) return;
    zellap10::chart::FileBytes bytes(ChartFile);
    const Run run = next_run(bytes, coding_of(*this));
    *colour = run.colour;
    *runLength = static_cast<int>(std::min<std::uint32_t>(run.length, std::numeric_limits<int>::max()));
}

int CZellap::getLine(int line, unsigned char* dest) {
    if (line < 0 || line >= readable_lines(*this)) return 0;
    const RunCoding coding = coding_of(*this);
    Blocks blocks = blocks_of_line(*this, line);
    BlockBytes bytes(blocks);
    skip_line_number(bytes);
    PixelBlock pixels(dest);
    std::uint32_t left = static_cast<std::uint32_t>(std::max(Width, 0));
    while (left > 0) {
        const Run run = next_run(bytes, coding);
        if (run.length > left) break;
        pixels.add(run);
        left -= run.length;
    }
    pixels.hand_on();
    return left == 0;
}

int CZellap::getMultiLines(int firstLine, int lineCount, int firstCol, int colCount, unsigned char* dest) {
    if (!is_open(*this)) return 0;
    if (firstLine < 0 || static_cast<std::int64_t>(firstLine) + lineCount > readable_lines(*this)) return 0;
    if (firstCol < 0 || static_cast<std::int64_t>(firstCol) + colCount > std::max(Width, 0)) return 0;
    if (lineCount <= 0 || colCount <= 0) return 1;

    const RunCoding coding = coding_of(*this);
    const auto line_size = static_cast<std::size_t>(colCount);
    // A line may spill into those behind it, which are still to come.
    std::size_t room = line_size * static_cast<std::size_t>(lineCount);
    for (int line = firstLine; line < firstLine + lineCount; ++line) {
        Blocks blocks = blocks_of_line(*this, line);
        BlockBytes bytes(blocks);
        read_columns(bytes, coding, firstCol, colCount, dest, room);
        dest += line_size;
        room -= line_size;
    }
    return 1;
}
