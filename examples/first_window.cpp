#include <cstdio>
#include <vector>

#include <zellap10/plotter/plotter.h>
#include <zellap10/zellap10.h>

using namespace zellap10::plotter;

// Fills a picture of 800 by 600 pixels with a chart at half its size, and tells where its middle lies.
int main(int argc, char** argv) {
    if (argc != 2) return 2;
    CZellap chart;
    if (chart.OpenZellap(argv[1], 0) == 0) {
        const auto trouble = trouble_with_chart(argv[1]);
        std::fprintf(stderr, "%s\n", trouble ? trouble->text.c_str() : "Memory ran out.");
        return 1;
    }
    std::vector<Argb> pixels(800 * 600);
    const Window window{100, 100, 2};  // 100 of its pixels right of and below the chart's corner
    draw_window(chart, window, colours_of(chart, Light::kDusk), 0xFF000000,
                {pixels.data(), 800, 600, 800 * 4});

    const Pixel middle = window.on_chart({399.5, 299.5});
    const CGEORec& record = record_at(*chart.GetBaseGeoRec(), middle);  // that of an inset where there is one
    const auto position = position_of(record, middle);
    if (position) std::printf("%s in WGS 84\n", position_text(to_wgs84(record, *position)).c_str());
    return 0;
}
