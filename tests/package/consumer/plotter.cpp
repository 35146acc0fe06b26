#include <cstdio>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/plotter.h>

// An application on the installed plotter target.
int main() {
    CZellap chart;
    if (zellap10::plotter::is_fitted(*chart.GetBaseGeoRec())) return 1;
    std::puts("the installed plotter works");
    return 0;
}
