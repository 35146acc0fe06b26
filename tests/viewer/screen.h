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
#include <viewer/status.h>
#include <viewer/view.h>

inline constexpr viewer::ScreenSize kWindow{640, 480 + viewer::kBarHeight};
inline constexpr int kClearRows = 420;  // above the scale bar

/// A view on charts in a folder of its own, and the picture that it draws.
class Screen {
public:
    void look_at(const TestChart& chart) { look_at({chart.write(folder, "chart")}); }

    void look_at(const std::vector<std::string>& paths) {
        viewer::View::Options options;
        options.workers = 2;
        options.save_folder = folder.file("");
        options.on_change = [] {};
        view_ = std::make_unique<viewer::View>(viewer::list_charts(paths), options);
        view_->resize(kWindow);
        draw();
        before = pixels;
    }

    viewer::View* operator->() { return view_.get(); }

    void draw() {
        for (draw_once(); !view_->is_complete(); draw_once())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    /// Does one after the other, and draws.
    void do_commands(std::initializer_list<viewer::Command> commands) {
        for (const viewer::Command command : commands)
            view_->do_command(command);
        draw();
    }

    void click(viewer::ScreenPixel spot) {
        view_->press(viewer::Button::kLeft, spot);
        view_->release(viewer::Button::kLeft, spot);
    }

    void drag(viewer::ScreenPixel from, viewer::ScreenPixel to) {
        view_->press(viewer::Button::kLeft, from);
        view_->move({(from.x + to.x) / 2, (from.y + to.y) / 2});
        view_->release(viewer::Button::kLeft, to);
    }

    viewer::Argb pixel(int x, int y) const {
        return 0xFF000000 | pixels[static_cast<std::size_t>(y * kWindow.width + x)];
    }

    /// How many pixels of a part of the picture are not as they were before.
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

    /// Draws, and expects that the part of the picture that only the chart is on shows it from a block on.
    void expect_chart(const std::string& path, int reduction, int column, int row,
                      viewer::ColourScheme light = viewer::ColourScheme::kDay) {
        SCOPED_TRACE(path + " at " + std::to_string(reduction));
        draw();
        CZellap chart;
        ASSERT_EQ(chart.OpenZellap(path.c_str(), 0), 1);
        std::vector<viewer::Argb> expected(static_cast<std::size_t>(kWindow.width * kClearRows));
        zellap10::plotter::draw_viewport(chart, {column, row, reduction, kWindow.width, kClearRows},
                                         colours_of(chart, light), viewer::theme_for(light).background,
                                         {expected.data(), kWindow.width, kClearRows, kWindow.width * 4});
        const auto shown = std::mismatch(expected.begin(), expected.end(), pixels.begin());
        const auto place = shown.first - expected.begin();
        EXPECT_EQ(shown.first, expected.end()) << place % kWindow.width << " " << place / kWindow.width;
    }

    TempFolder folder;
    std::vector<viewer::Argb> pixels =
        std::vector<viewer::Argb>(static_cast<std::size_t>(kWindow.width * kWindow.height));
    std::vector<viewer::Argb> before;  ///< the picture that was drawn first

private:
    void draw_once() { view_->draw({pixels.data(), kWindow.width, kWindow.height, kWindow.width * 4}); }

    std::unique_ptr<viewer::View> view_;
};
