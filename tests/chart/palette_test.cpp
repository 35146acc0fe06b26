#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include <testing/chart_under_test.h>

namespace {

using Colours = std::vector<PALETTEENTRY>;

// A chart object with these header colours, the first at index 0, and their palette.
class PaletteOf : public ChartUnderTest {
public:
    explicit PaletteOf(const Colours& colours) {
        std::copy(colours.begin(), colours.end(), HeaderColours);
        HeaderColourCount = static_cast<int>(colours.size());
        BuildPal();
        BuildPalIndex();
    }

    int cell(int red, int green, int blue) const { return ColourIndex[(red * 32 + green) * 32 + blue]; }
};

Colours random_colours(int count) {
    std::minstd_rand random(static_cast<unsigned>(count));
    const auto value = [&random] { return static_cast<unsigned char>(random() >> 8 & 0xFF); };
    Colours colours;
    for (int i = 0; i < count; ++i)
        colours.push_back({value(), value(), value(), 0});
    return colours;
}

TEST(WidenedPalette, FollowsTheExample) {
    const PaletteOf chart({{0, 0, 0, 0}, {255, 0, 0, 0}, {0, 0, 255, 0}});
    ASSERT_EQ(chart.LogPalette.palNumEntries, 10);
    const PALETTEENTRY added[] = {{120, 0, 120, 0}, {184, 0, 56, 0}, {56, 0, 184, 0}, {216, 0, 24, 0},
                                  {152, 0, 88, 0},  {88, 0, 152, 0}, {24, 0, 216, 0}};
    EXPECT_EQ(std::memcmp(&chart.LogPalette.palPalEntry[3], added, sizeof added), 0);
    EXPECT_EQ(chart.cell(0, 0, 0), 3) << "entry 0 is black, but is not searched";
    EXPECT_EQ(chart.cell(31, 0, 0), 1);
    EXPECT_EQ(chart.cell(0, 0, 31), 2);
}

TEST(WidenedPalette, ClampsAColourCount) {
    for (const int count : {INT_MIN, -1, 257, INT_MAX}) {
        ChartUnderTest chart;
        chart.HeaderColourCount = count;
        ASSERT_EQ(chart.open(samples::chart_bytes("", 4, {})), 1);
        EXPECT_EQ(chart.LogPalette.palNumEntries, count < 0 ? 0 : 256);
    }
}

// Greys far from all other cells, duplicates, colours of every spread, and a grid with cells halfway between
// two colours.
std::vector<Colours> all_kinds_of_colours() {
    std::vector<Colours> kinds = {
        {}, {{9, 9, 9, 0}}, {{0, 0, 0, 0}, {255, 0, 0, 0}}, {{0, 0, 0, 0}, {7, 7, 7, 0}, {7, 7, 7, 0}}};
    for (const int count : {2, 3, 4, 17, 60, 128, 200, 255, 256})
        kinds.push_back(random_colours(count));
    Colours grid;
    const auto value = [](int i) { return static_cast<unsigned char>(i % 8 * 32); };
    for (int i = 0; i < 256; ++i)
        grid.push_back({value(i), value(i / 8), value(i / 64 * 2), 0});
    kinds.push_back(grid);
    kinds.push_back(Colours(30, {255, 255, 255, 0}));
    return kinds;
}

TEST(PaletteAndIndex, EqualThePlainImplementation) {
    for (const Colours& colours : all_kinds_of_colours()) {
        SCOPED_TRACE(colours.size());
        PaletteOf chart(colours);
        const LOGPALETTE256 palette = chart.LogPalette;
        const std::vector<unsigned char> index(std::begin(chart.ColourIndex), std::end(chart.ColourIndex));
        chart.LogPalette = {};
        chart.plain_palette();
        chart.plain_index();
        EXPECT_EQ(std::memcmp(&palette, &chart.LogPalette, sizeof palette), 0);
        EXPECT_TRUE(std::equal(index.begin(), index.end(), chart.ColourIndex));
    }
}

}  // namespace
