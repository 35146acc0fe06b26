#include <samples/channel.h>

namespace samples {

namespace {

// clang-format off
const std::vector<Place> kSolentPlaces = {
    // name                      lon     lat     mark               name's side
    {"T H E   S O L E N T",     -1.330, 50.776, Mark::kSmallWater, Beside::kOn},
    {"SPITHEAD",                -1.130, 50.745, Mark::kSmallWater, Beside::kOn},
    {"Isle of Wight",           -1.300, 50.680, Mark::kIsland,     Beside::kOn},
    {"Southampton",             -1.404, 50.909, Mark::kTown,       Beside::kRight},
    {"Portsmouth",              -1.090, 50.805, Mark::kTown,       Beside::kAbove},
    {"Lymington",               -1.540, 50.755, Mark::kTown,       Beside::kAbove},
    {"Ryde",                    -1.160, 50.730, Mark::kTown,       Beside::kBelow},
    {"Saint Catherine's Point", -1.298, 50.576, Mark::kLight,      Beside::kAbove},
    {"The Needles",             -1.590, 50.662, Mark::kLight,      Beside::kBelow},
};
// clang-format on

const std::vector<std::vector<Position>> kDoverPiers = {
    {{1.3154, 51.1148}, {1.3190, 51.1132}, {1.3235, 51.1117}, {1.3272, 51.1114}},
    {{1.3174, 51.1178}, {1.3235, 51.1152}},
    {{1.3298, 51.1129}, {1.3335, 51.1133}, {1.3385, 51.1154}, {1.3415, 51.1188}},
    {{1.3346, 51.1262}, {1.3380, 51.1236}, {1.3412, 51.1214}},
};

// clang-format off
const std::vector<Place> kDoverPlaces = {
    // name                  lon     lat      mark               name's side
    {"OUTER HARBOUR",        1.3310, 51.1180, Mark::kWater,      Beside::kOn},
    {"Western Entrance",     1.3295, 51.1105, Mark::kSmallWater, Beside::kOn},
    {"Eastern Entrance",     1.3386, 51.1201, Mark::kSmallWater, Beside::kOn},
    {"Dover",                1.3170, 51.1222, Mark::kIsland,     Beside::kRight},
    {"Admiralty Pier",       1.3272, 51.1114, Mark::kLight,      Beside::kBelow},
    {"Prince of Wales Pier", 1.3235, 51.1152, Mark::kLight,      Beside::kRight},
    {"Breakwater",           1.3298, 51.1129, Mark::kLight,      Beside::kLeft},
    {"Knuckle",              1.3415, 51.1188, Mark::kLight,      Beside::kLeft},
    {"Eastern Arm",          1.3412, 51.1214, Mark::kLight,      Beside::kLeft},
};
// clang-format on

// From European 1950 to WGS 84, degrees: 138 m.
constexpr double kLatOffset = -0.000853;
constexpr double kLonOffset = -0.001392;

Sheet solent() {
    Sheet sheet = channel_sheet();
    sheet.name = "THE SOLENT";
    sheet.projection.central_meridian = -1.3;
    sheet.projection.origin_lat = 50.75;
    sheet.projection.lat_offset = kLatOffset;
    sheet.projection.lon_offset = kLonOffset;
    sheet.scale = {500000, 254, 0};
    sheet.em = 18;
    sheet.area = {-1.62, -0.98, 50.55, 50.93};
    sheet.tint_miles = {1.5, 0.75, 0.3};
    sheet.graduation = {10, 10, 5, 1};
    sheet.title.middle = {-1.495, 50.595};
    sheet.title.background = sheet.inks.paper;
    sheet.title.lines = {"THE SOLENT", "Mercator, 1:500 000 at 50°45'N", "Tints: 0.3, 0.75, 1.5 miles",
                         "NOT FOR NAVIGATION"};
    sheet.places = kSolentPlaces;
    sheet.crossings = {10, 10};
    sheet.extra_entries = {{"Id", "SAMPLE-1A"}, {"Type", "Inset"}, {"Datum", "European 1950"}};
    sheet.corner = {-1.25, 49.14};
    return sheet;
}

// A plan 2 km across with pixels of 2.5 m, too small for the accuracy of wpxy.
Sheet dover_harbour() {
    Sheet sheet = solent();
    sheet.name = "DOVER HARBOUR";
    sheet.projection.central_meridian = 1.33;
    sheet.projection.origin_lat = 51;
    sheet.scale.denominator = 25000;
    sheet.area = {1.3164, 1.3450, 51.1107, 51.1287};
    sheet.tint_miles = {0.12, 0.06, 0.03};
    sheet.graduation = {5, 5, 1, 1, 600};
    sheet.title.middle = {1.33749, 51.1130};
    sheet.title.lines = {"DOVER", "Mercator, 1:25 000 at 51°N", "Drawn freehand", "NOT FOR NAVIGATION"};
    sheet.piers = kDoverPiers;
    sheet.places = kDoverPlaces;
    sheet.crossings = {0.5, 0.5};
    sheet.extra_entries = {{"Id", "SAMPLE-1B"}, {"Type", "Inset"}, {"Datum", "European 1950"}};
    sheet.corner = {0.49, 49.12};
    return sheet;
}

}  // namespace

Sheet english_channel() {
    Sheet sheet = channel_sheet();
    sheet.file = "english_channel";
    sheet.name = "ENGLISH CHANNEL";
    sheet.projection.central_meridian = -2.15;
    sheet.projection.origin_lat = 50;
    sheet.projection.lat_offset = kLatOffset;
    sheet.projection.lon_offset = kLonOffset;
    sheet.scale = {1100000, 254, 0};
    sheet.em = 40;
    sheet.area = {-6.5, 2.2, 48.1, 51.45};
    sheet.title.middle = {-2.15, 51.35};
    sheet.title.background = sheet.inks.land;
    sheet.title.lines = {"ENGLISH CHANNEL",
                         "Mercator, 1:1 100 000 at 50°N",
                         "The blue tints are distance from the coast:",
                         "1.5, 3 and 6 nautical miles",
                         "Coast: Natural Earth 1:10m (public domain)",
                         "NOT FOR NAVIGATION"};
    sheet.rose = Position{-5.6, 49.2};
    sheet.crossings = {120, 60};
    sheet.extra_entries = {
        {"Id", "SAMPLE-1"},        {"Type", "General"},   {"Source", "Natural Earth 1:10m land"},
        {"Source Edition", "1"},   {"Country", "GB, FR"}, {"Depth Units", "NONE"},
        {"Datum", "European 1950"}};
    sheet.insets = {solent(), dover_harbour()};
    return sheet;
}

}  // namespace samples
