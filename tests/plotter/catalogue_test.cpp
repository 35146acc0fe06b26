#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/test_chart.h>
#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/catalogue.h>

namespace {

using zellap10::plotter::Catalogue;
using zellap10::plotter::Sheet;
using Names = std::vector<std::string>;

// A folder of charts: a coast with a harbour on it, an ocean, one over the 180th meridian in a folder of its
// own.
class CatalogueOf : public testing::Test {
protected:
    CatalogueOf() {
        std::filesystem::create_directories(folder_.file("far/away"));
        TestChart{300, 200, 52, -5, 0.0078125, 0.5, true, "Coast"}.write(folder_, "coast");
        TestChart{300, 200, 65, -30, 0.3, 0, false, "Ocean"}.write(folder_, "ocean");
        TestChart{300, 200, 52, 100, 0.0078125, 0, false, "Twin"}.write(folder_, "far/twin");
        TestChart{300, 200, -10, 175, 0.05, 0, false, "Fiji"}.write(folder_, "far/away/fiji");
        folder_.write("nowhere.chart", TestChart{}.bytes());
        folder_.write("nowhere.GEO", "Name=Nowhere\n");
        folder_.write("plain.chart", TestChart{}.bytes().substr(0, 1000));  // no pixels
        folder_.write("ocean.txt", "words about the ocean");
        folder_.write("alone.GEO", "NOS/RA=0,0,9,9\nPoint=1 1 0 0\nPoint=2 1 0 9\nPoint=1 2 9 0\n");
    }

    static Names names_of(const Catalogue::Entries& entries) {
        Names names;
        for (const auto* entry : entries)
            names.push_back(entry->name);
        return names;
    }

    TempFolder folder_;
    Catalogue catalogue_;
};

TEST_F(CatalogueOf, AFolderAnswersTheMostDetailedFirst) {
    EXPECT_EQ(catalogue_.add_folder(folder_.file("")).added, 4);
    EXPECT_EQ(names_of(catalogue_.entries()), (Names{"HARBOUR", "Coast", "Twin", "Fiji", "Ocean"}));
    EXPECT_EQ(names_of(catalogue_.covering({51, -4.3})), (Names{"Coast", "Ocean"}));
    EXPECT_EQ(names_of(catalogue_.covering({50.7, -4.3})), Names{"Ocean"}) << "the coast has moved north";
    EXPECT_EQ(names_of(catalogue_.covering({-15, -177})), Names{"Fiji"});
    EXPECT_EQ(names_of(catalogue_.overlapping({9, 11, 20, 1})), (Names{"HARBOUR", "Ocean"}));
    EXPECT_EQ(names_of(catalogue_.overlapping({-16, 45, -178, 158})), (Names{"Fiji", "Ocean"}));

    const auto& harbour = *catalogue_.entries()[0];
    const auto& coast = *catalogue_.entries()[1];
    // From the upper left corner to the lower right: 1/128 degree of 111120 m a pixel, of which the parallels
    // keep 0.626.
    EXPECT_NEAR(coast.metres_per_pixel.value(), 868.1 * std::hypot(299 * 0.626, 199) / std::hypot(299, 199),
                2.0);
    EXPECT_NEAR(harbour.metres_per_pixel.value(), 86.81 * std::hypot(200 * 0.985, 150) / std::hypot(200, 150),
                0.5);
    CZellap chart;
    ASSERT_EQ(chart.OpenZellap(harbour.path.c_str(), 0), 1);
    const Sheet sheet(*chart.GetBaseGeoRec());
    EXPECT_NEAR(georeference_of(coast, sheet)->pixel_of({51, -4.3})->x, 25.6, 1e-6);
    EXPECT_NEAR(georeference_of(harbour, sheet)->position_of({200, 100})->latitude, 10.0, 1e-9);
    EXPECT_FALSE(georeference_of(harbour, Sheet(CGEORec())));
}

TEST_F(CatalogueOf, FilesTakesOnlyChartsThatCoverSomething) {
    for (const char* const name : {"plain.chart", "nowhere.chart", "ocean.txt", "far"})
        EXPECT_FALSE(catalogue_.add_file(folder_.file(name))) << name;
    EXPECT_EQ(catalogue_.add_folder(folder_.file("none")).skipped_folders, 1);
    EXPECT_TRUE(catalogue_.entries().empty());
    for (const char* const name : {"far/twin.chart", "coast.chart"})
        EXPECT_TRUE(catalogue_.add_file(folder_.file(name))) << name;
    EXPECT_EQ(names_of(catalogue_.entries()), (Names{"HARBOUR", "Twin", "Coast"})) << "equals as they came";

    folder_.write("plain.GEO", "Point=1 1 0 0\nPoint=2 1 0 9\nPoint=1 2 9 0\n");
    EXPECT_TRUE(catalogue_.add_file(folder_.file("plain.chart")));
    EXPECT_EQ(names_of(catalogue_.covering({1.2, 1.2})), Names{"TEST CHART"}) << "the name of its header";
}

}  // namespace
