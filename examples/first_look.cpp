#include <cstdio>

#include <zellap10/zellap10.h>

int fail(const char* message) {
    std::fprintf(stderr, "first_look: %s\n", message);
    return 1;
}

// Prints the size of a chart and the colour of its centre pixel.
int main(int argc, char** argv) {
    if (argc != 2) return fail("name one chart file");
    CZellap chart;
    if (chart.OpenZellap(argv[1], 0) == 0) return fail("the chart cannot be opened");

    const CSize size = chart.GetDocumentSize();
    std::printf("%s, %d x %d pixels\n", chart.ChartName, size.cx, size.cy);

    unsigned char index = 0;
    if (chart.getMultiLines(size.cy / 2, 1, size.cx / 2, 1, &index) == 0) {
        return fail("the chart has no pixels");
    }
    PALETTEENTRY colour = {};
    GetPaletteEntries(chart.GetPaletteHandle(), index, 1, &colour);
    std::printf("centre pixel: red %d, green %d, blue %d\n", colour.peRed, colour.peGreen, colour.peBlue);
    return 0;  // the destructor closes the chart
}
