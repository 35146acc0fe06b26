// Draws the sample charts and writes their chart files and georeference files.

#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>

#include <samples/canvas.h>
#include <samples/chart_writer.h>
#include <samples/sheet.h>

namespace {

void write_chart(const samples::Sheet& sheet, const std::string& output_dir) {
    const samples::Canvas canvas = samples::draw_sheet(sheet, ZELLAP10_COAST_DIR);
    samples::Chart chart;
    chart.name = sheet.name;
    chart.du = sheet.scale.du;
    chart.width = canvas.width();
    chart.height = canvas.height();
    chart.bits_per_pixel = sheet.bits_per_pixel;
    chart.colours = sheet.colours;
    chart.draw = [&](int line, unsigned char* pixels) {
        std::memcpy(pixels, canvas.line(line), static_cast<std::size_t>(canvas.width()));
    };
    const std::string stem = output_dir + "/" + sheet.file;
    const std::string path = stem + ".chart";
    const std::string bytes = samples::chart_bytes(chart);
    samples::write_file(path, bytes);
    samples::write_file(stem + ".GEO", samples::geo_text(samples::georeference_of(sheet)));
    std::printf("%s: %d x %d pixels, %d bits, %zu bytes\n", path.c_str(), chart.width, chart.height,
                chart.bits_per_pixel, bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_samples OUTPUT_DIR\n");
        return 2;
    }
    try {
        std::filesystem::create_directories(argv[1]);
        for (const samples::Sheet& sheet :
             {samples::english_channel(), samples::western_channel(), samples::channel_lambert(),
              samples::gulf_of_maine(), samples::fiji()}) {
            write_chart(sheet, argv[1]);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_samples: %s\n", error.what());
        return 1;
    }
    return 0;
}
