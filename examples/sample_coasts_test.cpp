// Compares overlapping sample charts through WGS 84, as a plotter does: their coasts must meet.

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <zellap10/plotter/georeference.h>
#include <zellap10/zellap10.h>

namespace {

using zellap10::plotter::ChartPixel;
using zellap10::plotter::Georeference;
using zellap10::plotter::Position;

constexpr int kBase = -1;  // the chart itself, not one of its insets

// The colour indexes that the charts of the Channel share.
constexpr int kDeepWater = 1;
constexpr int kContour = 5;
constexpr int kLand = 6;
constexpr int kShore = 7;

constexpr double kMetresPerDegree = 111120;
constexpr double kStepMetres = 100;  // from European 1950 to WGS 84, eastward and northward alike
constexpr int kReach = 6;            // of the samples around a coast point, pixels of the coarser chart

// The land and the sea of a chart or of an inset.
class Sheet {
public:
    Sheet(const char* file, int inset) {
        const std::string path = std::string(SAMPLE_CHARTS_DIR) + "/" + file + ".chart";
        EXPECT_EQ(chart_.OpenZellap(path.c_str(), 0), 1) << path;
        size_ = chart_.GetDocumentSize();
        indexes_.resize(static_cast<std::size_t>(size_.cx) * static_cast<std::size_t>(size_.cy));
        EXPECT_EQ(chart_.getMultiLines(0, size_.cy, 0, size_.cx, indexes_.data()), 1);
        record_ = chart_.GetBaseGeoRec();
        if (inset != kBase) record_ = *(record_->Insets.begin() + inset);
        georeference_ = Georeference::from(*record_);
        for (const CRefPoint* vertex : record_->Vertices) {
            south_west_.latitude = std::min(south_west_.latitude, vertex->Latitude);
            south_west_.longitude = std::min(south_west_.longitude, vertex->Longitude);
            north_east_.latitude = std::max(north_east_.latitude, vertex->Latitude);
            north_east_.longitude = std::max(north_east_.longitude, vertex->Longitude);
        }
    }

    CSize size() const { return size_; }

    double metres_per_pixel() const {
        return std::stod(static_cast<const char*>(record_->Scale)) * 0.0254 / chart_.DU;
    }

    Position wgs84_of(ChartPixel pixel) const { return georeference_->position_of(pixel).value(); }

    ChartPixel pixel_of(Position wgs84) const { return georeference_->pixel_of(wgs84).value(); }

    // Whether a position is on the chart, outside its insets and `margin` degrees inside its neat line.
    bool shows(Position wgs84, double margin) const {
        const Position position = georeference_->to_chart_datum(wgs84);
        if (position.latitude < south_west_.latitude + margin ||
            position.latitude > north_east_.latitude - margin ||
            position.longitude < south_west_.longitude + margin ||
            position.longitude > north_east_.longitude - margin) {
            return false;
        }
        const ChartPixel pixel = pixel_of(wgs84);
        return std::none_of(record_->Insets.begin(), record_->Insets.end(), [&](const CGEORec* inset) {
            const PixelRect& rect = inset->InsetRect;
            return pixel.x >= rect.left && pixel.x <= rect.right && pixel.y >= rect.top &&
                   pixel.y <= rect.bottom;
        });
    }

    // 1 on land, -1 at sea, 0 under a line or a name and outside the raster.
    int land_at(int column, int row) const {
        const int index = index_at(column, row);
        if (index == kLand) return 1;
        return index >= kDeepWater && index <= kContour ? -1 : 0;
    }

    // The sum over 5 x 5 pixels, `spacing` apart. The shore line is 3 pixels wide, so along a coast the sum
    // is 0 only in its middle.
    int land_around(int column, int row, int spacing) const {
        int sum = 0;
        for (int i = 0; i < 25; ++i)
            sum += land_at(column + (i % 5 - 2) * spacing, row + (i / 5 - 2) * spacing);
        return sum;
    }

    // Whether a pixel is on the shore line, with no name, mark or grid line among the samples around it.
    bool is_coast_point(int column, int row) const {
        if (index_at(column, row) != kShore) return false;
        for (int y = -kReach; y <= kReach; ++y) {
            for (int x = -kReach; x <= kReach; ++x) {
                const int index = index_at(column + x, row + y);
                if (index < kDeepWater || index > kShore) return false;
            }
        }
        return true;
    }

private:
    int index_at(int column, int row) const {
        if (column < 0 || column >= size_.cx || row < 0 || row >= size_.cy) return 0;
        return indexes_[static_cast<std::size_t>(row) * static_cast<std::size_t>(size_.cx) +
                        static_cast<std::size_t>(column)];
    }

