#include <algorithm>
#include <cstdlib>
#include <limits>

#include <zellap10/chart/colour.h>
#include <zellap10/chart/zellap.h>

// Every cell gets the nearest entry, but most entries are far from most cells. The cube of cells is therefore
// halved in each direction, down to boxes of four cells an edge, and each box hands down to its eighths only
// the entries that can win somewhere in it. One entry stands for all that might beat the others: the one
// nearest to the box's centre. The difference of two squared distances is linear in the place, so that what
// an entry gains on that one from the centre to the best corner is the box's edge times the sum of the
// channels' differences. An entry that is still behind there wins nowhere. The rule is exact, ties included.

namespace {

using zellap10::chart::distance;

constexpr int kCells = 32;       // along an edge of the cube
constexpr int kCellStep = 8;     // of a channel's value from cell to cell
constexpr int kSmallestBox = 4;  // cells along the edge of a box that is not halved any more

// Entries in rising order of their index, which stands in peFlags.
struct Candidates {
    int count = 0;
    PALETTEENTRY entries[255];  // all but the first, which is never searched
};

struct Box {
    int red, green, blue;  // first cell
    int size;              // cells along an edge
};

// Sum of the differences of the channels.
int apart(const PALETTEENTRY& a, const PALETTEENTRY& b) {
    return std::abs(a.peRed - b.peRed) + std::abs(a.peGreen - b.peGreen) + std::abs(a.peBlue - b.peBlue);
}

// Those of the candidates that can win in the box.
Candidates winners_in(const Box& box, const Candidates& candidates) {
    const int edge = (box.size - 1) * kCellStep;
    const auto middle = [&](int cell) { return static_cast<unsigned char>(cell * kCellStep + edge / 2); };
    const PALETTEENTRY centre{middle(box.red), middle(box.green), middle(box.blue), 0};

    int distances[255] = {};
    int nearest = 0;
    for (int i = 0; i < candidates.count; ++i) {
        distances[i] = distance(centre, candidates.entries[i]);
        if (distances[i] < distances[nearest]) nearest = i;
    }
    Candidates winners;
    for (int i = 0; i < candidates.count; ++i) {
        const PALETTEENTRY& entry = winners.entries[winners.count] = candidates.entries[i];
        const int lead = edge * apart(entry, candidates.entries[nearest]);
        winners.count += distances[i] - distances[nearest] <= lead;
    }
    return winners;
}

// The nearest candidate of each cell of a smallest box, a row of cells at a time. Distances stand above
// indexes in one number, so that the lower index wins where two are equal.
void fill_cells(const Box& box, const Candidates& candidates, unsigned char* cells) {
    const auto square = [](int cell, int channel) {
        return (cell * kCellStep - channel) * (cell * kCellStep - channel) * 256;
    };
    const auto red = [&box](int row) { return box.red + row / kSmallestBox; };
    const auto green = [&box](int row) { return box.green + row % kSmallestBox; };
    constexpr int kRows = kSmallestBox * kSmallestBox;
    int least[kRows][kSmallestBox];
    for (auto& row : least)
        std::fill_n(row, kSmallestBox, std::numeric_limits<int>::max() - 255);
    for (int i = 0; i < candidates.count; ++i) {
        const PALETTEENTRY& entry = candidates.entries[i];
        for (int row = 0; row < kRows; ++row) {
            const int both =
                square(red(row), entry.peRed) + square(green(row), entry.peGreen) + entry.peFlags;
            for (int k = 0; k < kSmallestBox; ++k)
                least[row][k] = std::min(least[row][k], both + square(box.blue + k, entry.peBlue));
        }
    }
    for (int row = 0; row < kRows; ++row) {
        std::copy_n(least[row], kSmallestBox, &cells[(red(row) * kCells + green(row)) * kCells + box.blue]);
    }
}

void fill_box(const Box& box, const Candidates& candidates, unsigned char* cells) {
    const Candidates winners = winners_in(box, candidates);
    if (box.size == kSmallestBox) return fill_cells(box, winners, cells);
    const int half = box.size / 2;
    for (int part = 0; part < 8; ++part) {
        fill_box({box.red + (part & 1) * half, box.green + (part >> 1 & 1) * half,
                  box.blue + (part >> 2) * half, half},
                 winners, cells);
    }
}

}  // namespace

void CZellap::BuildPalIndex() {
    Candidates all;
    for (int i = 1; i < std::min<int>(LogPalette.palNumEntries, 256); ++i) {
        PALETTEENTRY& entry = all.entries[all.count++] = LogPalette.palPalEntry[i];
        entry.peFlags = static_cast<unsigned char>(i);
    }
    fill_box({0, 0, 0, kCells}, all, ColourIndex);
}
