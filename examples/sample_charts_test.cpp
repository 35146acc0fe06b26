// Compares the pixels of the sample charts with their georeference files.

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <zellap10/plotter/georeference.h>
#include <zellap10/zellap10.h>

namespace {

struct ChartRow {
    const char* file;
    const char* name;
    int code, wraps, insets, points;
    double grid_minutes;  // between grid lines
    PALETTEENTRY grid;    // colour of the grid
    double most_pixels;   // limit of the residuals of wpxy and pixel_of
    double most_degrees;  // limit of the error of a pixel and back
};

constexpr PALETTEENTRY kGrey = {168, 174, 180, 0};
constexpr PALETTEENTRY kBlueGrey = {150, 160, 172, 0};

// With a projection the points are at pixel centres, so that only rounding error is left; the fit of a small
// chart magnifies it. Without a projection, polynomials fit a Mercator drawing to 0.01 pixel. The inverse
// projections have a tolerance of about 1e-7 radians.
// clang-format off
const ChartRow kCharts[] = {
    // file              name             code wraps insets points grid colour     pixels degrees
    {"english_channel", "ENGLISH CHANNEL", 1,  0,    2,     18,    30,  kGrey,     1e-3,  1e-8},
    {"western_channel", "WESTERN CHANNEL", 3,  0,    0,     24,    30,  kGrey,     1e-3,  1e-7},
    {"channel_lambert", "CHANNEL LAMBERT", 4,  0,    0,     19,    30,  kGrey,     1e-3,  1e-8},
    {"gulf_of_maine",   "GULF OF MAINE",   2,  0,    0,     24,    30,  kBlueGrey, 1e-3,  1e-8},
    {"fiji",            "FIJI ISLANDS",    0,  1,    0,     24,    30,  kGrey,     0.01,  3e-5},
};
// clang-format on
const ChartRow kInsets[] = {{"english_channel", "THE SOLENT", 1, 0, 0, 12, 10, kGrey, 1e-3, 1e-8},
                            {"english_channel", "DOVER HARBOUR", 1, 0, 0, 12, 0.5, kGrey, 1e-3, 1e-8}};
constexpr int kHarbour = 1;  // index of the plan that is too small for wpxy

constexpr int kSamplesOfLine = 150;
constexpr double kLeastShare =
    0.95;  // of the samples of a grid; names, the title and the rose cover up to 0.03

void open(CZellap& chart, const ChartRow& row) {
    const std::string path = std::string(SAMPLE_CHARTS_DIR) + "/" + row.file + ".chart";
    ASSERT_EQ(chart.OpenZellap(path.c_str(), 0), 1) << path;
}

// Looks for the meridians and parallels of a record at the pixels that pixel_of returns.
class Grid {
public:
    Grid(CZellap& chart, const CGEORec& record, const ChartRow& row)
        : chart_(chart),
          record_(record),
          georeference_(zellap10::plotter::Georeference::from(record).value()),
          row_(row) {
        GetPaletteEntries(chart.GetPaletteHandle(), 0, 256, palette_);
        for (const CRefPoint* vertex : record.Vertices) {
            const double lon =
                record.Wraps180 != 0 && vertex->Longitude > 0 ? vertex->Longitude - 360 : vertex->Longitude;
            west_ = std::min(west_, lon);
            east_ = std::max(east_, lon);
            south_ = std::min(south_, vertex->Latitude);
            north_ = std::max(north_, vertex->Latitude);
        }
    }

    double share_found() {
        const double step = row_.grid_minutes / 60.0;
        for (double n = std::floor(west_ / step) + 1; n * step < east_; ++n) {
            for (int i = 1; i < kSamplesOfLine; ++i)
                look_at(south_ + (north_ - south_) * i / kSamplesOfLine, n * step);
        }
        for (double n = std::floor(south_ / step) + 1; n * step < north_; ++n) {
            for (int i = 1; i < kSamplesOfLine; ++i)
                look_at(n * step, west_ + (east_ - west_) * i / kSamplesOfLine);
        }
        return looked_ > 0 ? static_cast<double>(found_) / looked_ : 0;
    }

private:
    void look_at(double lat, double lon) {
        const auto pixel = georeference_.pixel_of_chart_datum({lat, lon});
        ASSERT_TRUE(pixel) << lat << ", " << lon;
        const int column = static_cast<int>(std::lround(pixel->x));
        const int line = static_cast<int>(std::lround(pixel->y));
        if (is_under_inset(column, line)) return;
        unsigned char indexes[9] = {};
        ++looked_;
        ASSERT_EQ(chart_.getMultiLines(line - 1, 3, column - 1, 3, indexes), 1) << lat << ", " << lon;
        if (std::any_of(indexes, indexes + 9,
                        [&](unsigned char index) { return is_grid(palette_[index]); })) {
            ++found_;
        }
    }

    bool is_under_inset(int column, int line) const {
        for (const CGEORec* inset : record_.Insets) {
            const PixelRect& rect = inset->InsetRect;
            if (column >= rect.left && column <= rect.right && line >= rect.top && line <= rect.bottom)
                return true;
        }
        return false;
    }

