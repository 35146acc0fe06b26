#include <samples/sheet.h>

namespace samples {

namespace {

// clang-format off
const std::vector<Colour> kColours = {
    // red green blue
    {255, 255, 255},  // 1 paper
    {222, 239, 250},  // 2 tint, outer
    {184, 220, 242},  // 3 tint, inner
    {245, 230, 182},  // 4 land
    { 20,  20,  20},  // 5 black, also the shore
    {150, 160, 172},  // 6 grid
    {180,  30, 120},  // 7 magenta
};

const std::vector<Place> kPlaces = {
    // name                         lon      lat     mark               name's side
    {"G U L F   O F   M A I N E",  -68.50,  43.02,  Mark::kWideWater,  Beside::kOn},
    {"BAY OF FUNDY",               -66.55,  44.90,  Mark::kSmallWater,      Beside::kOn},
    {"CAPE COD BAY",               -70.28,  41.86,  Mark::kSmallWater,      Beside::kOn},
    {"MASSACHUSETTS BAY",          -70.00,  42.35,  Mark::kWater,      Beside::kOn},
    {"Grand Manan",                -66.72,  44.62,  Mark::kIsland,     Beside::kRight},
    {"Portland",                   -70.255, 43.660, Mark::kTown,       Beside::kLeft},
    {"Portsmouth",                 -70.763, 43.077, Mark::kTown,       Beside::kLeft},
    {"Gloucester",                 -70.661, 42.613, Mark::kTown,       Beside::kLeft},
    {"Plymouth",                   -70.667, 41.958, Mark::kTown,       Beside::kLeft},
    {"Provincetown",               -70.186, 42.055, Mark::kTown,       Beside::kLeft},
    {"Rockland",                   -69.110, 44.104, Mark::kTown,       Beside::kLeft},
    {"Machias",                    -67.455, 44.715, Mark::kTown,       Beside::kAbove},
    {"Thacher Island",             -70.575, 42.637, Mark::kLight,      Beside::kRight},
    {"Isles of Shoals",            -70.623, 42.967, Mark::kLight,      Beside::kRight},
    {"Cape Elizabeth",             -70.200, 43.566, Mark::kLight,      Beside::kRight},
    {"Monhegan",                   -69.316, 43.765, Mark::kLight,      Beside::kLeft},
    {"Matinicus Rock",             -68.855, 43.783, Mark::kLight,      Beside::kRight},
    {"Mount Desert Rock",          -68.128, 43.968, Mark::kLight,      Beside::kRight},
    {"Machias Seal Island",        -67.101, 44.502, Mark::kLight,      Beside::kAbove},
    {"Highland",                   -70.039, 42.040, Mark::kLight,      Beside::kRight},
};
// clang-format on

}  // namespace

Sheet gulf_of_maine() {
    Sheet sheet;
    sheet.file = "gulf_of_maine";
    sheet.coast = sheet.file;
    sheet.name = "GULF OF MAINE";
    sheet.projection.kind = ProjectionKind::kPolyconic;
    sheet.projection.central_meridian = -68.5;
    sheet.projection.lat_offset = 0.000061;
    sheet.projection.lon_offset = 0.000524;
    sheet.scale = {900000, 127, 0};
    sheet.bits_per_pixel = 3;
    sheet.em = 26;
    sheet.covered = {-71.2, -66.0, 41.2, 45.2};
    sheet.area = {-71.1, -66.2, 41.4, 45.1};
    sheet.tint_miles = {6, 2};
    sheet.colours = kColours;
    sheet.inks = {1, {2, 3}, 0, 4, 5, 5, 6, 5, 7, 7};
    sheet.graduation = {30, 30, 10, 2};
    sheet.title.middle = {-70.15, 44.88};
    sheet.title.background = sheet.inks.land;
    sheet.title.lines = {
        "GULF OF MAINE",        "The blue tints are distance from the coast:", "2 and 6 nautical miles",
        "Polyconic, 1:900 000", "Coast: Natural Earth 1:10m (public domain)",  "NOT FOR NAVIGATION"};
    sheet.rose = Position{-67.2, 42.2};
    sheet.places = kPlaces;
    sheet.crossings = {60, 60};
    sheet.vertices_per_parallel = 9;
    sheet.extra_entries = {{"Id", "SAMPLE-4"},      {"Source", "Natural Earth 1:10m land"},
                           {"Country", "US, CA"},   {"Province/State", "ME, NH, MA, NB, NS"},
                           {"Depth Units", "NONE"}, {"Datum", "NAD 1927"}};
    return sheet;
}

}  // namespace samples
