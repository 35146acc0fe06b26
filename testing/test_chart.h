#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <samples/chart_writer.h>
#include <samples/geo_writer.h>
#include <testing/temp_folder.h>
#include <zellap10/plotter/position.h>

/// The bytes of a chart whose lines are a single run each.
inline std::string wide_chart_bytes(int width, int height) {
    samples::Chart chart;
    chart.width = width;
    chart.height = height;
    chart.colours = {{255, 0, 0}, {0, 0, 255}};
    std::vector<std::string> lines(static_cast<std::size_t>(height));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        samples::append_line_number(lines[i], static_cast<std::uint32_t>(i));
        samples::append_run(lines[i], chart.bits_per_pixel, 1, width);
    }
    return samples::chart_bytes(samples::text_part(chart), chart.bits_per_pixel, lines);
}

/// A chart with 1000 pixels per degree. All its tiles are different, and so are charts of different widths.
struct TestChart {
    int width = 1500;
    int height = 900;
    double north = 50;    ///< of the first row, degrees
    double west = -2;     ///< of the first column
    double step = 0.001;  ///< degrees per pixel
    double offset = 0;    ///< of latitude and longitude, from the chart's datum to WGS 84
    bool has_inset = false;
    std::string name = "TEST CHART";

    /// Returns the path of the chart file.
    std::string write(const TempFolder& folder, const std::string& stem) const {
        folder.write(stem + ".GEO", georeference_text());
        return folder.write(stem + ".chart", bytes());
    }

    std::string georeference_text() const { return samples::geo_text(georeference()); }

    std::string bytes() const {
        samples::Chart chart;
        chart.name = name;
        chart.width = width;
        chart.height = height;
        for (int i = 1; i < 16; ++i)
            chart.colours.push_back({i * 16, 255 - i * 16, i * 73 % 256});
        chart.draw = [this](int line, unsigned char* pixels) {
            for (int x = 0; x < width; ++x)
                pixels[x] =
                    static_cast<unsigned char>(1 + (x / 7 + line / 5 + x * (line / 64) / 300 + width) % 15);
        };
        return samples::chart_bytes(chart);
    }

    zellap10::plotter::Position position(double x, double y) const {
        return {north - y * step, west + x * step};
    }

private:
    samples::GeoFile georeference() const {
        samples::GeoFile file;
        file.chart = section(0, 0, width - 1, height - 1, *this);
        file.chart.entries = {{"Name", name},
                              {"Scale", "250000"},
                              {"Datum", "TEST DATUM"},
                              {"Latitude Offset", samples::decimal_text(offset)},
                              {"Longitude Offset", samples::decimal_text(offset)}};
        if (has_inset) {
            file.insets.push_back(section(200, 100, 400, 250, inset()));
            file.insets.back().entries = {{"Name", "HARBOUR"}};
        }
        return file;
    }

    // Ten times the scale, at another place. It begins at column 200 and row 100.
    TestChart inset() const {
        TestChart chart = *this;
        chart.step = step / 10;
        chart.north = 10;
        chart.west = 20;
        return chart;
    }

    static samples::GeoSection section(int left, int top, int right, int bottom, const TestChart& scale) {
        samples::GeoSection section;
        for (const int x : {left, (left + right) / 2, right}) {
            for (const int y : {top, (top + bottom) / 2, bottom}) {
                const zellap10::plotter::Position position = scale.position(x - left, y - top);
                const double lon = position.longitude;
                section.points.push_back({lon > 180 ? lon - 360 : lon, position.latitude, x, y});
            }
        }
        for (const std::size_t corner : {0U, 6U, 8U, 2U})
            section.vertices.push_back({section.points[corner].lat, section.points[corner].lon});
        return section;
    }
};
