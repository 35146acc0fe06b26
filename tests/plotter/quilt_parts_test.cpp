// What a quilt is made of: levels, means, cells and clips.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/block_mean.h>
#include <testing/chart_under_test.h>
#include <testing/test_chart.h>
#include <zellap10/plotter/chart_store.h>
#include <zellap10/plotter/raster_levels.h>
#include <zellap10/plotter/resample.h>
#include <zellap10/plotter/row_clip.h>
#include <zellap10/plotter/screen_grid.h>

namespace {

using namespace zellap10::plotter;

int channel(Argb colour, int i) {
    return static_cast<int>(colour >> 8 * i & 0xFF);
}

TEST(RasterLevels, AreMeansOfBlocksAndOfThePartsOfThemAtTheEdges) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(samples::chart_bytes(random_chart(1300, 700, 4))), 1);
    const ColourTable colours = colours_of(chart);
    for (const int level : {0, 1, 2, 3, 7}) {
        SCOPED_TRACE(level);
        const CSize size = level_size(chart.GetDocumentSize(), level);
        const int columns = (size.cx + kTileSide - 1) / kTileSide;
        const int rows = (size.cy + kTileSide - 1) / kTileSide;
        for (const int row : {0, rows - 1}) {
            const std::vector<Tile> tiles =
                decode_tiles(chart, colours, {level, row, 0, columns}, [] { return true; });
            ASSERT_EQ(tiles.size(), static_cast<std::size_t>(columns));
            for (int i = 0; i < 60; ++i) {
                const int column = i % columns;
                const Tile& tile = tiles[static_cast<std::size_t>(column)];
                const int x = i * 7919 % tile.width;
                const int y = i * 104729 % tile.height;
                const int level_x = std::clamp(column * kTileSide - kTileApron + x, 0, size.cx - 1);
                const int level_y = std::clamp(row * kTileSide - kTileApron + y, 0, size.cy - 1);
                EXPECT_EQ(tile.pixels[static_cast<std::size_t>(y * tile.width + x)],
                          mean_of_block(chart, colours, level_x, level_y, 1 << level))
                    << level_x << ' ' << level_y;
            }
        }
    }
}

// A line of 12 million pixels takes as long as several others, so it is decoded in pieces.
TEST(RasterLevels, EndBetweenTwoPiecesOfALine) {
    constexpr int kLines = 5;
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(wide_chart_bytes(12000000, kLines)), 1);
    const ColourTable colours = colours_of(chart);
    const TileRow row{kMostLevel, 0, 0, 6};
    int calls = 0;
    const auto ends_at = [&](int end) {
        calls = 0;
        return decode_tiles(chart, colours, row, [&calls, end] { return ++calls != end; }).empty();
    };
    EXPECT_FALSE(ends_at(-1));
    EXPECT_EQ(calls, kLines * 3);
    for (const int end : {1, 2, 3, 7, kLines * 3}) {
        EXPECT_TRUE(ends_at(end));
        EXPECT_EQ(calls, end) << "nothing is decoded after that";
    }
}

// Two views that are drawn without a break must not keep the workers from decoding.
TEST(ChartStore, DecodesAfterAWhileIfPausedAndEndsIfPaused) {
    const TempFolder folder;
    ChartStore store(std::size_t{32} << 20, 2, {});
    const std::string path = TestChart().write(folder, "a");
    store.pause();
    std::shared_ptr<const Tile> tile;
    for (int i = 0; i < 2; ++i) {
        store.begin();
        ChartStore::File& file = store.file(path, 0);
        const auto opened = store.chart(file);
        ASSERT_EQ(opened != nullptr, i == 1);
        if (opened != nullptr) static_cast<void>(store.tile(file, *opened, {0, 0, 0}, true));
        store.end(false);
        store.wait();
        if (opened != nullptr) tile = store.tile(file, *opened, {0, 0, 0}, false);
    }
    EXPECT_NE(tile, nullptr);
    store.pause();
}