    bool is_grid(const PALETTEENTRY& colour) const {
        return colour.peRed == row_.grid.peRed && colour.peGreen == row_.grid.peGreen &&
               colour.peBlue == row_.grid.peBlue;
    }

    CZellap& chart_;
    const CGEORec& record_;
    const zellap10::plotter::Georeference georeference_;
    const ChartRow& row_;
    PALETTEENTRY palette_[256] = {};
    double west_ = 1e9;
    double east_ = -1e9;
    double south_ = 1e9;
    double north_ = -1e9;
    int looked_ = 0;
    int found_ = 0;
};

void expect_record(CZellap& chart, const CGEORec& record, const ChartRow& row) {
    SCOPED_TRACE(row.name);
    EXPECT_STREQ(record.Name, row.name);
    EXPECT_EQ(record.ProjCode, row.code);
    EXPECT_EQ(record.Wraps180, row.wraps);
    EXPECT_EQ(record.Insets.GetCount(), row.insets);
    EXPECT_EQ(record.Points.GetCount(), row.points);
    const auto georeference = zellap10::plotter::Georeference::from(record).value();
    for (const CRefPoint* point : record.Points) {
        const auto pixel = georeference.pixel_of_chart_datum({point->Latitude, point->Longitude}).value();
        EXPECT_NEAR(pixel.x, point->X, row.most_pixels) << point->Name;
        EXPECT_NEAR(pixel.y, point->Y, row.most_pixels) << point->Name;
        double x = 0;
        double y = 0;
        record.wpxy(point->Longitude, point->Latitude, &x, &y);
        if (&row != &kInsets[kHarbour]) {
            EXPECT_NEAR(x, point->X, row.most_pixels) << point->Name;
            EXPECT_NEAR(y, point->Y, row.most_pixels) << point->Name;
        }
        double lon = 0;
        double lat = 0;
        record.pwxy(pixel.x, pixel.y, &lon, &lat);
        EXPECT_NEAR(lon, point->Longitude, row.most_degrees) << point->Name;
        EXPECT_NEAR(lat, point->Latitude, row.most_degrees) << point->Name;
    }
    EXPECT_GT(Grid(chart, record, row).share_found(), kLeastShare);
}

TEST(SampleCharts, ShowTheirGridWhereTheirRecordPutsIt) {
    for (const ChartRow& row : kCharts) {
        CZellap chart;
        open(chart, row);
        EXPECT_STREQ(chart.ChartName, row.name);
        expect_record(chart, *chart.GetBaseGeoRec(), row);
    }
}

TEST(SampleCharts, ShowTheGridOfAnInsetWhereItsRecordPutsIt) {
    CZellap chart;
    open(chart, kInsets[0]);
    int number = 0;
    for (const CGEORec* inset : chart.GetBaseGeoRec()->Insets)
        expect_record(chart, *inset, kInsets[number++]);
    EXPECT_EQ(number, 2);
}

TEST(SampleCharts, HaveAHarbourPlanThatIsTooSmallForWpxy) {
    CZellap chart;
    open(chart, kInsets[kHarbour]);
    const CGEORec& plan = **(chart.GetBaseGeoRec()->Insets.begin() + kHarbour);
    const CRefPoint& corner = **plan.Points.begin();
    EXPECT_GT(std::fabs(plan.wpy(corner.Longitude, corner.Latitude) - corner.Y), 300.0);
    const auto georeference = zellap10::plotter::Georeference::from(plan).value();
    const auto across = georeference.pixel_of_chart_datum({51.11, 1.33}).value();
    const auto there = georeference.chart_datum_position_of({across.x, across.y - 2000 / 2.5}).value();
    EXPECT_NEAR((there.latitude - 51.11) * 111120, 2000, 10) << "2 km are 800 pixels of 2.5 m";
}

// The distance between the chart's own datum and WGS 84, as in docs/plotting.md.
TEST(SampleCharts, LieAsFarFromWgs84AsTheyAreSaidTo) {
    CZellap chart;
    open(chart, kCharts[0]);
    const CGEORec& record = *chart.GetBaseGeoRec();
    const double miles = m_distance(50, 0, 50 + record.LatitudeOffset, record.LongitudeOffset);
    EXPECT_NEAR(miles * 1852, 138, 0.5);
}

TEST(SampleCharts, HaveLongitudesOfBothSignsAcrossThe180thMeridian) {
    CZellap chart;
    open(chart, kCharts[4]);
    const CGEORec& record = *chart.GetBaseGeoRec();
    const double x_of_180 = record.wpx(180, -17);
    EXPECT_NEAR(record.wpx(-180, -17), x_of_180, 1e-6);
    EXPECT_NEAR(record.pwx(x_of_180 - 50, 1000), 179.9, 0.01);
    EXPECT_NEAR(record.pwx(x_of_180 + 50, 1000), -179.9, 0.01);
}

}  // namespace
