#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <zellap10/georef/geo_record.h>
#include <zellap10/plotter/file_stamp.h>
#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/pixel_outline.h>

namespace zellap10::plotter {

/// The pixels that an inset hides on its chart: its reference points and 80 pixels around, where its frame
/// is. As InsetRect, but the record needs no fit. Without corners if the inset has no points.
[[nodiscard]] PixelOutline inset_area(const CGEORec& inset);

/// The areas of all insets of a chart in WGS 84. They are computed when they are asked for first, because
/// that takes a fit. Several threads may ask at the same time.
class HiddenAreas {
public:
    explicit HiddenAreas(std::vector<Outline> known) { set(std::move(known)); }

    /// @param stamp  of the chart; if its files change before the areas are computed, there are none
    HiddenAreas(std::string path, const FileStamp& stamp) : path_(std::move(path)), stamp_(stamp) {}

    [[nodiscard]] const std::vector<Outline>& areas() const;

    /// Whether one of them contains a position.
    [[nodiscard]] bool contain(Position position) const;

    /// Empty if they are not computed yet.
    [[nodiscard]] std::optional<std::vector<Outline>> known() const;

private:
    void set(std::vector<Outline> areas) const;

    const std::string path_;
    const FileStamp stamp_;
    mutable std::mutex mutex_;
    mutable std::optional<std::vector<Outline>> areas_;
    mutable std::vector<std::optional<Extent>> extents_;  // of the areas
};

}  // namespace zellap10::plotter
