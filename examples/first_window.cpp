#include <cstdio>
#include <vector>

#include <zellap10/plotter/plotter.h>
#include <zellap10/zellap10.h>

using namespace zellap10::plotter;

// Draws a chart at half its size into a bitmap of 800 by 600 pixels, and prints the position of its centre.
int main(int argc, char** argv) {
    if (argc != 2) return 2;
    CZellap chart;
    if (chart.OpenZellap(argv[1], 0) == 0) {
        const auto diagnosis = diagnose_chart(argv[1]);
        std::fprintf(stderr, "%s\n", diagnosis ? diagnosis->text.c_str() : "Memory ran out.");
        return 1;
    }
    std::vector<Argb> pixels(800 * 600);
    const Viewport viewport{100, 100, 2, 800, 600};  // from chart pixel 200, 200 on
    const Bitmap bitmap{pixels.data(), 800, 600, 800 * 4};
    draw_viewport(chart, viewport, colours_of(chart, ColourScheme::kDusk), 0xFF000000, bitmap);

    const Sheet sheet(*chart.GetBaseGeoRec(), chart.GetDocumentSize());
    const ChartPixel centre = viewport.to_chart({399.5, 299.5});
    const auto georeference = sheet.georeference_at(centre);  // of an inset if there is one
    const auto position = georeference ? georeference->position_of(centre) : std::nullopt;
    if (position) std::printf("%s in WGS 84\n", format_position(*position).c_str());
    return 0;
}
