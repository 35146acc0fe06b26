#include "samples/channel.h"

namespace samples {

namespace {

// clang-format off
const std::vector<Colour> kColours = {
    // red green blue
    {255, 255, 255},  //  1 paper
    {228, 242, 250},  //  2 tint, outer
    {204, 231, 246},  //  3 tint, middle
    {174, 217, 240},  //  4 tint, inner
    { 98, 160, 205},  //  5 contour
    {245, 230, 182},  //  6 land
    { 92,  72,  40},  //  7 shore
    { 20,  20,  20},  //  8 black
    {168, 174, 180},  //  9 grid
    { 40,  90, 150},  // 10 name of a water
    {180,  30, 120},  // 11 magenta
    {226, 110, 180},  // 12 flare
    {212, 214, 218},  // 13 half grid line, half paper: for reduced lines
    {234, 235, 236},  // 14 a quarter grid line, the rest paper
    {206, 202, 181},  // 15 half grid line, half land
};

const std::vector<Place> kPlaces = {
    // name                                   lon     lat     mark               name's side
    {"E N G L I S H   C H A N N E L",        -3.15,  49.92,  Mark::kWideWater,  Beside::kOn},
    {"L A   M A N C H E",                    -3.25,  49.72,  Mark::kWater,      Beside::kOn},
    {"CELTIC SEA",                           -5.80,  50.75,  Mark::kWater,      Beside::kOn},
    {"BRISTOL CHANNEL",                      -4.65,  51.33,  Mark::kWater,      Beside::kOn},
    {"LYME BAY",                             -2.95,  50.52,  Mark::kWater,      Beside::kOn},
    {"BAIE DE SEINE",                        -0.60,  49.55,  Mark::kWater,      Beside::kOn},
    {"GOLFE DE SAINT-MALO",                  -2.35,  48.93,  Mark::kWater,      Beside::kOn},
    {"DOVER STRAIT",                          1.10,  50.68,  Mark::kWater,      Beside::kOn},
    {"Isle of Wight",                        -1.30,  50.68,  Mark::kIsland,     Beside::kOn},
    {"Guernsey",                             -2.70,  49.47,  Mark::kIsland,     Beside::kLeft},
    {"Jersey",                               -2.30,  49.25,  Mark::kIsland,     Beside::kLeft},
    {"Alderney",                             -2.25,  49.79,  Mark::kIsland,     Beside::kOn},
    {"Isles of Scilly",                      -6.20,  50.02,  Mark::kIsland,     Beside::kRight},
    {"Lundy",                                -4.75,  51.18,  Mark::kIsland,     Beside::kLeft},
    {"Ouessant",                             -5.15,  48.53,  Mark::kIsland,     Beside::kLeft},
    {"Penzance",                             -5.537, 50.119, Mark::kTown,       Beside::kAbove},
    {"Falmouth",                             -5.070, 50.155, Mark::kTown,       Beside::kLeft},
    {"Plymouth",                             -4.143, 50.371, Mark::kTown,       Beside::kRight},
    {"Torquay",                              -3.530, 50.463, Mark::kTown,       Beside::kLeft},
    {"Exeter",                               -3.530, 50.722, Mark::kTown,       Beside::kLeft},
    {"Poole",                                -1.985, 50.719, Mark::kTown,       Beside::kAbove},
    {"Southampton",                          -1.404, 50.909, Mark::kTown,       Beside::kAbove},
    {"Portsmouth",                           -1.090, 50.805, Mark::kTown,       Beside::kBelow},
    {"Brighton",                             -0.137, 50.822, Mark::kTown,       Beside::kAbove},
    {"Hastings",                              0.573, 50.855, Mark::kTown,       Beside::kAbove},
    {"Dover",                                 1.300, 51.137, Mark::kTown,       Beside::kLeft},
    {"Calais",                                1.858, 50.951, Mark::kTown,       Beside::kRight},
    {"Boulogne",                              1.614, 50.726, Mark::kTown,       Beside::kRight},
    {"Dieppe",                                1.077, 49.922, Mark::kTown,       Beside::kRight},
    {"Fécamp",                                0.376, 49.757, Mark::kTown,       Beside::kRight},
    {"Le Havre",                              0.107, 49.494, Mark::kTown,       Beside::kRight},
    {"Rouen",                                 1.099, 49.443, Mark::kTown,       Beside::kAbove},
    {"Caen",                                 -0.370, 49.183, Mark::kTown,       Beside::kAbove},
    {"Cherbourg",                            -1.620, 49.640, Mark::kTown,       Beside::kBelow},
    {"Granville",                            -1.597, 48.838, Mark::kTown,       Beside::kRight},
    {"Saint-Malo",                           -2.025, 48.649, Mark::kTown,       Beside::kBelow},
    {"Saint-Brieuc",                         -2.760, 48.514, Mark::kTown,       Beside::kBelow},
    {"Brest",                                -4.486, 48.390, Mark::kTown,       Beside::kAbove},
    {"Bishop Rock",                          -6.445, 49.873, Mark::kLight,      Beside::kRight},
    {"Wolf Rock",                            -5.808, 49.945, Mark::kLight,      Beside::kLeft},
    {"Lizard",                               -5.202, 49.960, Mark::kLight,      Beside::kLeft},
    {"Eddystone",                            -4.265, 50.180, Mark::kLight,      Beside::kRight},
    {"Start Point",                          -3.641, 50.222, Mark::kLight,      Beside::kRight},
    {"Portland Bill",                        -2.456, 50.514, Mark::kLight,      Beside::kRight},
    {"Saint Catherine's Point",              -1.298, 50.576, Mark::kLight,      Beside::kRight},
    {"Beachy Head",                           0.242, 50.734, Mark::kLight,      Beside::kRight},
    {"Dungeness",                             0.976, 50.914, Mark::kLight,      Beside::kRight},
    {"South Foreland",                        1.371, 51.141, Mark::kLight,      Beside::kRight},
    {"Cap Gris-Nez",                          1.583, 50.869, Mark::kLight,      Beside::kLeft},
    {"Cap d'Antifer",                         0.165, 49.684, Mark::kLight,      Beside::kLeft},
    {"Pointe de Barfleur",                   -1.266, 49.696, Mark::kLight,      Beside::kRight},
    {"Cap de la Hague",                      -1.955, 49.722, Mark::kLight,      Beside::kAbove},
    {"Casquets",                             -2.377, 49.722, Mark::kLight,      Beside::kLeft},
    {"Roches-Douvres",                       -2.815, 49.107, Mark::kLight,      Beside::kLeft},
    {"Les Sept Îles",                        -3.490, 48.879, Mark::kLight,      Beside::kAbove},
    {"Île de Batz",                          -4.027, 48.745, Mark::kLight,      Beside::kAbove},
    {"Île Vierge",                           -4.567, 48.639, Mark::kLight,      Beside::kAbove},
    {"Créac'h",                              -5.129, 48.459, Mark::kLight,      Beside::kLeft},
};
// clang-format on

}  // namespace

Sheet channel_sheet() {
    Sheet sheet;
    sheet.coast = "english_channel";
    sheet.bits_per_pixel = 4;
    sheet.covered = {-6.5, 2.5, 48.0, 51.6};
    sheet.tint_miles = {6, 3, 1.5};
    sheet.colours = kColours;
    sheet.inks = {1, {2, 3, 4}, 5, 6, 7, 8, 9, 10, 11, 12};
    sheet.graduation = {30, 30, 5, 1};
    sheet.places = kPlaces;
    return sheet;
}

}  // namespace samples
