// Quilts the sample charts: coasts of different sheets must meet, and Fiji must be complete.

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/temp_folder.h>
#include <zellap10/plotter/quilt.h>

namespace {

using namespace zellap10::plotter;

constexpr Argb kBackground = 0xFF00FF00;
constexpr double kCourses[] = {0.0, 52.0, 200.0};

const std::string kFolder = SAMPLE_CHARTS_DIR;

struct Picture {
    ScreenSize size;
    std::vector<Argb> pixels;

    std::size_t place(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) +
               static_cast<std::size_t>(x);
    }
    Argb at(int x, int y) const { return pixels[place(x, y)]; }
};

Picture drawn(Quilt& quilt, const MapView& view) {
    const ScreenSize size = view.size();
    Picture picture{size, std::vector<Argb>(static_cast<std::size_t>(size.width) *
                                            static_cast<std::size_t>(size.height))};
    const Bitmap bitmap{picture.pixels.data(), size.width, size.height, size.width * 4};
    EXPECT_TRUE(quilt.draw_complete(view, ColourScheme::kDay, kBackground, bitmap).complete);
    return picture;
}

// A chart of which the quilt knows the sheet alone, or one inset.
class Part {
public:
    Part(const std::string& name, int inset) {
        std::filesystem::copy_file(kFolder + "/" + name + ".chart", folder_.file("part.chart"));
        std::ifstream from(kFolder + "/" + name + ".GEO", std::ios::binary);
        std::string kept;
        int section = -1;
        for (std::string line; std::getline(from, line);) {
            section += line.rfind("[Inset", 0) == 0 ? 1 : 0;
            const bool is_place = line.rfind("Point", 0) == 0 || line.rfind("Vertex", 0) == 0;
            if (section == inset || (section < 0 && !is_place)) kept += line + '\n';
        }
        folder_.write("part.GEO", kept);
        auto catalogue = std::make_shared<Catalogue>();
        EXPECT_TRUE(catalogue->add_file(folder_.file("part.chart")));
        EXPECT_EQ(catalogue->entries().size(), 1U);
        quilt_ = std::make_unique<Quilt>(catalogue);
    }

    Quilt& quilt() { return *quilt_; }

private:
    TempFolder folder_;
    std::unique_ptr<Quilt> quilt_;
};

// 1 on land, -1 at sea, 0 under lines, names and lights and off the chart. The limit is half way from the
// shore line's green to that of land and of the sea, so that an enlarged shore line is as wide on land as at
// sea.
int land_at(const Picture& picture, int x, int y) {
    const Argb pixel = picture.at(x, y);
    const int red = static_cast<int>(pixel >> 16 & 0xFF);
    const int blue = static_cast<int>(pixel & 0xFF);
    const int green = static_cast<int>(pixel >> 8 & 0xFF);
    if (pixel == kBackground || green < 147 || green < red - 40) return 0;
    return red > blue + 30 ? 1 : -1;
}

// The sum of the land in a square around each pixel. Along a coast it is 0 only in the middle of the shore
// line, however wide that is.
std::vector<int> land_around(const Picture& picture, int reach) {
    const int width = picture.size.width;
    const int height = picture.size.height;
    const auto place = [&picture](int x, int y) { return picture.place(x, y); };
    std::vector<int> rows(picture.pixels.size());
    std::vector<int> sums(picture.pixels.size());
    for (int y = 0; y < height; ++y) {
        for (int x = reach; x < width - reach; ++x) {
            for (int i = -reach; i <= reach; ++i)
                rows[place(x, y)] += land_at(picture, x + i, y);
        }
    }
    for (int y = reach; y < height - reach; ++y) {
        for (int x = reach; x < width - reach; ++x) {
            for (int i = -reach; i <= reach; ++i)
                sums[place(x, y)] += rows[place(x, y + i)];
        }
    }
    return sums;
}

// Whether both pictures show a chart around a pixel.
bool both_show(const Picture& a, const Picture& b, int x, int y, int margin) {
    for (const int dx : {-margin, 0, margin}) {
        for (const int dy : {-margin, 0, margin}) {
            if (a.at(x + dx, y + dy) == kBackground || b.at(x + dx, y + dy) == kBackground) return false;
        }
    }
    return true;
}

struct Shift {
    int x, y;
};

