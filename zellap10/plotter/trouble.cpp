#include "zellap10/plotter/trouble.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/chart/layout.h>
#include <zellap10/chart/zellap.h>
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

// What is at fault with a path at which no file can be opened.
Trouble trouble_at(const fs::path& path) {
    std::error_code ignored;
    switch (fs::status(path, ignored).type()) {
        case fs::file_type::not_found:
            return {Fault::kNoFile, "There is no such file."};
        case fs::file_type::directory:
            return {Fault::kNoFileOfBytes, "This is a folder."};
        case fs::file_type::regular:
            return {Fault::kUnreadable, "The file is there, but may not be read."};
        case fs::file_type::none:
            return {Fault::kUnreadable, "The path cannot be followed."};
        default:
            return {Fault::kNoFileOfBytes, "This is a pipe or a device, not a file."};
    }
}

Trouble unreadable() {
    return {Fault::kUnreadable, "The file cannot be read to its end."};
}

Trouble trouble_with_line_table(const chart::Layout& layout) {
    const std::string begins = "The line table begins at " + grouped(layout.table);
    const std::string in_file = " a file of " + grouped(layout.size) + " bytes.";
    if (layout.table > layout.size) return {Fault::kLineTable, begins + " in" + in_file};
    return {Fault::kLineTable, begins + " and its " + grouped(layout.lines) + " lines need " +
                                   grouped(std::int64_t{layout.lines} * chart::kOffsetBytes) + " bytes, in" +
                                   in_file};
}

std::optional<Trouble> trouble_in_file(const char* path, int height) {
    using chart::Refusal;

    const chart::File file(std::fopen(path, "rb"));
    if (file == nullptr) return unreadable();
    const chart::Layout layout = chart::read_layout(file.get(), height);
    switch (layout.refusal) {
        case Refusal::kNone:
            break;
        case Refusal::kUnreadable:
            return unreadable();
        case Refusal::kTooLarge: {
            std::error_code ignored;
            const auto size = static_cast<std::int64_t>(fs::file_size(path, ignored));
            return Trouble{Fault::kTooLarge, "The file has " + grouped(size) +
                                                 " bytes; a chart file has at most " +
                                                 grouped(chart::kLargestFile) + '.'};
        }
        case Refusal::kTooSmall:
            return Trouble{Fault::kTooSmall,
                           layout.size == 0 ? "The file is empty." : "The file ends within its first bytes."};
        case Refusal::kNoEndOfText:
            return Trouble{Fault::kNoEndOfText,
                           "The text part of the file has no end: no byte is 26 (hexadecimal 1A)."};
        case Refusal::kEndsWithText:
            return Trouble{Fault::kNoEndOfText, "The file ends with its text part."};
        case Refusal::kBitsPerPixel:
            return Trouble{Fault::kBitsPerPixel, "The file gives " + std::to_string(layout.bits_per_pixel) +
                                                     " bits per pixel; there can be 1 to 7."};
        case Refusal::kLineTable:
            return trouble_with_line_table(layout);
    }
    return {};
}

// The first name, by the alphabet, of a file beside the path that differs from it in upper and lower case
// alone.
std::string other_spelling(const fs::path& path) {
    const std::string wanted = path.filename().string();
    std::string found;
    std::error_code error;
    fs::directory_iterator entry(path.has_parent_path() ? path.parent_path() : fs::path("."), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::error_code ignored;
        if (name.size() != wanted.size() || !platform::begins_with_any_case(name.c_str(), wanted.c_str()) ||
            !entry->is_regular_file(ignored)) {
            continue;
        }
        if (found.empty() || name < found) found = name;
    }
    return found;
}

std::optional<Trouble> trouble_at_georeference(const std::string& name) {
    Trouble trouble = trouble_at(name);
    if (trouble.fault != Fault::kNoFileOfBytes && std::ifstream(name).is_open()) return {};
    if (trouble.fault != Fault::kNoFile) {
        trouble.text = name + ": " + trouble.text;
        return trouble;
    }
    const std::string other = other_spelling(name);
    const std::string missing = "There is no georeference file " + name;
    if (other.empty()) return Trouble{Fault::kNoGeoreference, missing + '.'};
    return Trouble{Fault::kOtherSpelling, missing + "; " + other + " is spelled otherwise."};
}

// Names that the system cannot put into text are refused by an exception.
template <class Look>
std::optional<Trouble> guarded(Look look) {
    try {
        return look();
    } catch (const std::system_error&) {
        return Trouble{Fault::kUnreadable, "The path cannot be followed."};
    }
}

}  // namespace

std::optional<Trouble> trouble_with_chart(const char* path) {
    return guarded([path]() -> std::optional<Trouble> {
        CZellap chart;
        if (chart.OpenZellap(path, 1) == 0) return trouble_at(path != nullptr ? path : "");
        const CSize size = chart.GetDocumentSize();
        std::optional<Trouble> trouble = trouble_in_file(path, size.cy);
        if (trouble && size.cx == 0 && size.cy == 0)
            trouble->text += " It names no size and is perhaps no chart.";
        return trouble;
    });
}

std::optional<Trouble> trouble_with_georeference(const char* path) {
    return guarded(
        [path] { return trouble_at_georeference(chart::georeference_path(path != nullptr ? path : "")); });
}

}  // namespace zellap10::plotter
