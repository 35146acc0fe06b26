#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/comma_locale.h>
#include <zellap10/plotter/nmea.h>

namespace {

using namespace zellap10::plotter;

// A sentence with its checksum.
std::string line(const std::string& body) {
    unsigned sum = 0;
    for (const char c : body)
        sum ^= static_cast<unsigned char>(c);
    char end[8];
    std::snprintf(end, sizeof end, "*%02X\r\n", sum);
    return "$" + body + end;
}

const std::string kRmc = "GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W";
const std::string kPlace = "4807.038,N,01131.000,E,";

// clang-format off
const struct {
    const char* name;
    std::string text;
    std::size_t fixes;
    std::int64_t broken;
    std::vector<double> last;  // time, latitude, longitude, speed, course, heading; -1 is none
} kRows[] = {
    {"published sentence",  "$" + kRmc + "*6A\n", 1, 0, {45319, 48.1173, 11.51666667, 22.4, 84.4, -1}},
    {"wrong checksum",      "$" + kRmc + "*6B\n", 0, 1, {}},
    {"no checksum",         "$" + kRmc + "\n",    0, 1, {}},
    {"another talker, south, west", line("IIRMC,000000.50,A,3330.0,S,07000.6,W,,,010180,,,A"), 1, 0, {0.5, -33.5, -70.01, -1, -1, -1}},
    {"status V",            line("GPRMC,123519,V," + kPlace + ",,230394,,"), 0, 0, {}},
    {"status A, mode N",    line(kRmc + ",N"), 0, 0, {}},
    {"quality 0",           line("GPGGA,123519,,,,,0,00,,,M,,M,,"), 0, 0, {}},
    {"no time",             line("GPGGA,," + kPlace + "1"), 1, 0, {-1, 48.1173, 11.51666667, -1, -1, -1}},
    {"60 minutes",          line("GPGGA,123519,4860.0,N,01131.000,E,1"), 0, 1, {}},
    {"past the pole",       line("GPGGA,123519,9000.1,N,01131.000,E,1"), 0, 1, {}},
    {"letter in a number",  line("GPGGA,123519,48x7.0,N,01131.000,E,1"), 0, 1, {}},
    {"sign",                line("GPGGA,123519,-807.0,N,01131.000,E,1"), 0, 1, {}},
    {"wrong hemisphere",    line("GPGGA,123519,4807.0,E,01131.000,N,1"), 0, 1, {}},
    {"wrong time",          line("GPGGA,126019," + kPlace + "1") + line("GPGGA,1235," + kPlace + "1"), 0, 2, {}},
    {"cut fields",          line("GPRMC,123519,A") + line("GPGGA,1") + line("GPVTG,1") + line("GPHDT"), 0, 2, {}},
    {"ignored",             line("PGRMC,A,,100") + "# log\n\n!AIVDM,1,1,,A,14eG;o@034o8sd<L9i:a;WF>062D,0*7D\n", 0, 0, {}},
    {"endless line",        std::string(100000, '$') + "\n" + line(kRmc), 1, 1, {}},
    {"zero byte",           std::string("$\0*17\n", 6), 0, 1, {}},
    {"others give course, speed and heading",
     line("GPHDT,274.07,T") + line("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K") + line("GPGGA,123519," + kPlace + "1"), 1, 0, {45319, 48.1173, 11.51666667, 5.5, 54.7, 274.07}},
    {"after 4 seconds they are old",
     line(kRmc) + line("GPGGA,123523," + kPlace + "1"), 2, 0, {45323, 48.1173, 11.51666667, -1, -1, -1}},
};
// clang-format on

TEST(NmeaReader, ReadsBytesInPieces) {
    const CommaLocale comma;
    for (const auto& row : kRows) {
        for (const std::size_t piece : {row.text.size(), std::size_t{1}}) {
            SCOPED_TRACE(row.name);
            NmeaReader reader;
            std::vector<Fix> fixes;
            for (std::size_t i = 0; i < row.text.size(); i += piece) {
                const std::vector<Fix> more = reader.read(row.text.substr(i, piece));
                fixes.insert(fixes.end(), more.begin(), more.end());
            }
            EXPECT_EQ(reader.broken_lines(), row.broken);
            ASSERT_EQ(fixes.size(), row.fixes);
            if (row.last.empty()) continue;
            const Fix& fix = fixes.back();
            const std::optional<double> values[] = {
                fix.time, fix.position.latitude, fix.position.longitude, fix.speed, fix.course, fix.heading};
            for (std::size_t i = 0; i < row.last.size(); ++i)
                EXPECT_NEAR(values[i].value_or(-1), row.last[i], 1e-8) << i;
        }
    }
}

}  // namespace
