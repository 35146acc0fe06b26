#include "zellap10/datum/tables.h"

#include <iterator>

namespace zellap10::datum {

// Both tables follow DMA TR 8350.2, Department of Defense World Geodetic System 1984. The names keep their
// odd spellings, including errors. Rows are identified by number, so the order is fixed.

// The reference shows what is between the marks.
// clang-format off
// [ellipsoids]
const EllipsoidRow kEllipsoids[] = {
    // da (m)   df * 10000       row  ellipsoid                 a (m)        f
    {573.604,   0.11960023},     //  0  Airy 1830                 6377563.396  1/299.3249646
    {-23.0,     -0.00081204},    //  1  Australian National       6378160.000  1/298.2500000
    {739.845,   0.10037483},     //  2  Bessel 1841               6377397.155  1/299.1528128
    {653.135,   0.10037483},     //  3  Bessel 1841 (Namibia)     6377483.865  1/299.1528128
    {-69.4,     -0.37264639},    //  4  Clarke 1866               6378206.400  1/294.9786982
    {-112.145,  -0.54750714},    //  5  Clarke 1880               6378249.145  1/293.4650000
    {860.655,   0.28361368},     //  6  Everest (India 1830)      6377276.345  1/300.8017000
    {0.0,       -0.00000016},    //  7  GRS 80                    6378137.000  1/298.2572221
    {-63.0,     0.00480795},     //  8  Helmert 1906              6378200.000  1/298.3000000
    {-133.0,    -0.14192702},    //  9  Hough 1960                6378270.000  1/297.0000000
    {-251.0,    -0.14192702},    // 10  International 1924        6378388.000  1/297.0000000
    {-108.0,    0.00480795},     // 11  Krassovsky 1940           6378245.000  1/298.3000000
    {796.811,   0.11960023},     // 12  Modified Airy             6377340.189  1/299.3249646
    {832.937,   0.28361368},     // 13  Everest 1948              6377304.063  1/300.8017000
    {-18.0,     0.00480795},     // 14  Modified Fischer 1960     6378155.000  1/298.3000000
    {-23.0,     -0.00081204},    // 15  South American 1969       6378160.000  1/298.2500000
    {2.0,       0.0003121057},   // 16  WGS-72                    6378135.000  1/298.2600000
    {0.0,       0.0},            // 17  WGS-84                    6378137.000  1/298.2572236
};
// [ellipsoids]

// [datums]
const DatumRow kDatums[] = {
    // row     name                               ellipsoid  dx,  dy,  dz (m)
    {/*   0 */ "AFG",                                     11,  -43,  -163,     45},
    {/*   1 */ "Ain_El_Abd_1970",                         10, -150,  -251,     -2},
    {/*   2 */ "Alaska_(NAD-27)",                          4,   -5,   135,    172},
    {/*   3 */ "Alaska/Canada_NAD-27",                     4,   -9,   151,    185},
    {/*   4 */ "Anna_1_Astro_1965",                        1, -491,   -22,    435},
    {/*   5 */ "ARC-1950_mean",                            5, -143,   -90,   -294},
    {/*   6 */ "ARC-1960_mean",                            5, -160,    -8,   -300},
    {/*   7 */ "Ascension_Island_'58",                    10, -207,   107,     52},
    {/*   8 */ "Astro_B4_Sor.Atoll",                      10,  114,  -116,   -333},
    {/*   9 */ "Astro_Beacon_\"E\"",                      10,  145,    75,   -272},
    {/*  10 */ "Astro_Pos_71/4",                          10, -320,   550,   -494},
    {/*  11 */ "Astronomic_Stn._'52",                     10,  124,  -234,    -25},
    {/*  12 */ "Australian_Geodetic_1984",                 1, -134,   -48,    149},
    {/*  13 */ "Bahamas_(NAD-27)",                         4,   -4,   154,    178},
    {/*  14 */ "Bellevue_(IGN)",                          10, -127,  -769,    472},
    {/*  15 */ "Bermuda_1957",                             4,  -73,   213,    296},
    {/*  16 */ "Bogota_Observatory",                      10,  307,   304,   -318},
    {/*  17 */ "Bukit_Rimpah",                             2, -384,   664,    -48},
    {/*  18 */ "Camp_Area_Astro",                         10, -104,  -129,    239},
    {/*  19 */ "Campo_Inchauspe",                         10, -148,   136,     90},
    {/*  20 */ "Canada_Mean_(NAD27)",                      4,  -10,   158,    187},
    {/*  21 */ "Canal_Zone_(NAD27)",                       4,    0,   125,    201},
    {/*  22 */ "Canton_Island_1966",                      10,  298,  -304,   -375},
    {/*  23 */ "Cape",                                     5, -136,  -108,   -292},
    {/*  24 */ "Cape_Canaveral_mean",                      4,   -2,   150,    181},
    {/*  25 */ "Carribean_(NAD27)",                        4,   -7,   152,    178},
    {/*  26 */ "Carthage",                                 5, -263,     6,    431},
    {/*  27 */ "Central_America_(NAD27)",                  4,    0,   125,    194},
    {/*  28 */ "Chatham_1971",                            10,  175,   -38,    113},
    {/*  29 */ "Chua_Astro",                              10, -134,   229,    -29},
    {/*  30 */ "Corrego_Alegre",                          10, -206,   172,     -6},
    {/*  31 */ "Corrego_Alegre_(Provisional)",            10, -206,   172,     -6},
    {/*  32 */ "Cuba_(NAD27)",                             4,   -9,   152,    178},
    {/*  33 */ "Cyprus",                                  10, -104,  -101,   -140},
    {/*  34 */ "Djakarta(Batavia)",                        2, -377,   681,    -50},
    {/*  35 */ "DOS_1968",                                10,  230,  -199,   -752},
    {/*  36 */ "Easter_lsland_1967",                      10,  211,   147,    111},
    {/*  37 */ "Egypt",                                   10, -130,  -117,   -151},
    {/*  38 */ "European_1950",                           10,  -87,   -96,   -120},
    {/*  39 */ "European_1950_mean",                      10,  -87,   -98,   -121},
    {/*  40 */ "European_1979_mean",                      10,  -86,   -98,   -119},
    {/*  41 */ "Finnish_Nautical_Chart",                  10,  -78,  -231,    -97},
    {/*  42 */ "Gandajika_Base",                          10, -133,  -321,     50},
    {/*  43 */ "Geodetic_Datum_'49",                      10,   84,   -22,    209},
    {/*  44 */ "Ghana",                                   17,    0,     0,      0},
    {/*  45 */ "Greenland_(NAD27)",                        4,   11,   114,    195},
    {/*  46 */ "Guam_1963",                                4, -100,  -248,    259},
    {/*  47 */ "Gunung_Segara",                            2, -403,   684,     41},
    {/*  48 */ "Gunung_Serindung_1962",                   17,    0,     0,      0},
    {/*  49 */ "GUX_1_Astro",                             10,  252,  -209,   -751},
    {/*  50 */ "Herat_North",                             10, -333,  -222,    114},
    {/*  51 */ "Hjorsey_1955",                            10,  -73,    46,    -86},
    {/*  52 */ "Hong_Kong_1963",                          10, -156,  -271,   -189},
    {/*  53 */ "Hu-Tzu-Shan",                             10, -634,  -549,   -201},
    {/*  54 */ "Indian",                                   6,  289,   734,    257},
    {/*  55 */ "Iran",                                    10, -117,  -132,   -164},
    {/*  56 */ "Ireland_1965",                            12,  506,  -122,    611},
    {/*  57 */ "ISTS_073_Astro_'69",                      10,  208,  -435,   -229},
    {/*  58 */ "Johnston_Island_'61",                     10,  191,   -77,   -204},
    {/*  59 */ "Kandawala",                                6,  -97,   787,     86},
    {/*  60 */ "Kerguelen_Island",                        10,  145,  -187,    103},
    {/*  61 */ "Kertau_'48",                              13,  -11,   851,      5},
    {/*  62 */ "L.C._5_Astro",                             4,   42,   124,    147},
    {/*  63 */ "La_Reunion",                              10,  -94,  -948,  -1262},
    {/*  64 */ "Liberia_1964",                             5,  -90,    40,     88},
    {/*  65 */ "Luzon",                                    4, -133,   -77,    -51},
    {/*  66 */ "Mahe_1971",                                5,   41,  -220,   -134},
    {/*  67 */ "Marco_Astro",                             10, -289,  -124,     60},
    {/*  68 */ "Masirah_Is._(Nahrwan)",                    5, -247,  -148,    369},
    {/*  69 */ "Massawa",                                  2,  639,   405,     60},
    {/*  70 */ "Merchich",                                 5,   31,   146,     47},
    {/*  71 */ "Mexico_(NAD27)",                           4,  -12,   130,    190},
    {/*  72 */ "Midway_Astro_'61",                        10,  912,   -58,   1227},
    {/*  73 */ "Mindanao",                                 4, -133,   -79,    -72},
    {/*  74 */ "Minna",                                    5,  -92,   -93,    122},
    {/*  75 */ "Montjong_Lowe",                           17,    0,     0,      0},
    {/*  76 */ "Nahrwan",                                  5, -231,  -196,    482},
    {/*  77 */ "Naparima_BWI",                            10,   -2,   374,    172},
    {/*  78 */ "North_America_'83",                        7,    0,     0,      0},
    {/*  79 */ "North_America_1927_mean",                  4,   -8,   160,    176},
    {/*  80 */ "Observatorio_1966",                       10, -425,  -169,     81},
    {/*  81 */ "Old_Egyptian",                             8, -130,   110,    -13},
    {/*  82 */ "Old_Hawaiian_mean",                        4,   89,  -279,   -183},
    {/*  83 */ "Old_Hawaiian_Kauai",                       4,   45,  -290,   -172},
    {/*  84 */ "Old_Hawaiian_Maui",                        4,   65,  -290,   -190},
    {/*  85 */ "Old_Hawaiian_Oahu",                        4,   56,  -284,   -181},
    {/*  86 */ "Oman",                                     5, -346,    -1,    224},
    {/*  87 */ "Ordnance_Survey_of_Great_Britain_'36",     0,  375,  -111,    431},
    {/*  88 */ "Pico_De_Las_Nieves",                      10, -307,   -92,    127},
    {/*  89 */ "Pitcairn_Astro_'67",                      10,  185,   165,     42},
    {/*  90 */ "Provisional_South_American_1956_mean",    10, -288,   175,   -376},
    {/*  91 */ "Provisional_South_Chilean_1963",          10,   16,   196,     93},
    {/*  92 */ "Puerto_Rico",                              4,   11,    72,   -101},
    {/*  93 */ "Qornoq",                                  10,  164,   138,   -189},
    {/*  94 */ "Quatar_National",                         10, -128,  -283,     22},
    {/*  95 */ "Rome_1940",                               10, -225,   -65,      9},
    {/*  96 */ "S.E.Asia_(Indian)",                        6,  173,   750,    264},
    {/*  97 */ "SAD-69/Brazil",                           15,  -60,    -2,    -41},
    {/*  98 */ "Santa_Braz",                              10, -203,   141,     53},
    {/*  99 */ "Santo_(DOS)",                             10,  170,    42,     84},
    {/* 100 */ "Sapper_Hill_'43",                         10, -355,    16,     74},
    {/* 101 */ "Schwarzeck",                               3,  616,    97,   -251},
    {/* 102 */ "Sicily",                                  10,  -97,   -88,   -135},
    {/* 103 */ "Sierra_Leone_1960",                       17,    0,     0,      0},
    {/* 104 */ "South_American_1969_mean",                15,  -57,     1,    -41},
    {/* 105 */ "South_Asia",                              14,    7,   -10,    -26},
    {/* 106 */ "Southeast_Base",                          10, -499,  -249,    314},
    {/* 107 */ "Southwest_Base",                          10, -104,   167,    -38},
    {/* 108 */ "Tananarive_Observatory_'25",              10, -189,  -242,    -91},
    {/* 109 */ "Thai/Viet_(Indian)",                       6,  214,   836,    303},
    {/* 110 */ "Timbalai_1948",                            6, -689,   691,    -45},
    {/* 111 */ "Tokyo_mean",                               2, -128,   481,    664},
    {/* 112 */ "Tristan_Astro_1968",                      10, -632,   438,   -609},
    {/* 113 */ "Unites_Arab_Emirates_(Nahrwan)",           5, -249,  -156,    381},
    {/* 114 */ "Viti_Levu_1916",                           5,   51,   391,    -36},
    {/* 115 */ "Wake-Eniwetok_'60",                        9,  101,    52,    -39},
    {/* 116 */ "WGS-72",                                  16,    0,     0,      5},
    {/* 117 */ "WGS-84",                                  17,    0,     0,      0},
    {/* 118 */ "Yacare",                                  10, -155,   171,     37},
    {/* 119 */ "Zanderij",                                10, -265,   120,   -358},
};
// [datums]
// clang-format on

static_assert(std::size(kEllipsoids) == kEllipsoidCount, "eighteen ellipsoids");
static_assert(std::size(kDatums) == kDatumCount, "120 datums");

}  // namespace zellap10::datum
