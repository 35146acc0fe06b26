#include <cmath>

#include <gtest/gtest.h>

#include <zellap10/platform/number_text.h>
#include <zellap10/platform/text_compare.h>

namespace {

using zellap10::platform::number_of;
using zellap10::platform::TextScanner;

struct NumberRow {
    const char* name;
    const char* text;
    bool taken;
    double value;  // of the number at the front, also of a real one that breaks off and is not taken
    const char* rest;
};

// The whole number or nothing.
template <class Number>
void expect_read(const NumberRow& row, bool (TextScanner::*read)(Number&)) {
    SCOPED_TRACE(row.name);
    TextScanner scanner(row.text);
    Number value = 0;
    EXPECT_EQ((scanner.*read)(value), row.taken);
    EXPECT_EQ(value, row.taken ? row.value : 0.0);
    EXPECT_STREQ(scanner.rest(), row.rest);
}

// clang-format off
const NumberRow kIntegerRows[] = {
    // name                           text                      taken  value        rest
    {"white space in front",          " \t\r\n\v\f7 ",          true,  7,           " "},
    {"plus sign",                     "+12",                    true,  12,          ""},
    {"minus sign",                    "-12x",                   true,  -12,         "x"},
    {"blank behind the sign",         "- 12",                   false, 0,           "- 12"},
    {"no digit",                      "  x",                    false, 0,           "  x"},
    {"empty",                         "",                       false, 0,           ""},
    {"fraction stays",                "100.5",                  true,  100,         ".5"},
    {"largest int",                   "2147483647",             true,  2147483647,  ""},
    {"one above is held",             "2147483648",             true,  2147483647,  ""},
    {"smallest int",                  "-2147483648",            true,  -2147483647 - 1, ""},
    {"one below is held",             "-2147483649",            true,  -2147483647 - 1, ""},
    {"far more digits than a number", "99999999999999999999999", true, 2147483647,  ""},
};
// clang-format on

TEST(TextScannerInteger, ReadsAsScanFormatD) {
    for (const NumberRow& row : kIntegerRows)
        expect_read(row, &TextScanner::integer);
}

// clang-format off
const NumberRow kRealRows[] = {
    // name                    text              taken  value       rest
    {"decimal",                " 42.5 -71",      true,  42.5,       " -71"},
    {"comma ends it",          "42,5",           true,  42.0,       ",5"},
    {"exponent",               "-1.5e+2x",       true,  -150.0,     "x"},
    {"point first",            ".5",             true,  0.5,        ""},
    {"hexadecimal",            "0x10",           true,  16.0,       ""},
    {"too large",              "1e999",          true,  HUGE_VAL,   ""},
    {"no number",              " N42",           false, 0.0,        " N42"},
    {"upper case",             "-0X1P3 ",        true,  -8.0,       " "},
    {"infinity, letter behind", "-InfinityX",    true,  -HUGE_VAL,  "X"},
    {"inf, letter behind",     "inferior",       true,  HUGE_VAL,   "erior"},
    {"two exponents",          "1e2e3",          true,  100.0,      "e3"},
    {"two of hexadecimal",     "0x1p2p3",        true,  4.0,        "p3"},
    {"zeros before an x",      "00x1",           true,  0.0,        "x1"},
    {"p behind a decimal",     "42p1",           true,  42.0,       "p1"},
    {"hexadecimal, no inf",    "0xfi",           true,  15.0,       "i"},
    {"hexadecimal, no nan",    "0xa(",           true,  10.0,       "("},
    {"x breaks off",           "-0x",            false, 0.0,        "-0x"},
    {"e without a number",     " 42e",           true,  42.0,       ""},
    {"e and a sign",           "1e+",            true,  1.0,        ""},
    {"point, then e",          "7.E x",          true,  7.0,        " x"},
    {"e and letters",          "71.0east",       true,  71.0,       "ast"},
    {"p and a sign",           "0x8P-",          true,  8.0,        ""},
    {"infi",                   "+infi 1",        false, HUGE_VAL,   "+infi 1"},
    {"infinit",                "INFINIT",        false, HUGE_VAL,   "INFINIT"},
    {"a point alone",          ".",              false, 0.0,        "."},
    {"a sign alone",           "-e1",            false, 0.0,        "-e1"},
};
// clang-format on

TEST(TextScannerReal, ReadsAsScanFormatLf) {
    for (const NumberRow& row : kRealRows) {
        expect_read(row, &TextScanner::real);
        EXPECT_EQ(number_of(row.text), row.value) << row.name;
    }
}

TEST(TextScannerReal, TakesNanWholeToo) {
    for (const char* text : {"nan", "-NaN,", "nan(7)"}) {
        double value = 0.0;
        EXPECT_TRUE(TextScanner(text).real(value)) << text;
        EXPECT_TRUE(std::isnan(value)) << text;
    }
    double value = 0.0;
    EXPECT_FALSE(TextScanner("nan(").real(value));
}

TEST(BeginsWithAnyCase, ComparesLettersAndNothingElse) {
    using zellap10::platform::begins_with_any_case;
    EXPECT_TRUE(begins_with_any_case("azAZ09[@", "AZaz09["));
    EXPECT_FALSE(begins_with_any_case("a", "ab"));
    EXPECT_FALSE(begins_with_any_case("{@", "[@")) << "as far apart as the two cases of a letter";
    EXPECT_FALSE(begins_with_any_case("[`", "[@"));
}

TEST(TextScannerLiteral, NeverPassesTheEnd) {
    TextScanner scanner("a");
    EXPECT_FALSE(scanner.literal('b'));
    EXPECT_TRUE(scanner.literal('a'));
    EXPECT_FALSE(scanner.literal('\0'));
    EXPECT_STREQ(scanner.blanks().rest(), "");
}

}  // namespace
