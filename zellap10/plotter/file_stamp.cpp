#include <tuple>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/platform/file_facts.h>
#include <zellap10/plotter/file_stamp.h>

namespace zellap10::plotter {

bool operator==(const FileStamp& a, const FileStamp& b) {
    return std::tie(a.chart_size, a.chart_time, a.georeference_size, a.georeference_time) ==
           std::tie(b.chart_size, b.chart_time, b.georeference_size, b.georeference_time);
}

FileStamp file_stamp(const std::string& chart_path) {
    FileStamp stamp;
    if (const auto facts = platform::file_facts(chart_path)) {
        stamp.chart_size = facts->size;
        stamp.chart_time = facts->time;
    }
    if (const auto facts = platform::file_facts(chart::georeference_path(chart_path))) {
        stamp.georeference_size = facts->size;
        stamp.georeference_time = facts->time;
    }
    return stamp;
}

}  // namespace zellap10::plotter
