#include <algorithm>
#include <cstdlib>
#include <limits>

#include <zellap10/chart/colour.h>
#include <zellap10/chart/zellap.h>

// Each cell gets the nearest entry. An octree of boxes, down to four cells per edge, discards the entries
// that can win nowhere in a box. Each entry is compared with the one nearest to the box's centre: the
// difference of two squared distances is linear in the position, so from the centre to the best corner an
// entry gains the box's edge times the sum of the channels' differences. If that is too little, the entry
// wins nowhere in the box. The rule is exact, ties included.

namespace {

using zellap10::chart::distance;

constexpr int kCells = 32;       // along an edge of the cube
constexpr int kCellStep = 8;     // difference of a channel's value between cells
constexpr int kSmallestBox = 4;  // cells along an edge

// Entries in ascending order of their index, which is in peFlags.
struct Candidates {
    int count = 0;
    PALETTEENTRY entries[255];  // all except entry 0, which is never searched
};

struct Box {
    int red, green, blue;  // first cell
    int size;              // cells along an edge
};

int apart(const PALETTEENTRY& a, const PALETTEENTRY& b) {
    return std::abs(a.peRed - b.peRed) + std::abs(a.peGreen - b.peGreen) + std::abs(a.peBlue - b.peBlue);
}

// The candidates that can win in the box.
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

// The nearest candidate of each cell of a smallest box, one row of cells at a time. A number holds the
// distance above the index, so that the lower index wins a tie.
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
