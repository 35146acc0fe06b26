#pragma once

#include <algorithm>
#include <chrono>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <cairo.h>
#include <gtest/gtest.h>

#include <testing/temp_folder.h>
#include <testing/test_chart.h>
#include <viewer/view.h>

inline constexpr viewer::ScreenSize kWindow{640, 480 + viewer::kBarHeight};
inline constexpr viewer::ScreenPixel kMiddle{319.5, 239.5};
inline constexpr int kClearRows = 420;  // above the scale bar

/// A view on charts in a folder of its own, and the picture that it draws.
class Screen {
public:
    Screen() {
        options.picture_folder = folder.file("");
        options.route_folder = folder.file("");
    }

    void look_at(const TestChart& chart) { look_at({chart.write(folder, "chart")}); }

    void open(const std::vector<std::string>& paths) {
        view_ = std::make_unique<viewer::View>(paths, options);
        view_->resize(kWindow);
    }

    void look_at(const std::vector<std::string>& paths) {
        open(paths);
        draw();
        before = pixels;
    }

    viewer::View* operator->() { return view_.get(); }
    void close() { view_.reset(); }

    void draw() {
        draw_once();
        EXPECT_TRUE(draw_until([this] { return view_->is_complete(); }));
    }

    void draw_once() { view_->draw({pixels.data(), kWindow.width, kWindow.height, kWindow.width * 4}); }

    /// Draws until something is true, 10,000 times at most.
    template <class Condition>
    bool draw_until(Condition condition) {
        for (int i = 0; i < 10000 && !condition(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            draw_once();
        }
        return condition();
    }

    /// Does one after the other, and draws.
    void press_keys(std::initializer_list<const char*> keys) {
        for (const char* key : keys)
            view_->press_key(key);
        draw();
    }

    void click(viewer::ScreenPixel at, viewer::Button button = viewer::Button::kLeft) {
        view_->press(button, at);
        view_->release(button, at);
    }

    void drag(viewer::ScreenPixel from, viewer::ScreenPixel to, bool shift = false) {
        view_->press(viewer::Button::kLeft, from, shift);
        view_->move({(from.x + to.x) / 2, (from.y + to.y) / 2});
        view_->release(viewer::Button::kLeft, to);
    }

    /// Opens a question by its key, unless one is open, types something and enters it.
    void answer(const char* key, const std::string& text) {
        view_->press_key(key);
        view_->press_key("Delete");
        view_->type(text);
        press_keys({"Return"});
    }

    viewer::Argb pixel(int x, int y) const {
        return 0xFF000000 | pixels[static_cast<std::size_t>(y * kWindow.width + x)];
    }

    /// How many pixels of a part of the picture differ from the first picture.
    int changed(viewer::ScreenPixel from, viewer::ScreenPixel to) const {
        int found = 0;
        for (int y = static_cast<int>(from.y); y <= to.y; ++y) {
            for (int x = static_cast<int>(from.x); x <= to.x; ++x) {
                const auto place = static_cast<std::size_t>(y * kWindow.width + x);
                found += pixels[place] != before[place];
            }
        }
        return found;
    }

    /// Whether the view reports a problem with some text.
    bool reports(const std::string& text) const {
        const std::vector<std::string> problems = view_->problems();
        return std::any_of(problems.begin(), problems.end(), [&](const std::string& problem) {
            return problem.find(text) != std::string::npos;
        });
    }

    /// Expects that a PNG file holds the picture.
    void expect_saved(const std::string& path) const {
        const std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> png(
            cairo_image_surface_create_from_png(path.c_str()), cairo_surface_destroy);
        ASSERT_EQ(cairo_image_surface_get_width(png.get()), kWindow.width) << path;
        ASSERT_EQ(cairo_image_surface_get_height(png.get()), kWindow.height);
        ASSERT_EQ(cairo_image_surface_get_stride(png.get()), kWindow.width * 4);
        const unsigned char* const saved = cairo_image_surface_get_data(png.get());
        EXPECT_EQ(std::memcmp(saved, pixels.data(), pixels.size() * sizeof pixels[0]), 0);
    }

    /// Draws, and expects the charts of some files on the map, above what is drawn on them.
    void expect_map(const std::vector<std::string>& paths,
                    viewer::ColourScheme scheme = viewer::ColourScheme::kDay) {
        draw();
        const auto catalogue = std::make_shared<zellap10::plotter::Catalogue>();
        for (const std::string& path : paths)
            EXPECT_TRUE(catalogue->add_file(path));
        zellap10::plotter::Quilt quilt(catalogue);
        std::vector<viewer::Argb> expected(pixels.size());
        const viewer::Bitmap bitmap{expected.data(), kWindow.width, kWindow.height - viewer::kBarHeight,
                                    kWindow.width * 4};
        quilt.draw_complete(view_->map(), scheme, viewer::theme_for(scheme).background, bitmap);
        expect_rows(expected);
    }

    /// Draws, and expects a chart as printed from a block on.
    void expect_sheet(const std::string& path, int reduction, int column, int row,
                      viewer::ColourScheme scheme = viewer::ColourScheme::kDay) {
        SCOPED_TRACE(path + " at " + std::to_string(reduction));
        draw();
        CZellap chart;
        ASSERT_EQ(chart.OpenZellap(path.c_str(), 0), 1);
        std::vector<viewer::Argb> expected(pixels.size());
        zellap10::plotter::draw_viewport(chart, {column, row, reduction, kWindow.width, kClearRows},
                                         colours_of(chart, scheme), viewer::theme_for(scheme).background,
                                         {expected.data(), kWindow.width, kClearRows, kWindow.width * 4});
        expect_rows(expected);
    }

    TempFolder folder;
    viewer::View::Options options;
    std::vector<viewer::Argb> pixels =
        std::vector<viewer::Argb>(static_cast<std::size_t>(kWindow.width * kWindow.height));
    std::vector<viewer::Argb> before;  ///< the picture that was drawn first

private:
    void expect_rows(const std::vector<viewer::Argb>& expected) const {
        const auto end = expected.begin() + std::ptrdiff_t{kWindow.width} * kClearRows;
        const auto same = [](viewer::Argb a, viewer::Argb b) { return (a & 0xFFFFFF) == (b & 0xFFFFFF); };
        const auto differs = std::mismatch(expected.begin(), end, pixels.begin(), same).first;
        const auto place = differs - expected.begin();
        EXPECT_TRUE(differs == end) << place % kWindow.width << " " << place / kWindow.width;
    }

    std::unique_ptr<viewer::View> view_;
};
