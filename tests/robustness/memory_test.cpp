#include <cstdio>
#include <functional>
#include <iterator>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "failing_new.h"
#include <testing/chart_under_test.h>
#include <testing/comma_locale.h>
#include <testing/point_lists.h>
#include <testing/record_parts.h>
#include <zellap10/georef/points.h>

namespace {

// A file with a fit in two regions, an inset in projection mode, and texts too long for the string object
// itself.
std::string georeference_text() {
    std::string text = "Name=A name that is far too long for a short string\r\nVertex1=42.0 -70.0\r\n";
    for (int i = 0; i < 16; ++i) {
        const int x = i % 4 * 2000;
        const int y = i / 4 * 2000;
        text += "Point with a long label " + std::to_string(i) + "=" + std::to_string(-70 + 0.00012 * x) +
                " " + std::to_string(42 - 0.00009 * y - 1e-9 * x * y) + " " + std::to_string(y) + " " +
                std::to_string(x) + "\r\n";
    }
    return text +
           "[Inset 1]\r\nProjection=TRANSVERSE MERCATOR\r\nVertex=42 -70\r\nPoint1=-70 42 0 0\r\n"
           "Point2=-69 42 0 900\r\nPoint3=-70 41 900 0\r\n";
}

// Runs a call while memory fails. Returns whether it ended without std::bad_alloc.
using Runner = std::function<bool(const std::function<void()>& call)>;

// Repeats a trial with each allocation failing in turn, alone and with all later ones. Returns the number of
// failures.
int fail_in_turn(const std::function<void(const Runner&)>& trial) {
    int failures = 0;
    for (const bool all_after : {false, true}) {
        for (long n = 1;; ++n) {
            SCOPED_TRACE("allocation " + std::to_string(n) + (all_after ? " and all later ones" : ""));
            const long before = failing_new::live();
            trial([&](const std::function<void()>& call) {
                try {
                    const failing_new::Scope scope(n, all_after);
                    call();
                } catch (const std::bad_alloc&) {
                    return false;
                }
                return true;
            });
            EXPECT_EQ(failing_new::live(), before) << "something leaked";
            if (!failing_new::Scope::has_failed() || testing::Test::HasFailure()) break;
            ++failures;
        }
    }
    return failures;
}

class MemoryRunsOut : public testing::Test {
protected:
    MemoryRunsOut() {
        path_ = folder_.write("chart.cht", small_chart());
        geo_path_ = folder_.write("chart.GEO", georeference_text());
    }

    // The transforms and pixels of an open chart, as one vector.
    static std::vector<double> answers_of(ChartUnderTest& chart) {
        std::vector<double> all = transforms_of(chart.BaseRec);
        all.push_back(static_cast<double>(chart.BaseRec.Points.GetCount()));
        all.push_back(static_cast<double>(chart.BaseRec.Insets.GetCount()));
        unsigned char pixels[20] = {};
        all.push_back(chart.getAALine(0, 0, 20, pixels, 1, 2));
        all.insert(all.end(), pixels, pixels + sizeof pixels);
        return all;
    }

    static void expect_closed(const ChartUnderTest& chart) {
        EXPECT_EQ(chart.ChartFile, nullptr);
        EXPECT_EQ(chart.LineOffsets, nullptr);
        EXPECT_EQ(chart.GetPaletteHandle(), nullptr);
        EXPECT_FALSE(chart.TextStream.is_open());
        EXPECT_TRUE(chart.BaseRec.Points.IsEmpty());
        EXPECT_TRUE(chart.BaseRec.Vertices.IsEmpty());
        EXPECT_TRUE(chart.BaseRec.Insets.IsEmpty());
    }

    TempFolder folder_;
    std::string path_;
    std::string geo_path_;
};

// An open chart is unchanged, or closed if the header of the new file has been stored.
TEST_F(MemoryRunsOut, InAnOpen) {
    const std::string other =
        folder_.write("other.cht", samples::chart_bytes(text_of_size(5000, 1), 4, {"\x01"}));
    folder_.write("other.GEO", "Point=1 1 1 1\nVertex=1 1\n[Inset\nPoint=1 1 1 1\n");
    ChartUnderTest good;
    ASSERT_EQ(good.OpenZellap(path_.c_str(), 0), 1);
    const std::vector<double> expected = answers_of(good);
    const struct {
        const char* name;
        bool open;  // another chart is open already
        int info_only;
        int least_unchanged, least_closed;
    } rows[] = {
        {"a first chart", false, 0, 0, 400},
        {"a first chart for information", false, 1, 0, 100},
        {"another chart", true, 0, 3, 50},
        {"another chart for information", true, 1, 1, 20},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        int unchanged = 0;
        int closed = 0;
        fail_in_turn([&](const Runner& run) {
            ChartUnderTest chart;
            ASSERT_TRUE(!row.open || chart.OpenZellap(path_.c_str(), 0) == 1);
            const std::vector<std::string> before = state_of(chart);
            std::FILE* const file = chart.ChartFile;
            std::int32_t* const offsets = chart.LineOffsets;
            const HPALETTE palette = chart.PaletteHandle;
            const std::string& path = row.open ? other : path_;
            int opened = 0;
            const bool ended = run([&] { opened = chart.OpenZellap(path.c_str(), row.info_only); });
            if (opened == 1) {
                // A second open replaces these three without freeing them.
                if (!row.open || row.info_only != 0) return;
                std::fclose(file);
                delete[] offsets;
                DeleteObject(palette);
                return;
            }
            const bool is_unchanged = state_of(chart) == before;
            EXPECT_TRUE(is_unchanged || !ended);
            if (row.open && is_unchanged) {
                EXPECT_EQ(answers_of(chart), expected);
                ++unchanged;
            } else {
                expect_closed(chart);
                ++closed;
            }
            // With or without a close in between, the next open must not depend on the failed one.
            if (row.open || closed % 2 == 0) chart.CloseZellap();
            ASSERT_EQ(chart.OpenZellap(path_.c_str(), 0), 1);
            EXPECT_EQ(answers_of(chart), expected);
        });
        EXPECT_GE(unchanged, row.least_unchanged);
        EXPECT_GE(closed, row.least_closed);
    }
}

TEST_F(MemoryRunsOut, InAReducedLine) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.OpenZellap(path_.c_str(), 0), 1);
    const int failures = fail_in_turn([&](const Runner& run) {
        GuardedPixels dest(2);
        int given = -1;
        EXPECT_TRUE(run([&] { given = chart.getAALine(0, 0, 20, dest.data(), 10, 2); })) << "it never throws";
        EXPECT_EQ(given, dest.untouched() ? 0 : 1);
        EXPECT_EQ(chart.getAALine(0, 0, 20, dest.data(), 10, 2), 1);
    });
    EXPECT_EQ(failures, 2) << "one allocation, alone and with all later ones";
}

