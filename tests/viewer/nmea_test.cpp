#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/comma_locale.h>
#include <viewer/nmea.h>

namespace {

using namespace viewer;

// A sentence with its checksum.
std::string line(const std::string& body) {
    unsigned sum = 0;
    for (const char c : body)
        sum ^= static_cast<unsigned char>(c);
    char end[8];
    std::snprintf(end, sizeof end, "*%02X\r\n", sum);
    return "$" + body + end;
}

void expect_near(std::optional<double> value, std::optional<double> expected) {
    ASSERT_EQ(value.has_value(), expected.has_value());
    if (value) {
        EXPECT_NEAR(*value, *expected, 1e-9);
    }
}

void expect_fix(const Fix& fix, const Fix& expected) {
    expect_near(fix.time, expected.time);
    expect_near(fix.position.latitude, expected.position.latitude);
    expect_near(fix.position.longitude, expected.position.longitude);
    expect_near(fix.speed, expected.speed);
    expect_near(fix.course, expected.course);
    expect_near(fix.heading, expected.heading);
}

constexpr std::nullopt_t kNone = std::nullopt;

const std::string kRmc = "GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W";
const Fix kMunich{764426119.0, {48.1173, 11.0 + 31.0 / 60.0}, 22.4, 84.4, kNone};

struct Row {
    const char* name;
    std::string text;
    std::optional<Fix> last;
    std::size_t fixes;
    int broken;
};

// clang-format off
const Row kRows[] = {
    {"published sentence",       "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\n", kMunich, 1, 0},
    {"wrong checksum",           "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6B\n", kNone, 0, 1},
    {"no checksum",              "$" + kRmc + "\n", kNone, 0, 1},
    {"another talker, south, west, 2080 is 1980",
     line("IIRMC,000000.50,A,3330.0,S,07000.6,W,,,010180,,,A"), Fix{315532800.5, {-33.5, -70.01}, kNone, kNone, kNone}, 1, 0},
    {"leap day",                 line("GPRMC,000001,A,0000.0,N,00000.0,E,0,0,290224,,"), Fix{1709164801.0, {0, 0}, 0.0, 0.0, kNone}, 1, 0},
    {"status V",                 line("GPRMC,123519,V,4807.038,N,01131.000,E,,,230394,,"), kNone, 0, 0},
    {"status A, mode N",         line(kRmc + ",N"), kNone, 0, 0},
    {"quality 0",                line("GPGGA,123519,,,,,0,00,,,M,,M,,"), kNone, 0, 0},
    {"no date",                  line("GPGGA,123519,4807.038,N,01131.000,E,1,08,,,M,,M,,"), Fix{kNone, kMunich.position, kNone, kNone, kNone}, 1, 0},
    {"60 minutes",               line("GPGGA,123519,4860.0,N,01131.000,E,1,08,,,M,,M,,"), kNone, 0, 1},
    {"past the pole",            line("GPGGA,123519,9000.1,N,01131.000,E,1,08,,,M,,M,,"), kNone, 0, 1},
    {"letter in a number",       line("GPGGA,123519,48x7.0,N,01131.000,E,1,08,,,M,,M,,"), kNone, 0, 1},
    {"wrong hemisphere",         line("GPGGA,123519,4807.0,E,01131.000,N,1,08,,,M,,M,,"), kNone, 0, 1},
    {"cut fields",               line("GPRMC,123519,A") + line("GPGGA,1") + line("GPVTG,1") + line("GPHDT"), kNone, 0, 4},
    {"proprietary RMC",          line("PGRMC,A,,100"), kNone, 0, 0},
    {"comment, AIS, empty line", "# log\n\n!AIVDM,1,1,,A,14eG;o@034o8sd<L9i:a;WF>062D,0*7D\n", kNone, 0, 0},
    {"endless line, then a good one", std::string(100000, '$') + "\n" + line(kRmc), kMunich, 1, 1},
    {"zero byte",                std::string("$GP\0*17\n", 8), kNone, 0, 1},
    {"course, speed and heading of others",
     line("GPHDT,274.07,T") + line("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K") + line("GPGGA,123519,4807.038,N,01131.000,E,1,08,,,M,,M,,"),
     Fix{kNone, kMunich.position, 5.5, 54.7, 274.07}, 1, 0},
    {"speed is old after 4 seconds",
     line(kRmc) + line("GPGGA,123523,4807.038,N,01131.000,E,1,08,,,M,,M,,"), Fix{764426123.0, kMunich.position, kNone, kNone, kNone}, 2, 0},
    {"GGA after midnight before the new date",
     line("GPRMC,235959,A,4807.038,N,01131.000,E,,,230394,,") + line("GPGGA,000000,4807.038,N,01131.000,E,1,08,,,M,,M,,") +
     line("GPGGA,000001,4807.038,N,01131.000,E,1,08,,,M,,M,,"), Fix{764467201.0, kMunich.position, kNone, kNone, kNone}, 3, 0},
};
// clang-format on

TEST(NmeaReader, ReadsBytesInPieces) {
    const CommaLocale comma;
    for (const Row& row : kRows) {
        for (const std::size_t piece : {row.text.size(), std::size_t{1}}) {
            SCOPED_TRACE(row.name);
            NmeaReader reader;
            std::vector<Fix> fixes;
            for (std::size_t i = 0; i < row.text.size(); i += piece) {
                const std::vector<Fix> more = reader.read(row.text.substr(i, piece));
                fixes.insert(fixes.end(), more.begin(), more.end());
            }
            EXPECT_EQ(reader.broken_lines(), row.broken);
            EXPECT_EQ(fixes.size(), row.fixes);
            if (row.last && !fixes.empty()) expect_fix(fixes.back(), *row.last);
        }
    }
}

}  // namespace
