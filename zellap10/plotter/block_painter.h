#pragma once

/// @file
///
/// Paints a block of a view from the charts that lie over each other there.

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include <zellap10/plotter/chart_choice.h>
#include <zellap10/plotter/chart_store.h>
#include <zellap10/plotter/resample.h>
#include <zellap10/plotter/screen_grid.h>

namespace zellap10::plotter {

/// A chart of a frame.
struct FrameChart {
    ChosenChart chosen;
    ChartStore::File* file;
    std::atomic<bool> is_shown{false};  ///< set by the painters

    FrameChart(const ChosenChart& chart, ChartStore::File& chart_file) : chosen(chart), file(&chart_file) {}
};

/// Colours of a scheme for each channel.
class SchemeTable {
public:
    explicit SchemeTable(ColourScheme scheme);
    void apply(Argb* pixels, int count) const;

private:
    bool is_day_;
    std::array<std::array<Argb, 256>, 3> parts_{};  // of blue, green, red
};

/// What all blocks of a frame have in common.
struct Frame {
    ScreenPlane plane;
    SchemeTable colours;
    Argb background;
    BoxTables* boxes;
    int coarser;                                      ///< levels above the right one, to save memory
    bool is_draft;                                    ///< odd rows of a block repeat those above them
    std::vector<std::unique_ptr<FrameChart>> charts;  ///< uppermost first
};

/// A part of a block, at most the block.
struct BlockPart {
    std::int64_t left, top;   ///< of the block, on the plane
    int x, y, width, height;  ///< within the block
};

/// Paints blocks, with memory of its own.
class BlockPainter {
public:
    BlockPainter(const Frame& frame, ChartStore& store);

    /// Paints every pixel of a part.
    ///
    /// @param pixels  of the part's upper left pixel
    /// @param stride  pixels from a row to the next
    /// @return        false if chart data was missing
    bool paint(const BlockPart& part, Argb* pixels, std::ptrdiff_t stride);

    /// The data that the last part lacked.
    [[nodiscard]] std::vector<ChartStore::Missing>& missing() { return missing_; }

private:
    struct Source;

    void paint_chart(FrameChart& chart);
    void paint_cell(const GridCell& cell);
    void paint_row(const GridCell& cell, const Source& source, int row, RowSpan span);
    void paint_run(const Source& source, const BoxRow& first, std::int64_t left, std::int64_t top, int count,
                   Argb* dest) const;
    [[nodiscard]] std::optional<Source> source_of(const GridCell& cell);
    [[nodiscard]] std::optional<Source> source_at(const GridCell& cell, int level, bool wanted);
    [[nodiscard]] bool is_drawn(int y) const { return !frame_.is_draft || y % 2 == 0 || y == part_.y; }
    void repeat_rows();
    [[nodiscard]] bool has_free(int y, RowSpan span) const;
    template <class Use>
    void for_free(int y, RowSpan span, Use use);

    const Frame& frame_;
    ChartStore& store_;
    BlockPart part_{};
    Argb* pixels_ = nullptr;
    std::ptrdiff_t stride_ = 0;
    bool is_complete_ = true;
    std::vector<ChartStore::Missing> missing_;
    int free_ = 0;  // pixels that no chart has taken
    std::array<int, kBlockSide> free_of_row_{};
    std::array<std::array<char, kBlockSide>, kBlockSide> taken_{};
    // Of the chart that is painted.
    FrameChart* chart_ = nullptr;
    std::shared_ptr<const OpenedChart> opened_;
    const OpenedChart::Part* opened_part_ = nullptr;
};

}  // namespace zellap10::plotter
