#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/refused_charts.h>

namespace {

// The replay of the chart fuzz target tests what an object that is not open refuses.
TEST(ChartLife, OpensAndClosesRepeatedly) {
    ChartUnderTest chart;
    EXPECT_STREQ(chart.Version, "1.0");
    EXPECT_TRUE(chart.Path.IsEmpty());
    EXPECT_EQ(chart.LogPalette.palVersion, 0x300);
    EXPECT_EQ(chart.LogPalette.palNumEntries, 0);
    EXPECT_EQ(chart.GetDocumentSize().cx, 0);
    chart.CloseZellap();

    for (const int info_only : {1, 2, -1}) {
        ASSERT_EQ(chart.open(text_of_size(20, 2), info_only), 1);
        EXPECT_EQ(chart.GetDocumentSize().cx, 20);
        EXPECT_EQ(chart.ColourShift + chart.BitsPerPixel + chart.ColourMask + chart.RunMask, 0);
        EXPECT_EQ(chart.GetPaletteHandle(), nullptr);
    }

    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(chart.open(small_chart()), 1);
        EXPECT_NE(chart.GetPaletteHandle(), nullptr);
        GuardedPixels dest(20);
        EXPECT_EQ(chart.getLine(1, dest.data()), 1);
        chart.CloseZellap();
        chart.CloseZellap();
        EXPECT_EQ(chart.GetPaletteHandle(), nullptr);
        EXPECT_EQ(chart.GetDocumentSize().cx, 20);
        EXPECT_EQ(chart.GetDocumentSize().cy, 2);
        EXPECT_STREQ(chart.ChartName, "SAMPLE");
        EXPECT_EQ(chart.BitsPerPixel, 4);
        EXPECT_EQ(chart.LogPalette.palNumEntries, 10);
    }
}

struct StateRow {
    const char* name;
    int info_only;
    bool was_opened;
    bool is_open;
};

const StateRow kStateRows[] = {{"new", 0, false, false},
                               {"text read", 1, true, true},
                               {"open", 0, true, true},
                               {"closed", 0, true, false}};

// A chart that is opened, and the georeference of one that is refused and differs from it in every field.
class UnsoundFile : public testing::Test {
protected:
    UnsoundFile() {
        const std::string text = "NOS/NA=SOUND,RA=0,0,12,1,DU=7\nRGB/9,1,2,3\n";
        sound_ = folder_.write("sound.cht", samples::chart_bytes(text, 5, {"\x01\xA0\x0B"}));
        folder_.write(
            "sound.GEO",
            "Name=Sound\nVertex=39 -70\nPoint=-70 40 0 0\nPoint=-69 40 0 9\nPoint=-70 39 9 0\n[Inset\n"
            "Point=1 1 1 1\n");
        folder_.write("unsound.GEO",
                      "Name=Unsound\nVertex=1 2\nPoint=1 2 0 0\nPoint=2 2 0 5\nPoint=1 1 5 0\n[Inset\n");
    }

    // Refuses a path on an object in each of its states.
    void expect_no_change(const char* path, int info_only) {
        for (const StateRow& state : kStateRows) {
            SCOPED_TRACE(state.name);
            ChartUnderTest chart;
            EXPECT_EQ(chart.OpenZellap(state.was_opened ? sound_.c_str() : nullptr, state.info_only),
                      state.was_opened);
            if (!state.is_open) chart.CloseZellap();
            const std::string path_after = path != nullptr ? path : static_cast<const char*>(chart.Path);
            const std::vector<std::string> before = state_of(chart);

            EXPECT_EQ(chart.OpenZellap(path, info_only), 0);
            EXPECT_EQ(std::string(chart.Path), path_after);
            EXPECT_TRUE(state_of(chart) == before);
            if (state.is_open && state.info_only == 0) {
                GuardedPixels line(12);
                EXPECT_EQ(chart.getLine(0, line.data()), 1);
                EXPECT_EQ(line.pixels(), std::vector<int>(12, 8));
            }
            chart.CloseZellap();
            EXPECT_EQ(chart.OpenZellap(sound_.c_str(), 0), 1);
        }
    }

    TempFolder folder_;
    std::string sound_;
};

TEST_F(UnsoundFile, DoesNotOpenAndChangesNothing) {
    for (const RefusedChart& row : kRefusedCharts) {
        SCOPED_TRACE(row.name);
        expect_no_change(folder_.write("unsound.cht", row.bytes).c_str(), 0);
    }
    ChartUnderTest chart;
    EXPECT_EQ(chart.open(small_chart_of_height("3")), 1) << "the table ends at the end of the file";
    EXPECT_EQ(chart.LineOffsets[2], 69);
}

