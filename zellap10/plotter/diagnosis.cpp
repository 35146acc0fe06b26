#include "zellap10/plotter/diagnosis.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/chart/layout.h>
#include <zellap10/chart/zellap.h>
#include <zellap10/platform/path_text.h>
#include <zellap10/platform/text_compare.h>

namespace zellap10::plotter {

namespace {

namespace fs = std::filesystem;

// A number with a comma between thousands.
std::string grouped(std::int64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t i = text.size(); i > 3; i -= 3)
        text.insert(i - 3, 1, ',');
    return text;
}

// Why no file can be opened at a path.
Diagnosis diagnose_path(const fs::path& path) {
    std::error_code ignored;
    switch (fs::status(path, ignored).type()) {
        case fs::file_type::not_found:
            return {Fault::kNoFile, "There is no such file."};
        case fs::file_type::directory:
            return {Fault::kNotAFile, "This is a folder."};
        case fs::file_type::regular:
            return {Fault::kUnreadable, "The file exists, but cannot be read."};
        case fs::file_type::none:
            return {Fault::kUnreadable, "The path cannot be resolved."};
        default:
            return {Fault::kNotAFile, "This is a pipe or a device, not a file."};
    }
}

Diagnosis unreadable() {
    return {Fault::kUnreadable, "The file cannot be read to its end."};
}

Diagnosis diagnose_line_table(const chart::Layout& layout) {
    const std::string begins = "The line table begins at " + grouped(layout.table);
    const std::string in_file = " a file of " + grouped(layout.size) + " bytes.";
    if (layout.table > layout.size) return {Fault::kLineTable, begins + " in" + in_file};
    return {Fault::kLineTable, begins + " and its " + grouped(layout.lines) + " lines need " +
                                   grouped(std::int64_t{layout.lines} * chart::kOffsetBytes) + " bytes, in" +
                                   in_file};
}

std::optional<Diagnosis> diagnose_layout(const std::string& path, int height) {
    using chart::Refusal;

    const chart::File file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) return unreadable();
    const chart::Layout layout = chart::read_layout(file.get(), height);
    switch (layout.refusal) {
        case Refusal::kNone:
            break;
        case Refusal::kUnreadable:
            return unreadable();
        case Refusal::kTooLarge: {
            std::error_code ignored;
            const auto size = static_cast<std::int64_t>(fs::file_size(platform::path_of(path), ignored));
            return Diagnosis{Fault::kTooLarge, "The file has " + grouped(size) +
                                                   " bytes; a chart file has at most " +
                                                   grouped(chart::kLargestFile) + '.'};
        }
        case Refusal::kTooSmall:
            return Diagnosis{Fault::kTooSmall, layout.size == 0 ? "The file is empty."
                                                                : "The file ends within its first bytes."};
        case Refusal::kNoEndOfText:
            return Diagnosis{Fault::kNoEndOfText,
                             "The text part of the file has no end: no byte is 26 (hexadecimal 1A)."};
        case Refusal::kEndsWithText:
            return Diagnosis{Fault::kNoEndOfText, "The file ends with its text part."};
        case Refusal::kBitsPerPixel:
            return Diagnosis{Fault::kBitsPerPixel, "The file gives " + std::to_string(layout.bits_per_pixel) +
                                                       " bits per pixel; there can be 1 to 7."};
        case Refusal::kLineTable:
            return diagnose_line_table(layout);
    }
    return {};
}

// The alphabetically first file beside the path whose name differs only in upper and lower case.
std::string other_case(const fs::path& path) {
    const std::string wanted = platform::text_of(path.filename());
    std::string found;
    std::error_code error;
    fs::directory_iterator entry(path.has_parent_path() ? path.parent_path() : fs::path("."), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = platform::text_of(entry->path().filename());
        std::error_code ignored;
        if (name.size() != wanted.size() || !platform::begins_with_any_case(name.c_str(), wanted.c_str()) ||
            !entry->is_regular_file(ignored)) {
            continue;
        }
        if (found.empty() || name < found) found = name;
    }
    return found;
}

std::optional<Diagnosis> diagnose_georeference_path(const std::string& name) {
    Diagnosis diagnosis = diagnose_path(platform::path_of(name));
    if (diagnosis.fault != Fault::kNotAFile && std::ifstream(name).is_open()) return {};
    if (diagnosis.fault != Fault::kNoFile) {
        diagnosis.text = name + ": " + diagnosis.text;
        return diagnosis;
    }
    const std::string other = other_case(platform::path_of(name));
    const std::string missing = "There is no georeference file " + name;
    if (other.empty()) return Diagnosis{Fault::kNoGeoreference, missing + '.'};
    return Diagnosis{Fault::kOtherCase, missing + "; " + other + " differs in upper and lower case."};
}

}  // namespace

std::optional<Diagnosis> diagnose_chart(const std::string& path) {
    CZellap chart;
    if (chart.OpenZellap(path.c_str(), 1) == 0) return diagnose_path(platform::path_of(path));
    const CSize size = chart.GetDocumentSize();
    std::optional<Diagnosis> diagnosis = diagnose_layout(path, size.cy);
    if (diagnosis && size.cx == 0 && size.cy == 0)
        diagnosis->text += " It gives no size and may not be a chart.";
    return diagnosis;
}

std::optional<Diagnosis> diagnose_georeference(const std::string& path) {
    return diagnose_georeference_path(chart::georeference_path(path));
}

}  // namespace zellap10::plotter
