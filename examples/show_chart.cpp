// The road of a typical use: opens a chart, tells what it says of itself and where it lies, and draws it as
// PNG pictures with a grid, its reference points and a route plotted on it.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <examples/image.h>
#include <examples/overlay.h>
#include <examples/route.h>
#include <zellap10/plotter/plotter.h>
#include <zellap10/zellap10.h>

namespace {

using namespace zellap10::plotter;

constexpr int kWindowWidth = 1920;  // of the picture at full scale, pixels
constexpr int kWindowHeight = 1080;
constexpr int kReducedWidth = 1600;  // of the reduced picture, pixels, at the most
constexpr double kSpeed = 6;         // on the route, knots

void print_header(const CZellap& chart) {
    const CSize size = chart.GetDocumentSize();
    std::printf("name            %s\n", chart.ChartName);
    std::printf("size            %d x %d pixels\n", size.cx, size.cy);
    std::printf("DU              %d\n", chart.DU);
    std::printf("bits per pixel  %d\n", chart.BitsPerPixel);
    std::printf("colours         %d, widened to %u\n", chart.HeaderColourCount,
                GetPaletteEntries(chart.GetPaletteHandle(), 0, 0, nullptr));
}

void print_route(const std::vector<Waypoint>& waypoints) {
    if (waypoints.empty()) return;
    std::vector<Position> positions;
    for (const Waypoint& waypoint : waypoints)
        positions.push_back(waypoint.position);
    const Route route = route_over(positions);
    const char* label = "route";
    for (std::size_t i = 0; i < waypoints.size(); ++i) {
        const char* const name = waypoints[i].name;
        std::printf("%-16s%s%s%s\n", label, format_position(positions[i]).c_str(), *name != '\0' ? "  " : "",
                    name);
        label = "";
        if (i == route.legs.size()) break;
        const Leg& leg = route.legs[i];
        std::printf("                    %s  %s  %s\n", format_course(leg.course).c_str(),
                    format_distance(leg.distance).c_str(),
                    format_duration(time_to_go(leg.distance, kSpeed)).c_str());
    }
    std::printf("                %s in %s at %.0f knots\n", format_distance(route.distance).c_str(),
                format_duration(time_to_go(route.distance, kSpeed)).c_str(), kSpeed);
}

// How far the record puts its own reference points from their pixels.
void print_residuals(const CGEORec& record, const Georeference& georeference) {
    double sum = 0;
    double largest = 0;
    for (const CRefPoint* point : record.Points) {
        const auto pixel = georeference.pixel_of_chart_datum({point->Latitude, point->Longitude});
        if (!pixel) return;
        const double apart = std::hypot(pixel->x - point->X, pixel->y - point->Y);
        sum += apart * apart;
        largest = std::max(largest, apart);
    }
    const auto count = static_cast<int>(record.Points.GetCount());
    std::printf("points          %d, residual %.4f pixels rms, %.4f the largest\n", count,
                std::sqrt(sum / std::max(count, 1)), largest);
}

void print_record(const CGEORec& record, const Georeference& georeference, ChartPixel middle) {
    const bool known = record.ProjCode != 0;
    std::printf("projection      %s, code %d%s\n",
                record.Projection.IsEmpty() ? "none named" : static_cast<const char*>(record.Projection),
                record.ProjCode, known ? "" : ": polynomials");
    std::printf("scale           1:%s, datum %s, offsets %.6f north, %.6f east\n",
                static_cast<const char*>(record.Scale), static_cast<const char*>(record.Datum),
                record.LatitudeOffset, record.LongitudeOffset);
    std::printf("180th meridian  %s\n", record.Wraps180 != 0 ? "crossed" : "not crossed");
    print_residuals(record, georeference);
    if (const auto position = georeference.chart_datum_position_of(middle))
        std::printf("middle pixel    %.1f, %.1f is %s\n", middle.x, middle.y,
                    format_position(*position).c_str());
    std::printf("grid drawn      each %g minutes of arc\n", grid_step(record));
}

void print_georeference(const CGEORec& base, CSize size, const std::vector<Waypoint>& route) {
    const Sheet sheet(base, size);
    if (!sheet.chart()) return;
    print_record(base, *sheet.chart(), {(size.cx - 1) / 2.0, (size.cy - 1) / 2.0});
    std::printf("insets          %d\n", static_cast<int>(base.Insets.GetCount()));
    print_route(route);
    std::size_t number = 0;
    for (const CGEORec* inset : base.Insets) {
        const PixelRect& rect = inset->InsetRect;
        const auto& georeference = sheet.insets()[number++];
        std::printf("inset           %s, columns %d to %d, lines %d to %d\n",
                    static_cast<const char*>(inset->Name), rect.left, rect.right, rect.top, rect.bottom);
        if (!georeference) continue;
        print_record(*inset, *georeference, {(rect.left + rect.right) / 2.0, (rect.top + rect.bottom) / 2.0});
    }
}

// As much as fits a window on the middle of the chart.
PixelRect window_on(CSize size) {
    const int width = std::min(size.cx, kWindowWidth);
    const int height = std::min(size.cy, kWindowHeight);
    const int left = (size.cx - width) / 2;
    const int top = (size.cy - height) / 2;
    return {left, top, left + width, top + height};
}

PixelRect clipped(const PixelRect& rect, CSize size) {
    return {std::clamp(rect.left, 0, size.cx), std::clamp(rect.top, 0, size.cy),
            std::clamp(rect.right, 0, size.cx), std::clamp(rect.bottom, 0, size.cy)};
}

void save(CZellap& chart, const Viewport& window, const std::filesystem::path& path,
          const std::vector<Waypoint>& route) {
    Image image(chart, window);
    draw_overlay(image, *chart.GetBaseGeoRec(), route);
    image.write_png(path.string());
    std::printf("picture         %s, %d x %d pixels, reduced by %d\n", path.string().c_str(), window.width,
                window.height, window.reduction);
}

void save_part(CZellap& chart, const PixelRect& part, const std::filesystem::path& path,
               const std::vector<Waypoint>& route) {
    if (part.left >= part.right || part.top >= part.bottom) return;
    save(chart, {part.left, part.top, 1, part.right - part.left, part.bottom - part.top}, path, route);
}

void save_pictures(CZellap& chart, const std::filesystem::path& stem, const std::vector<Waypoint>& route) {
    const CSize size = chart.GetDocumentSize();
    const int factor = (size.cx + kReducedWidth - 1) / kReducedWidth;
    save(chart, {0, 0, factor, (size.cx + factor - 1) / factor, (size.cy + factor - 1) / factor},
         stem.string() + ".png", route);
    save_part(chart, window_on(size), stem.string() + "_window.png", route);
    int number = 1;
    for (const CGEORec* inset : chart.GetBaseGeoRec()->Insets) {
        save_part(chart, clipped(inset->InsetRect, size),
                  stem.string() + "_inset" + std::to_string(number++) + ".png", route);
    }
}

void show(const std::filesystem::path& chart_file, const std::filesystem::path& output_dir,
          std::vector<Waypoint> route) {
    CZellap chart;
    const std::string path = chart_file.string();
    if (chart.OpenZellap(path.c_str(), 0) == 0) {
        const auto diagnosis = diagnose_chart(path);
        throw std::runtime_error(path + ": " + (diagnosis ? diagnosis->text : "It could not be opened."));
    }
    if (const auto diagnosis = diagnose_georeference(path)) std::printf("%s\n", diagnosis->text.c_str());
    if (route.empty()) route = sample_route(chart.ChartName);
    std::filesystem::create_directories(output_dir);
    print_header(chart);
    const CSize size = chart.GetDocumentSize();
    if (size.cx <= 0 || size.cy <= 0) throw std::runtime_error("the chart has no pixels");
    print_georeference(*chart.GetBaseGeoRec(), size, route);
    save_pictures(chart, output_dir / chart_file.stem(), route);
    chart.CloseZellap();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: show_chart CHART_FILE OUTPUT_DIR [LATITUDE,LONGITUDE...]\n");
        return 2;
    }
    try {
        std::vector<Waypoint> route;
        for (int i = 3; i < argc; ++i)
            route.push_back(waypoint_of(argv[i]));
        show(argv[1], argv[2], route);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "show_chart: %s\n", error.what());
        return 1;
    }
    return 0;
}
