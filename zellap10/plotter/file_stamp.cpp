#include <filesystem>
#include <system_error>
#include <tuple>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/plotter/file_stamp.h>

namespace zellap10::plotter {

namespace {

namespace fs = std::filesystem;

void look_at(const std::string& path, std::uint64_t& size, std::int64_t& time) {
    try {
        std::error_code error;
        const std::uintmax_t bytes = fs::file_size(path, error);
        if (!error) size = bytes;
        const fs::file_time_type written = fs::last_write_time(path, error);
        if (!error) time = static_cast<std::int64_t>(written.time_since_epoch().count());
    } catch (const std::system_error&) {
        return;  // the path cannot be converted
    }
}

}  // namespace

bool operator==(const FileStamp& a, const FileStamp& b) {
    return std::tie(a.chart_size, a.chart_time, a.georeference_size, a.georeference_time) ==
           std::tie(b.chart_size, b.chart_time, b.georeference_size, b.georeference_time);
}

FileStamp file_stamp(const std::string& chart_path) {
    FileStamp stamp;
    look_at(chart_path, stamp.chart_size, stamp.chart_time);
    look_at(chart::georeference_path(chart_path), stamp.georeference_size, stamp.georeference_time);
    return stamp;
}

}  // namespace zellap10::plotter
