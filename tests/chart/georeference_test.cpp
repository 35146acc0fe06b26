#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "../support/point_lists.h"
#include "chart_under_test.h"

namespace {

const char* const kGeo =
    "Name=Base\nPoint1=-70 40 0 0\nPoint2=-69 40 0 1000\nPoint3=-70 39 1000 0\nVertex1=39.5003 -69.4994\n"
    "[Inset 1]\nName=Harbour\nPoint1=5 6 20 10\n";

struct PathRow {
    const char* name;
    const char* chart;
    const char* geo;
};

// clang-format off
const PathRow kPathRows[] = {
    // name                              chart            georeference
    {"an extension",                     "a.cht",         "a.GEO"},
    {"the last of two dots",             "a.b.cht",       "a.b.GEO"},
    {"no dot",                           "chart",         "chart.GEO"},
    {"a dot at the very start",          ".chart",        ".chart.GEO"},
    {"no extension, dotted folder",      "f.older/chart", "f.GEO"},
    {"an extension in a dotted folder",  "f.older/c.x",   "f.older/c.GEO"},
};
// clang-format on

TEST(GeoreferencePath, EndsBehindTheLastDot) {
    const std::filesystem::path before = std::filesystem::current_path();
    for (const PathRow& row : kPathRows) {
        SCOPED_TRACE(row.name);
        const TempFolder folder;
        std::filesystem::create_directories(folder.file("f.older"));
        std::filesystem::current_path(folder.file(""));
        folder.write(row.geo, kGeo);
        folder.write(row.chart, small_chart());
        CZellap chart;
        EXPECT_EQ(chart.OpenZellap(row.chart, 1), 1);
        EXPECT_STREQ(chart.GetBaseGeoRec()->Name, "Base");
        std::filesystem::current_path(before);
    }
}

// A chart and its georeference file in a folder of their own.
class ChartFiles {
public:
    ChartFiles() : path_(folder_.write("c.cht", small_chart())) { folder_.write("c.GEO", kGeo); }
    const char* path() const { return path_.c_str(); }
    void remove_geo() const { std::filesystem::remove(folder_.file("c.GEO")); }

private:
    TempFolder folder_;
    std::string path_;
};

std::vector<int> rect_of(const CGEORec& record) {
    const PixelRect& rect = record.InsetRect;
    return {rect.left, rect.top, rect.right, rect.bottom};
}

TEST(ChartRecord, GoesThroughTheChartsStates) {
    const ChartFiles files;
    CZellap chart;
    CGEORec* record = chart.GetBaseGeoRec();

    ASSERT_EQ(chart.OpenZellap(files.path(), 1), 1);
    EXPECT_EQ(rect_of(*record), (std::vector<int>{0, 0, 20, 2}));
    EXPECT_EQ(record->Points.GetCount(), 3);
    EXPECT_EQ(record->pwxPoly[0][0], 0.0) << "nothing is fitted";
    EXPECT_EQ(elements_of(record->Vertices)[0]->X, 0);
    ASSERT_EQ(record->Insets.GetCount(), 1);
    EXPECT_STREQ(elements_of(record->Insets)[0]->Name, "Harbour");
    record->solvepoly();
    EXPECT_NEAR(record->pwx(250, 0), -69.75, 1e-9) << "transforms without pixels";
    chart.CloseZellap();

    ASSERT_EQ(chart.OpenZellap(files.path(), 0), 1);
    EXPECT_EQ(chart.GetBaseGeoRec(), record);
    EXPECT_EQ(record->InsetRect.right, 0);
    EXPECT_NEAR(record->pwx(250, 0), -69.75, 1e-9);
    EXPECT_EQ(elements_of(record->Vertices)[0]->X, 500);
    EXPECT_EQ(elements_of(record->Insets)[0]->InsetRect.left, -70);
    chart.CloseZellap();
    EXPECT_EQ(chart.GetBaseGeoRec(), record);
    EXPECT_TRUE(record->Points.IsEmpty() && record->Vertices.IsEmpty() && record->Insets.IsEmpty());
    EXPECT_STREQ(record->Name, "Base");

    files.remove_geo();
    ASSERT_EQ(chart.OpenZellap(files.path(), 0), 1) << "without a georeference file";
    EXPECT_EQ(rect_of(*record), (std::vector<int>{0, 0, 20, 2}));
}

TEST(ChartRecord, IsAddedToByASecondOpen) {
    const ChartFiles files;
    CZellap chart;
    ASSERT_EQ(chart.OpenZellap(files.path(), 1), 1);
    CGEORec* record = chart.GetBaseGeoRec();
    // The lists of the first open are fitted by the header of the second, whose pixels are rounded.
    files.remove_geo();
    ASSERT_EQ(chart.OpenZellap(files.path(), 0), 1);
    EXPECT_EQ(record->InsetRect.right, 20);
    EXPECT_EQ(elements_of(record->Vertices)[0]->X, 501);
    EXPECT_EQ(elements_of(record->Vertices)[0]->Y, 500);
    chart.CloseZellap();
    const ChartFiles again;
    ASSERT_EQ(chart.OpenZellap(again.path(), 1), 1);
    ASSERT_EQ(chart.OpenZellap(again.path(), 2), 1);
    EXPECT_EQ(elements_of(record->Vertices)[0]->X, 0) << "no fit for information only";
    EXPECT_EQ(record->Points.GetCount(), 6);
    EXPECT_EQ(record->Insets.GetCount(), 2);
}

}  // namespace