class Raster {
public:
    Raster() {
        std::minstd_rand random(1);
        for (Argb& pixel : pixels_)
            pixel = 0xFF000000 | static_cast<Argb>(random() & 0xFFFFFF);
    }
    static constexpr int kSide = 300;

    const Argb* data() const { return pixels_.data(); }

    // The mean over a box, by the areas of the pixels that it covers.
    double mean(double left, double top, double width, double height, int i) const {
        double sum = 0.0;
        for (int y = static_cast<int>(top); y < top + height; ++y) {
            for (int x = static_cast<int>(left); x < left + width; ++x) {
                const double high = std::min(y + 1.0, top + height) - std::max<double>(y, top);
                const double wide = std::min(x + 1.0, left + width) - std::max<double>(x, left);
                sum += wide * high * channel(pixels_[static_cast<std::size_t>(y * kSide + x)], i);
            }
        }
        return sum / (width * height);
    }

private:
    std::vector<Argb> pixels_ = std::vector<Argb>(kSide * kSide);
};

// Weights have eight bits and places too, so that a mean of contrasting pixels is met to three of 255.
TEST(Resample, GivesTheMeansOfBoxes) {
    const Raster raster;
    const struct {
        const char* name;
        double left, top, left_step, top_step, width, height;
        int count;
    } rows[] = {
        {"bilinear, level", 10.3, 20.6, 0.7, 0.0, 1.0, 1.0, 128},
        {"bilinear, turned", 100.2, 20.1, -0.5, 0.6, 1.0, 1.0, 100},
        {"reduced, level", 5.9, 30.25, 1.7, 0.0, 1.7, 1.4, 128},
        {"reduced, turned", 20.0, 250.9, 1.1, -0.9, 1.42, 1.42, 128},
        {"reduced across, enlarged down", 20.0, 50.0, 1.9, 0.0, 1.9, 1.0, 128},
        {"at the limit of two pixels", 20.5, 50.5, 1.9, 0.1, 2.0, 2.0, 77},
        {"upright", 40.5, 20.5, 0.0, 1.5, 1.5, 1.5, 7},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto fixed = [](double number) { return static_cast<std::int32_t>(number * kOnePixel); };
        const BoxRow boxes{fixed(row.left), fixed(row.top), fixed(row.left_step), fixed(row.top_step),
                           row.count};
        Argb pixels[kMostResampled + 1];
        pixels[row.count] = 12345;
        resample(raster.data(), Raster::kSide, boxes, BoxWeights(fixed(row.width)),
                 BoxWeights(fixed(row.height)), pixels);
        EXPECT_EQ(pixels[row.count], 12345U);
        double most = 0.0;
        for (int n = 0; n < row.count; ++n) {
            for (int i = 0; i < 3; ++i) {
                const double mean = raster.mean(row.left + n * row.left_step, row.top + n * row.top_step,
                                                row.width, row.height, i);
                most = std::max(most, std::fabs(channel(pixels[n], i) - mean));
            }
            EXPECT_EQ(pixels[n] >> 24, 0xFFU);
        }
        EXPECT_LT(most, 3.0);
    }
}

TEST(Resample, KeepsAnEvenColour) {
    const std::vector<Argb> raster(100 * 100, 0xFF80C1FE);
    for (const std::int32_t side : {kOnePixel, kOnePixel * 5 / 4, kOnePixel * 19 / 10}) {
        for (const std::int32_t rise : {0, 12345}) {
            Argb pixels[40];
            resample(raster.data(), 100, {70000, 81234, 54321, rise, 40}, BoxWeights(side), BoxWeights(side),
                     pixels);
            EXPECT_EQ(std::count(pixels, pixels + 40, 0xFF80C1FEU), 40) << side << ' ' << rise;
        }
    }
}

