#include <cstdio>

#include <zellap10/zellap10.h>

int end_because(const char* why) {
    std::fprintf(stderr, "first_look: %s\n", why);
    return 1;
}

// Tells the size of a chart and the colour of the pixel in its middle.
int main(int argc, char** argv) {
    if (argc != 2) return end_because("name one chart file");
    CZellap chart;
    if (chart.OpenZellap(argv[1], 0) == 0) return end_because("this is no chart that can be opened");

    const CSize size = chart.GetDocumentSize();
    std::printf("%s, %d x %d pixels\n", chart.ChartName, size.cx, size.cy);

    unsigned char index = 0;
    if (chart.getMultiLines(size.cy / 2, 1, size.cx / 2, 1, &index) == 0) {
        return end_because("the chart has no pixels");
    }
    PALETTEENTRY colour = {};
    GetPaletteEntries(chart.GetPaletteHandle(), index, 1, &colour);
    std::printf("in the middle: red %d, green %d, blue %d\n", colour.peRed, colour.peGreen, colour.peBlue);
    return 0;  // the chart closes itself
}
