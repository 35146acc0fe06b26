// The road of a typical use: opens a chart, tells what it says of itself, and draws it as PNG pictures.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <examples/picture.h>
#include <zellap10/zellap10.h>

namespace {

constexpr int kWindowWidth = 1920;  // of the picture at full scale, pixels
constexpr int kWindowHeight = 1080;
constexpr int kReducedWidth = 1600;  // of the reduced picture, pixels, at the most

// The colours of all 256 palette indexes, black where the palette ends.
std::vector<Rgb> colours_of(const CZellap& chart) {
    PALETTEENTRY entries[256] = {};
    GetPaletteEntries(chart.GetPaletteHandle(), 0, 256, entries);
    std::vector<Rgb> colours;
    for (const PALETTEENTRY& entry : entries) {
        colours.push_back({entry.peRed, entry.peGreen, entry.peBlue});
    }
    return colours;
}

void colour_row(const unsigned char* indexes, const std::vector<Rgb>& colours, int count, Rgb* row) {
    std::transform(indexes, indexes + count, row, [&](unsigned char index) { return colours[index]; });
}

void print_header(const CZellap& chart) {
    const CSize size = chart.GetDocumentSize();
    std::printf("name            %s\n", chart.ChartName);
    std::printf("size            %d x %d pixels\n", size.cx, size.cy);
    std::printf("DU              %d\n", chart.DU);
    std::printf("bits per pixel  %d\n", chart.BitsPerPixel);
    std::printf("colours         %d, widened to %u\n", chart.HeaderColourCount,
                GetPaletteEntries(chart.GetPaletteHandle(), 0, 0, nullptr));
}

// As much as fits a window on the middle of the chart, pixel for pixel.
Picture full_scale(CZellap& chart) {
    const CSize size = chart.GetDocumentSize();
    Picture picture(std::min(size.cx, kWindowWidth), std::min(size.cy, kWindowHeight));
    const int first_line = (size.cy - picture.height) / 2;
    const int first_col = (size.cx - picture.width) / 2;
    std::vector<unsigned char> indexes(picture.pixels.size());
    if (chart.getMultiLines(first_line, picture.height, first_col, picture.width, indexes.data()) == 0) {
        throw std::runtime_error("the chart's lines cannot be read");
    }
    colour_row(indexes.data(), colours_of(chart), static_cast<int>(indexes.size()), picture.row(0));
    std::printf("window          %d x %d pixels from column %d, line %d\n", picture.width, picture.height,
                first_col, first_line);
    return picture;
}

// The whole chart, reduced by the smallest whole factor that makes it fit.
Picture reduced(CZellap& chart) {
    const CSize size = chart.GetDocumentSize();
    const int factor = (size.cx + kReducedWidth - 1) / kReducedWidth;
    Picture picture(size.cx / factor, size.cy / factor);
    const std::vector<Rgb> colours = colours_of(chart);
    std::vector<unsigned char> indexes(static_cast<std::size_t>(picture.width));
    for (int y = 0; y < picture.height; ++y) {
        if (chart.getAALine(y * factor, 0, size.cx, indexes.data(), factor, factor) == 0) {
            throw std::runtime_error("the chart's lines cannot be reduced");
        }
        colour_row(indexes.data(), colours, picture.width, picture.row(y));
    }
    std::printf("whole           %d x %d pixels, reduced by %d\n", picture.width, picture.height, factor);
    return picture;
}

void save(const Picture& picture, const std::filesystem::path& path) {
    write_png(picture, path.string());
    std::printf("                %s\n", path.string().c_str());
}

void show(const std::filesystem::path& chart_file, const std::filesystem::path& output_dir) {
    CZellap chart;
    if (chart.OpenZellap(chart_file.string().c_str(), 0) == 0) {
        throw std::runtime_error(chart_file.string() + " is no chart that can be opened");
    }
    std::filesystem::create_directories(output_dir);
    const std::string stem = chart_file.stem().string();
    print_header(chart);
    const CSize size = chart.GetDocumentSize();
    if (size.cx <= 0 || size.cy <= 0) throw std::runtime_error("the chart has no pixels");
    save(full_scale(chart), output_dir / (stem + "_window.png"));
    save(reduced(chart), output_dir / (stem + ".png"));
    chart.CloseZellap();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: show_chart CHART_FILE OUTPUT_DIR\n");
        return 2;
    }
    try {
        show(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "show_chart: %s\n", error.what());
        return 1;
    }
    return 0;
}
