#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include <testing/comma_locale.h>
#include <zellap10/plotter/text.h>

namespace {

using namespace zellap10::plotter;

TEST(Texts, RoundOnceAndKnowNoLocale) {
    const CommaLocale comma;
    ASSERT_TRUE(comma.is_set());
    const struct {
        std::string text;
        const char* expected;
    } rows[] = {
        // clang-format off
        {format_latitude(59.99999),              u8"60°00.00'N"},  // never 59°60.00'
        {format_latitude(-0.00001),              u8"00°00.00'N"},
        {format_latitude(-0.0001),               u8"00°00.01'S"},
        {format_latitude(-90.00001),             u8"90°00.00'S"},
        {format_latitude(90.001),                "---"},
        {format_longitude(179.99999),            u8"180°00.00'E"},
        {format_longitude(-180.0),               u8"180°00.00'W"},
        {format_longitude(181.0),                u8"179°00.00'W"},
        {format_longitude(-0.00001),             u8"000°00.00'E"},
        {format_longitude(-HUGE_VAL),            "---"},
        {format_course(47.46),                   u8"047.5°"},
        {format_course(359.96),                  u8"000.0°"},
        {format_course(-1.0),                    u8"359.0°"},
        {format_course(HUGE_VAL),                "---"},
        {format_distance(0.09999),               "185 m"},
        {format_distance(0.1),                   "0.10 NM"},
        {format_distance(9.9951),                "10.0 NM"},
        {format_distance(99.951),                "100 NM"},
        {format_distance(-2.0),                  "-2.00 NM"},
        {format_distance(-0.0001),               "-0 m"},
        {format_distance(999999999.4),           "999999999 NM"},
        {format_distance(999999999.7),           "---"},
        {format_distance(1e9),                   "---"},
        {format_distance(std::nan("")),          "---"},
        {format_speed(6.04),                     "6.0 kn"},
        {format_speed(-9.96),                    "-10.0 kn"},
        {format_speed(1e9),                      "---"},
        {format_duration(59.6),                  "1 min 00 s"},
        {format_duration(3599.6),                "1 h 00 min"},
        {format_duration(86399.0),               "1 d 00 h"},
        {format_duration(12 * 86400 + 25000.0),  "12 d 07 h"},
        {format_duration(-600.0),                "-10 min 00 s"},
        {format_duration(-0.2),                  "-0 min 00 s"},
        {format_duration(2147483646.6),          "---"},
        {format_duration(std::nan("")),          "---"},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.text, row.expected);
    EXPECT_EQ(format_course({}) + format_duration({}) + format_speed({}), "---------");
    EXPECT_EQ(utf8_text("\xCEle \xE2\x82 \xE2\x82\xAC"), u8"Île â\u0082 €");
    EXPECT_EQ(utf8_text("\xFF\xC0\x80\xED\xA0\x80", 9), u8"ÿÀ\u0080í");
    EXPECT_EQ(format_position({}), u8"00°00.00'N 000°00.00'E");
    EXPECT_EQ(format_position({50.685166666666667, -1.2978333333333334}), u8"50°41.11'N 001°17.87'W");
}

}  // namespace