// The shift at which the land of two pictures differs least.
Shift best_shift(const Picture& a, const Picture& b, int reach) {
    constexpr int kMost = 6;
    const std::vector<int> land = land_around(a, reach);
    const std::vector<int> other = land_around(b, reach);
    double different[2 * kMost + 1][2 * kMost + 1] = {};
    int compared = 0;
    for (int y = kMost + reach; y < a.size.height - kMost - reach; ++y) {
        for (int x = kMost + reach; x < a.size.width - kMost - reach; ++x) {
            if (!both_show(a, b, x, y, kMost + reach)) continue;
            ++compared;
            for (int dy = -kMost; dy <= kMost; ++dy) {
                for (int dx = -kMost; dx <= kMost; ++dx) {
                    const double difference = land[a.place(x, y)] - other[b.place(x + dx, y + dy)];
                    different[dy + kMost][dx + kMost] += difference * difference;
                }
            }
        }
    }
    EXPECT_GT(compared, 1000);
    const double* const first = &different[0][0];
    const auto best = static_cast<int>(
        std::min_element(first, first + std::size(different) * std::size(different)) - first);
    return {best % (2 * kMost + 1) - kMost, best / (2 * kMost + 1) - kMost};
}

// The shore line of each sheet is 3 chart pixels wide. Where a plan meets the enlarged sheet around it, half
// a pixel of the sheet is the best that can be drawn.
const struct {
    const char* name;
    const char* files[2];
    int insets[2];
    Position middle;
    double metres[5];
    double coarser;  // metres per pixel of the coarser chart
    double allowed;  // pixels of it, if that is more than a screen pixel
} kPairs[] = {
    {"Western and English Channel",
     {"western_channel", "english_channel"},
     {-1, -1},
     {50.3, -3.6},
     {60, 120, 170, 300, 500},
     110.0,
     0.0},
    {"Western Channel and Channel Lambert",
     {"western_channel", "channel_lambert"},
     {-1, -1},
     {50.3, -3.6},
     {60, 120, 170, 300, 500},
     200.0,
     0.0},
    {"English Channel and Channel Lambert",
     {"english_channel", "channel_lambert"},
     {-1, -1},
     {49.7, -1.6},
     {60, 120, 170, 300, 500},
     200.0,
     0.0},
    {"English Channel and Dover harbour",
     {"english_channel", "english_channel"},
     {-1, 1},
     {51.12, 1.33},
     {11, 14, 18, 21, 24},
     110.0,
     0.5},
};

TEST(SampleQuilt, HasCoastsThatMeetWithinAPixel) {
    for (const auto& pair : kPairs) {
        Part first(pair.files[0], pair.insets[0]);
        Part second(pair.files[1], pair.insets[1]);
        for (const double metres : pair.metres) {
            for (const double course : kCourses) {
                SCOPED_TRACE(std::string(pair.name) + ' ' + std::to_string(metres) + ' ' +
                             std::to_string(course));
                const MapView view(pair.middle, metres, {360, 360}, course);
                const int reach = static_cast<int>(std::ceil(1.5 * pair.coarser / metres));
                const Shift shift =
                    best_shift(drawn(first.quilt(), view), drawn(second.quilt(), view), reach);
                const double allowed = std::max(1.0, pair.allowed * pair.coarser / metres);
                EXPECT_LE(std::abs(shift.x), allowed);
                EXPECT_LE(std::abs(shift.y), allowed);
            }
        }
    }
}

TEST(SampleQuilt, ShowsFijiCompleteAcrossThe180thMeridian) {
    auto catalogue = std::make_shared<Catalogue>();
    ASSERT_TRUE(catalogue->add_file(kFolder + "/fiji.chart"));
    const Outline outline = catalogue->entries()[0]->outline;
    Quilt quilt(catalogue);
    for (const double metres : {70.0, 220.0, 600.0, 2000.0, 15000.0}) {
        for (const double course : kCourses) {
            for (const double longitude : {179.9, -179.9}) {
                SCOPED_TRACE(std::to_string(metres) + ' ' + std::to_string(course));
                const MapView view({-17.5, longitude}, metres, {400, 300}, course);
                const Picture picture = drawn(quilt, view);
                int shown = 0;
                for (int y = 0; y < 300; ++y) {
                    for (int x = 0; x < 400; ++x) {
                        const Position position = view.to_position({x * 1.0, y * 1.0}).value();
                        const double pixel = 2e-5 * metres;  // more than a pixel and a half, degrees
                        bool is_inside = true;
                        for (const double north : {-pixel, pixel}) {
                            for (const double east : {-pixel, pixel})
                                is_inside = is_inside && outline.covers({position.latitude + north,
                                                                         position.longitude + east});
                        }
                        if (!is_inside) continue;
                        ASSERT_NE(picture.at(x, y), kBackground) << x << ' ' << y;
                        ++shown;
                    }
                }
                EXPECT_GT(shown, 500);
            }
        }
    }
}

}  // namespace
