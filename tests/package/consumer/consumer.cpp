#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <typeinfo>

#include <zellap10/zellap10.h>

// An application that uses the installed library: one name of each header, and what else the boundary of a
// library can break.

namespace {

int failures = 0;

void expect(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "failed: %s\n", what);
    ++failures;
}

// Virtual destructors and protected operations reach a derived class.
class OwnChart : public CZellap {
public:
    using CZellap::BuildPal;
};

class OwnPoint : public CRefPoint {
public:
    explicit OwnPoint(bool& gone) : CRefPoint("own", 1, 2, 3.0, 4.0), gone_(gone) {}
    ~OwnPoint() override { gone_ = true; }

private:
    bool& gone_;
};

void use_chart() {
    const char* const path = "consumer.chart";
    std::ofstream(path, std::ios::binary) << "NOS/NA=CONSUMER\nRGB/1,255,0,0\n\x1A";
    OwnChart chart;
    expect(chart.OpenZellap(path, 1) == 1 && std::strcmp(chart.ChartName, "CONSUMER") == 0, "a chart");
    chart.BuildPal();
    PALETTEENTRY colour = {};
    expect(GetPaletteEntries(chart.GetPaletteHandle(), 1, 1, &colour) == 1 && colour.peRed == 255,
           "a colour of the palette object");
    std::remove(path);
}

void use_points() {
    bool gone = false;
    std::unique_ptr<CRefPoint> point = std::make_unique<OwnPoint>(gone);
    const CRefPoint copy = *point;
    expect(dynamic_cast<OwnPoint*>(point.get()) != nullptr && typeid(copy) == typeid(CRefPoint), "types");
    point.reset();
    expect(gone && copy.X == 1 && copy.Latitude == 4.0, "a derived point goes through its base");
}

void use_numbers() {
    expect(std::strcmp(CGEORec().deg2dms(-42.5), "-042 30 00.00") == 0, "an angle as text");
    CString text;
    text.Format("%d of %s", 7, "nine");
    expect(text == "7 of nine", "formatted text");
    PPARMS parms;
    project_init(1, 0.0, 0.0, 117, &parms);
    double lat = 50.0, lon = 1.0, h = 0.0, x = 0.0, y = 0.0;
    mercator_f(&parms, lat, lon, &x, &y);
    expect(std::fabs(x - 111319.5) < 1.0, "a projection");
    datum_to_WGS(&lat, &lon, &h, 117);
    expect(h == 0.0, "no shift from WGS 84 to itself");
    expect(std::fabs(m_distance(0.0, 0.0, 1.0, 0.0) - 60.0) < 1e-9, "a degree is 60 nautical miles");
    expect(m_advance_d(&lat, &lon, 5.0, 0.0) == 5.0, "an advance");
}

}  // namespace

int main() {
    use_chart();
    use_points();
    use_numbers();
    if (failures == 0) std::puts("the installed library works");
    return failures == 0 ? 0 : 1;
}