struct Kind {
    const char* projection;
    double west;
};

// Each is fitted after the one before it, the first after the last, so that the mode always changes.
const Kind kKinds[] = {{"", 10.0}, {"", 179.0}, {"LAMBERT", 10.0}};

void set_points(CGEORec& record, const Kind& kind) {
    zellap10::georef::delete_all(record.Points);
    record.Projection = kind.projection;
    record.P5 = "7";
    record.P6 = "9";
    for (int i = 0; i < 24; ++i) {
        const double longitude = kind.west + 0.125 + i % 6 * 0.25;
        add_points(record, {{i % 6 * 100, i / 6 * 90, longitude > 180.0 ? longitude - 360.0 : longitude,
                             9.0 - i / 6}});
    }
}

TEST_F(MemoryRunsOut, InAFit) {
    for (std::size_t i = 0; i < std::size(kKinds); ++i) {
        const Kind& earlier = kKinds[i];
        const Kind& kind = kKinds[(i + 1) % std::size(kKinds)];
        SCOPED_TRACE(i);
        const int failures = fail_in_turn([&](const Runner& run) {
            CGEORec record;
            set_points(record, earlier);
            record.solvepoly();
            const std::vector<double> before = transforms_of(record);
            set_points(record, kind);
            const double longitude = elements_of(record.Points)[0]->Longitude;
            const bool ended = run([&] { record.solvepoly(); });
            EXPECT_EQ(elements_of(record.Points)[0]->Longitude, longitude);
            if (ended) return;
            EXPECT_EQ(transforms_of(record), before) << "an earlier fit is unchanged";
            record.solvepoly();
            EXPECT_EQ(record.Wraps180, kind.west > 100.0 ? 1 : 0);
            EXPECT_EQ(record.ProjCode, kind.projection[0] != 0 ? 4 : 0);
        });
        EXPECT_GT(failures, 20);
    }
}

TEST_F(MemoryRunsOut, InAGeoreferenceFile) {
    for (const int info_only : {0, 1}) {
        const int failures = fail_in_turn([&](const Runner& run) {
            CGEORec record;
            const CString path = geo_path_.c_str();
            run([&] { record.ReadGEO(path, info_only); });
            for (const CRefPoint* point : elements_of(record.Points))
                EXPECT_EQ(std::string(point->Name).substr(0, 6), "Point ");
            EXPECT_LE(record.Insets.GetCount(), 1);
            zellap10::georef::delete_all(record.Insets);
        });
        EXPECT_GT(failures, 50);
    }
}

TEST_F(MemoryRunsOut, InATextOfAnAngle) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.is_set()) << "the build makes it if the system has none";
    const CGEORec record;
    const int failures = fail_in_turn([&](const Runner& run) {
        CString text = "as it was";
        const bool ended = run([&] { text = record.deg2dms(-1234567890.5); });
        EXPECT_EQ(text, ended ? "-1234567890 30 00.00" : "as it was");
    });
    EXPECT_GT(failures, 0);
}

// Sizes in the header are compared with the file before memory is allocated. Only streams allocate buffers.
TEST(ClaimOfAnySize, CostsNoMemory) {
    for (const char* size : {"2147483647,2147483647", "1,2147483647", "2147483647,1", "-1,536870912"}) {
        SCOPED_TRACE(size);
        const TempFolder folder;
        const std::string path = folder.write(
            "c.cht", samples::chart_bytes("NOS/RA=0,0," + std::string(size) + "\n", 4, {"\x01"}));
        ChartUnderTest chart;
        const unsigned long long before = failing_new::asked();
        chart.OpenZellap(path.c_str(), 0);
        EXPECT_LT(failing_new::asked() - before, 64U << 10);
    }
}

// An inset takes more than 3 KiB of memory but only seven bytes of the file.
TEST(InsetsOfAnyNumber, CostNoMoreMemoryThanTheMostInsets) {
    std::string text = "Name=Base\n";
    while (text.size() < 1U << 20)
        text += "[Inset\n";
    const TempFolder folder;
    const std::string path = folder.write("c.GEO", text + "Name=of none\n");
    CGEORec record;
    const unsigned long long before = failing_new::asked();
    record.ReadGEO(path.c_str(), 0);
    EXPECT_LT(failing_new::asked() - before, 36U << 20);
    const auto insets = elements_of(record.Insets);
    EXPECT_EQ(insets.size(), 10000U);
    EXPECT_TRUE(insets.back()->Name.IsEmpty()) << "lines after one inset too many are ignored";
    EXPECT_STREQ(record.Name, "Base");
    zellap10::georef::delete_all(record.Insets);
}

}  // namespace
