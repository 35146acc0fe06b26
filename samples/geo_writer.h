#pragma once

#include <string>
#include <vector>

/// Writes the text of georeference files, for samples, tests, benchmarks and fuzz targets. It is not part of
/// the library.
namespace samples {

/// A line of the file: key=value.
struct GeoEntry {
    std::string key;
    std::string value;
};

/// A vertex of the chart's outline. The file has the latitude first.
struct GeoVertex {
    double lat = 0;  ///< degrees, north positive
    double lon = 0;  ///< degrees, east positive
};

/// A reference point. The file has the longitude first, and the row before the column.
struct GeoPoint {
    double lon = 0;
    double lat = 0;
    int x = 0;  ///< column
    int y = 0;  ///< row
};

/// The entries of a chart or of an inset.
struct GeoSection {
    std::vector<GeoEntry> entries;  ///< before the vertices and points
    std::vector<GeoVertex> vertices;
    std::vector<GeoPoint> points;
};

struct GeoFile {
    GeoSection chart;
    std::vector<GeoSection> insets;
    std::string line_end = "\r\n";
};

/// A number with a decimal point in every locale. Twelve decimals of a degree are 0.0001 mm on the ground.
std::string decimal_text(double value, int decimals = 12);

/// The text of the file. Vertices, points and insets are numbered from 1.
std::string geo_text(const GeoFile& file);

}  // namespace samples
