#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Writes chart files, for samples, tests, benchmarks and fuzz targets. It is not part of the library.
namespace samples {

struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;
};

/// Choices that the format leaves to a writer. They do not change the decoded pixels.
struct Liberties {
    bool reversed_lines = false;     ///< the last line comes first in the file
    int gap_bytes = 0;               ///< unused bytes after each line
    int number_bytes = 1;            ///< fewest bytes of a line number
    int padding_bytes = 0;           ///< leading zero groups of each run
    int longest_run = 0x7FFFFFFF;    ///< longer runs are split
    std::string line_end = "\r\n";   ///< of the text part
    unsigned char skipped_byte = 0;  ///< the byte after the 0x1A
};

/// A chart to write.
struct Chart {
    std::string name = "SAMPLE";
    int du = 254;
    int width = 0;
    int height = 0;
    int bits_per_pixel = 4;
    std::vector<Colour> colours;  ///< of the colour indexes from 1 on
    /// Fills one line: `width` colour indexes, each below 2 to the power of bits_per_pixel.
    std::function<void(int line, unsigned char* pixels)> draw;
    Liberties liberties;
};

/// The text part without its end mark.
std::string text_part(const Chart& chart);

/// Appends the bytes of a run of one colour.
///
/// @param length  pixels, from 1 to 2147483647
void append_run(std::string& bytes, int bits_per_pixel, int colour, int length, int padding_bytes = 0);

/// Appends a line number in at least `number_bytes` groups of 7 bits.
void append_line_number(std::string& bytes, std::uint32_t number, int number_bytes = 1);

/// Appends a 32-bit number, most significant byte first.
void append_offset(std::string& bytes, std::uint32_t offset);

/// A chart file made of encoded scan lines, top line first. Each is a line number and its runs.
std::string chart_bytes(const std::string& text_part, int bits_per_pixel,
                        const std::vector<std::string>& lines, const Liberties& liberties = {});

/// The bytes of a chart file.
std::string chart_bytes(const Chart& chart);

/// Writes bytes to a file. Throws std::runtime_error with the path if it cannot be written.
void write_file(const std::string& path, const std::string& bytes);

}  // namespace samples
