#include "zellap10/plotter/trouble.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <system_error>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/georeference_path.h>

namespace zellap10::plotter {

namespace {

namespace fs = std::filesystem;

constexpr int kEndOfText = 0x1A;
constexpr std::int64_t kOffsetBytes = 4;
constexpr std::int64_t kLargestFile = std::numeric_limits<std::int32_t>::max();

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

std::optional<Trouble> trouble_with_text_end(std::istream& stream) {
    stream.ignore(std::numeric_limits<std::streamsize>::max(), kEndOfText);
    if (!stream) return unreadable();
    if (stream.eof()) {
        return Trouble{Fault::kNoEndOfText,
                       "The text part of the file has no end: no byte is 26 (hexadecimal 1A)."};
    }
    stream.ignore();
    const int bits_per_pixel = stream.get();
    if (!stream) return Trouble{Fault::kNoEndOfText, "The file ends with its text part."};
    if (bits_per_pixel >= 1 && bits_per_pixel <= 7) return {};
    return Trouble{Fault::kBitsPerPixel, "The file gives " + std::to_string(bits_per_pixel) +
                                             " bits per pixel; there can be 1 to 7."};
}

std::optional<Trouble> trouble_with_line_table(std::istream& stream, std::int64_t size, int lines) {
    unsigned char bytes[kOffsetBytes] = {};
    stream.seekg(size - kOffsetBytes);
    if (!stream.read(reinterpret_cast<char*>(bytes), sizeof bytes)) return unreadable();
    std::int64_t table = 0;
    for (const unsigned char byte : bytes)
        table = table * 256 + byte;
    const std::int64_t table_size = std::max(lines, 0) * kOffsetBytes;
    if (table_size == 0 || table + table_size <= size) return {};
    const std::string begins = "The line table begins at " + grouped(table);
    const std::string in_file = " a file of " + grouped(size) + " bytes.";
    if (table > size) return Trouble{Fault::kLineTable, begins + " in" + in_file};
    return Trouble{Fault::kLineTable, begins + " and its " + grouped(lines) + " lines need " +
                                          grouped(table_size) + " bytes, in" + in_file};
}

std::optional<Trouble> trouble_in_file(const char* path, int lines) {
    std::ifstream stream(path, std::ios::binary | std::ios::ate);
    const std::int64_t size = stream.tellg();
    if (size < 0) return unreadable();
    if (size > kLargestFile) {
        return Trouble{Fault::kTooLarge, "The file has " + grouped(size) +
                                             " bytes; a chart file has at most " + grouped(kLargestFile) +
                                             '.'};
    }
    if (size == 0) return Trouble{Fault::kTooSmall, "The file is empty."};
    if (size < kOffsetBytes) return Trouble{Fault::kTooSmall, "The file ends within its first bytes."};
    stream.seekg(0);
    if (auto trouble = trouble_with_text_end(stream)) return trouble;
    return trouble_with_line_table(stream, size, lines);
}

bool equal_in_any_case(const std::string& a, const std::string& b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [lower](char x, char y) { return lower(x) == lower(y); });
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
        if (!equal_in_any_case(name, wanted) || !entry->is_regular_file(ignored)) continue;
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
        [path] { return trouble_at_georeference(georeference_path(path != nullptr ? path : "")); });
}

}  // namespace zellap10::plotter
