#pragma once

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include <testing/guarded_pixels.h>
#include <testing/plain_chart.h>
#include <testing/point_lists.h>
#include <testing/temp_folder.h>
#include <zellap10/chart/zellap.h>

/// The folder of a chart file. As a base class it is destroyed after the chart: Windows cannot remove an open
/// file.
class ChartFolder {
protected:
    TempFolder folder_;
};

/// A chart object with a folder for its files.
class ChartUnderTest : private ChartFolder, public PlainChart {
public:
    ChartUnderTest() = default;

    /// Writes these bytes to a new file and opens it. The file is removed with the object.
    int open(const std::string& bytes, int info_only = 0) {
        const std::string name = "chart" + std::to_string(++opens_) + ".cht";
        return OpenZellap(folder_.write(name, bytes).c_str(), info_only);
    }

private:
    int opens_ = 0;
};

/// All public fields of a chart object except Path, byte by byte, and what they point to.
inline std::vector<std::string> state_of(const CZellap& chart) {
    std::vector<std::string> state;
    const auto add = [&state](const void* begin, const void* end) {
        state.emplace_back(static_cast<const char*>(begin), static_cast<const char*>(end));
    };
    add(&chart, &chart.Path);
    state.emplace_back(chart.TextStream.is_open() ? "text" : "");
    add(&chart.TextStream + 1, &chart + 1);
    if (chart.LineOffsets != nullptr) add(chart.LineOffsets, chart.LineOffsets + chart.LineCount + 1);
    PALETTEENTRY entries[256] = {};
    GetPaletteEntries(chart.PaletteHandle, 0, 256, entries);
    add(entries, entries + 256);
    std::vector<const CGEORec*> records{&chart.BaseRec};
    for (const CGEORec* inset : elements_of(chart.BaseRec.Insets))
        records.push_back(inset);
    for (const CGEORec* record : records) {
        add(record, record + 1);
        for (const CRefPointList* list : {&record->Vertices, &record->Points}) {
            for (const CRefPoint* point : elements_of(*list))
                add(point, point + 1);
        }
    }
    return state;
}

/// The text of a chart of this size, with colours red and blue.
inline std::string text_of_size(int width, int height) {
    return "NOS/NA=SAMPLE,RA=0,0," + std::to_string(width) + "," + std::to_string(height) +
           "\r\nRGB/1,255,0,0\r\nRGB/2,0,0,255\r\n";
}

/// Two lines of 20 pixels at 4 bits per pixel: 8 of colour 1 and 12 of colour 2, then 20 of colour 2.
inline std::string small_chart() {
    using namespace std::string_literals;
    return text_of_size(20, 2) +
           "\x1A\x00\x04"
           "\x01\x0F\x90\x0B\x00"
           "\x02\x90\x13\x00"
           "\x00\x00\x00\x3C\x00\x00\x00\x41\x00\x00\x00\x45"s;
}

/// A chart with runs from 1 to 512 pixels in all colours of its bits per pixel. All lines are different, and
/// so are charts with different bits per pixel.
inline samples::Chart random_chart(int width, int height, int bits_per_pixel) {
    samples::Chart chart;
    chart.width = width;
    chart.height = height;
    chart.bits_per_pixel = bits_per_pixel;
    for (int i = 1; i < 16; ++i)
        chart.colours.push_back({i * 17, 255 - i * 11, i * 53 % 256});
    chart.draw = [width, bits_per_pixel](int line, unsigned char* pixels) {
        std::minstd_rand random(static_cast<unsigned>(line * 8 + bits_per_pixel));
        const auto below = [&random](unsigned bound) { return static_cast<int>((random() >> 5) % bound); };
        for (int left = width; left > 0;) {
            const int length = std::min(left, 1 + below(1U << below(10)));
            pixels = std::fill_n(pixels, length, static_cast<unsigned char>(below(1U << bits_per_pixel)));
            left -= length;
        }
    };
    return chart;
}
