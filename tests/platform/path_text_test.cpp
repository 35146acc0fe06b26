#if defined(_WIN32)

#include <string>

#include <gtest/gtest.h>

#include <zellap10/platform/path_text.h>

namespace {

using zellap10::platform::from_wide;
using zellap10::platform::to_wide;

struct PathRow {
    const char* name;
    UINT code_page;
    const char* text;     // empty: the code page lacks a character
    const wchar_t* wide;  // empty: the text is not valid
};

// clang-format off
const PathRow kPathRows[] = {
    {"ASCII",                               1252,    "C:\\charts", L"C:\\charts"},
    {"Western Europe",                      1252,    "K\xF8ge",    L"K\u00F8ge"},
    {"UTF-8",                               CP_UTF8, "K\xC3\xB8ge", L"K\u00F8ge"},
    {"UTF-8 of four bytes",                 CP_UTF8, "\xF0\x9F\x9A\xA2", L"\xD83D\xDEA2"},
    {"Japanese, with a byte of a backslash", 932,    "\x95\x5C",   L"\u8868"},
    {"a byte of Western Europe in UTF-8",   CP_UTF8, "K\xF8ge",    L""},
    {"a letter without its accent",         1252,    "",           L"\u0100"},
    {"half of a pair",                      CP_UTF8, "",           L"\xD83D"},
    {"nothing",                             CP_UTF8, "",           L""},
};
// clang-format on

TEST(PathText, ConvertsByTheCodePage) {
    for (const PathRow& row : kPathRows) {
        SCOPED_TRACE(row.name);
        if (*row.text != '\0' || *row.wide == L'\0') {
            EXPECT_EQ(to_wide(row.text, row.code_page), row.wide);
        }
        if (*row.wide != L'\0') {
            EXPECT_EQ(from_wide(row.wide, row.code_page), row.text);
        }
    }
}

}  // namespace

#endif
