#include "samples/geo_writer.h"

#include <iomanip>
#include <locale>
#include <sstream>

namespace samples {

namespace {

void append_section(std::string& text, const GeoSection& section, const std::string& line_end) {
    for (const GeoEntry& entry : section.entries)
        text += entry.key + "=" + entry.value + line_end;
    int number = 1;
    for (const GeoVertex& vertex : section.vertices) {
        text += "Vertex" + std::to_string(number++) + "=" + decimal_text(vertex.lat) + " " +
                decimal_text(vertex.lon) + line_end;
    }
    number = 1;
    for (const GeoPoint& point : section.points) {
        text += "Point" + std::to_string(number++) + "=" + decimal_text(point.lon) + " " +
                decimal_text(point.lat) + " " + std::to_string(point.y) + " " + std::to_string(point.x) +
                line_end;
    }
}

}  // namespace

std::string decimal_text(double value, int decimals) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(decimals) << value;
    return text.str();
}

std::string geo_text(const GeoFile& file) {
    std::string text;
    append_section(text, file.chart, file.line_end);
    int number = 1;
    for (const GeoSection& inset : file.insets) {
        text += "[Inset " + std::to_string(number++) + "]" + file.line_end;
        append_section(text, inset, file.line_end);
    }
    return text;
}

}  // namespace samples
