#include <algorithm>
#include <chrono>
#include <future>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <viewer/mosaic.h>
#include <viewer/tile_cache.h>
#include <viewer/tile_store.h>

namespace {

using namespace viewer;

TEST(TileCache, DropsWhatWasUsedLongestAgo) {
    const Tile tile(new Argb[kTileWidth * kTileHeight]);
    const auto key = [](int column) { return TileKey{{}, column, 0}; };
    TileCache cache(3 * kTileBytes + 1);
    for (const int column : {1, 2, 3})
        cache.insert(key(column), tile);
    EXPECT_NE(cache.find(key(1)), nullptr);
    cache.insert(key(4), tile);
    EXPECT_EQ(cache.find(key(2)), nullptr);
    cache.insert(key(4), tile);  // is there already
    EXPECT_NE(cache.find(key(3)), nullptr);
    EXPECT_EQ(cache.bytes(), 3 * kTileBytes);
    cache.set_room(kTileBytes);
    EXPECT_EQ(cache.bytes(), kTileBytes);
    EXPECT_NE(cache.find(key(3)), nullptr);
}

// The colour that a pixel of a layer is drawn in: it tells the layer and the place.
Argb colour_at(const Layer& layer, int x, int y) {
    return static_cast<Argb>((layer.chart * 31 + layer.reduction * 7 + x) * 5003 + y) & 0xFFFFFF;
}

void draw_strip(const Strip& strip, Argb* pixels) {
    for (int y = 0; y < kTileHeight; ++y) {
        for (int x = 0; x < strip.columns * kTileWidth; ++x)
            *pixels++ =
                colour_at(strip.layer, strip.first_column * kTileWidth + x, strip.row * kTileHeight + y);
    }
}

void wait_a_moment() {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void wait_until_idle(TileStore& store) {
    while (!store.is_idle())
        wait_a_moment();
}

TEST(TileStore, DrawsWhatIsWantedMostAndNothingTwiceAtOnce) {
    const Layer layer{2, 3, ColourScheme::kNight};
    std::mutex mutex;
    std::vector<Strip> drawn;
    std::promise<void> go_on;
    // Workers note what they draw, and stand still in it until they may go on.
    const auto draw = [&, may_go_on = go_on.get_future().share()](const Strip& strip, Argb*) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            drawn.push_back(strip);
        }
        may_go_on.wait();
    };
    const auto wait_for = [&](std::size_t count) {
        for (;; wait_a_moment()) {
            const std::lock_guard<std::mutex> lock(mutex);
            if (drawn.size() >= count) return drawn;
        }
    };
    TileStore store(100 * kTileBytes, {2, [draw] { return draw; }, [] {}});
    store.want({{layer, 5, 10, 3}});
    wait_for(1);
    EXPECT_FALSE(store.is_idle());
    store.want({{layer, 5, 11, 3}, {layer, 8, 0, 1}, {layer, 6, 0, 1}});  // the first overlaps
    EXPECT_EQ(wait_for(2)[1].row, 8);
    EXPECT_EQ(store.find({layer, 10, 5}), nullptr);
    store.want({{layer, 7, 0, 1}});  // row 6 no longer
    go_on.set_value();
    wait_until_idle(store);
    ASSERT_EQ(drawn.size(), 3u);
    EXPECT_EQ(drawn[2].row, 7);
    EXPECT_NE(store.find({layer, 12, 5}), nullptr);
    EXPECT_EQ(store.find({layer, 13, 5}), nullptr);
}

class MosaicOnAChart : public testing::Test {
protected:
    static constexpr Argb kBackground = 0xFF00FF00;
    static constexpr ScreenSize kWindow{900, 500};
    static constexpr Argb kFrame = 0x12345678;  // around the picture, must stay
    static constexpr int kRoom = 4;
    static constexpr int kStride = kWindow.width + 2 * kRoom;

