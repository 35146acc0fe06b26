#include <algorithm>
#include <cmath>
#include <numeric>

#include <zellap10/plotter/extent_index.h>

namespace zellap10::plotter {

namespace {

constexpr double kCellDegrees = 2.0;
constexpr int kColumns = 180;
constexpr int kRows = 90;
constexpr int kMostCells = 64;  // of an extent; more would cost more memory than they save time

struct Cells {
    int first_row, last_row;
    int first_column, columns;  // around the earth

    [[nodiscard]] int count() const { return (last_row - first_row + 1) * columns; }

    template <class Use>
    void each(Use use) const {
        for (int row = first_row; row <= last_row; ++row) {
            for (int i = 0; i < columns; ++i)
                use(row * kColumns + (first_column + i) % kColumns);
        }
    }
};

// NaN is the first cell.
int held(double number, int last) {
    return number > 0.0 ? static_cast<int>(std::min(number, static_cast<double>(last))) : 0;
}

Cells cells_of(const Extent& extent) {
    const auto row = [](double latitude) { return held((latitude + 90.0) / kCellDegrees, kRows - 1); };
    const double west = std::fmod(extent.west + 540.0, 360.0) / kCellDegrees;
    const int first = held(west, kColumns - 1);
    const double width = west - first + extent.width / kCellDegrees;
    // A cell more, since an extent may end on the edge of its last one.
    return {row(extent.south), row(extent.north), first,
            held(width, kColumns - 2) + 1 + (width >= 179.0 ? 1 : 0)};
}

}  // namespace

void ExtentIndex::add(const Extent& extent) {
    const std::size_t number = count_++;
    const Cells cells = cells_of(extent);
    if (cells.count() > kMostCells) {
        large_.push_back(number);
        return;
    }
    cells.each([&](int cell) { cells_[cell].push_back(number); });
}

std::vector<std::size_t> ExtentIndex::candidates(const Extent& extent) const {
    std::vector<std::size_t> numbers;
    const Cells cells = cells_of(extent);
    if (static_cast<std::size_t>(cells.count()) > count_ / 4 + kMostCells) {
        numbers.resize(count_);
        std::iota(numbers.begin(), numbers.end(), std::size_t{0});
        return numbers;
    }
    numbers = large_;
    cells.each([&](int cell) {
        const auto found = cells_.find(cell);
        if (found != cells_.end()) numbers.insert(numbers.end(), found->second.begin(), found->second.end());
    });
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

}  // namespace zellap10::plotter
