#include <string>

#include <gtest/gtest.h>

#include <testing/comma_locale.h>
#include <zellap10/plotter/parse_position.h>
#include <zellap10/plotter/text.h>

namespace {

using namespace zellap10::plotter;

struct Row {
    const char* text;
    double latitude, longitude;
};

constexpr double kLatitude = 50.0 + 41.11 / 60.0;
constexpr double kLongitude = -(1.0 + 17.87 / 60.0);

// clang-format off
const Row kRows[] = {
    {"50 41.11N 1 17.87W",                  kLatitude, kLongitude},
    {"1 17.87W, 50 41.11N",                 kLatitude, kLongitude},
    {"50-41.11N 001-17.87W",                kLatitude, kLongitude},
    {"50:41.11 N; 1:17.87 W",               kLatitude, kLongitude},
    {u8"50° 41.11′ N 001° 17.87’ W",        kLatitude, kLongitude},
    {"50 41.11 -1 17.87",                   kLatitude, kLongitude},
    {u8"50°41'06\"N 001°17'52\"W",          50.0 + 41.0 / 60.0 + 6.0 / 3600.0, -(1.0 + 17.0 / 60.0 + 52.0 / 3600.0)},
    {"50 41 6 1 17 52",                     50.0 + 41.0 / 60.0 + 6.0 / 3600.0, 1.0 + 17.0 / 60.0 + 52.0 / 3600.0},
    {"50.6852,-1.2978",                     50.6852, -1.2978},
    {"+50.6852-001.2978",                   50.6852, -1.2978},
    {u8"−33.5° +151.25°",                   -33.5, 151.25},
    {"S33.5E151.25",                        -33.5, 151.25},
    {"-0 30, -0 0 36",                      -0.5, -0.01},
    {"90 180",                              90.0, 180.0},
    {" .5 , 1. ",                           0.5, 1.0},
};

const struct { const char *text, *reason; } kRefusedRows[] = {
    {"",                 "a position is a latitude, a comma and a longitude"},
    {"50.5",             "a position is a latitude, a comma and a longitude"},
    {"50N",              "the latitude or the longitude is missing"},
    {"50 41 60N 1 17W",  "minutes and seconds must be below 60"},
    {"90 00.01N 1W",     "the latitude must be at most 90 degrees"},
    {"1 17.87W, 91S",    "the latitude must be at most 90 degrees"},
    {"50.5 30N 1W",      "only the last number can have a fraction"},
    {"50 1 2 3N 1W",     "\"3\" is too much after seconds"},
    {"50N 1",            "only one of latitude and longitude has a letter"},
    {"50N 1S",           "there are two latitudes"},
    {"1E 50W",           "there are two longitudes"},
    {"-50N 1W",          "use a sign or a letter, not both"},
    {"50,685 -1,298",    "there is more than one comma; the decimal sign is a point"},
    {"50N 1W 2",         "a number is expected, not \"W2\""},
    {"50'N 1W",          "a number is expected, not \"'\""},
    {"---",              "a number is expected, not \"\""},
    {u8"50ö",             u8"\"ö\" has no meaning in a position"},
};
// clang-format on

TEST(ParsePosition, ReadsUsualNotations) {
    const CommaLocale comma;
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.text);
        const ParsedPosition parsed = parse_position(row.text);
        ASSERT_TRUE(parsed.position) << parsed.reason;
        EXPECT_NEAR(parsed.position->latitude, row.latitude, 1e-12);
        EXPECT_NEAR(parsed.position->longitude, row.longitude, 1e-12);
    }
}

TEST(ParsePosition, GivesAReason) {
    for (const auto& row : kRefusedRows) {
        const ParsedPosition parsed = parse_position(row.text);
        EXPECT_FALSE(parsed.position) << row.text;
        EXPECT_EQ(parsed.reason, row.reason) << row.text;
    }
    EXPECT_FALSE(parse_position(std::string(100000, '9') + ",1").position);
    EXPECT_FALSE(parse_position(std::string("1\0,1", 4)).position);
}

TEST(ParsePosition, ReadsTheTextsOfPositions) {
    for (int i = -900; i <= 900; ++i) {
        const Position position{i / 10.0, i * 0.19999};
        const std::string text = format_position(position);
        const ParsedPosition parsed = parse_position(text);
        ASSERT_TRUE(parsed.position) << text << ": " << parsed.reason;
        EXPECT_EQ(format_position(*parsed.position), text);
    }
}

}  // namespace
