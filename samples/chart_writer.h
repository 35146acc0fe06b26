#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Writes chart files. Samples, tests, benchmarks and fuzz targets share it; the library does not hold it.
namespace samples {

struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;
};

/// The liberties that the format gives a writer. A reader gets the same pixels whatever is chosen.
struct Liberties {
    bool reversed_lines = false;     ///< the last line stands first in the file
    int gap_bytes = 0;               ///< bytes that belong to nothing behind each line
    int number_bytes = 1;            ///< bytes of a line number at the least
    int padding_bytes = 0;           ///< leading zero groups in each run
    int longest_run = 0x7FFFFFFF;    ///< longer runs are written as several
    std::string line_end = "\r\n";   ///< of the text part
    unsigned char skipped_byte = 0;  ///< the byte behind the 0x1A
};

/// A chart to be written: its text part, its picture and how it is laid out.
struct Chart {
    std::string name = "SAMPLE";
    int du = 254;
    int width = 0;
    int height = 0;
    int bits_per_pixel = 4;
    std::vector<Colour> colours;  ///< of the colour indexes from 1 upward
    /// Fills one line: `width` colour indexes, each below 2 to the power of bits_per_pixel.
    std::function<void(int line, unsigned char* pixels)> draw;
    Liberties liberties;
};

/// The text part up to, and without, its end mark.
std::string text_part(const Chart& chart);

/// A run of one colour, as the bytes of a scan line.
///
/// @param length  pixels, from 1 to 2147483647
void append_run(std::string& bytes, int bits_per_pixel, int colour, int length, int padding_bytes = 0);

/// A line number in groups of 7 bits, at least `number_bytes` of them.
void append_line_number(std::string& bytes, std::uint32_t number, int number_bytes = 1);

/// A 32-bit number, most significant byte first.
void append_offset(std::string& bytes, std::uint32_t offset);

/// Everything behind the text part, for scan lines that are bytes already: each is a line number and runs, in
/// the order of the picture.
std::string chart_bytes(const std::string& text_part, int bits_per_pixel,
                        const std::vector<std::string>& lines, const Liberties& liberties = {});

/// The whole chart file.
std::string chart_bytes(const Chart& chart);

/// Writes bytes to a file. Throws std::runtime_error, with the path, where that fails.
void write_file(const std::string& path, const std::string& bytes);

}  // namespace samples
