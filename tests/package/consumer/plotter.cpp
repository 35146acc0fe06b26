#include <cmath>
#include <cstdio>

#include <zellap10/plotter/plotter.h>

using namespace zellap10::plotter;

// An application that uses the installed plotter target: one name of each header.
int main() {
    CZellap chart;
    const CGEORec& record = *chart.GetBaseGeoRec();
    const bool works =
        Catalogue().add_folder("no such folder").added == 0 && !outline_of(record).covers({50, 1}) &&
        !Sheet(record).chart() && format_position({50, 1}).size() > 10 &&
        std::fabs(leg_between({50, 1}, {51, 1}).distance - 60.0) < 1e-9 &&
        diagnose_chart("no such chart").has_value() && !draw_viewport(chart, {}, colours_of(chart), 0, {});
    std::puts(works ? "the installed plotter works" : "the installed plotter fails");
    return works ? 0 : 1;
}
