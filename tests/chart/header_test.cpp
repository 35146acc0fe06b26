#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/chart_under_test.h>

namespace {

struct HeaderRow {
    const char* name;
    std::string text;  // with LF for each line end
    std::string chart_name;
    int width, height, du;
};

// A text of this length with DU at its end; one character less, and DU has no number.
std::string long_text(const std::string& front, std::size_t length) {
    const std::string back = ",DU=7";
    return front + std::string(length - front.size() - back.size(), 'x') + back;
}

const std::string kFront = "NOS/RA=0,0,1,2,";
const std::string kLongestName(255, 'n');
const std::string kOf1000 = kFront + std::string(985, 'x') + "\n";

// clang-format off
const HeaderRow kHeaderRows[] = {
    // name                                 text                                              chart    w    h    du
    {"one line",                            "NOS/NA=A B,RA=0,0,640,480,DU=254\n",             "A B",   640, 480, 254},
    {"keys in another order",               "NOS/DU=254,RA=0,0,640,480,NA=A\n",               "A",     640, 480, 254},
    {"continued with a new key",            "NOS/NA=A,RA=0,0,640,480\n    DU=254\n",          "A",     640, 480, 254},
    {"continued in mid value",              "NOS/NA=HAR\n    BOUR,RA=0,0,640,480\n",          "HARBOUR", 640, 480, 0},
    {"columns 0 to 3 are dropped",          "NOS/NA=A\n zzzRA=0,0,640,480\n",                 "A",     640, 480, 0},
    {"short continuations",                 "NOS/NA=A\n    B\n \n    CD\n",                   "ABCD",  0,   0,   0},
    {"a tab does not continue",             "NOS/NA=A\n\t   RA=0,0,640,480\n",                "A",     0,   0,   0},
    {"an open continuation is joined",      "NOS/NA=A\n    RA=0,0,640,480",                   "A",     640, 480, 0},
    {"an open primary line is dropped",     "NOS/NA=A\nNOS/NA=B,RA=0,0,640,480",              "A",     0,   0,   0},
    {"two numbers of RA",                   "NOS/RA=640,480\n",                               "",      0,   0,   0},
    {"three numbers of RA",                 "NOS/RA=0,0,640\n",                               "",      640, 0,   0},
    {"a number that is none ends RA",       "NOS/RA=0,0,x,480\n",                             "",      0,   0,   0},
    {"blanks around RA's numbers",          "NOS/RA= 0 ,0\t, 640 , 480 ,DU= 7\n",             "",      640, 480, 7},
    {"signs",                               "NOS/RA=0,0,+5,-6,DU=-7\n",                       "",      5,   -6,  -7},
    {"a key inside a longer word",          "NOS/XNA=A,NA=B\n",                               "A",     0,   0,   0},
    {"a key inside a value",                "NOS/NA=xDU=9,DU=7\n",                            "xDU=9", 0,   0,   9},
    {"an empty name",                       "NOS/NA=,RA=0,0,640,480\n",                       "",      640, 480, 0},
    {"a name beyond its limit",             "NOS/NA=" + kLongestName + "n,DU=7\n",             kLongestName, 0, 0,  7},
    {"lower case is another record",        "NOS/NA=A\nnos/NA=B\n",                           "A",     0,   0,   0},
    {"a first line that begins blank",      " NOS/NA=A\n",                                    "",      0,   0,   0},
    {"a later record wipes the earlier",    "NOS/NA=LONG,RA=0,0,640,480,DU=7\nNOS/NA=B\n",    "B",     0,   0,   0},
    {"unknown records with continuations",  "! NOS/\n    RA=0,0,1,1\n\nNOS/NA=A\n",           "A",     0,   0,   0},
    {"a line at its limit",                 long_text(kFront, 1023) + "\n",                   "",      1,   2,   7},
    {"a line beyond its limit",             long_text(kFront, 1024) + "\n",                   "",      1,   2,   0},
    {"a continuation at its limit",         kFront + "\n" + long_text("    ", 127) + "\n",    "",      1,   2,   7},
    {"a continuation beyond its limit",     kFront + "\n" + long_text("    ", 128) + "\n",    "",      1,   2,   0},
    {"a record at its limit",               kOf1000 + long_text("    ", 27) + "\n",           "",      1,   2,   7},
    {"a record beyond its limit",           kOf1000 + long_text("    ", 28) + "\n",           "",      1,   2,   0},
};
// clang-format on

TEST(ChartHeader, HasNameSizeAndNumber) {
    for (const HeaderRow& row : kHeaderRows) {
        SCOPED_TRACE(row.name);
        std::string crlf;
        for (const char c : row.text)
            crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
        for (const std::string& text : {row.text, crlf}) {
            ChartUnderTest chart;
            ASSERT_EQ(chart.open(text + '\x1A' + "RA=0,0,9,9\n", 1), 1);
            EXPECT_EQ(chart.ChartName, row.chart_name);
            EXPECT_EQ(chart.GetDocumentSize().cx, row.width);
            EXPECT_EQ(chart.GetDocumentSize().cy, row.height);
            EXPECT_EQ(chart.DU, row.du);
        }
    }
}

TEST(ChartHeader, IsReadFromAStreamThatADerivedClassOpened) {
    const TempFolder folder;
    ChartUnderTest chart;
    chart.TextStream.open(folder.write("c.cht", small_chart()), std::ios::in | std::ios::binary);
    chart.ReadHeader(1);
    EXPECT_TRUE(chart.TextStream.is_open());
    EXPECT_TRUE(chart.TextStream.eof()) << "at the end of the text, not of the file";
    EXPECT_STREQ(chart.ChartName, "SAMPLE");
    EXPECT_EQ(chart.BaseRec.InsetRect.right, 20);
    EXPECT_EQ(chart.BaseRec.InsetRect.bottom, 2);
    EXPECT_EQ(chart.HeaderColourCount, 3);

    const std::vector<std::string> before = state_of(chart);
    EXPECT_EQ(chart.open(text_of_size(30, 3), 1), 0);
    EXPECT_TRUE(state_of(chart) == before);
}

// The end of the text, and the bytes after it, on either side of the end of a block.
TEST(ChartHeader, MayBeLongerThanABlock) {
    for (const std::size_t length : {4093u, 4094u, 4095u, 4096u, 4097u, 20000u}) {
        SCOPED_TRACE(length);
        const std::string last = "\nNOS/RA=0,0,8,1\n";
        const std::string text = std::string(length - last.size(), '!') + last;
        ChartUnderTest chart;
        EXPECT_EQ(chart.open(samples::chart_bytes(text, 4, {"\x01\x0F"})), 1);
        EXPECT_EQ(chart.GetDocumentSize().cx, 8);
        GuardedPixels line(8);
        EXPECT_EQ(chart.getLine(0, line.data()), 1);
        EXPECT_EQ(line.pixels(), std::vector<int>(8, 1));
    }
}

struct ColourRow {
    const char* name;
    const char* record;
    int index;  // -1: the record is ignored
    PALETTEENTRY colour;
    int count;
};

// clang-format off
const ColourRow kColourRows[] = {
    // name                          record                  index red,green,blue  count
    {"plain",                        "RGB/5,1,2,3",          5,    {1, 2, 3, 0},   6},
    {"blanks",                       "RGB/ 5 , 1 ,2, 3 ,4",  5,    {1, 2, 3, 0},   6},
    {"missing numbers count as 0",   "RGB/5,1",              5,    {1, 0, 0, 0},   6},
    {"no number at all",             "RGB/",                 0,    {0, 0, 0, 0},   1},
    {"index and values are reduced", "RGB/300,300,-1,7",     44,   {44, 255, 7, 0}, 45},
    {"the last index",               "RGB/255,1,2,3",        255,  {1, 2, 3, 0},   256},
    {"a negative index",             "RGB/-1,1,2,3",         -1,   {},             0},
    {"a negative multiple of 256",   "RGB/-256,1,2,3",       0,    {1, 2, 3, 0},   1},
    {"lower case",                   "rgb/5,1,2,3",          -1,   {},             0},
};
// clang-format on

TEST(ChartHeader, HasColours) {
    for (const ColourRow& row : kColourRows) {
        SCOPED_TRACE(row.name);
        ChartUnderTest chart;
        ASSERT_EQ(chart.open(std::string(row.record) + "\n", 1), 1);
        EXPECT_EQ(chart.HeaderColourCount, row.count);
        PALETTEENTRY expected[256] = {};
        if (row.index >= 0) expected[row.index] = row.colour;
        EXPECT_EQ(std::memcmp(chart.HeaderColours, expected, sizeof expected), 0);
    }
}

TEST(ChartHeader, KeepsWhatALaterChartDoesNotName) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open("NOS/NA=A,RA=0,0,4,5\nRGB/9,1,2,3\nRGB/2,7,7,7\n", 1), 1);
    chart.CloseZellap();
    ASSERT_EQ(chart.open("RGB/2,8,8,8\n", 1), 1);
    EXPECT_STREQ(chart.ChartName, "A");
    EXPECT_EQ(chart.GetDocumentSize().cx, 4);
    EXPECT_EQ(chart.HeaderColourCount, 10);
    EXPECT_EQ(chart.HeaderColours[9].peBlue, 3);
    EXPECT_EQ(chart.HeaderColours[2].peRed, 8);
}

}  // namespace
