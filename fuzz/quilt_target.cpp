#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "harness.h"
#include <samples/chart_writer.h>
#include <zellap10/plotter/quilt.h>

// Quilts of one chart with any georeference file: its record and outlines, in any view. An input consists of
// arguments and the georeference file.

namespace {

using namespace zellap10::plotter;

constexpr int kWidth = 96;
constexpr int kHeight = 64;
constexpr Argb kUntouched = 0x01020304;
constexpr Argb kBackground = 0x00ABCDEF;

std::string chart_bytes() {
    samples::Chart chart;
    chart.width = 300;
    chart.height = 200;
    chart.colours = {{1, 2, 3}, {200, 100, 50}};
    chart.draw = [](int line, unsigned char* pixels) {
        for (int x = 0; x < 300; ++x)
            pixels[x] = static_cast<unsigned char>(1 + (x / 9 + line / 7) % 2);
    };
    return samples::chart_bytes(chart);
}

// Any view, or one of a place on the chart.
MapView view_of(fuzz::Input& input, const Catalogue::Entries& entries) {
    const double course = input.real();
    const double latitude = input.real();
    const double longitude = input.real();
    const double metres = input.real();
    const ScreenSize size{kWidth, kHeight};
    if (entries.empty() || !input.flag()) return {{latitude, longitude}, metres, size, course};
    const CatalogueEntry& entry = *entries[entries.size() / 2];
    const Position middle{0.5 * (entry.extent.south + entry.extent.north),
                          entry.extent.west + 0.5 * entry.extent.width};
    const double reduction = 0.05 * (1 + input.take<std::uint8_t>());
    return {middle, entry.metres_per_pixel.value_or(1.0) * reduction, size, course};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = fuzz::folder().write("quilt.chart", chart_bytes());
    fuzz::Input input(data, size);
    fuzz::Input arguments = input.part(fuzz::kArguments);
    fuzz::folder().write("quilt.GEO", input.rest());

    fuzz::Kept kept;
    auto catalogue = std::make_shared<Catalogue>();
    catalogue->add_file(path);
    const MapView view = view_of(arguments, catalogue->entries());
    for (const CatalogueEntry* entry : catalogue->overlapping(view.extent()))
        kept.add(entry->extent.width);
    kept.add(catalogue->covering(view.centre()).size());

    std::vector<Argb> pixels(kWidth * kHeight, kUntouched);
    Quilt quilt(catalogue);
    quilt.draw_complete(view, arguments.flag() ? ColourScheme::kDusk : ColourScheme::kDay, kBackground,
                        {pixels.data(), kWidth, kHeight, kWidth * 4});
    for (const Argb pixel : pixels)
        fuzz::must(pixel == kBackground || pixel >> 24 == 0xFF, "every pixel is a chart's or the background");
    const auto hit = quilt.at(view, {kWidth / 2.0, kHeight / 2.0});
    if (hit) {
        fuzz::must(hit->pixel.x >= -0.5 && hit->pixel.x < 299.5, "a hit is on the chart");
        fuzz::must(hit->pixel.y >= -0.5 && hit->pixel.y < 199.5, "a hit is on the chart");
    }
    kept.bytes(pixels.data(), pixels.size() * sizeof(Argb));
    return 0;
}
