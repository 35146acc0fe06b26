#include "samples/chart_writer.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace samples {

namespace {

constexpr char kEndOfText = 0x1A;
constexpr std::uint32_t kContinued = 0x80;
constexpr int kGroupBits = 7;

// The fewest groups of 7 bits that hold a number, most significant first; none for 0.
std::string groups_of(std::uint32_t number) {
    std::string groups;
    for (; number > 0; number >>= kGroupBits)
        groups.push_back(static_cast<char>(number & 0x7F));
    std::reverse(groups.begin(), groups.end());
    return groups;
}

// Sets bit 7 of every byte from `first` on, except the last.
void mark_continued(std::string& bytes, std::size_t first) {
    for (std::size_t i = first; i + 1 < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(bytes[i]) | kContinued);
    }
}

std::string scan_line(const Chart& chart, int line, const unsigned char* pixels) {
    std::string bytes;
    append_line_number(bytes, static_cast<std::uint32_t>(line) + 1, chart.liberties.number_bytes);
    for (int x = 0; x < chart.width;) {
        int length = 1;
        while (length < chart.liberties.longest_run && x + length < chart.width &&
               pixels[x + length] == pixels[x]) {
            ++length;
        }
        append_run(bytes, chart.bits_per_pixel, pixels[x], length, chart.liberties.padding_bytes);
        x += length;
    }
    return bytes;
}

}  // namespace

std::string text_part(const Chart& chart) {
    const std::string& end = chart.liberties.line_end;
    std::string text = "! Written by the chart writer" + end;
    text += "NOS/NA=" + chart.name + end;
    text += "    RA=0,0," + std::to_string(chart.width) + "," + std::to_string(chart.height) +
            ",DU=" + std::to_string(chart.du) + end;
    int index = 1;
    for (const Colour& colour : chart.colours) {
        text += "RGB/" + std::to_string(index++) + "," + std::to_string(colour.red) + "," +
                std::to_string(colour.green) + "," + std::to_string(colour.blue) + end;
    }
    return text;
}

void append_run(std::string& bytes, int bits_per_pixel, int colour, int length, int padding_bytes) {
    const int value_bits = kGroupBits - bits_per_pixel;
    const std::uint32_t value = static_cast<std::uint32_t>(length) - 1;
    std::string groups = groups_of(value);
    // The first byte has room for a few bits of the value. If the first group needs more, it gets its own
    // byte.
    if (groups.empty() || (static_cast<unsigned char>(groups[0]) >> value_bits) != 0 || padding_bytes > 0) {
        groups.insert(0, static_cast<std::size_t>(padding_bytes) + 1, '\0');
    }
    const std::size_t first = bytes.size();
    bytes += groups;
    bytes[first] = static_cast<char>(static_cast<unsigned char>(bytes[first]) | (colour << value_bits));
    mark_continued(bytes, first);
}

void append_line_number(std::string& bytes, std::uint32_t number, int number_bytes) {
    std::string groups = groups_of(number);
    const auto least = static_cast<std::size_t>(std::max(1, number_bytes));
    if (groups.size() < least) groups.insert(0, least - groups.size(), '\0');
    const std::size_t first = bytes.size();
    bytes += groups;
    mark_continued(bytes, first);
}

void append_offset(std::string& bytes, std::uint32_t offset) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<char>((offset >> shift) & 0xFF));
}

std::string chart_bytes(const std::string& text_part, int bits_per_pixel,
                        const std::vector<std::string>& lines, const Liberties& liberties) {
    std::string bytes = text_part;
    bytes.push_back(kEndOfText);
    bytes.push_back(static_cast<char>(liberties.skipped_byte));
    bytes.push_back(static_cast<char>(bits_per_pixel));
    std::vector<std::uint32_t> offsets(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t line = liberties.reversed_lines ? lines.size() - 1 - i : i;
        offsets[line] = static_cast<std::uint32_t>(bytes.size());
        bytes += lines[line];
        bytes.append(static_cast<std::size_t>(liberties.gap_bytes), '\xA5');
    }
    const auto table = static_cast<std::uint32_t>(bytes.size());
    for (const std::uint32_t offset : offsets)
        append_offset(bytes, offset);
    append_offset(bytes, table);
    return bytes;
}

std::string chart_bytes(const Chart& chart) {
    std::vector<std::string> lines;
    std::vector<unsigned char> pixels(static_cast<std::size_t>(std::max(chart.width, 0)));
    for (int line = 0; line < chart.height; ++line) {
        chart.draw(line, pixels.data());
        lines.push_back(scan_line(chart, line, pixels.data()));
    }
    return chart_bytes(text_part(chart), chart.bits_per_pixel, lines, chart.liberties);
}

void write_file(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path);
}

}  // namespace samples