    MosaicOnAChart() : store(1000 * kTileBytes, {2, [] { return draw_strip; }, [] {}}) {
        camera.resize(kWindow);
        camera.show({8000, 5001});
    }
    Look look() const { return {camera, 0, ColourScheme::kDay}; }
    bool draw() {
        return put_together(store, look(), kBackground,
                            {&pixel(0, 0), kWindow.width, kWindow.height, kStride * 4});
    }
    Argb& pixel(int x, int y) { return pixels[static_cast<std::size_t>((y + kRoom) * kStride + x + kRoom)]; }
    void draw_missing(std::size_t most = 1000) {
        std::vector<Strip> missing = missing_strips(store, look());
        missing.resize(std::min(missing.size(), most));
        store.want(missing);
        wait_until_idle(store);
    }
    Argb expected_at(int x, int y) const {
        if (x < 0 || y < 0 || x >= kWindow.width || y >= kWindow.height) return kFrame;
        const int column = x + camera.part().column;
        const int row = y + camera.part().row;
        const ScreenSize blocks = camera.blocks();
        if (column < 0 || row < 0 || column >= blocks.width || row >= blocks.height) return kBackground;
        return colour_at({0, camera.part().reduction, ColourScheme::kDay}, column, row);
    }

    Camera camera;
    TileStore store;
    std::vector<Argb> pixels = std::vector<Argb>((kWindow.height + 2 * kRoom) * kStride, kFrame);
};

TEST_F(MosaicOnAChart, PutsTilesWhereTheyBelong) {
    const std::pair<int, ChartPixel> rows[] = {
        {0, {100, 60}}, {0, {7990, 4990}}, {2, {4000, 2500}}, {7, {4000, 2500}}};
    for (const auto& [step, middle] : rows) {
        SCOPED_TRACE(step);
        camera.centre_on(middle, step);
        EXPECT_EQ(draw(), step == Camera::kSteps - 1);  // the coarsest comes with the others
        draw_missing();
        EXPECT_TRUE(draw());
        EXPECT_TRUE(missing_strips(store, look()).empty());
        for (int y = -kRoom; y < kWindow.height + kRoom; ++y) {
            for (int x = -kRoom; x < kWindow.width + kRoom; ++x)
                ASSERT_EQ(pixel(x, y), expected_at(x, y)) << x << " " << y;
        }
    }
}

TEST_F(MosaicOnAChart, StretchesACoarserTileOverAMissingOne) {
    camera.centre_on({4000, 2500}, 2);
    draw();
    const Argb grey = pixel(10, 10);
    EXPECT_EQ(pixel(899, 499), grey);
    EXPECT_NE(grey, kBackground);

    camera.centre_on({4000, 2500}, 5);
    draw_missing();
    camera.centre_on({4000, 2500}, 2);
    EXPECT_FALSE(draw());
    for (const int y : {0, 17, 18, 19, 250, 499}) {
        for (int x = 0; x < kWindow.width; ++x) {
            // The middle pixel of the block of 3 lies in this block of 8.
            const int column = ((x + camera.part().column) * 3 + 1) / 8;
            const int row = ((y + camera.part().row) * 3 + 1) / 8;
            ASSERT_EQ(pixel(x, y), colour_at({0, 8, ColourScheme::kDay}, column, row)) << x << " " << y;
        }
    }
}

TEST_F(MosaicOnAChart, WantsTheMiddleOfTheWindowFirst) {
    camera.centre_on({4000, 2500}, 0);
    const std::vector<Strip> strips = missing_strips(store, look());
    EXPECT_NEAR(strips.front().row, 2500 / kTileHeight, 1);
    EXPECT_EQ(strips.back().layer.reduction, 16);
    const auto is_shown = [&](const Strip& strip) {
        return strip.layer.reduction == 1 && (strip.row + 1) * kTileHeight > camera.part().row &&
               strip.row * kTileHeight < camera.part().row + kWindow.height;
    };
    const auto first_beside = std::find_if_not(strips.begin(), strips.end(), is_shown);
    EXPECT_TRUE(std::none_of(first_beside, strips.end(), is_shown));
    draw_missing(static_cast<std::size_t>(first_beside - strips.begin()));
    EXPECT_TRUE(draw());
    // After a move each strip still holds only missing tiles.
    camera.pan(-kTileWidth * 3, 0);
    for (const Strip& strip : missing_strips(store, look())) {
        for (int i = 0; i < strip.columns; ++i)
            EXPECT_EQ(store.find({strip.layer, strip.first_column + i, strip.row}), nullptr);
    }
}

}  // namespace
