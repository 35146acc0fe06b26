// Opens a chart, and prints its header, its georeference and a route over positions.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include <zellap10/plotter/plotter.h>
#include <zellap10/zellap10.h>

namespace {

using namespace zellap10::plotter;

constexpr double kSpeed = 6;  // on the route, knots

void print_header(const CZellap& chart) {
    const CSize size = chart.GetDocumentSize();
    std::printf("name            %s\n", chart.ChartName);
    std::printf("size            %d x %d pixels\n", size.cx, size.cy);
    std::printf("DU              %d\n", chart.DU);
    std::printf("bits per pixel  %d\n", chart.BitsPerPixel);
    std::printf("colours         %d, widened to %u\n", chart.HeaderColourCount,
                GetPaletteEntries(chart.GetPaletteHandle(), 0, 0, nullptr));
}

void print_route(const std::vector<Position>& waypoints) {
    if (waypoints.empty()) return;
    const Route route = route_over(waypoints);
    const char* label = "route";
    for (std::size_t i = 0; i < waypoints.size(); ++i) {
        std::printf("%-16s%s\n", label, format_position(waypoints[i]).c_str());
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
}

void print_georeference(const CGEORec& base, CSize size, const std::vector<Position>& route) {
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

void show(const std::string& path, const std::vector<Position>& route) {
    CZellap chart;
    if (chart.OpenZellap(path.c_str(), 0) == 0) {
        const auto diagnosis = diagnose_chart(path);
        throw std::runtime_error(path + ": " + (diagnosis ? diagnosis->text : "It could not be opened."));
    }
    if (const auto diagnosis = diagnose_georeference(path)) std::printf("%s\n", diagnosis->text.c_str());
    print_header(chart);
    print_georeference(*chart.GetBaseGeoRec(), chart.GetDocumentSize(), route);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: show_chart CHART_FILE [POSITION...]\n");
        return 2;
    }
    try {
        std::vector<Position> route;
        for (int i = 2; i < argc; ++i) {
            const ParsedPosition parsed = parse_position(argv[i]);
            if (!parsed.position) throw std::runtime_error(std::string(argv[i]) + ": " + parsed.reason);
            route.push_back(*parsed.position);
        }
        show(argv[1], route);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "show_chart: %s\n", error.what());
        return 1;
    }
    return 0;
}
