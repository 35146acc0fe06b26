#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <samples/geo_writer.h>
#include <zellap10/plotter/catalogue.h>

#include "../chart/chart_under_test.h"

namespace {

using zellap10::plotter::Catalogue;

// A section whose picture of 1000 by 800 pixels shows a square of so many degrees.
samples::GeoSection square(const std::string& name, double south, double west, double degrees) {
    const double north = south + degrees;
    const double east = west + degrees > 180 ? west + degrees - 360 : west + degrees;
    samples::GeoSection section;
    section.entries = {{"Name", name}};
    section.vertices = {{north, west}, {north, east}, {south, east}, {south, west}};
    section.points = {{west, north, 0, 0}, {east, north, 1000, 0}, {east, south, 1000, 800}};
    return section;
}

std::vector<std::string> names_of(const Catalogue::Entries& entries) {
    std::vector<std::string> names;
    for (const auto* entry : entries)
        names.push_back(entry->name);
    return names;
}

// A folder of charts: a coast with a harbour on it, an ocean, one over the 180th meridian in a folder of its
// own.
class Charts {
public:
    Charts() {
        std::filesystem::create_directories(folder_.file("far/away"));
        samples::GeoSection coast = square("Coast", 50, -5, 2);
        coast.entries.push_back({"Latitude Offset", "0.5"});
        write("coast", {coast, {square("Harbour", 51, -4, 0.1)}});
        write("ocean", {square("Ocean", 40, -30, 30), {}});
        write("far/twin", {square("Twin", 50, 100, 2), {}});
        write("far/away/fiji", {square("Fiji", -20, 175, 10), {}});
        write("nowhere", {{{{"Name", "Nowhere"}}, {}, {}}, {}});
        folder_.write("ocean.txt", "words about the ocean");
        folder_.write("plain.chart", small_chart());
        folder_.write("lonely.GEO", "Name=Lonely\n");
    }
    std::string file(const std::string& name) const { return folder_.file(name); }

private:
    void write(const std::string& stem, const samples::GeoFile& geo) const {
        folder_.write(stem + ".chart", small_chart());
        folder_.write(stem + ".GEO", samples::geo_text(geo));
    }
    TempFolder folder_;
};

using Names = std::vector<std::string>;

TEST(Catalogue, AnswersTheMostDetailedFirst) {
    const Charts charts;
    Catalogue catalogue;
    EXPECT_EQ(catalogue.add_folder(charts.file("")), 4);
    EXPECT_EQ(names_of(catalogue.entries()), (Names{"Harbour", "Coast", "Twin", "Fiji", "Ocean"}));

    EXPECT_EQ(names_of(catalogue.covering({51.05, -3.95})), (Names{"Harbour", "Coast", "Ocean"}));
    EXPECT_EQ(names_of(catalogue.covering({50.2, -3.95})), Names{"Ocean"})
        << "the coast's WGS 84 is further north";
    EXPECT_EQ(names_of(catalogue.covering({-15, -177})), Names{"Fiji"});
    EXPECT_EQ(names_of(catalogue.covering({-15, 0})), Names{});
    EXPECT_EQ(names_of(catalogue.overlapping({0, 52, -3.95, 1})), (Names{"Harbour", "Coast", "Ocean"}));
    EXPECT_EQ(names_of(catalogue.overlapping({-16, 45, -178, 158})), (Names{"Fiji", "Ocean"}));

    const auto* harbour = catalogue.entries()[0];
    EXPECT_EQ(harbour->inset, 0);
    EXPECT_EQ(std::filesystem::path(harbour->path).filename(), "coast.chart");
    // From the upper left corner to the lower right: 0.1 degrees of 111120 m each way, of which the parallels
    // keep 0.628; over 1281 pixels.
    EXPECT_NEAR(harbour->metres_per_pixel, 11112 * 1.181 / 1280.6, 0.02);
    const auto* coast = catalogue.entries()[1];
    EXPECT_EQ(coast->inset, -1);
    CZellap chart;
    ASSERT_EQ(chart.OpenZellap(harbour->path.c_str(), 0), 1);
    const CGEORec& base = *chart.GetBaseGeoRec();
    EXPECT_EQ(record_of(*coast, base), &base);
    EXPECT_STREQ(record_of(*harbour, base)->Name, "Harbour");
    chart.CloseZellap();
    EXPECT_EQ(record_of(*harbour, base), nullptr);
}

TEST(Catalogue, TakesOnlyChartsThatCoverSomething) {
    const Charts charts;
    Catalogue catalogue;
    for (const char* const name :
         {"plain.chart", "nowhere.chart", "ocean.txt", "lonely.GEO", "far", "none.chart"})
        EXPECT_FALSE(catalogue.add_file(charts.file(name))) << name;
    EXPECT_EQ(catalogue.add_folder(charts.file("none")), 0);
    EXPECT_EQ(catalogue.add_folder(charts.file("coast.chart")), 0);
    EXPECT_TRUE(catalogue.entries().empty());
    for (const char* const name : {"ocean.chart", "coast.chart", "far/twin.chart"})
        EXPECT_TRUE(catalogue.add_file(charts.file(name))) << name;
    EXPECT_EQ(names_of(catalogue.entries()), (Names{"Harbour", "Coast", "Twin", "Ocean"}))
        << "equals as they came";

    const TempFolder unnamed;
    unnamed.write("c.GEO", "Point=1 1 0 0\nPoint=2 1 0 9\nPoint=1 2 9 0\n");
    EXPECT_TRUE(catalogue.add_file(unnamed.write("c.chart", small_chart())));
    EXPECT_EQ(names_of(catalogue.covering({1.2, 1.2})), Names{"SAMPLE"}) << "the name of its header";
}

}  // namespace
