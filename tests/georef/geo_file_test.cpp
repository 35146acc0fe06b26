#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/comma_locale.h>
#include <testing/point_lists.h>
#include <testing/temp_folder.h>
#include <zellap10/georef/geo_record.h>
#include <zellap10/georef/points.h>

namespace {

// A record read from a text, and its insets.
class ReadRecord : public CGEORec {
public:
    explicit ReadRecord(const std::string& text) {
        ReadGEO(TempFolder().write("chart.GEO", text).c_str(), 1);
    }
    ~ReadRecord() { zellap10::georef::delete_all(Insets); }

    CGEORec& inset(std::size_t i) const { return *elements_of(Insets).at(i); }
};

// The fields of a record that are not empty, as "key=value".
std::string filled(const CGEORec& record) {
    std::string all;
    for (const RecordField& field : kRecordFields) {
        CString value;
        if (field.text != nullptr) {
            value = record.*field.text;
        } else if (record.*field.number != 0.0) {
            value.Format("%g", record.*field.number);
        }
        if (!value.IsEmpty()) all += std::string(field.key) + "=" + static_cast<const char*>(value);
    }
    return all;
}

TEST(GeoKey, SetsItsOwnFieldAndNoOther) {
    for (const RecordField& field : kRecordFields) {
        const std::string line = std::string(field.key) + "=7.5";
        EXPECT_EQ(filled(ReadRecord(line + "\n")), line);
    }
}

struct LineRow {
    const char* name;
    const char* line;
    const char* filled;
};

// clang-format off
const LineRow kLineRows[] = {
    // name                           line                             filled
    {"upper case",                    "NAME=x",                        "Name=x"},
    {"a blank in front",              " Name=x",                       ""},
    {"a longer label",                "Names of the sea=x",            "Name=x"},
    {"no equals sign",                "Name x",                        ""},
    {"equals signs in the value",     "Name=a=b",                      "Name=a=b"},
    {"blanks stay in the value",      "Scale = 1:40000 ",              "Scale= 1:40000 "},
    {"8-bit characters stay",         "Name=\xC9vora",                 "Name=\xC9vora"},
    {"Source by prefix",              "Source Date=1999",              "Source=1999"},
    {"P1 by prefix",                  "P10=5",                         "P1=5"},
    {"Id by prefix",                  "Identifier=7",                  "Id=7"},
    {"Declination takes no blank",    "Magnetic Declination =5",       ""},
    {"nor does its date",             "Magnetic Declination Date =5",  ""},
    {"its change takes one",          "Magnetic Declination Change =0", "Magnetic Declination Change=0"},
    {"a number of vertices",          "Number of Vertices=5",          ""},
    {"text after a number",           "Skew Angle=2.5deg",             "Skew Angle=2.5"},
};
// clang-format on

TEST(GeoLine, IsSplitAtItsFirstEqualsSign) {
    for (const LineRow& row : kLineRows) {
        SCOPED_TRACE(row.name);
        for (const char* end : {"\n", "\r\n"})
            EXPECT_EQ(filled(ReadRecord(row.line + std::string(end))), row.filled);
    }
}

struct PointLineRow {
    const char* name;
    const char* line;
    bool taken;
};

// clang-format off
const PointLineRow kPointLineRows[] = {
    // name                          line                                 taken
    {"plain",                        "Point2 =-71.0 42.5 100 200",        true},
    {"more after it",                "Point2 =-71.0 42.5 100 200 extra",  true},
    {"blanks and tabs",              "Point2 = \t-71.0  42.5\t100 200",   true},
    {"a number too few",             "Point2 =-71.0 42.5 100",            false},
    {"a fraction of a pixel",        "Point2 =-71.0 42.5 100.5 200",      false},
    {"commas",                       "Point2 =-71.0,42.5,100,200",        false},
};
// clang-format on

TEST(GeoPoint, IsLongitudeLatitudeRowColumn) {
    for (const PointLineRow& row : kPointLineRows) {
        SCOPED_TRACE(row.name);
        const ReadRecord record(row.line + std::string("\n"));
        const std::vector<CRefPoint*> points = elements_of(record.Points);
        ASSERT_EQ(points.size(), row.taken ? 1u : 0u);
        if (!row.taken) continue;
        EXPECT_STREQ(points[0]->Name, "Point2 ");
        EXPECT_EQ(points[0]->Longitude, -71.0);
        EXPECT_EQ(points[0]->Latitude, 42.5);
        EXPECT_EQ(points[0]->Y, 100);
        EXPECT_EQ(points[0]->X, 200);
    }
}

TEST(GeoVertex, IsLatitudeLongitude) {
    const ReadRecord record(
        "Number of Vertices=99\nVertex9=42.5 -71.0 x\nVertex1=42.5\nVertex1=42.5,-71.0\nvertex9=1 2\n"
        "Vertex=42.5 71.0W\nVertex=42.5 71.0E\nVertex=42.5 71.0east\n");
    const std::vector<CRefPoint*> vertices = elements_of(record.Vertices);
    ASSERT_EQ(vertices.size(), 5u);
    for (std::size_t i = 2; i < 5; ++i)
        EXPECT_EQ(vertices[i]->Longitude, 71.0);
    EXPECT_STREQ(vertices[0]->Name, "Vertex9");
    EXPECT_EQ(vertices[0]->Latitude, 42.5);
    EXPECT_EQ(vertices[0]->Longitude, -71.0);
    EXPECT_EQ(vertices[0]->X, 0);
    EXPECT_EQ(vertices[0]->Y, 0);
}

TEST(GeoInset, GetsTheEntriesAfterIt) {
    const ReadRecord record(
        "Name=Base\nScale=1\n[Chart]\nOrder=4\n[Inset 1]\n[INSET\nName=Second\nPoint1=1 2 3 4\n[inset "
        "3]\nP1=5\n");
    ASSERT_EQ(record.Insets.GetCount(), 3);
    EXPECT_STREQ(record.Name, "Base");
    EXPECT_STREQ(record.Order, "4");
    EXPECT_TRUE(record.Points.IsEmpty());
    EXPECT_TRUE(record.inset(0).Name.IsEmpty());
    EXPECT_STREQ(record.inset(1).Name, "Second");
    EXPECT_TRUE(record.inset(1).Scale.IsEmpty()) << "nothing is inherited";
    EXPECT_EQ(record.inset(1).Points.GetCount(), 1);
    EXPECT_STREQ(record.inset(2).P1, "5");
    EXPECT_TRUE(record.inset(2).Insets.IsEmpty());
}

TEST(GeoFile, IgnoresLinesWithoutAnEndOrTooLong) {
    const std::string longest = "Name=" + std::string(506, 'x');
    EXPECT_EQ(ReadRecord(longest + "\n").Name.GetLength(), 506);
    const ReadRecord skipped("Scale=1\n" + longest + "x\nOrder=2\nScale=9");
    EXPECT_TRUE(skipped.Name.IsEmpty());
    EXPECT_STREQ(skipped.Order, "2");
    EXPECT_STREQ(skipped.Scale, "1");
    EXPECT_STREQ(ReadRecord("Scale=1\n\x1A\nScale=2\n").Scale, "1");
}

TEST(GeoFile, ReadsTheSameInEveryLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.is_set()) << "the build makes it if the system has none";
    const ReadRecord record("Latitude Offset=42.5\nVertex=1.25 2.5\n");
    const CString angle = record.deg2dms(42.123456);
    EXPECT_EQ(record.LatitudeOffset, 42.5);
    EXPECT_EQ(elements_of(record.Vertices).at(0)->Longitude, 2.5);
    EXPECT_STREQ(angle, "+042 07 24.44");
    EXPECT_TRUE(locale.is_set()) << "the application's setting does not change";
}

TEST(GeoFile, MissingOrAFolderChangesNothing) {
    const TempFolder folder;
    CGEORec record;
    record.InsetRect = {1, 2, 3, 4};
    record.Wraps180 = 1;
    for (const std::string& path : {folder.file("missing.GEO"), folder.file("")}) {
        record.ReadGEO(path.c_str(), 0);
        EXPECT_EQ(record.InsetRect.right, 3);
        EXPECT_EQ(record.Wraps180, 1) << "no fit";
    }
    for (const int info_only : {1, 2, -1}) {
        record.ReadGEO(folder.write("empty.GEO", "").c_str(), info_only);
        EXPECT_EQ(record.Wraps180, 1);
    }
    record.ReadGEO(folder.write("empty.GEO", "").c_str(), 0);
    EXPECT_EQ(record.InsetRect.right, 0);
    EXPECT_EQ(record.Wraps180, 0) << "an empty file is fitted";
}

}  // namespace
