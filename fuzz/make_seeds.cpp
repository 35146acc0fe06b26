#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "harness.h"
#include <samples/chart_writer.h>
#include <testing/record_parts.h>

// Writes the initial inputs of the fuzz targets, one folder per target.

namespace {

using samples::Chart;

const std::string kNoArguments(fuzz::kArguments, '\0');

constexpr int kStartsOfCall = 40;

// Pseudo-random arguments. The first byte selects the mode of a target.
std::string arguments(int way, unsigned start) {
    std::string bytes(1, static_cast<char>(way));
    for (unsigned number = start; bytes.size() < fuzz::kArguments; number = number * 1664525 + 1013904223)
        bytes.push_back(static_cast<char>(number >> 24));
    return bytes;
}

Chart picture(int width, int height, int bits_per_pixel, int colours) {
    Chart chart;
    chart.width = width;
    chart.height = height;
    chart.bits_per_pixel = bits_per_pixel;
    for (int i = 1; i <= colours; ++i)
        chart.colours.push_back({i * 37 % 256, i * 101 % 256, i * 199 % 256});
    chart.draw = [width, bits_per_pixel](int line, unsigned char* pixels) {
        for (int x = 0; x < width; ++x) {
            const int run = 1 + line * 3 % 17;
            pixels[x] = static_cast<unsigned char>((x / run + line) % (1 << bits_per_pixel));
        }
    };
    return chart;
}

struct NamedChart {
    const char* name;
    std::string bytes;
};

std::vector<NamedChart> charts() {
    Chart liberal = picture(200, 9, 3, 5);
    liberal.liberties.reversed_lines = true;
    liberal.liberties.gap_bytes = 2;
    liberal.liberties.number_bytes = 3;
    liberal.liberties.padding_bytes = 1;
    liberal.liberties.longest_run = 5;
    liberal.liberties.line_end = "\n";
    const std::string continued =
        "NOS/NA=HAR\r\n    BOUR\r\n    RA= 0 , 0 , 40 , 2\r\n    DU=254\r\nRGB/300,300,-1,7\r\nRGB/5,1\r\n";
    const std::string wide = "NOS/RA=0,0,2147483647,1\r\nRGB/255,1,2,3\r\n";
    return {
        {"small", samples::chart_bytes(picture(20, 2, 4, 2))},
        {"one_bit", samples::chart_bytes(picture(33, 5, 1, 1))},
        {"seven_bits", samples::chart_bytes(picture(64, 4, 7, 127))},
        {"liberal", samples::chart_bytes(liberal)},
        {"many_lines", samples::chart_bytes(picture(16, 60, 4, 15))},
        {"large", samples::chart_bytes(picture(200, 60, 2, 3))},
        {"no_lines", samples::chart_bytes("NOS/RA=0,0,20,0\r\n", 4, {})},
        {"continued", samples::chart_bytes(continued, 4, {std::string("\x01\x90\x27", 3), "\x02\x07"})},
        {"widest", samples::chart_bytes(wide, 4, {std::string("\x01\x8F\xFF\xFF\xFF\x7F", 6)})},
        {"past_width",
         samples::chart_bytes("NOS/RA=0,0,5,1\r\nRGB/0,9,8,7\r\n", 4, {std::string("\x01\x03\x07", 3)})},
        {"no_bits", samples::chart_bytes("NOS/RA=0,0,5,1\r\n", 0, {"\x01\x04"})},
        {"eight_bits", samples::chart_bytes("NOS/RA=0,0,5,1\r\n", 8, {"\x01\x04"})},
        {"text_only", "NOS/NA=X,RA=0,0,1,1\r\n"},
    };
}

struct NamedText {
    const char* name;
    std::string text;
};

// Points on a grid of `side` by `side` over a chart of 9000 by 9000 pixels.
std::string grid(int side, double west, double north) {
    std::string text;
    for (int i = 0; i < side * side; ++i) {
        const int x = i % side * (9000 / side);
        const int y = i / side * (9000 / side);
        double longitude = west + 0.00012 * x;
        if (longitude > 180.0) longitude -= 360.0;
        text += "Point" + std::to_string(i + 1) + "=" + std::to_string(longitude) + " " +
                std::to_string(north - 0.00009 * y) + " " + std::to_string(y) + " " + std::to_string(x) +
                "\r\n";
    }
    return text;
}

std::vector<NamedText> georeferences() {
    const std::string vertices = "Number of Vertices=2\r\nVertex1=42.0 -70.0\r\nVertex2=41.2 -68.9\r\n";
    std::string all_texts;
    for (const RecordField& field : kRecordFields)
        all_texts += std::string(field.key) + "=1\n";
    const auto copies = [](int count, const std::string& line) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += line;
        return text;
    };
    const std::string lambert = "Projection=LAMBERT\n";
    return {
        {"two_points", "Point=3 4 2 1\nPoint=7 8 6 5\n"},
        {"two_points_lambert", lambert + "Point=3 4 2 1\nPoint=7 8 6 5\n"},
        {"on_one_line", "Point=0 0 0 0\nPoint=1 1 1 1\nPoint=2 2 2 2\nPoint=3 3 3 3\n"},
        {"all_alike", copies(15, "Point=3 3 3 3\n")},
        {"all_alike_lambert", lambert + copies(15, "Point=3 3 3 3\n")},
        {"no_numbers", copies(15, "Point=nan inf 3 3\n")},
        {"no_numbers_polyconic", "Projection=POLYCONIC\n" + copies(15, "Point=nan inf 3 3\n")},
        {"direct_one_region", "Latitude Offset=0.5\nLongitude Offset=-0.25\n" + grid(3, -70, 42) + vertices},
        {"direct_two_regions", grid(5, -70, 42) + vertices},
        {"over_180", grid(4, 179.5, -17) + "Vertex1=-17.2 179.9\nVertex2=-17.3 -179.9\n"},
        {"mercator", "Projection=MERCATOR\nPP=-69.5\nLatitude Offset=0.0002\n" + vertices + grid(2, -70, 42)},
        {"polyconic", "Projection=Polyconic\nP1=42\n" + vertices + grid(2, -70, 42)},
        {"utm", "Projection=UTM ZONE 19\n" + vertices + grid(2, -70, 42)},
        {"lambert", "Projection=LAMBERT\nP5=41.3\nP6=41.8\n" + vertices + grid(2, -70, 42)},
        {"insets", vertices + grid(2, -70, 42) + "[Inset 1]\nName=Harbour\n" + grid(2, -69, 41) +
                       "[Inset 2]\nProjection=MERCATOR\n" + grid(2, -69, 41) + vertices},
        {"all_texts", all_texts},
        {"odd_numbers",
         "Point=inf -inf 0 1\nPoint=nan 1 0 0\nPoint=1e308 -1e308 9 9\nPoint=0x1p4 1e-320 1 2\n"
         "Point=1 1 2147483648 -2147483649\nVertex=nan inf\n[Inset\nPoint=0 0 -2147483648 2147483647\n"},
    };
}

