#pragma once

#include <string>

#include <testing/chart_under_test.h>
#include <zellap10/plotter/diagnosis.h>

using Fault = zellap10::plotter::Fault;

/// The small chart with another height in its header and another offset of its line table.
inline std::string small_chart_of_height(const std::string& height, char table = 69) {
    std::string bytes = small_chart();
    bytes.back() = table;
    return bytes.replace(bytes.find("20,2") + 3, 1, height);
}

inline std::string small_chart_with(std::size_t at_from_end, const std::string& bytes) {
    std::string chart = small_chart();
    return chart.replace(chart.size() - at_from_end, bytes.size(), bytes);
}

/// A file that no chart object opens, and the diagnosis.
struct RefusedChart {
    const char* name;
    std::string bytes;
    Fault fault;
    const char* text;
};

inline const RefusedChart kRefusedCharts[] = {
    {"empty", "", Fault::kTooSmall, "The file is empty. It gives no size and may not be a chart."},
    {"shorter than the tail pointer", "\x1A", Fault::kTooSmall,
     "The file ends within its first bytes. It gives no size and may not be a chart."},
    {"no end of the text", text_of_size(20, 0) + std::string(20, '\0'), Fault::kNoEndOfText,
     "The text part of the file has no end: no byte is 26 (hexadecimal 1A)."},
    {"text end is the last byte", text_of_size(20, 0) + "\x1A", Fault::kNoEndOfText,
     "The file ends with its text part."},
    {"bits per pixel 0", samples::chart_bytes("", 0, {}), Fault::kBitsPerPixel,
     "The file gives 0 bits per pixel; there can be 1 to 7. It gives no size and may not be a chart."},
    {"bits per pixel 8", samples::chart_bytes(text_of_size(20, 0), 8, {}), Fault::kBitsPerPixel,
     "The file gives 8 bits per pixel; there can be 1 to 7."},
    {"a table of 2147483647 lines", small_chart_of_height("2147483647"), Fault::kLineTable,
     "The line table begins at 69 and its 2,147,483,647 lines need 8,589,934,588 bytes, in a file of 90 "
     "bytes."},
    {"a table that ends 1 byte past the file", small_chart_of_height("3", 70), Fault::kLineTable,
     "The line table begins at 70 and its 3 lines need 12 bytes, in a file of 81 bytes."},
    {"a table that ends 4 bytes past the file", small_chart_of_height("4"), Fault::kLineTable,
     "The line table begins at 69 and its 4 lines need 16 bytes, in a file of 81 bytes."},
    {"a table past the file", small_chart_with(4, std::string("\x00\x00\x01\x00", 4)), Fault::kLineTable,
     "The line table begins at 256 in a file of 81 bytes."},
    {"a table far past the file", small_chart_with(4, "\xFF\xFF\xFF\xFC"), Fault::kLineTable,
     "The line table begins at 4,294,967,292 in a file of 81 bytes."},
};
