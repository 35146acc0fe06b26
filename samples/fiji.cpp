#include <samples/sheet.h>

namespace samples {

namespace {

constexpr int kTints = 24;  // enough for a smooth ramp
constexpr double kTintMiles = 0.4;

// clang-format off
const std::vector<Place> kPlaces = {
    // name                  lon      lat      mark               name's side
    {"K O R O   S E A",     180.02,  -17.72,  Mark::kWideWater,  Beside::kOn},
    {"BLIGH WATER",         177.95,  -17.08,  Mark::kWater,      Beside::kOn},
    {"KADAVU PASSAGE",      178.20,  -18.62,  Mark::kWater,      Beside::kOn},
    {"NANUKU PASSAGE",      180.75,  -16.75,  Mark::kWater,      Beside::kOn},
    {"Viti Levu",           178.00,  -17.80,  Mark::kIsland,     Beside::kOn},
    {"Vanua Levu",          179.15,  -16.60,  Mark::kIsland,     Beside::kOn},
    {"Taveuni",             180.12,  -16.95,  Mark::kIsland,     Beside::kRight},
    {"Kadavu",              178.35,  -19.15,  Mark::kIsland,     Beside::kRight},
    {"Gau",                 179.38,  -18.01,  Mark::kIsland,     Beside::kRight},
    {"Koro",                179.50,  -17.40,  Mark::kIsland,     Beside::kRight},
    {"Ovalau",              178.80,  -17.53,  Mark::kIsland,     Beside::kOn},
    {"Moala",               179.97,  -18.60,  Mark::kIsland,     Beside::kRight},
    {"Lakeba",              181.28,  -18.22,  Mark::kIsland,     Beside::kRight},
    {"Vanua Balavu",        181.12,  -17.25,  Mark::kIsland,     Beside::kRight},
    {"Yasawa Group",        177.10,  -16.98,  Mark::kIsland,     Beside::kLeft},
    {"Suva",                178.440, -18.140, Mark::kTown,       Beside::kBelow},
    {"Lautoka",             177.450, -17.610, Mark::kTown,       Beside::kRight},
    {"Labasa",              179.380, -16.430, Mark::kTown,       Beside::kBelow},
    {"Savusavu",            179.330, -16.780, Mark::kTown,       Beside::kBelow},
};
// clang-format on

// A ramp between two blues, from the deep side to the shore. The palest differs enough from white that a
// reduced line keeps white as white.
std::vector<Colour> tints() {
    std::vector<Colour> colours;
    for (int i = 0; i < kTints; ++i) {
        colours.push_back({234 - 92 * i / kTints, 246 - 36 * i / kTints, 252 - 20 * i / kTints});
    }
    return colours;
}

}  // namespace

Sheet fiji() {
    Sheet sheet;
    sheet.file = "fiji";
    sheet.coast = sheet.file;
    sheet.name = "FIJI ISLANDS";
    // Projection mode does not work across the 180th meridian. The file names no projection, so the points
    // are fitted by polynomials.
    sheet.projection.named = false;
    sheet.projection.central_meridian = 179;
    sheet.projection.origin_lat = -17.5;
    sheet.scale = {1100000, 127, 0};
    sheet.bits_per_pixel = 7;
    sheet.em = 28;
    sheet.covered = {176.0, 182.0, -20.0, -15.5};
    sheet.area = {176.3, 181.8, -19.6, -15.8};
    // clang-format off
    sheet.colours = {
        // red green blue
        {255, 255, 255},  //  1 paper
        {245, 230, 182},  //  2 land
        { 92,  72,  40},  //  3 shore
        { 20,  20,  20},  //  4 black
        {168, 174, 180},  //  5 grid
        { 40,  90, 150},  //  6 name of a water
        {180,  30, 120},  //  7 magenta
        {226, 110, 180},  //  8 flare
        {212, 214, 218},  //  9 half grid line, half paper: for reduced lines
        {206, 202, 181},  // 10 half grid line, half land
    };
    // clang-format on
    sheet.inks = {1, {}, 0, 2, 3, 4, 5, 6, 7, 8};
    for (const Colour& tint : tints()) {
        sheet.colours.push_back(tint);
        sheet.inks.tints.push_back(static_cast<int>(sheet.colours.size()));
        sheet.tint_miles.push_back((kTints + 1 - static_cast<double>(sheet.inks.tints.size())) * kTintMiles);
    }
    sheet.graduation = {30, 30, 10, 2};
    sheet.title.middle = {177.25, -15.94};
    sheet.title.background = sheet.inks.paper;
    sheet.title.lines = {"FIJI ISLANDS",
                         "across the 180th meridian",
                         "The blue tints are distance from the coast:",
                         "up to 9.6 nautical miles",
                         "Mercator, 1:1 100 000 at 17°30'S",
                         "Coast: Natural Earth 1:10m (public domain)",
                         "NOT FOR NAVIGATION"};
    sheet.rose = Position{177.1, -18.9};
    sheet.places = kPlaces;
    sheet.crossings = {60, 60};
    sheet.extra_entries = {{"Id", "SAMPLE-5"},
                           {"Source", "Natural Earth 1:10m land"},
                           {"Country", "FJ"},
                           {"Depth Units", "NONE"},
                           {"Datum", "WGS 84"}};
    return sheet;
}

}  // namespace samples
