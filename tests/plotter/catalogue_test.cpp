#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <testing/test_chart.h>
#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/catalogue.h>
#include <zellap10/plotter/chart_choice.h>
#include <zellap10/plotter/diagnosis.h>

namespace {

using namespace zellap10::plotter;
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

// The inset is at the columns 200 to 400 and the rows 100 to 250; 80 pixels around are its frame.
TEST_F(CatalogueOf, AChartDoesNotCoverWhatItsInsetHides) {
    TestChart sheet{900, 700, 50, -2, 0.001, 0.25, true, "Sheet"};
    ASSERT_TRUE(catalogue_.add_file(sheet.write(folder_, "sheet")));
    const auto covers = [&sheet](const Catalogue& catalogue, double x, double y) {
        const auto position = sheet.position(x, y);
        return !catalogue.covering({position.latitude + 0.25, position.longitude + 0.25}).empty();
    };
    EXPECT_FALSE(covers(catalogue_, 300, 200));
    EXPECT_FALSE(covers(catalogue_, 122, 22));
    EXPECT_FALSE(covers(catalogue_, 478, 328));
    EXPECT_TRUE(covers(catalogue_, 118, 200));
    EXPECT_TRUE(covers(catalogue_, 300, 332));
    EXPECT_EQ(names_of(catalogue_.covering({9.99, 20.01})), Names{"HARBOUR"});

    // By several threads at once, of an entry that nobody asked before.
    Catalogue fresh;
    fresh.add_file(folder_.file("sheet.chart"));
    std::future<bool> answers[4];
    for (auto& answer : answers)
        answer = std::async(std::launch::async, [&] { return covers(fresh, 300, 200); });
    for (auto& answer : answers)
        EXPECT_FALSE(answer.get());
}

TEST_F(CatalogueOf, AFolderIsOpenedOnceAndThenOnlyWhatHasChanged) {
    const std::string saved = folder_.file("../zellap10_catalogue_test_" + std::to_string(std::rand()));
    EXPECT_EQ(catalogue_.add_folder(folder_.file("")).opened, 6) << "with a text beside ocean.GEO";
    // What an inset hides is saved once somebody has asked for it.
    for (const bool has_asked : {false, true}) {
        if (has_asked) {
            EXPECT_EQ(names_of(catalogue_.covering({51, -4.3})), (Names{"Coast", "Ocean"}));
        }
        ASSERT_TRUE(catalogue_.save(saved));
        Catalogue loaded;
        ASSERT_TRUE(loaded.load(saved));
        loaded.add_folder(folder_.file(""));
        EXPECT_EQ(loaded.entries()[1]->hidden().size(), 1U);
    }
    Catalogue again;
    ASSERT_TRUE(again.load(saved));
    const auto report = again.add_folder(folder_.file(""));
    EXPECT_EQ(report.opened, 0);
    EXPECT_EQ(report.added, 4);
    const auto entries = again.entries();
    const auto expected = catalogue_.entries();
    ASSERT_EQ(names_of(entries), names_of(expected));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto& entry = *entries[i];
        const auto& before = *expected[i];
        EXPECT_EQ(entry.path, before.path);
        EXPECT_EQ(entry.inset, before.inset);
        EXPECT_EQ(entry.metres_per_pixel, before.metres_per_pixel);
        EXPECT_EQ(entry.outline.corners.size(), before.outline.corners.size());
        EXPECT_EQ(entry.outline.corners[2].latitude, before.outline.corners[2].latitude);
        EXPECT_EQ(entry.extent.width, before.extent.width);
        EXPECT_EQ(entry.hidden().size(), before.hidden().size());
    }
    TestChart{310, 200, 65, -30, 0.3, 0, false, "Sea"}.write(folder_, "ocean");
    std::filesystem::remove(folder_.file("coast.GEO"));
    Catalogue later;
    ASSERT_TRUE(later.load(saved));
    EXPECT_EQ(later.add_folder(folder_.file("")).opened, 2);
    EXPECT_EQ(names_of(later.entries()), (Names{"Twin", "Fiji", "Sea"}));

