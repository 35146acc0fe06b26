#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <testing/test_chart.h>
#include <zellap10/plotter/printed_sheet.h>

namespace {

using namespace zellap10::plotter;

constexpr Argb kBackground = 0xFF123456;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// Rows of a bitmap at an odd address, with bytes between them.
struct Picture {
    explicit Picture(const Viewport& viewport)
        : stride(viewport.width * 4 + 3),
          bytes(static_cast<std::size_t>(stride * viewport.height) + 1),
          bitmap{bytes.data() + 1, viewport.width, viewport.height, stride} {}

    int stride;
    std::vector<unsigned char> bytes;
    Bitmap bitmap;
};

struct Step {
    const char* name;
    std::function<void(PrintedSheet&)> act;
    int reduction, column, row;
};

// A chart of 1500 by 900 pixels in a view of 200 by 100.
// clang-format off
const Step kSteps[] = {
    {"all",                         [](PrintedSheet& s) { s.show_all(); },                  12, -38, -13},
    {"a pixel in the middle",       [](PrintedSheet& s) { s.show({300, 200}, 3.4); },       3, 0, 17},
    {"other rows",                  [](PrintedSheet& s) { s.pan(0, -40); },                 3, 0, 57},
    {"closer about a pixel",        [](PrintedSheet& s) { s.zoom(2, {0, 0}); },             1, 1, 172},
    {"past the lower right corner", [](PrintedSheet& s) { s.pan(-1e300, -1e300); },         1, 1399, 849},
    {"no direction",                [](PrintedSheet& s) { s.pan(kNan, 0); },                1, -100, 849},
    {"no place",                    [](PrintedSheet& s) { s.show({kNan, HUGE_VAL}, kNan); }, 1, -100, 849},
    {"farther than there is",       [](PrintedSheet& s) { s.zoom(-1000000, {}); },          64, -77, -36},
    {"nothing",                     [](PrintedSheet& s) { s.resize({-5, 0}); },             64, 23, 14},
};
// clang-format on

TEST(PrintedSheet, DrawsWhatAViewportDraws) {
    const TempFolder folder;
    const TestChart chart{1500, 900, 50, -2, 0.001, 0, true};
    const std::string path = chart.write(folder, "chart");
    CZellap opened;
    ASSERT_EQ(opened.OpenZellap(path.c_str(), 0), 1);
    const auto sheet = PrintedSheet::open(path);
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->name(), chart.name);
    EXPECT_EQ(&sheet->record(0), *sheet->record().Insets.begin());
    sheet->resize({200, 100});
    for (const Step& step : kSteps) {
        SCOPED_TRACE(step.name);
        step.act(*sheet);
        const Viewport& viewport = sheet->viewport();
        EXPECT_EQ(viewport.reduction, step.reduction);
        EXPECT_EQ(viewport.column, step.column);
        EXPECT_EQ(viewport.row, step.row);
        Picture drawn(viewport);
        for (int i = 0; i < 10000 && !sheet->draw(ColourScheme::kDusk, kBackground, drawn.bitmap); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        Picture expected(viewport);
        draw_viewport(opened, viewport, colours_of(opened, ColourScheme::kDusk), kBackground,
                      expected.bitmap);
        EXPECT_TRUE(drawn.bytes == expected.bytes);
        Picture larger({0, 0, 1, viewport.width, viewport.height + 1});
        EXPECT_FALSE(sheet->draw(ColourScheme::kDay, kBackground, larger.bitmap));
    }
    EXPECT_FALSE(sheet->is_damaged());
    EXPECT_FALSE(PrintedSheet::open(folder.file("missing.chart")));
}

}  // namespace
