#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <zellap10/chart/run_decoder.h>
#include <zellap10/chart/zellap.h>

namespace zellap10::chart {

inline bool is_open(const CZellap& chart) {
    return chart.ChartFile != nullptr && chart.LineOffsets != nullptr;
}

/// Lines of the chart that are in the line table; 0 if no chart is open.
inline int readable_lines(const CZellap& chart) {
    return is_open(chart) ? std::clamp(chart.Height, 0, std::max(chart.LineCount, 0)) : 0;
}

/// Whether a chart is open and a rectangle is inside it.
inline bool is_inside(const CZellap& chart, int first_line, int line_count, int first_col, int col_count) {
    return is_open(chart) && first_line >= 0 && first_col >= 0 &&
           static_cast<std::int64_t>(first_line) + line_count <= readable_lines(chart) &&
           static_cast<std::int64_t>(first_col) + col_count <= std::max(chart.Width, 0);
}

inline RunCoding coding_of(const CZellap& chart) {
    return {static_cast<unsigned>(chart.RunMask), static_cast<unsigned>(chart.ColourMask), chart.ColourShift};
}

/// Reads lines of an open chart during one call.
class LineReader {
public:
    /// @param end_line  the line after the last of the call
    LineReader(const CZellap& chart, int end_line)
        : offsets_(chart.LineOffsets),
          coding_(coding_of(chart)),
          pieces_(chart.ChartFile, chart.LineOffsets[end_line], 4096) {}

    /// Calls `use` with each run of a range of one or more columns, from left to right, and with the number
    /// of its pixels in the range. For the first run, that number may be 0.
    template <class Use>
    void read(int line, int first_col, int col_count, Use use) {
        PieceBytes bytes(pieces_, pieces_.at(offsets_[line]));
        bytes.skip_line_number();
        Run run{};
        std::int64_t end = 0;
        do {
            end += bytes.pass_runs(first_col - end, coding_);
            run = bytes.next_run(coding_);
            end += run.length;
        } while (end < first_col);

        auto count = static_cast<std::size_t>(end - first_col);
        for (auto left = static_cast<std::size_t>(col_count);;) {
            count = std::min(left, count);
            use(run, count);
            left -= count;
            if (left == 0) return;
            run = bytes.next_run(coding_);
            count = run.length;
        }
    }

private:
    const std::int32_t* offsets_;
    RunCoding coding_;
    Pieces pieces_;
};

}  // namespace zellap10::chart
