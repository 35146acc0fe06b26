#include "viewer/strip_drawer.h"

#include <algorithm>
#include <memory>

#include <viewer/open_charts.h>
#include <viewer/theme.h>

namespace viewer {

TileStore::Draw strip_drawer(std::vector<std::string> paths) {
    constexpr std::size_t kMostOpen = 4;
    const auto charts = std::make_shared<OpenCharts>(kMostOpen);
    return [charts, paths = std::move(paths)](const Strip& strip, Argb* pixels) {
        const int width = strip.columns * kTileWidth;
        const Argb background = theme_for(strip.layer.light).background;
        CZellap* chart = charts->open(paths[static_cast<std::size_t>(strip.layer.chart)]);
        if (chart == nullptr) {
            std::fill_n(pixels, width * kTileHeight, background);
            return;
        }
        const zellap10::plotter::Viewport part{strip.first_column * kTileWidth, strip.row * kTileHeight,
                                               strip.layer.reduction, width, kTileHeight};
        const auto stride = static_cast<std::ptrdiff_t>(sizeof(Argb)) * width;
        zellap10::plotter::draw_viewport(*chart, part,
                                         zellap10::plotter::colours_of(*chart, strip.layer.light), background,
                                         {pixels, width, kTileHeight, stride});
    };
}

}  // namespace viewer
