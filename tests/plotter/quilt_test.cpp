#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <testing/test_chart.h>
#include <zellap10/plotter/quilt.h>

namespace {

using namespace zellap10::plotter;

constexpr Argb kBackground = 0x12345678;

// Pixels of a picture.
struct Picture {
    int width, height;
    std::vector<Argb> pixels;

    Picture(int w, int h) : width(w), height(h), pixels(static_cast<std::size_t>(w * h), 0xDEADBEEF) {}
    Bitmap bitmap() { return {pixels.data(), width, height, width * 4}; }
    Argb at(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
    bool operator==(const Picture& other) const { return pixels == other.pixels; }
};

Picture drawn(Quilt& quilt, const MapView& view, ColourScheme scheme = ColourScheme::kDay) {
    Picture picture(view.size().width, view.size().height);
    EXPECT_TRUE(quilt.draw_complete(view, scheme, kBackground, picture.bitmap()).complete);
    return picture;
}

// Draws until it is complete.
Picture drawn_in_time(Quilt& quilt, const MapView& view) {
    Picture picture(view.size().width, view.size().height);
    for (int i = 0; i < 2000; ++i) {
        if (quilt.draw(view, ColourScheme::kDay, kBackground, picture.bitmap()).complete) return picture;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    ADD_FAILURE() << "never complete";
    return picture;
}

// A chart of 1500 by 900 pixels, one of half its detail to the east, and one that has both inside.
class QuiltTest : public testing::Test {
protected:
    QuiltTest() {
        paths_ = {TestChart{1500, 900, 50, -2, 0.001, 0, true, "WEST"}.write(folder_, "west"),
                  TestChart{1500, 900, 50, -0.6, 0.002, 0, false, "EAST"}.write(folder_, "east"),
                  TestChart{1500, 900, 53, -5, 0.008, 0, false, "ALL"}.write(folder_, "all")};
        catalogue_ = filled();
    }
    std::shared_ptr<const Catalogue> filled() const {
        auto catalogue = std::make_shared<Catalogue>();
        for (const std::string& path : paths_)
            EXPECT_TRUE(catalogue->add_file(path));
        return catalogue;
    }
    static MapView view_of(double metres, double course = 0.0) {
        return MapView({49.6, -0.7}, metres, {700, 500}, course);
    }

    TempFolder folder_;
    std::vector<std::string> paths_;
    std::shared_ptr<const Catalogue> catalogue_;
};

TEST_F(QuiltTest, ShowsEachChartInItsOutlineAndTheCoarserOnesInTheGaps) {
    Quilt quilt(catalogue_);
    const MapView view = view_of(150);
    const Picture picture = drawn(quilt, view);
    EXPECT_EQ(std::count(picture.pixels.begin(), picture.pixels.end(), kBackground), 0);
    const auto name_at = [&](double latitude, double longitude) {
        const auto hit = quilt.at(view, view.to_screen({latitude, longitude}).value());
        return hit ? hit->entry->name : "";
    };
    EXPECT_EQ(name_at(49.6, -0.8), "WEST");
    EXPECT_EQ(name_at(49.6, -0.55), "WEST");
    EXPECT_EQ(name_at(49.6, -0.4), "EAST");
    EXPECT_EQ(name_at(49.05, -0.8), "ALL");
    const auto hit = quilt.at(view, view.to_screen({49.6, -0.8}).value());
    EXPECT_NEAR(hit->pixel.x, 1200, 1e-3);
    EXPECT_NEAR(hit->pixel.y, 400, 1e-3);
}

// The pixel of a chart that a screen pixel shows is where pixel_of has it, in its own colour when enlarged.
TEST_F(QuiltTest, ShowsChartPixelsWhereTheyAre) {
    Quilt quilt(catalogue_);
    CZellap chart;
    ASSERT_EQ(chart.OpenZellap(paths_[0].c_str(), 0), 1);
    const ColourTable colours = colours_of(chart);
    for (const double course : {0.0, 123.0}) {
        const MapView view = MapView({49.5, -1.1}, 10, {700, 500}, course);
        const Picture picture = drawn(quilt, view);
        int compared = 0;
        for (int x = 900 - 20; x < 900 + 20; ++x) {
            for (int y = 500 - 15; y < 500 + 15; ++y) {
                // Where the chart is even round the pixel.
                unsigned char around[9];
                ASSERT_EQ(chart.getMultiLines(y - 1, 3, x - 1, 3, around), 1);
                if (std::count(around, around + 9, around[4]) != 9) continue;
                const auto place = view.to_screen({50 - y * 0.001, -2 + x * 0.001}).value();
                EXPECT_EQ(picture.at(static_cast<int>(std::lround(place.x)),
                                     static_cast<int>(std::lround(place.y))),
                          colours[around[4]]);
                ++compared;
            }
        }
        EXPECT_GT(compared, 100);
    }
}

TEST_F(QuiltTest, IsTheMeanOfTheChartPixelsWhenReduced) {
    // A chart that alternates black and white by the pixel, at 3.3 chart pixels per screen pixel.
    samples::Chart stripes;
    stripes.width = 1500;
    stripes.height = 900;
    stripes.colours = {{0, 0, 0}, {255, 255, 255}};
    stripes.draw = [](int line, unsigned char* pixels) {
        for (int x = 0; x < 1500; ++x)
            pixels[x] = static_cast<unsigned char>(1 + (x + line) % 2);
    };
    samples::write_file(paths_[0], samples::chart_bytes(stripes));
    Quilt quilt(catalogue_);
    const MapView view({49.5, -1.4}, 3.3 * 111.3 * 0.65, {200, 150});
    const Picture picture = drawn(quilt, view);
    for (const Argb pixel : picture.pixels) {
        EXPECT_NEAR(static_cast<int>(pixel & 0xFF), 127, 4);
        if (HasFailure()) return;
    }
}

TEST_F(QuiltTest, HasTheSamePixelsInAnyOrderBySeveralThreadsAndInTiles) {
    Quilt quilt(catalogue_);
    Quilt::Options options;
    options.threads = 4;
    options.workers = 4;
    options.memory_bytes = 1;
    Quilt other(catalogue_, options);
    drawn(other, view_of(500, 10));
    for (const MapView& view : {view_of(40), view_of(170, 77), view_of(600), view_of(3000, 200)})
        EXPECT_TRUE(drawn(quilt, view) == drawn(other, view));
    const MapView large = MapView::of_tile(11, 1019, 695)->resized({768, 512});
    const Picture picture = drawn(quilt, large);
    const MapView tile = *MapView::of_tile(11, 1020, 695);
    const Picture part = drawn(other, tile);
    const int left = static_cast<int>(std::lround(large.to_screen(tile.to_position({0, 0}).value())->x));
    const int top = static_cast<int>(std::lround(large.to_screen(tile.to_position({0, 0}).value())->y));
    ASSERT_GE(left, 0);
    ASSERT_GE(top, 0);
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x)
            ASSERT_EQ(part.at(x, y), picture.at(left + x, top + y)) << x << ' ' << y;
    }
}

TEST_F(QuiltTest, DrawsADraftOfATurnedViewAndThenTheView) {
    Quilt quilt(catalogue_);
    drawn_in_time(quilt, view_of(200, 0));
    const MapView view = view_of(200, 20);
    const Picture fine = drawn(quilt, view);
    drawn_in_time(quilt, view_of(200, 0));
    Picture picture(fine.width, fine.height);
    const auto draft = [&](const MapView& shown) {
        return quilt.draw_draft(shown, ColourScheme::kDay, kBackground, picture.bitmap());
    };
    EXPECT_TRUE(draft(view).draft);
    int repeated = 0;
    for (int y = 0; y < fine.height; ++y) {
        const auto row_of = [y](const Picture& of) {
            return of.pixels.begin() + std::ptrdiff_t{y} * of.width;
        };
        if (std::equal(row_of(fine), row_of(fine) + fine.width, row_of(picture))) continue;
        EXPECT_TRUE(std::equal(row_of(picture), row_of(picture) + fine.width, row_of(picture) - fine.width));
        ++repeated;
    }
    EXPECT_GT(repeated, fine.height / 3);
    EXPECT_TRUE(draft(view).complete);
    EXPECT_TRUE(picture == fine);
    EXPECT_FALSE(draft(view.moved_by(3, 5)).draft);
    EXPECT_TRUE(picture == drawn(quilt, view.moved_by(3, 5)));
}

TEST_F(QuiltTest, PansToTheSamePixelsAlsoWhileChartsArrive) {
    Quilt::Options options;
    options.threads = 3;
    options.memory_bytes = 1;
    for (const double course : {0.0, 130.0}) {
        Quilt quilt(catalogue_, options);
        MapView view = view_of(60, course);
        Picture picture(700, 500);
        for (int i = 0; i < 40; ++i) {
            quilt.draw(view, ColourScheme::kDay, kBackground, picture.bitmap());
            std::this_thread::sleep_for(std::chrono::milliseconds(i % 4));
            view = view.moved_by(i % 7 * 5 - 3, 9 - i % 3 * 30);
        }
        for (const auto& [dx, dy] :
             {std::pair(40, 0), {-7, 33}, {300, -200}, {-699, 0}, {0, 499}, {5, 5}, {0, 0}}) {
            const Picture panned = drawn_in_time(quilt, view);
            Quilt fresh(catalogue_);
            EXPECT_TRUE(panned == drawn(fresh, view)) << "before " << dx << ' ' << dy;
            view = view.moved_by(dx, dy);
        }
    }
}

TEST_F(QuiltTest, DimsItsColoursAndNotItsBackground) {
    Quilt quilt(catalogue_);
    const MapView view({52.9, -4.9}, 900, {300, 300});
    const Picture day = drawn(quilt, view);
    const Picture night = drawn(quilt, view, ColourScheme::kNight);
    ASSERT_GT(std::count(day.pixels.begin(), day.pixels.end(), kBackground), 100);
    for (std::size_t i = 0; i < day.pixels.size(); ++i) {
        ASSERT_EQ(night.pixels[i], day.pixels[i] == kBackground
                                       ? kBackground
                                       : colour_in(ColourScheme::kNight, day.pixels[i]));
    }
}

TEST_F(QuiltTest, NeverWaitsAndAnnouncesMore) {
    std::atomic<int> calls{0};
    Quilt::Options options;
    options.on_more = [&calls] { ++calls; };
    Quilt quilt(catalogue_, options);
    Picture picture(700, 500);
    const Quilt::Result first = quilt.draw(view_of(150), ColourScheme::kDay, kBackground, picture.bitmap());
    EXPECT_FALSE(first.complete);
    EXPECT_EQ(std::count(picture.pixels.begin(), picture.pixels.end(), kBackground), 700 * 500);
    for (int i = 0; i < 1000 && calls == 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(calls, 1) << "once for each drawing";
    Quilt fresh(catalogue_);
    EXPECT_TRUE(drawn_in_time(quilt, view_of(150)) == drawn(fresh, view_of(150)));
}

TEST_F(QuiltTest, ShowsInsetsAtTheirPlaceAndNotOnTheirSheet) {
    Quilt quilt(catalogue_);
    const MapView there({9.9925, 20.01}, 10, {100, 80});
    const auto hit = (drawn(quilt, there), quilt.at(there, {50, 40}));
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->entry->name, "HARBOUR");
    // The inset is at the columns 200 to 400 and the rows 100 to 250 of its sheet.
    const MapView hidden({50 - 0.175, -2 + 0.3}, 30, {60, 60});
    drawn(quilt, hidden);
    EXPECT_EQ(quilt.at(hidden, {30, 30})->entry->name, "ALL");
}

TEST_F(QuiltTest, ReportsAChartThatCannotBeReadAndShowsTheOthers) {
    std::filesystem::resize_file(paths_[0], 200);
    Quilt quilt(catalogue_);
    const Picture picture = drawn(quilt, view_of(150));
    EXPECT_EQ(std::count(picture.pixels.begin(), picture.pixels.end(), kBackground), 0);
    ASSERT_EQ(quilt.problems().size(), 1U);
    EXPECT_EQ(quilt.problems()[0].path, paths_[0]);
    EXPECT_FALSE(quilt.problems()[0].text.empty());
    EXPECT_EQ(quilt.at(view_of(150), {100, 250})->entry->name, "ALL");
}

TEST_F(QuiltTest, ShowsAChangedFileWithItsNewGeoreference) {
    Quilt quilt(catalogue_);
    const MapView view({49.5, -1.4}, 100, {300, 200});
    const Picture before = drawn_in_time(quilt, view);
    TestChart{1400, 900, 50, -2.25, 0.001, 0, false, "WEST"}.write(folder_, "west");
    Quilt fresh(filled());
    const Picture after = drawn(fresh, view);
    ASSERT_FALSE(before == after);
    bool is_seen = false;
    for (int i = 0; i < 400 && !is_seen; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        is_seen = drawn_in_time(quilt, view) == after;
    }
    EXPECT_TRUE(is_seen);
}

TEST_F(QuiltTest, EndsSoonWhateverItDecodes) {
    const TestChart wide{16000000, 20000, 50, -2, 1e-6};
    folder_.write("wide.GEO", wide.georeference_text());
    auto catalogue = std::make_shared<Catalogue>();
    ASSERT_TRUE(catalogue->add_file(folder_.write("wide.chart", wide_chart_bytes(wide.width, wide.height))));
    auto quilt = std::make_unique<Quilt>(catalogue);
    const MapView view(wide.position(8000000, 10000), 111, {700, 500});
    Picture picture(700, 500);
    for (int i = 0; i < 3; ++i) {
        quilt->draw(view, ColourScheme::kDay, kBackground, picture.bitmap());
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
    }
    // Processor time, because other programs disturb the clock.
    const std::clock_t start = std::clock();
    quilt.reset();
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC / 5);
}

}  // namespace
