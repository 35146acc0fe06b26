#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include <zellap10/plotter/block_painter.h>

namespace zellap10::plotter {

namespace {

constexpr int kTileBits = 8;
static_assert(1 << kTileBits == kTileSide, "a tile's column is a shift");

std::int64_t fixed(double pixels) {
    return std::llround(pixels * kOnePixel);
}

// A step that long leaves every tile.
std::int32_t fixed_step(double pixels) {
    constexpr double kMost = 30000.0;
    return static_cast<std::int32_t>(fixed(std::clamp(pixels, -kMost, kMost)));
}

// Boxes until the tile changes, at places times 2^16.
std::int64_t boxes_in_tile(std::int64_t place, std::int64_t step, int tile, int begin_tile, int end_tile) {
    const std::int64_t first = std::int64_t{tile} << (kTileBits + kFractionBits);
    const std::int64_t end = std::int64_t{tile + 1} << (kTileBits + kFractionBits);
    if (step > 0 && tile + 1 < end_tile) return std::max<std::int64_t>((end - place + step - 1) / step, 1);
    if (step < 0 && tile > begin_tile) return std::max<std::int64_t>((place - first) / -step + 1, 1);
    return kMostResampled;
}

std::int32_t last_of(std::int32_t first, std::int32_t step, int count) {
    return first + step * (count - 1);
}

// Places of boxes whose three pixels are inside a tile and its apron.
bool fits(std::int32_t first, std::int32_t step, int count, int size) {
    const std::int32_t end = (size - 2) << kFractionBits;
    const std::int32_t last = last_of(first, step, count);
    return first >= 0 && last >= 0 && first < end && last < end;
}

}  // namespace

SchemeTable::SchemeTable(ColourScheme scheme) : is_day_(scheme == ColourScheme::kDay) {
    for (std::size_t channel = 0; channel < parts_.size(); ++channel) {
        for (Argb value = 0; value < 256; ++value)
            parts_[channel][value] = colour_in(scheme, value << 8 * channel);
    }
}

void SchemeTable::apply(Argb* pixels, int count) const {
    if (is_day_) return;
    for (int i = 0; i < count; ++i) {
        const Argb pixel = pixels[i];
        pixels[i] = (pixel & 0xFF000000) | parts_[0][pixel & 0xFF] | parts_[1][pixel >> 8 & 0xFF] |
                    parts_[2][pixel >> 16 & 0xFF];
    }
}

// Tiles of a level under a cell.
struct BlockPainter::Source {
    double scale;          // level pixels per chart pixel
    double width, height;  // of a box, level pixels
    const BoxWeights *across, *down;
    int columns, rows;  // tiles of the level
    int first_column, first_row, end_column, end_row;
    std::vector<std::shared_ptr<const Tile>> tiles;