// A byte that selects a call, and arguments of all kinds; with `special` only special values such as NaN and
// the poles.
std::string calls(int call, bool special, unsigned start) {
    std::string bytes = arguments(call, start);
    for (std::size_t i = 1; special && i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(bytes[i] & 31);
    return bytes;
}

void write(const std::filesystem::path& folder, const std::string& name, const std::string& bytes) {
    std::filesystem::create_directories(folder);
    samples::write_file((folder / name).string(), bytes);
}

void write_all(const std::filesystem::path& root) {
    unsigned start = 1;
    for (const NamedChart& chart : charts()) {
        write(root / "chart", chart.name, arguments(64 | 16, ++start) + chart.bytes);
        write(root / "chart", std::string(chart.name) + "_info", arguments(2, ++start) + chart.bytes);
        write(root / "chart", std::string(chart.name) + "_table", arguments(1, ++start) + chart.bytes);
    }
    const std::string chart = charts().front().bytes;
    for (const NamedText& text : georeferences()) {
        write(root / "georeference", text.name, arguments(0, ++start) + text.text);
        write(root / "quilt", text.name, arguments(1, ++start) + text.text);
        for (const int way : {0, 1}) {
            write(root / "chart_and_georeference", text.name + std::string(way == 0 ? "" : "_twice"),
                  arguments(way, ++start) + chart + "\n=GEO=\n" + text.text);
        }
    }
    for (int call = 0; call < 8; ++call) {
        for (int i = 0; i < kStartsOfCall; ++i) {
            write(root / "numeric", "call_" + std::to_string(call) + "_" + std::to_string(i),
                  calls(call, i % 2 != 0, ++start));
        }
    }
    for (const char* target : {"chart", "georeference", "chart_and_georeference", "numeric", "quilt"}) {
        write(root / target, "empty", "");
        write(root / target, "zeros", kNoArguments);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: make_seeds FOLDER\n");
        return 2;
    }
    try {
        write_all(arguments[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_seeds: %s\n", error.what());
        return 1;
    }
    return 0;
}
