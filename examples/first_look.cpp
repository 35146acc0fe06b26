#include <cstdio>

#include <zellap10/zellap10.h>

// Tells the size of a chart and the colour of the pixel in its middle.
int main(int argc, char** argv) {
    CZellap chart;
    if (argc != 2 || chart.OpenZellap(argv[1], 0) == 0) return 1;

    const CSize size = chart.GetDocumentSize();
    std::printf("%s, %d x %d pixels\n", chart.ChartName, size.cx, size.cy);

    unsigned char index = 0;
    if (chart.getMultiLines(size.cy / 2, 1, size.cx / 2, 1, &index) == 0) return 1;
    PALETTEENTRY colour = {};
    GetPaletteEntries(chart.GetPaletteHandle(), index, 1, &colour);
    std::printf("in the middle: red %d, green %d, blue %d\n", colour.peRed, colour.peGreen, colour.peBlue);
    return 0;  // the chart closes itself
}
