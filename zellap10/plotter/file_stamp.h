#pragma once

#include <cstdint>
#include <string>

namespace zellap10::plotter {

/// Sizes and times of a chart file and of its georeference file: if they are the same, so are the files.
struct FileStamp {
    std::uint64_t chart_size = 0;
    std::int64_t chart_time = 0;
    std::uint64_t georeference_size = 0;
    std::int64_t georeference_time = 0;
};

bool operator==(const FileStamp& a, const FileStamp& b);

/// The stamp of a chart. A file that cannot be looked at has the size and time of none.
[[nodiscard]] FileStamp file_stamp(const std::string& chart_path);

}  // namespace zellap10::plotter
