#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include <testing/comma_locale.h>
#include <zellap10/plotter/text.h>

namespace {

using namespace zellap10::plotter;

struct TextRow {
    std::string (*text_of)(double);
    double number;
    const char* text;
};

// clang-format off
const TextRow kRows[] = {
    {latitude_text,  59.99999,             u8"60°00.00'N"},  // never 59°60.00'
    {latitude_text,  -0.00001,             u8"00°00.00'N"},
    {latitude_text,  -0.0001,              u8"00°00.01'S"},
    {latitude_text,  -90.00001,            u8"90°00.00'S"},
    {latitude_text,  90.001,               "---"},
    {longitude_text, 179.99999,            u8"180°00.00'E"},
    {longitude_text, -180.0,               u8"180°00.00'W"},
    {longitude_text, 181.0,                u8"179°00.00'W"},
    {longitude_text, -0.00001,             u8"000°00.00'E"},
    {longitude_text, -HUGE_VAL,            "---"},
    {course_text,    47.46,                u8"047.5°"},
    {course_text,    359.96,               u8"000.0°"},
    {course_text,    -1.0,                 u8"359.0°"},
    {course_text,    HUGE_VAL,             "---"},
    {distance_text,  0.09999,              "185 m"},
    {distance_text,  0.1,                  "0.10 NM"},
    {distance_text,  9.9951,               "10.0 NM"},
    {distance_text,  99.951,               "100 NM"},
    {distance_text,  -2.0,                 "-2.00 NM"},
    {distance_text,  -0.0001,              "0 m"},
    {distance_text,  1e9,                  "---"},
    {distance_text,  std::nan(""),         "---"},
    {duration_text,  59.6,                 "1 min 00 s"},
    {duration_text,  3599.6,               "1 h 00 min"},
    {duration_text,  86399.0,              "1 d 00 h"},
    {duration_text,  12 * 86400 + 25000.0, "12 d 07 h"},
    {duration_text,  -600.0,               "-10 min 00 s"},
    {duration_text,  -0.2,                 "0 min 00 s"},
    {duration_text,  2147483647.0,         "---"},
    {duration_text,  std::nan(""),         "---"},
};
// clang-format on

TEST(Texts, RoundOnceAndKnowNoLocale) {
    const CommaLocale comma;
    ASSERT_TRUE(comma.is_set());
    for (const TextRow& row : kRows)
        EXPECT_EQ(row.text_of(row.number), row.text) << row.number;
    EXPECT_EQ(position_text({}), u8"00°00.00'N 000°00.00'E");
    EXPECT_EQ(position_text({50.685166666666667, -1.2978333333333334}), u8"50°41.11'N 001°17.87'W");
}

}  // namespace