// A chart of 4 degrees by 4, 1000 pixels to the degree, or of another scale about its middle.
std::optional<Georeference> georeference(const char* projection, double west, double south, double degrees) {
    CGEORec record;
    for (int i = 0; i < 25; ++i) {
        const int x = i % 5 * 1000;
        const int y = i / 5 * 1000;
        double longitude = west + degrees * x / 4000.0;
        if (longitude > 180.0) longitude -= 360.0;
        // Farther north the rows lie closer, as on most charts.
        const double latitude = south + degrees * (4000 - y) / 4000.0 - 2e-9 * degrees * y * y;
        record.Points.AddTail(new CRefPoint("", x, y, longitude, latitude));
    }
    record.Projection = projection;
    const auto text = [](double number) { return CString(std::to_string(number).c_str()); };
    record.PP = text(west + degrees / 2);
    record.P1 = text(south);
    record.P5 = text(south + degrees / 4);
    record.P6 = text(south + degrees / 2);
    record.solvepoly();
    return Georeference::from(record, {4001, 4001});
}

TEST(ScreenGrid, IsWithinAQuarterOfAChartPixel) {
    const struct {
        const char* projection;
        double west, south, degrees;
    } charts[] = {
        {"", -4, 48, 4},           {"", 178, -20, 4},
        {"MERCATOR", -4, 48, 4},   {"MERCATOR", 10, 76, 6},
        {"LAMBERT", -8, 46, 9},    {"TRANSVERSE MERCATOR", -6, 49, 6},
        {"POLYCONIC", -70, 40, 5}, {"LAMBERT", 1.3, 51.1, 0.04},
    };
    double worst = 0.0;
    for (const auto& chart : charts) {
        const auto fit = georeference(chart.projection, chart.west, chart.south, chart.degrees);
        ASSERT_TRUE(fit);
        const Position middle{chart.south + chart.degrees / 2, chart.west + chart.degrees / 2};
        for (const double reduction : {0.1, 0.9, 1.7, 5.0, 40.0}) {
            for (const double course : {0.0, 30.0, 90.0, 211.0}) {
                SCOPED_TRACE(std::string(chart.projection) + ' ' + std::to_string(reduction) + ' ' +
                             std::to_string(course));
                const MapView view(middle, fit->metres_per_pixel().value() * reduction, {1200, 900}, course);
                const ScreenPlane plane(view);
                std::int64_t compared = 0;
                const auto block_at = [](std::int64_t place) {
                    return static_cast<std::int64_t>(std::floor(static_cast<double>(place) / kBlockSide));
                };
                for (const int block : {0, 1, -4}) {
                    const std::int64_t left = (block_at(plane.left() + 600) + block) * kBlockSide;
                    const std::int64_t top = (block_at(plane.top() + 450) - block / 2) * kBlockSide;
                    for (const GridCell& cell : cells_of(plane, *fit, left, top)) {
                        for (int i = 0; i < 40; ++i) {
                            const int x = i * 31 % cell.side;
                            const int y = i * 17 % cell.side;
                            const auto position = plane.position_of(cell.left + x, cell.top + y);
                            const auto exact = fit->pixel_of(position.value());
                            const Vector at = cell.at(x, y);
                            if (exact->x < 0 || exact->y < 0 || exact->x > 4000 || exact->y > 4000) continue;
                            worst = std::max({worst, std::fabs(exact->x - at.x), std::fabs(exact->y - at.y)});
                            ++compared;
                        }
                    }
                }
                EXPECT_GT(compared, 0);
            }
        }
    }
    EXPECT_LE(worst, 0.25);
    EXPECT_GT(worst, 0.01) << "or nothing was interpolated";
}

