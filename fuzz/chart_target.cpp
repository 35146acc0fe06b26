#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

#include "chart_checks.h"
#include <samples/chart_writer.h>

// Chart files without a georeference. An input consists of arguments and the file. A bit of the first byte
// appends a line table, because most mutations move the table of the file.

namespace {

constexpr std::int64_t kPixelBudget = 400000;

// Appends a table of 64 lines that share the bytes after the text.
std::string with_line_table(std::string bytes) {
    const std::size_t first = std::min(bytes.find('\x1A'), bytes.size());
    const std::size_t table = bytes.size();
    const std::size_t step = (table - first) / 64 + 1;
    for (std::size_t i = 0; i < 64; ++i) {
        samples::append_offset(bytes, static_cast<std::uint32_t>(std::min(first + 3 + i * step, table)));
    }
    samples::append_offset(bytes, static_cast<std::uint32_t>(table));
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    fuzz::Input arguments = input.part(fuzz::kArguments);
    const int way = arguments.take<std::uint8_t>();
    const std::string bytes = (way & 1) != 0 ? with_line_table(input.rest()) : input.rest();
    const std::string path = fuzz::folder().write("input.cht", bytes);
    const bool info_only = (way & 14) == 2;
    const bool changes = (way & 48) == 16;
    const bool opens_again = (way & 192) == 64;

    fuzz::Kept kept;
    fuzz::Budget budget(kPixelBudget);
    PlainChart chart;
    const int opened = chart.OpenZellap(path.c_str(), info_only ? 1 : 0);
    if (opened == 0 || info_only) {
        fuzz::must(opened == 1 || !info_only, "an existing file opens for information");
        fuzz::must(opened == 1 || (chart.Width == 0 && chart.Height == 0 && chart.HeaderColourCount == 0),
                   "a refused chart leaves the object unchanged");
        fuzz::check_refusals(chart, kept);
        return 0;
    }
    fuzz::check_open_chart(chart, arguments, budget, kept);
    if (changes) {
        std::error_code ignored;
        std::filesystem::resize_file(path, arguments.take<std::uint16_t>() % (2 * bytes.size() + 1), ignored);
        fuzz::read_changed_chart(chart, budget, kept);
    }
    chart.CloseZellap();
    fuzz::check_refusals(chart, kept);
    if (opens_again) {
        // The changed file may be refused.
        if (chart.OpenZellap(path.c_str(), 0) == 1) fuzz::check_open_chart(chart, arguments, budget, kept);
    }
    return 0;
}
