#pragma once

#include <string>
#include <vector>

/// Writes the text of georeference files. Samples, tests, benchmarks and fuzz targets share it; the library
/// does not hold it.
namespace samples {

/// A line of a key and its value, as they stand in the file.
struct GeoEntry {
    std::string key;
    std::string value;
};

/// A position of the picture's outline. The file has the latitude first.
struct GeoVertex {
    double lat = 0;  ///< degrees, north positive
    double lon = 0;  ///< degrees, east positive
};

/// A pixel and its position. The file has the longitude first, and the row ahead of the column.
struct GeoPoint {
    double lon = 0;
    double lat = 0;
    int x = 0;  ///< column
    int y = 0;  ///< row
};

/// The entries of a chart or of an inset.
struct GeoSection {
    std::vector<GeoEntry> entries;  ///< in front of the vertices and points
    std::vector<GeoVertex> vertices;
    std::vector<GeoPoint> points;
};

struct GeoFile {
    GeoSection chart;
    std::vector<GeoSection> insets;
    std::string line_end = "\r\n";
};

/// A number with a fixed count of decimals and a point, whatever locale is set. Twelve decimals of a degree
/// are a ten-thousandth of a millimetre on the ground.
std::string decimal_text(double value, int decimals = 12);

/// The text of the file. Vertices and points are numbered from 1, insets likewise.
std::string geo_text(const GeoFile& file);

}  // namespace samples