    // A cut at many bytes, and one byte wrong: nothing is loaded, or it is.
    std::ifstream stream(saved, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    stream.close();
    for (std::size_t size = 0; size < bytes.size(); size += 5) {
        samples::write_file(saved, bytes.substr(0, size));
        ASSERT_FALSE(Catalogue().load(saved)) << size;
        if (size % 65 != 0) continue;
        std::string wrong = bytes;
        wrong[size] = static_cast<char>(~wrong[size]);
        samples::write_file(saved, wrong);
        Catalogue damaged;
        if (damaged.load(saved)) damaged.add_folder(folder_.file(""));
    }
    std::filesystem::remove(saved);
    EXPECT_FALSE(Catalogue().load(saved));
    EXPECT_FALSE(catalogue_.save(folder_.file("none/there")));
}

// The queries of 2,000 charts with a grid, against a look at each.
TEST_F(CatalogueOf, ManyChartsFindsThoseThatEveryOneIsAskedFor) {
    const auto number = [](int i, int modulus) { return i * 7919 % modulus; };
    samples::write_file(folder_.file("m.chart"), TestChart{}.bytes());
    for (int i = 0; i < 2000; ++i) {
        const double south = -85.0 + number(i, 167);
        const double west = -180.0 + number(i, 359);
        const double size = i % 50 == 0 ? 40.0 : 0.5 + i % 7;
        const double north = std::min(south + size, 89.0);
        const double east = std::remainder(west + size, 360.0);
        std::string vertices;
        for (const auto& [latitude, longitude] : {std::pair(south, west), {south, east}, {north, east}})
            vertices += "Vertex=" + std::to_string(latitude) + ' ' + std::to_string(longitude) + '\n';
        folder_.write("m.GEO", vertices);
        catalogue_.add_file(folder_.file("m.chart"));
    }
    const auto all = catalogue_.entries();
    ASSERT_GT(all.size(), 1900U);
    for (int i = 0; i < 300; ++i) {
        const double west = number(i * 3, 360) - 180.0;
        const Extent extent{-70.0 + i % 100, -70.0 + i % 100 + i % 9, west,
                            i % 30 == 0 ? 355.0 : i % 13 * 1.0};
        const Position position{-70.0 + i % 140, west};
        Catalogue::Entries with_extent, overlapping, covering;
        for (const CatalogueEntry* entry : all) {
            const bool has_extent = entry->extent.overlaps(extent);
            if (has_extent) with_extent.push_back(entry);
            if (has_extent && entry->outline.overlaps(extent)) overlapping.push_back(entry);
            if (entry->shows(position)) covering.push_back(entry);
        }
        EXPECT_EQ(catalogue_.with_extent_in(extent), with_extent) << i;
        EXPECT_EQ(catalogue_.overlapping(extent), overlapping) << i;
        EXPECT_EQ(catalogue_.covering(position), covering) << i;
    }
}

// 111 m, 1113 m and 5566 m to a pixel, 1500 by 900 pixels about the same middle.
TEST(ChartChoice, PutsTheMostDetailedReadableChartOnTop) {
    const TempFolder folder;
    Catalogue catalogue;
    for (const auto& [step, name] : {std::pair(0.01, "B"), {0.05, "C"}, {0.001, "A"}}) {
        const TestChart chart{1500, 900, 50 + 450 * step, -2 - 750 * step, step, 0, false, name};
        ASSERT_TRUE(catalogue.add_file(chart.write(folder, name)));
    }
    ChartChoice last;
    const auto at = [&](double metres, const std::set<const CatalogueEntry*>& readable) {
        last = choose_charts(catalogue, MapView({50, -2}, metres, {800, 600}), readable);
        std::string names;
        for (const ChosenChart& chart : last.charts)
            names += chart.entry->name;
        return names;
    };
    EXPECT_EQ(at(100, {}), "ABC") << "coarser charts fill the gaps, however much they are enlarged";
    EXPECT_EQ(at(300, {}), "ABC");
    EXPECT_EQ(at(600, {}), "BCA") << "A is reduced too much, and shows only where there is no other";
    EXPECT_EQ(at(3000, {}), "BCA");
    EXPECT_EQ(at(6000, {}), "CBA");
    EXPECT_EQ(at(40000, {}), "CB") << "A is too small to be seen";

    // Without flicker at the limits.
    const double limit = 4 * catalogue.entries()[0]->metres_per_pixel.value();
    EXPECT_EQ(at(limit * 0.99, {}), "ABC");
    for (const double metres : {1.005, 0.995, 1.01, 1.08})
        EXPECT_EQ(at(limit * metres, last.readable), "ABC") << metres;
    EXPECT_EQ(at(limit * 1.2, last.readable), "BCA");
    EXPECT_EQ(at(limit * 1.01, last.readable), "BCA");
    EXPECT_EQ(at(limit * 0.98, last.readable), "ABC");
}

// In UTF-8 their letters have other bytes than in the code page of Windows. Both folders and files have them.
TEST_F(CatalogueOf, AFolderFindsNamesThatAreNotAscii) {
#if defined(_WIN32)
    if (GetACP() != 1252 && GetACP() != CP_UTF8) GTEST_SKIP() << "the code page may lack the letters";
#endif
    namespace fs = std::filesystem;
    const fs::path harbour = fs::u8path(folder_.file("K\xC3\xB8ge"));
    fs::create_directories(harbour);
    for (const char* const ending : {".chart", ".GEO"})
        fs::rename(folder_.file("coast") + ending,
                   harbour / fs::u8path("\xC3\xA9t\xC3\xA9" + std::string(ending)));

    EXPECT_EQ(catalogue_.add_folder(folder_.file("")).added, 4);
    const auto entries = catalogue_.covering({51, -4.3});
    ASSERT_FALSE(entries.empty());
    const std::string path = entries.front()->path;
    CZellap chart;
    EXPECT_EQ(chart.OpenZellap(path.c_str(), 0), 1) << path;
    EXPECT_FALSE(diagnose_georeference(path));
    const std::string saved = path.substr(0, path.rfind('.')) + ".catalogue";
    ASSERT_TRUE(catalogue_.save(saved));
    Catalogue again;
    ASSERT_TRUE(again.load(saved));
    const auto report = again.add_folder(path.substr(0, path.find_last_of("/\\")));
    EXPECT_EQ(report.added, 1);
    EXPECT_EQ(report.opened, 1) << "only the saved file";
}

#if !defined(_WIN32)
// A folder whose path is too long for the system: it gets that long when a folder above it is renamed.
TEST_F(CatalogueOf, SkipsAndCountsFoldersThatItCannotEnter) {
    namespace fs = std::filesystem;
    fs::path deep = folder_.file("b");
    while (deep.string().size() < 3900)
        deep /= std::string(200, 'd');
    fs::create_directories(deep);
    const fs::path renamed = folder_.file(std::string(250, 'b'));
    fs::rename(folder_.file("b"), renamed);
    const auto report = catalogue_.add_folder(folder_.file(""));
    fs::rename(renamed, folder_.file("b"));
    EXPECT_EQ(report.added, 4) << "what is after it is searched too";
    EXPECT_EQ(report.skipped_folders, 1);
}
#endif

}  // namespace