    [[nodiscard]] const Tile& tile(int column, int row) const {
        return *tiles[static_cast<std::size_t>((row - first_row) * (end_column - first_column) + column -
                                               first_column)];
    }
    [[nodiscard]] double across_of(double chart_x) const { return (chart_x + 0.5) * scale - 0.5 * width; }
    [[nodiscard]] double down_of(double chart_y) const { return (chart_y + 0.5) * scale - 0.5 * height; }
    void fetch(const Box& box) const;
};

// Reads the cache lines under a box of chart pixels. They arrive together then. The rows of a turned view
// would wait for one after the other, which took half of the time.
void BlockPainter::Source::fetch(const Box& box) const {
    constexpr int kLinePixels = 16;
    const auto held = [](double place, int size) {
        return static_cast<int>(std::clamp(place, 0.0, static_cast<double>(size)));
    };
    for (int row = first_row; row < end_row; ++row) {
        for (int column = first_column; column < end_column; ++column) {
            const Tile& part = tile(column, row);
            const double x = static_cast<double>(column) * kTileSide - kTileApron;
            const double y = static_cast<double>(row) * kTileSide - kTileApron;
            const int left = held(across_of(box.min.x) - x, part.width);
            const int right = held(across_of(box.max.x) - x + 3.0, part.width);
            const int bottom = held(down_of(box.max.y) - y + 3.0, part.height);
            for (int line = held(down_of(box.min.y) - y, part.height); line < bottom; ++line) {
                const volatile Argb* const pixels = part.pixels.data() + std::ptrdiff_t{line} * part.width;
                for (int pixel = left; pixel < right; pixel += kLinePixels)
                    static_cast<void>(pixels[pixel]);
            }
        }
    }
}

BlockPainter::BlockPainter(const Frame& frame, ChartStore& store) : frame_(frame), store_(store) {}

bool BlockPainter::paint(const BlockPart& part, Argb* pixels, std::ptrdiff_t stride) {
    part_ = part;
    pixels_ = pixels;
    stride_ = stride;
    is_complete_ = true;
    missing_.clear();
    free_ = 0;
    free_of_row_.fill(0);
    for (int y = part.y; y < part.y + part.height; ++y) {
        if (!is_drawn(y)) continue;
        free_of_row_[static_cast<std::size_t>(y)] = part.width;
        free_ += part.width;
    }
    for (auto& row : taken_)
        row.fill(0);
    const std::optional<Extent> extent = extent_of(frame_.plane, part.left, part.top, kBlockSide);
    for (const auto& chart : frame_.charts) {
        if (free_ == 0) break;
        if (!extent || chart->chosen.entry->extent.overlaps(*extent)) paint_chart(*chart);
    }
    for (int y = part.y; y < part.y + part.height; ++y) {
        for_free(y, {part.x, part.x + part.width}, [&](RowSpan span) {
            Argb* const row = pixels + (y - part.y) * stride - part.x;
            std::fill(row + span.first, row + span.end, frame_.background);
        });
    }
    if (frame_.is_draft) repeat_rows();
    return is_complete_;
}

void BlockPainter::repeat_rows() {
    for (int y = part_.y; y < part_.y + part_.height; ++y) {
        Argb* const row = pixels_ + (y - part_.y) * stride_;
        if (!is_drawn(y)) std::copy_n(row - stride_, part_.width, row);
    }
}

// Calls `use` with the free spans within one, and takes them.
template <class Use>
void BlockPainter::for_free(int y, RowSpan span, Use use) {
    int& free = free_of_row_[static_cast<std::size_t>(y)];
    if (free == 0) return;
    char* const taken = taken_[static_cast<std::size_t>(y)].data();
    int count = 0;
    if (free == part_.width) {
        use(span);
        std::fill(taken + span.first, taken + span.end, 1);
        count = span.end - span.first;
    }
    for (int x = count > 0 ? span.end : span.first; x < span.end;) {
        const int first = static_cast<int>(std::find(taken + x, taken + span.end, 0) - taken);
        const int end = static_cast<int>(std::find(taken + first, taken + span.end, 1) - taken);
        if (first < end) use(RowSpan{first, end});
        std::fill(taken + first, taken + end, 1);
        count += end - first;
        x = end;
    }
    free -= count;
    free_ -= count;
}

bool BlockPainter::has_free(int y, RowSpan span) const {
    if (span.first >= span.end) return false;
    if (free_of_row_[static_cast<std::size_t>(y)] == part_.width) return true;
    const char* const taken = taken_[static_cast<std::size_t>(y)].data();
    return std::memchr(taken + span.first, 0, static_cast<std::size_t>(span.end - span.first)) != nullptr;
}

void BlockPainter::paint_chart(FrameChart& chart) {
    const ChartStore::Failure failure = store_.failure(*chart.file);
    opened_ = store_.chart(*chart.file);
    if (opened_ == nullptr) {
        if (failure == ChartStore::Failure::kFile) return;
        is_complete_ = false;
        missing_.push_back({chart.file, std::nullopt});
        return;
    }
    chart_ = &chart;
    opened_part_ = opened_->part(chart.chosen.entry->inset);
    if (opened_part_ == nullptr) return;
    for (const GridCell& cell : cells_of(frame_.plane, opened_part_->georeference, part_.left, part_.top))
        paint_cell(cell);
}

void BlockPainter::paint_cell(const GridCell& cell) {
    const int left = static_cast<int>(cell.left - part_.left);
    const int top = static_cast<int>(cell.top - part_.top);
    const int first_x = std::max(left, part_.x);
    const int end_x = std::min(left + cell.side, part_.x + part_.width);
    const int first_y = std::max(top, part_.y);
    const int end_y = std::min(top + cell.side, part_.y + part_.height);
    if (first_x >= end_x || first_y >= end_y) return;
    CellClip clip(opened_part_->area, cell);
    std::optional<Source> source;
    for (int y = first_y; y < end_y; ++y) {
        if (free_of_row_[static_cast<std::size_t>(y)] == 0) continue;
        for (const RowSpan& inside : clip.spans(y - top)) {
            const RowSpan span{std::max(inside.first + left, first_x), std::min(inside.end + left, end_x)};
            if (!has_free(y, span)) continue;
            chart_->is_shown = true;
            if (!source) source = source_of(cell);
            if (!source) return;
            for_free(y, span, [&](RowSpan free) {
                paint_row(cell, *source, y - top, {free.first - left, free.end - left});
            });
        }
    }
}

std::optional<BlockPainter::Source> BlockPainter::source_of(const GridCell& cell) {
    const Vector right = cell.corners[1] - cell.corners[0] + cell.corners[3] - cell.corners[2];
    const Vector down = cell.corners[2] - cell.corners[0] + cell.corners[3] - cell.corners[1];
    const double reduction =
        std::max(std::hypot(right.x, down.x), std::hypot(right.y, down.y)) / (2.0 * cell.side);
    const int nominal = level_for(chart_->chosen.reduction);
    const int level = std::clamp(std::clamp(level_for(reduction), nominal - 1, nominal + 1) + frame_.coarser,
                                 0, kMostLevel);
    if (auto source = source_at(cell, level, true)) return source;
    is_complete_ = false;
    for (int other = level + 1; other <= kMostLevel; ++other) {
        if (auto source = source_at(cell, other, false)) return source;
        const CSize size = level_size(opened_->size, other);
        if (size.cx <= kTileSide && size.cy <= kTileSide) break;
    }
    return level > 0 ? source_at(cell, level - 1, false) : std::nullopt;
}

std::optional<BlockPainter::Source> BlockPainter::source_at(const GridCell& cell, int level, bool wanted) {
    const CSize size = level_size(opened_->size, level);
    Source source{std::ldexp(1.0, -level),
                  0.0,
                  0.0,
                  nullptr,
                  nullptr,
                  (size.cx + kTileSide - 1) / kTileSide,
                  (size.cy + kTileSide - 1) / kTileSide,
                  0,
                  0,
                  0,
                  0,
                  {}};

    const Vector right = cell.corners[1] - cell.corners[0] + cell.corners[3] - cell.corners[2];
    const Vector down = cell.corners[2] - cell.corners[0] + cell.corners[3] - cell.corners[1];
    const double per_pixel = source.scale / (2.0 * cell.side);
    const auto side_of = [per_pixel](double x, double y) {
        return std::round(std::clamp(std::hypot(x, y) * per_pixel, 1.0, 2.0) * 256.0) / 256.0;
    };
    source.width = side_of(right.x, down.x);
    source.height = side_of(right.y, down.y);
    // Only the part of the cell that is drawn.
    const double first_x = static_cast<double>(std::max<std::int64_t>(part_.left + part_.x - cell.left, 0));
    const double first_y = static_cast<double>(std::max<std::int64_t>(part_.top + part_.y - cell.top, 0));
    const double end_x = static_cast<double>(
        std::min<std::int64_t>(part_.left + part_.x + part_.width - cell.left, cell.side));
    const double end_y =
        static_cast<double>(std::min<std::int64_t>(part_.top + part_.y + part_.height - cell.top, cell.side));
    const Box box = box_around(
        {cell.at(first_x, first_y), cell.at(end_x, first_y), cell.at(first_x, end_y), cell.at(end_x, end_y)});
    const auto tile_at = [](double pixel, int tiles) {
        return static_cast<int>(std::clamp(std::floor(pixel / kTileSide), 0.0, tiles - 1.0));
    };
    source.first_column = tile_at(source.across_of(box.min.x - 0.1), source.columns);
    source.end_column = tile_at(source.across_of(box.max.x + 0.1), source.columns) + 1;
    source.first_row = tile_at(source.down_of(box.min.y - 0.1), source.rows);
    source.end_row = tile_at(source.down_of(box.max.y + 0.1), source.rows) + 1;
    bool is_complete = true;
    for (int row = source.first_row; row < source.end_row; ++row) {
        for (int column = source.first_column; column < source.end_column; ++column) {
            const TileKey key{level, column, row};
            source.tiles.push_back(store_.tile(*chart_->file, *opened_, key, wanted));
            if (source.tiles.back() != nullptr) continue;
            if (!wanted) return std::nullopt;
            is_complete = false;
            missing_.push_back({chart_->file, key});
        }
    }
    if (!is_complete) return std::nullopt;
    source.fetch(box);
    source.across = &frame_.boxes->of(source.width);
    source.down = &frame_.boxes->of(source.height);
    return source;
}

void BlockPainter::paint_row(const GridCell& cell, const Source& source, int row, RowSpan span) {
    const Vector first = cell.at(0.0, row);
    const Vector step{(cell.at(cell.side, row).x - first.x) / cell.side,
                      (cell.at(cell.side, row).y - first.y) / cell.side};
    BoxRow boxes{};
    boxes.left_step = fixed_step(step.x * source.scale);
    boxes.top_step = fixed_step(step.y * source.scale);
    std::int64_t left = fixed((first.x + 0.5) * source.scale - 0.5 * source.width);
    std::int64_t top = fixed((first.y + 0.5) * source.scale - 0.5 * source.height);
    // Rows that are level to 1/256 pixel are drawn as if they were.
    const std::int64_t rise = std::int64_t{boxes.top_step} * cell.side;
    if (rise < kOnePixel / 256 && rise > -kOnePixel / 256) {
        top += rise / 2;
        boxes.top_step = 0;
    }
    left += std::int64_t{boxes.left_step} * span.first;
    top += std::int64_t{boxes.top_step} * span.first;
    const int x = static_cast<int>(cell.left - part_.left) + span.first;
    const int y = static_cast<int>(cell.top - part_.top) + row;
    Argb* const dest = pixels_ + (y - part_.y) * stride_ + (x - part_.x);
    paint_run(source, boxes, left, top, span.end - span.first, dest);
    frame_.colours.apply(dest, span.end - span.first);
}

// Cuts a run where it passes from a tile to another.
void BlockPainter::paint_run(const Source& source, const BoxRow& first, std::int64_t left, std::int64_t top,
                             int count, Argb* dest) const {
    const auto tile_of = [](std::int64_t place, int begin, int end) {
        return static_cast<int>(
            std::clamp<std::int64_t>(place >> (kTileBits + kFractionBits), begin, end - 1));
    };
    const auto in_tile = [](std::int64_t place, int tile, int size) {
        const std::int64_t most = (std::int64_t{size - 2} << kFractionBits) - 1;
        const std::int64_t origin = (std::int64_t{tile} * kTileSide - kTileApron) * kOnePixel;
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(place - origin, 0, most));
    };
    while (count > 0) {
        const int column = tile_of(left, source.first_column, source.end_column);
        const int row = tile_of(top, source.first_row, source.end_row);
        BoxRow boxes = first;
        const Tile& tile = source.tile(column, row);
        boxes.left = in_tile(left, column, tile.width);
        boxes.top = in_tile(top, row, tile.height);
        boxes.count = static_cast<int>(
            std::min({std::int64_t{count},
                      boxes_in_tile(left, first.left_step, column, source.first_column, source.end_column),
                      boxes_in_tile(top, first.top_step, row, source.first_row, source.end_row),
                      std::int64_t{kMostResampled}}));
        if (!fits(boxes.left, boxes.left_step, boxes.count, tile.width) ||
            !fits(boxes.top, boxes.top_step, boxes.count, tile.height))
            boxes.count = 1;
        resample(tile.pixels.data(), tile.width, boxes, *source.across, *source.down, dest);
        left += std::int64_t{first.left_step} * boxes.count;
        top += std::int64_t{first.top_step} * boxes.count;
        dest += boxes.count;
        count -= boxes.count;
    }
}

}  // namespace zellap10::plotter
