#include <algorithm>
#include <cstdlib>
#include <limits>

#include <zellap10/chart/colour.h>
#include <zellap10/chart/zellap.h>

// Every cell gets the nearest entry, but most entries are far from most cells. The cube of cells is therefore
// halved in each direction again and again, and each box hands down to its eighths only the entries that can
// win somewhere in it. One entry stands for all that might beat the others: the one nearest to the box's
// centre. The difference of two squared distances is linear in the place, so that what an entry gains on that
// one from the centre to the best corner is the box's edge times the sum of the channels' differences. An
// entry that is still behind there wins nowhere. The rule is exact, ties included.

namespace {

using zellap10::chart::distance;

constexpr int kCells = 32;       // along an edge of the cube
constexpr int kCellStep = 8;     // of a channel's value from cell to cell
constexpr int kSmallestBox = 2;  // cells along the edge of a box that is not halved any more

constexpr int kMaxCandidates = 255;  // all entries but the first, which is never searched

// Palette indexes from 1 on, in rising order.
struct Candidates {
    int count = 0;
    unsigned char index[kMaxCandidates];
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
Candidates winners_in(const Box& box, const Candidates& candidates, const PALETTEENTRY* entries) {
    const int edge = (box.size - 1) * kCellStep;
    const auto middle = [&](int cell) { return static_cast<unsigned char>(cell * kCellStep + edge / 2); };
    const PALETTEENTRY centre{middle(box.red), middle(box.green), middle(box.blue), 0};

    int distances[kMaxCandidates];
    int least = std::numeric_limits<int>::max();
    PALETTEENTRY nearest{};
    for (int i = 0; i < candidates.count; ++i) {
        const PALETTEENTRY& entry = entries[candidates.index[i]];
        distances[i] = distance(centre, entry);
        if (distances[i] < least) {
            least = distances[i];
            nearest = entry;
        }
    }
    Candidates winners;
    for (int i = 0; i < candidates.count; ++i) {
        const unsigned char index = candidates.index[i];
        winners.index[winners.count] = index;
        winners.count += distances[i] - least <= edge * apart(entries[index], nearest);
    }
    return winners;
}

unsigned char nearest_entry(const PALETTEENTRY& target, const Candidates& candidates,
                            const PALETTEENTRY* entries) {
    unsigned char best = 0;
    int best_distance = std::numeric_limits<int>::max();
    for (int i = 0; i < candidates.count; ++i) {
        const int candidate_distance = distance(target, entries[candidates.index[i]]);
        if (candidate_distance < best_distance) {
            best_distance = candidate_distance;
            best = candidates.index[i];
        }
    }
    return best;
}

void fill_cells(const Box& box, const Candidates& candidates, const PALETTEENTRY* entries,
                unsigned char* cells) {
    const auto value = [](int cell) { return static_cast<unsigned char>(cell * kCellStep); };
    for (int red = box.red; red < box.red + box.size; ++red) {
        for (int green = box.green; green < box.green + box.size; ++green) {
            for (int blue = box.blue; blue < box.blue + box.size; ++blue) {
                cells[(red * kCells + green) * kCells + blue] =
                    nearest_entry({value(red), value(green), value(blue), 0}, candidates, entries);
            }
        }
    }
}

void fill_box(const Box& box, const Candidates& candidates, const PALETTEENTRY* entries,
              unsigned char* cells) {
    const Candidates winners = winners_in(box, candidates, entries);
    if (box.size <= kSmallestBox || winners.count <= 1) {
        fill_cells(box, winners, entries, cells);
        return;
    }
    const int half = box.size / 2;
    for (int part = 0; part < 8; ++part) {
        const Box eighth{box.red + (part & 1) * half, box.green + (part >> 1 & 1) * half,
                         box.blue + (part >> 2) * half, half};
        fill_box(eighth, winners, entries, cells);
    }
}

}  // namespace

void CZellap::BuildPalIndex() {
    Candidates all;
    for (int i = 1; i < std::min<int>(LogPalette.palNumEntries, 256); ++i) {
        all.index[all.count++] = static_cast<unsigned char>(i);
    }
    fill_box({0, 0, 0, kCells}, all, LogPalette.palPalEntry, ColourIndex);
}
