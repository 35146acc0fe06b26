#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <testing/chart_under_test.h>
#include <testing/point_lists.h>

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

TEST(GeoreferencePath, ReplacesEverythingFromTheLastDot) {
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

// The replay of a fuzz target tests how many points and insets a record has, and that its address is fixed.
TEST(ChartRecord, IsFilledAndEmptiedWithTheChartAndGrowsWithASecondOpen) {
    const TempFolder folder;
    const std::string path = folder.write("c.cht", small_chart());
    folder.write("c.GEO", kGeo);
    CZellap chart;
    CGEORec* record = chart.GetBaseGeoRec();

    ASSERT_EQ(chart.OpenZellap(path.c_str(), 1), 1);
    EXPECT_EQ(record->InsetRect.right, 20);
    EXPECT_EQ(record->InsetRect.bottom, 2);
    ASSERT_EQ(record->Insets.GetCount(), 1);
    EXPECT_STREQ(elements_of(record->Insets)[0]->Name, "Harbour");
    record->solvepoly();
    EXPECT_NEAR(record->pwx(250, 0), -69.75, 1e-9) << "transforms without pixels";
    chart.CloseZellap();

    ASSERT_EQ(chart.OpenZellap(path.c_str(), 0), 1);
    EXPECT_EQ(record->InsetRect.right, 0);
    EXPECT_NEAR(record->pwx(250, 0), -69.75, 1e-9);
    EXPECT_EQ(elements_of(record->Vertices)[0]->X, 500);
    EXPECT_EQ(elements_of(record->Insets)[0]->InsetRect.left, -70);
    chart.CloseZellap();
    EXPECT_STREQ(record->Name, "Base");

    std::filesystem::remove(folder.file("c.GEO"));
    ASSERT_EQ(chart.OpenZellap(path.c_str(), 0), 1) << "without a georeference file";
    EXPECT_EQ(record->InsetRect.right, 20);
    EXPECT_EQ(record->InsetRect.bottom, 2);
    chart.CloseZellap();

    // The header of a second open fits the lists of the first and rounds pixels.
    folder.write("c.GEO", kGeo);
    ASSERT_EQ(chart.OpenZellap(path.c_str(), 1), 1);
    record->wpxPoly[0][0] += 7.0;  // the fit replaces it
    std::filesystem::remove(folder.file("c.GEO"));
    ASSERT_EQ(chart.OpenZellap(path.c_str(), 0), 1);
    EXPECT_EQ(record->InsetRect.right, 20);
    EXPECT_EQ(elements_of(record->Vertices)[0]->X, 501);
    EXPECT_EQ(elements_of(record->Vertices)[0]->Y, 500);
    chart.CloseZellap();
    folder.write("c.GEO", kGeo);
    ASSERT_EQ(chart.OpenZellap(path.c_str(), 1), 1);
    ASSERT_EQ(chart.OpenZellap(path.c_str(), 2), 1);
    EXPECT_EQ(elements_of(record->Vertices)[0]->X, 0) << "no fit for information only";
}

}  // namespace