    CZellap chart_;
    const CGEORec* record_ = nullptr;
    std::optional<Georeference> georeference_;
    CSize size_;
    std::vector<unsigned char> indexes_;
    Position south_west_ = {90, 180};
    Position north_east_ = {-90, -180};
};

// A place near the coast.
struct Sample {
    int land;         // around it on the coarser chart
    int column, row;  // on the finer chart
};

// Takes samples that both charts show, around the coast points of the coarser one.
class Sampler {
public:
    Sampler(const Sheet& coarse, const Sheet& fine)
        : coarse_(coarse), fine_(fine), margin_(2 * coarse.metres_per_pixel() / kMetresPerDegree) {}

    std::vector<Sample> samples(int stride) {
        for (int row = 0; row < coarse_.size().cy; ++row) {
            for (int column = row % stride; column < coarse_.size().cx; column += stride) {
                if (coarse_.is_coast_point(column, row) && place_of(column, row)) append_around(column, row);
            }
        }
        return std::move(samples_);
    }

private:
    // The pixel of the finer chart, if both charts show the position.
    std::optional<ChartPixel> place_of(int column, int row) const {
        const Position wgs84 = coarse_.wgs84_of({static_cast<double>(column), static_cast<double>(row)});
        if (!coarse_.shows(wgs84, margin_) || !fine_.shows(wgs84, margin_)) return {};
        return fine_.pixel_of(wgs84);
    }

    void append_around(int column, int row) {
        for (int y = row - kReach; y <= row + kReach; y += 2) {
            for (int x = column - kReach; x <= column + kReach; x += 2) {
                const std::optional<ChartPixel> place = place_of(x, y);
                if (!place) continue;
                samples_.push_back({coarse_.land_around(x, y, 1), static_cast<int>(std::lround(place->x)),
                                    static_cast<int>(std::lround(place->y))});
            }
        }
    }

    const Sheet& coarse_;
    const Sheet& fine_;
    double margin_;  // degrees
    std::vector<Sample> samples_;
};

struct Shift {
    int columns, rows;
};

// The shift of the finer chart at which the two masks of land and sea differ least.
Shift best_shift(const std::vector<Sample>& samples, const Sheet& coarse, const Sheet& fine) {
    constexpr int kSteps = 3;  // in each direction
    const int spacing =
        std::max(1, static_cast<int>(std::lround(coarse.metres_per_pixel() / fine.metres_per_pixel())));
    const int step = static_cast<int>(std::lround(kStepMetres / fine.metres_per_pixel()));
    Shift best = {};
    double least = std::numeric_limits<double>::max();
    for (int rows = -kSteps * step; rows <= kSteps * step; rows += step) {
        for (int columns = -kSteps * step; columns <= kSteps * step; columns += step) {
            double squares = 0;
            for (const Sample& sample : samples) {
                const int land = fine.land_around(sample.column + columns, sample.row + rows, spacing);
                squares += (land - sample.land) * (land - sample.land);
            }
            if (squares < least) {
                least = squares;
                best = {columns, rows};
            }
        }
    }
    return best;
}

struct Pair {
    const char* name;
    const char* coarse_file;
    const char* fine_file;
    int fine_inset;
    int stride;  // columns from one pixel looked at to the next
};

const Pair kPairs[] = {
    {"English and Western Channel", "english_channel", "western_channel", kBase, 64},
    {"Channel Lambert and Western Channel", "channel_lambert", "western_channel", kBase, 64},
    {"Channel Lambert and English Channel", "channel_lambert", "english_channel", kBase, 64},
    {"English Channel and the Solent", "english_channel", "english_channel", 0, 8},
    {"English Channel and Dover harbour", "english_channel", "english_channel", 1, 1},
};

TEST(SampleCoasts, MeetThroughWgs84) {
    for (const Pair& pair : kPairs) {
        SCOPED_TRACE(pair.name);
        const Sheet coarse(pair.coarse_file, kBase);
        const Sheet fine(pair.fine_file, pair.fine_inset);
        const std::vector<Sample> samples = Sampler(coarse, fine).samples(pair.stride);
        const Shift shift = best_shift(samples, coarse, fine);
        EXPECT_EQ(shift.columns, 0);
        EXPECT_EQ(shift.rows, 0);
    }
}

}  // namespace
