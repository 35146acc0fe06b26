#include <cmath>

#include <samples/sheet.h>

namespace samples {

namespace {

constexpr double kNearEdge = 1e-9;  // degrees, within which a crossing is on the edge of the area

const char* name_of(ProjectionKind kind) {
    switch (kind) {
        case ProjectionKind::kMercator:
            return "MERCATOR";
        case ProjectionKind::kPolyconic:
            return "POLYCONIC";
        case ProjectionKind::kTransverseMercator:
            return "TRANSVERSE MERCATOR";
        default:
            return "LAMBERT CONFORMAL CONIC";
    }
}

// The longitude for the file, from -180 to 180.
double file_longitude(double lon) {
    return lon > 180 ? lon - 360 : lon;
}

std::vector<GeoEntry> entries_of(const Sheet& sheet) {
    const Projection& projection = sheet.projection;
    std::vector<GeoEntry> entries = {
        {"Name", sheet.name},
        {"Scale", std::to_string(sheet.scale.denominator)},
        {"Resolution", std::to_string(sheet.scale.du)},
        {"Skew Angle", decimal_text(sheet.scale.skew_degrees, 1)},
    };
    entries.insert(entries.end(), sheet.extra_entries.begin(), sheet.extra_entries.end());
    if (projection.named) {
        entries.push_back({"Projection", name_of(projection.kind)});
        entries.push_back({"PP", decimal_text(projection.central_meridian, 6)});
        entries.push_back({"P1", decimal_text(projection.origin_lat, 6)});
    }
    if (projection.named && projection.kind == ProjectionKind::kLambert) {
        entries.push_back({"P5", decimal_text(projection.first_parallel, 6)});
        entries.push_back({"P6", decimal_text(projection.second_parallel, 6)});
    }
    entries.push_back({"Latitude Offset", decimal_text(projection.lat_offset, 6)});
    entries.push_back({"Longitude Offset", decimal_text(projection.lon_offset, 6)});
    entries.push_back({"UL Latitude", decimal_text(sheet.area.north, 6)});
    entries.push_back({"UL Longitude", decimal_text(file_longitude(sheet.area.west), 6)});
    entries.push_back({"LR Latitude", decimal_text(sheet.area.south, 6)});
    entries.push_back({"LR Longitude", decimal_text(file_longitude(sheet.area.east), 6)});
    return entries;
}

// Clockwise around the area, from its north-western corner.
std::vector<GeoVertex> vertices_of(const Sheet& sheet) {
    const Area& area = sheet.area;
    const int pieces = sheet.vertices_per_parallel - 1;
    std::vector<GeoVertex> vertices;
    for (int i = 0; i <= pieces; ++i) {
        vertices.push_back({area.north, file_longitude(area.west + (area.east - area.west) * i / pieces)});
    }
    for (int i = pieces; i >= 0; --i) {
        vertices.push_back({area.south, file_longitude(area.west + (area.east - area.west) * i / pieces)});
    }
    return vertices;
}

// The multiples of a step between two ends, both excluded, in degrees.
std::vector<double> steps_inside(double from, double to, double step_minutes) {
    std::vector<double> steps;
    const double step = step_minutes / 60.0;
    for (double n = std::floor(from / step) + 1; n * step < to - kNearEdge; ++n) {
        if (n * step > from + kNearEdge) steps.push_back(n * step);
    }
    return steps;
}

std::vector<Position> point_places(const Sheet& sheet) {
    const Area& area = sheet.area;
    std::vector<Position> places = {
        {area.west, area.north}, {area.east, area.north}, {area.east, area.south}, {area.west, area.south}};
    for (const double lat : steps_inside(area.south, area.north, sheet.crossings.lat_step)) {
        for (const double lon : steps_inside(area.west, area.east, sheet.crossings.lon_step)) {
            places.push_back({lon, lat});
        }
    }
    return places;
}

bool is_under(Pixel at, const std::vector<Area>& insets) {
    for (const Area& inset : insets) {
        if (at.x >= inset.west && at.x <= inset.east && at.y >= inset.north && at.y <= inset.south)
            return true;
    }
    return false;
}

// A point is a whole pixel with the exact position of its centre.
std::vector<GeoPoint> points_of(const Sheet& sheet, const Layout& layout, const std::vector<Area>& insets) {
    std::vector<GeoPoint> points;
    for (const Position place : point_places(sheet)) {
        const Pixel exact = layout.to_pixel(place);
        const Pixel whole = {std::round(exact.x), std::round(exact.y)};
        if (is_under(whole, insets)) continue;
        const Position there = layout.to_position(whole);
        points.push_back(
            {file_longitude(there.lon), there.lat, static_cast<int>(whole.x), static_cast<int>(whole.y)});
    }
    return points;
}

}  // namespace

GeoFile georeference_of(const Sheet& sheet) {
    const Layout layout = layout_of(sheet);
    const std::vector<Layout> inset_layouts = inset_layouts_of(sheet, layout);
    GeoFile file;
    std::vector<Area> covered;  // in pixels
    for (std::size_t i = 0; i < sheet.insets.size(); ++i) {
        const Sheet& inset = sheet.insets[i];
        const Pixel corner = layout.to_pixel(inset.corner);
        covered.push_back(
            {corner.x, corner.x + inset_layouts[i].width, corner.y + inset_layouts[i].height, corner.y});
        file.insets.push_back(
            {entries_of(inset), vertices_of(inset), points_of(inset, inset_layouts[i], {})});
    }
    file.chart = {entries_of(sheet), vertices_of(sheet), points_of(sheet, layout, covered)};
    file.chart.entries.insert(file.chart.entries.begin(), {"Bitmap", sheet.file + ".chart"});
    return file;
}

}  // namespace samples