TEST(ScreenGrid, IsTheSameForViewsOnePixelApartAndForWebTiles) {
    const MapView view({50.1, -1.2}, 77.7, {900, 700}, 33.0);
    const ScreenPlane plane(view);
    MapView moved = view;
    for (int i = 0; i < 100; ++i)
        moved = moved.moved_by(3.0, -2.0);
    const ScreenPlane later(moved);
    EXPECT_TRUE(later.is_same(plane));
    EXPECT_EQ(later.left() - plane.left(), 300);
    EXPECT_EQ(later.top() - plane.top(), -200);
    EXPECT_FALSE(ScreenPlane(view.moved_by(0.5, 0.0)).is_same(plane));
    const ScreenPlane tile(*MapView::of_tile(12, 2035, 1375));
    EXPECT_EQ(tile.left(), (2035 - 2048) * 256);
    EXPECT_EQ(tile.top(), (1375 - 2048) * 256);
    EXPECT_TRUE(tile.is_same(ScreenPlane(MapView::of_tile(11, 1017, 687, 512)->resized({1024, 768}))));
}

// A pixel belongs to an area if its centre does, by the plain test of each.
PixelOutline star(double points, double depth) {
    std::vector<ChartPixel> corners;
    for (int i = 0; i < 3000; ++i) {
        const double angle = i * 2.0 * 3.14159265 / 3000.0;
        const double radius = 900.0 + depth * std::sin(points * angle);
        corners.push_back({radius * std::cos(angle) + 60.0, radius * std::sin(angle) + 60.0});
    }
    return PixelOutline(corners);
}

// Many corners, and more small triangles than a cell meets.
ChartArea large_area() {
    std::vector<PixelOutline> holes;
    for (int i = 0; i < 900; ++i) {
        const ChartPixel at{i % 30 * 17.0 - 200.0, i / 30 * 19.0 - 200.0};
        holes.push_back(PixelOutline({at, {at.x + 9.0, at.y + 3.0}, {at.x + i % 7, at.y + 30.0}}));
    }
    return {star(40.0, 860.0), Holes(holes), 123, 200};
}

TEST(RowClip, GivesThePixelsInsideAnArea) {
    const ChartArea areas[] = {
        {PixelOutline({{10, 10}, {120, 5}, {125, 60}, {70, 60}, {70, 40}, {50, 40}, {50, 130}, {12, 125}}),
         Holes({PixelOutline({{20, 20}, {40, 20}, {40, 35}, {20, 35}}),
                PixelOutline({{90, 1}, {110, 1}, {100, 90}})}),
         123, 200},
        large_area()};
    const GridCell cells[] = {
        {0, 0, 128, {{0, 0}, {128, 0}, {0, 128}, {128, 128}}},
        {0, 0, 128, {{60, -30}, {150, 60}, {-30, 60}, {60, 150}}},
        {0, 0, 64, {{128, 128}, {0, 128}, {128, 0}, {0, 0}}},
        {0, 0, 64, {{20, 60}, {30, 61}, {19, 70}, {29, 71}}},
        {0, 0, 64, {{200, 60}, {300, 61}, {190, 70}, {290, 71}}},
    };
    EXPECT_LT(star(5.0, 300.0).corners_around({900, 0}, {990, 90}).size(), 700U) << "of 3000";
    EXPECT_LT(areas[1].holes.around({0, 0}, {50, 50}).size(), 100U) << "of 900";
    for (const ChartArea& area : areas) {
        for (const GridCell& cell : cells) {
            CellClip clip(area, cell);
            for (int row = 0; row < cell.side; ++row) {
                std::vector<char> inside(static_cast<std::size_t>(cell.side), 0);
                for (const RowSpan& span : clip.spans(row))
                    std::fill(inside.begin() + span.first, inside.begin() + span.end, 1);
                for (int x = 0; x < cell.side; ++x) {
                    const Vector at = cell.at(x, row);
                    // Off the edges, where rounding decides.
                    const bool all = area.contains({at.x - 0.01, at.y - 0.01});
                    if (area.contains({at.x + 0.01, at.y + 0.01}) != all) continue;
                    if (area.contains({at.x - 0.01, at.y + 0.01}) != all) continue;
                    if (area.contains({at.x + 0.01, at.y - 0.01}) != all) continue;
                    EXPECT_EQ(inside[static_cast<std::size_t>(x)] != 0, all) << x << ' ' << row;
                }
            }
        }
    }
}

}  // namespace