TEST_F(UnsoundFile, MayBeMissingOrAFolderOrADevice) {
    const std::string missing = folder_.file("missing.cht");
    const std::string folder = folder_.file("");
    // Each of these devices exists on some system, where it could be read forever.
    for (const char* const path : {missing.c_str(), folder.c_str(), "/dev/zero", "NUL", "CON", "",
                                   static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(path);
        for (const int info_only : {0, 1})
            expect_no_change(path, info_only);
    }
}

using PathOfAChart = UnsoundFile;

// The open replaces or frees the text of the path.
TEST_F(PathOfAChart, MayBeAnyTextOfTheObject) {
    const std::string other = folder_.write("other chart.cht", small_chart());
    folder_.write("other chart.GEO", "Name=Other\n");
    for (std::size_t i = 0; i < 4; ++i) {
        ChartUnderTest chart;
        ASSERT_EQ(chart.OpenZellap(sound_.c_str(), 1), 1);
        CRefPoint* const vertex = elements_of(chart.BaseRec.Vertices)[0];
        chart.Path = chart.BaseRec.Name = vertex->Name = other.c_str();
        other.copy(chart.ChartName, sizeof chart.ChartName - 1);
        const char* const texts[] = {chart.Path, chart.BaseRec.Name, vertex->Name, chart.ChartName};
        EXPECT_EQ(chart.OpenZellap(texts[i], 0), 1);
        EXPECT_EQ(std::string(chart.Path), other);
        EXPECT_STREQ(chart.BaseRec.Name, "Other");
        EXPECT_STREQ(chart.ChartName, "SAMPLE");
    }
}

// Offsets have 32 bits with a sign. The gap before the last line takes no space on a disk.
TEST_F(UnsoundFile, MayHaveALineNear2GiB) {
    for (const std::int64_t size : {std::int64_t{INT32_MAX}, INT32_MAX + std::int64_t{1}}) {
        SCOPED_TRACE(size);
        const bool opens = size == INT32_MAX;
        const std::int64_t table = size - 12;
        std::string end = "\x02\x90\x13";  // line 1 of the small chart
        for (const std::int64_t offset : {std::int64_t{60}, table - 3, table}) {
            for (int shift = 24; shift >= 0; shift -= 8)
                end += static_cast<char>(offset >> shift & 0xFF);
        }
        const std::string path = folder_.write("large.cht", small_chart());
        std::fstream(path, std::ios::in | std::ios::out | std::ios::binary).seekp(table - 3) << end;

        ChartUnderTest chart;
        EXPECT_EQ(chart.OpenZellap(path.c_str(), 0), opens ? 1 : 0);
        GuardedPixels dest(20);
        EXPECT_EQ(chart.getLine(1, dest.data()), opens ? 1 : 0);
        EXPECT_EQ(dest.pixels(), std::vector<int>(20, opens ? 2 : kUntouched));
    }
}

// A derived class may read a text of its own.
TEST(TextStreamInUse, PreventsAnOpenAndDoesNotChange) {
    const TempFolder folder;
    const std::string own = folder.write("own.txt", "first\nsecond\n");
    for (const char* const name : {"sound.cht", "missing.cht"}) {
        folder.write("sound.cht", small_chart());
        ChartUnderTest chart;
        chart.TextStream.open(own);
        std::string line;
        std::getline(chart.TextStream, line);
        EXPECT_EQ(chart.OpenZellap(folder.file(name).c_str(), 0), 0);
        EXPECT_TRUE(std::getline(chart.TextStream, line));
        EXPECT_EQ(line, "second");
        chart.TextStream.setstate(std::ios::eofbit);
        EXPECT_EQ(chart.OpenZellap(folder.file(name).c_str(), 0), 0);
        EXPECT_EQ(chart.TextStream.rdstate(), std::ios::eofbit);
    }
}

TEST(SecondHeader, NeverLeadsPastTheLineTable) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart()), 1);
    ASSERT_EQ(chart.open(text_of_size(20, 1000), 1), 1);
    GuardedPixels dest(20);
    EXPECT_EQ(chart.getLine(1, dest.data()), 1);
    EXPECT_EQ(chart.getLine(2, dest.data()), 0);
    EXPECT_EQ(chart.getMultiLines(1, 2, 0, 5, dest.data()), 0);
    int colour = 0;
    int length = 0;
    chart.seekLine(999);
    chart.vNextCRL(&colour, &length);
    EXPECT_EQ(length, 20);
}

}  // namespace
