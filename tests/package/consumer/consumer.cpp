#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <typeinfo>

#include <zellap10/zellap10.h>

// An application on the installed library: everything that can be missing at its boundary is taken up once.

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

// Two lines of 20 pixels: 8 of colour 1 and 12 of colour 2, then 20 of colour 2.
constexpr char kChart[] =
    "NOS/NA=CONSUMER,RA=0,0,20,2\r\nRGB/1,255,0,0\r\nRGB/2,0,0,255\r\n"
    "\x1A\x00\x04\x01\x0F\x90\x0B\x00\x02\x90\x13\x00"
    "\x00\x00\x00\x3E\x00\x00\x00\x43\x00\x00\x00\x47";

void use_chart() {
    const char* const path = "consumer.chart";
    std::ofstream(path, std::ios::binary).write(kChart, sizeof kChart - 1);
    OwnChart chart;
    expect(chart.OpenZellap(path, 0) == 1, "the chart opens");
    expect(std::strcmp(chart.ChartName, "CONSUMER") == 0, "the chart's name");
    unsigned char line[20] = {};
    expect(chart.getLine(0, line) == 1 && line[7] == 1 && line[8] == 2, "a scan line");
    expect(chart.getAALine(0, 0, 20, line, 2, 2) == 1 && line[9] == 2, "a reduced line");
    PALETTEENTRY colour = {};
    expect(GetPaletteEntries(chart.GetPaletteHandle(), 2, 1, &colour) == 1 && colour.peBlue == 255,
           "a colour of the palette object");
    chart.CloseZellap();
    std::remove(path);
}

void use_points() {
    bool gone = false;
    const std::unique_ptr<CRefPoint> copy = std::make_unique<CRefPoint>(OwnPoint(gone));
    gone = false;
    std::unique_ptr<CRefPoint> point = std::make_unique<OwnPoint>(gone);
    expect(dynamic_cast<OwnPoint*>(point.get()) != nullptr && typeid(*copy) == typeid(CRefPoint), "types");
    point.reset();
    expect(gone, "a derived point is destroyed through its base");
    expect(copy->X == 1 && copy->Latitude == 4.0, "a copied point");
}

void use_record() {
    CGEORec record;
    CRefPoint corners[] = {{"", 0, 0, -70.0, 40.0},
                           {"", 1000, 0, -69.0, 40.0},
                           {"", 0, 1000, -70.0, 39.0},
                           {"", 1000, 1000, -69.0, 39.0}};
    CRefPointList list;
    for (CRefPoint& corner : corners)
        list.AddTail(&corner);
    double longitude[21] = {}, latitude[21] = {}, error = 0.0;
    record.SolveSVDpw(1, &list, longitude, latitude, &error);
    expect(std::fabs(record.Evaluate(longitude, 500, 500) + 69.5) < 1e-9, "a fit");
    expect(std::strcmp(record.deg2dms(-42.5), "-042 30 00.00") == 0, "an angle as text");
    CString text;
    text.Format("%d of %s", 7, "nine");
    expect(text == "7 of nine", "formatted text");
}

void use_numbers() {
    PPARMS parms;
    project_init(1, 0.0, 0.0, 117, &parms);
    double x = 0.0, y = 0.0, lat = 0.0, lon = 0.0;
    project_f(1, &parms, 50.0, 1.0, &x, &y);
    project_i(1, &parms, x, y, &lat, &lon);
    expect(std::fabs(lat - 50.0) < 1e-9 && std::fabs(lon - 1.0) < 1e-9, "Mercator there and back");
    double h = 0.0;
    datum_to_WGS(&lat, &lon, &h, 117);
    expect(h == 0.0, "no shift from WGS-84 to itself");
    expect(std::fabs(m_distance(0.0, 0.0, 1.0, 0.0) - 60.0) < 1e-9, "a degree is 60 nautical miles");
}

}  // namespace

int main() {
    use_chart();
    use_points();
    use_record();
    use_numbers();
    if (failures == 0) std::puts("the installed library works");
    return failures == 0 ? 0 : 1;
}
