#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include <zellap10/chart/line_reader.h>

namespace {

using zellap10::chart::LineReader;
using zellap10::chart::PieceBytes;
using zellap10::chart::Pieces;
using zellap10::chart::Run;

// fill_run may write past the end of a run, up to kSpare pixels from its start. So it sets short runs, which
// are most, and medium ones with stores of a fixed size. These cost less than mispredicted branches on the
// length.
constexpr std::size_t kShortRun = 64;
constexpr std::size_t kSpare = 256;

// Sets `length` pixels. If there is room for kSpare pixels, all of these may change.
void fill_run(unsigned char* dest, std::size_t length, std::size_t room, unsigned char colour) {
    std::size_t filled = 0;
    if (room >= kSpare) {
        std::memset(dest, colour, kShortRun);
        if (length <= kShortRun) return;
        std::memset(dest + kShortRun, colour, kSpare - kShortRun);
        if (length <= kSpare) return;
        filled = kSpare;
    }
    std::memset(dest + filled, colour, length - filled);
}

}  // namespace

void CZellap::seekLine(long line) {
    const int lines = zellap10::chart::readable_lines(*this);
    if (lines == 0) return;
    const long clamped = std::clamp(line, 0L, static_cast<long>(lines) - 1);
    Pieces pieces(ChartFile);
    PieceBytes(pieces, pieces.at(LineOffsets[clamped])).skip_line_number();
}

void CZellap::vNextCRL(int* colour, int* runLength) {
    if (ChartFile == nullptr) return;
    Pieces pieces(ChartFile);
    const Run run = PieceBytes(pieces, pieces.next()).next_run(zellap10::chart::coding_of(*this));
    *colour = run.colour;
    *runLength = static_cast<int>(std::min<std::uint32_t>(run.length, std::numeric_limits<int>::max()));
}

int CZellap::getLine(int line, unsigned char* dest) {
    if (!zellap10::chart::is_inside(*this, line, 1, 0, 0)) return 0;
    if (Width <= 0) return 1;
    // If a run goes past Width, dest must not change after the runs before it. But fill_run writes past the
    // end of a run. So it writes to this buffer, and flush copies large pieces of it to dest. The copy takes
    // a fifth of the time of a line with runs of 180 pixels, and a twelfth with runs of 20.
    constexpr std::size_t kSize = 2048;
    unsigned char pixels[kSize + kSpare];
    std::size_t used = 0;
    unsigned char* next = dest;
    const auto flush = [&] {
        std::memcpy(next, pixels, used);  // cppcheck-suppress legacyUninitvar ; only what was written
        next += used;
        used = 0;
    };
    bool whole = true;
    LineReader(*this, line + 1).read(line, 0, Width, [&](const Run& run, std::size_t count) {
        whole = run.length == count;
        if (!whole) return;
        if (count > kSize - used) {
            flush();
            if (count > kSize) {
                std::memset(next, run.colour, count);
                next += count;
                return;
            }
        }
        fill_run(pixels + used, count, kSpare, run.colour);
        used += count;
    });
    flush();
    return whole;
}

int CZellap::getMultiLines(int firstLine, int lineCount, int firstCol, int colCount, unsigned char* dest) {
    if (!zellap10::chart::is_inside(*this, firstLine, lineCount, firstCol, colCount)) return 0;
    if (lineCount <= 0 || colCount <= 0) return 1;
    LineReader reader(*this, firstLine + lineCount);
    // A fill may write into the next lines, which are decoded later.
    std::size_t room = static_cast<std::size_t>(colCount) * static_cast<std::size_t>(lineCount);
    for (int line = firstLine; line < firstLine + lineCount; ++line) {
        reader.read(line, firstCol, colCount, [&](const Run& run, std::size_t count) {
            fill_run(dest, count, room, run.colour);
            dest += count;
            room -= count;
        });
    }
    return 1;
}
