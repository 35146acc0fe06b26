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

#include <examples/overlay.h>
#include <examples/picture.h>
#include <examples/route.h>
#include <zellap10/zellap10.h>

namespace {

constexpr int kWindowWidth = 1920;  // of the picture at full scale, pixels
constexpr int kWindowHeight = 1080;
constexpr int kReducedWidth = 1600;  // of the reduced picture, pixels, at the most

// The colours of all 256 palette indexes, black where the palette ends.
std::vector<Rgb> colours_of(const CZellap& chart) {
    PALETTEENTRY entries[256] = {};
    GetPaletteEntries(chart.GetPaletteHandle(), 0, 256, entries);
    std::vector<Rgb> colours;
    for (const PALETTEENTRY& entry : entries) {
        colours.push_back({entry.peRed, entry.peGreen, entry.peBlue});
    }
    return colours;
}

void colour_row(const unsigned char* indexes, const std::vector<Rgb>& colours, int count, Rgb* row) {
    std::transform(indexes, indexes + count, row, [&](unsigned char index) { return colours[index]; });
}

void print_header(const CZellap& chart) {
    const CSize size = chart.GetDocumentSize();
    std::printf("name            %s\n", chart.ChartName);
    std::printf("size            %d x %d pixels\n", size.cx, size.cy);
    std::printf("DU              %d\n", chart.DU);
    std::printf("bits per pixel  %d\n", chart.BitsPerPixel);
    std::printf("colours         %d, widened to %u\n", chart.HeaderColourCount,
                GetPaletteEntries(chart.GetPaletteHandle(), 0, 0, nullptr));
}

void print_route(const CGEORec& record, const std::vector<Waypoint>& route) {
    for (std::size_t i = 0; i < route.size(); ++i) {
        const Waypoint& here = route[i];
        std::printf("%-16slat %s, lon %s  %s\n", i == 0 ? "route" : "",
                    static_cast<const char*>(record.deg2dms(here.lat)),
                    static_cast<const char*>(record.deg2dms(here.lon)), here.name);
        if (i + 1 == route.size()) break;
        double bearing = 0;
        const double miles = m_b_d(here.lat, here.lon, route[i + 1].lat, route[i + 1].lon, &bearing);
        std::printf("                    bearing %05.1f, %.2f miles\n", bearing, miles);
    }
}

// How far the record puts its own reference points from their pixels.
void print_residuals(const CGEORec& record) {
    double sum = 0;
    double largest = 0;
    for (const CRefPoint* point : record.Points) {
        double x = 0;
        double y = 0;
        record.wpxy(point->Longitude, point->Latitude, &x, &y);
        const double apart = std::hypot(x - point->X, y - point->Y);
        sum += apart * apart;
        largest = std::max(largest, apart);
    }
    const auto count = static_cast<int>(record.Points.GetCount());
    std::printf("points          %d, residual %.1e pixels rms, %.1e the largest\n", count,
                std::sqrt(sum / std::max(count, 1)), largest);
}

void print_record(const CGEORec& record, double middle_x, double middle_y) {
    const bool known = record.ProjCode != 0;
    std::printf("projection      %s, code %d%s\n",
                record.Projection.IsEmpty() ? "none named" : static_cast<const char*>(record.Projection),
                record.ProjCode, known ? "" : ": polynomials");
    std::printf("scale           1:%s, datum %s, offsets %.6f north, %.6f east\n",
                static_cast<const char*>(record.Scale), static_cast<const char*>(record.Datum),
                record.LatitudeOffset, record.LongitudeOffset);
    std::printf("180th meridian  %s\n", record.Wraps180 != 0 ? "crossed" : "not crossed");
    print_residuals(record);
    double lon = 0;
    double lat = 0;
    record.pwxy(middle_x, middle_y, &lon, &lat);
    std::printf("middle pixel    %.1f, %.1f is lat %s, lon %s\n", middle_x, middle_y,
                static_cast<const char*>(record.deg2dms(lat)), static_cast<const char*>(record.deg2dms(lon)));
    std::printf("grid drawn      each %d minutes\n", grid_step(record));
}

std::vector<PixelRect> inset_rects_of(const CGEORec& base) {
    std::vector<PixelRect> rects;
    for (const CGEORec* inset : base.Insets)
        rects.push_back(inset->InsetRect);
    return rects;
}

void print_georeference(const CGEORec& base, CSize size, const std::vector<Waypoint>& route) {
    if (base.Points.IsEmpty()) {
        std::printf("no georeference\n");
        return;
    }
    print_record(base, (size.cx - 1) / 2.0, (size.cy - 1) / 2.0);
    std::printf("insets          %d\n", static_cast<int>(base.Insets.GetCount()));
    print_route(base, route);
    for (const CGEORec* inset : base.Insets) {
        const PixelRect& rect = inset->InsetRect;
        std::printf("inset           %s, columns %d to %d, lines %d to %d\n",
                    static_cast<const char*>(inset->Name), rect.left, rect.right, rect.top, rect.bottom);
        print_record(*inset, (rect.left + rect.right) / 2.0, (rect.top + rect.bottom) / 2.0);
    }
}

// What is plotted on the chart stays off its insets, and what is plotted on an inset stays inside it.
void plot(const View& part, const CGEORec& base, const std::vector<Waypoint>& route) {
    if (base.Points.IsEmpty()) return;
    View view = part;
    view.excluded = inset_rects_of(base);
    draw_overlay(view, base, route);
    view.excluded.clear();
    for (const CGEORec* inset : base.Insets) {
        view.included = {inset->InsetRect};
        draw_overlay(view, *inset, route);
    }
}

// A part of the chart, pixel for pixel; the rectangle must lie inside the chart.
Picture full_scale(CZellap& chart, const PixelRect& part) {
    Picture picture(part.right - part.left, part.bottom - part.top);
    std::vector<unsigned char> indexes(picture.pixels.size());
    if (chart.getMultiLines(part.top, picture.height, part.left, picture.width, indexes.data()) == 0) {
        throw std::runtime_error("the chart's lines cannot be read");
    }
    colour_row(indexes.data(), colours_of(chart), static_cast<int>(indexes.size()), picture.row(0));
    return picture;
}

// The whole chart, reduced by a whole factor.
Picture reduced(CZellap& chart, int factor) {
    const CSize size = chart.GetDocumentSize();
    Picture picture(size.cx / factor, size.cy / factor);
    const std::vector<Rgb> colours = colours_of(chart);
    std::vector<unsigned char> indexes(static_cast<std::size_t>(picture.width));
    for (int y = 0; y < picture.height; ++y) {
        if (chart.getAALine(y * factor, 0, size.cx, indexes.data(), factor, factor) == 0) {
            throw std::runtime_error("the chart's lines cannot be reduced");
        }
        colour_row(indexes.data(), colours, picture.width, picture.row(y));
    }
    return picture;
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

void save(const Picture& picture, const std::filesystem::path& path, int factor) {
    write_png(picture, path.string());
    std::printf("picture         %s, %d x %d pixels, reduced by %d\n", path.string().c_str(), picture.width,
                picture.height, factor);
}

void save_part(CZellap& chart, const PixelRect& part, const std::filesystem::path& path,
               const std::vector<Waypoint>& route) {
    if (part.left >= part.right || part.top >= part.bottom) return;
    Picture picture = full_scale(chart, part);
    plot({picture, part.left, part.top, 1, {}, {}}, *chart.GetBaseGeoRec(), route);
    save(picture, path, 1);
}

void save_pictures(CZellap& chart, const std::filesystem::path& stem, const std::vector<Waypoint>& route) {
    const CSize size = chart.GetDocumentSize();
    const CGEORec& base = *chart.GetBaseGeoRec();
    const int factor = (size.cx + kReducedWidth - 1) / kReducedWidth;
    Picture whole = reduced(chart, factor);
    plot({whole, 0, 0, factor, {}, {}}, base, route);
    save(whole, stem.string() + ".png", factor);
    save_part(chart, window_on(size), stem.string() + "_window.png", route);
    int number = 1;
    for (const PixelRect& rect : inset_rects_of(base)) {
        save_part(chart, clipped(rect, size), stem.string() + "_inset" + std::to_string(number++) + ".png",
                  route);
    }
}

void show(const std::filesystem::path& chart_file, const std::filesystem::path& output_dir,
          std::vector<Waypoint> route) {
    CZellap chart;
    if (chart.OpenZellap(chart_file.string().c_str(), 0) == 0) {
        throw std::runtime_error(chart_file.string() + " is no chart that can be opened");
    }
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
