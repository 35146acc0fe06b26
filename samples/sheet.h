#pragma once

#include <optional>
#include <string>
#include <vector>

#include <samples/canvas.h>
#include <samples/chart_writer.h>
#include <samples/geo_writer.h>
#include <samples/layout.h>

/// The contents of the sample charts.
namespace samples {

/// The colour index of each thing drawn.
struct Inks {
    int paper = 0;           ///< the margin and the deep water
    std::vector<int> tints;  ///< shallow water, from the deep side to the shore
    int contour = 0;         ///< the line around a tint; 0 draws none
    int land = 0;
    int shore = 0;  ///< the coast line
    int black = 0;
    int grid = 0;
    int water_name = 0;
    int magenta = 0;
    int flare = 0;  ///< of a light
};

/// The graduation of the border, in parts of a degree. Each is a divisor of the one before.
struct Graduation {
    int figure = 60;  ///< between two figures in the border
    int line = 30;    ///< between two meridians or parallels of the grid
    int bar = 10;     ///< length of a black or white bar
    int tick = 2;
    int per_degree = 60;  ///< parts in a degree
};

enum class Mark { kTown, kLight, kIsland, kSmallWater, kWater, kWideWater };
enum class Beside { kOn, kRight, kLeft, kAbove, kBelow };

struct Place {
    const char* name;
    double lon, lat;
    Mark mark;
    Beside side;  ///< of the mark, on which its name is
};

struct Title {
    Position middle;     ///< of the first line
    int background = 0;  ///< colour index of the block under the lines
    std::vector<std::string> lines;
};

/// The reference points: the four corners of the area and crossings of meridians and parallels, each moved to
/// the nearest whole pixel.
struct Crossings {
    double lon_step = 60;  ///< minutes of arc
    double lat_step = 60;
};

struct Sheet {
    std::string file;   ///< base name of the chart
    std::string coast;  ///< base name of its coast file
    std::string name;
    Projection projection;
    Scale scale;
    int bits_per_pixel = 4;
    double em = 40;  ///< size of the plain lettering, pixels
    Area covered;    ///< by the coast file, WGS 84
    Area area;       ///< of the chart, in its datum; a tint's width inside the coast file's
    std::vector<double> tint_miles;
    std::vector<Colour> colours;  ///< of the colour indexes from 1 on
    Inks inks;
    Graduation graduation;
    Title title;
    std::optional<Position> rose;
    std::vector<std::vector<Position>> piers;  ///< WGS 84
    std::vector<Place> places;                 ///< WGS 84
    Crossings crossings;
    int vertices_per_parallel = 2;        ///< of the outline, on each of its northern and southern sides
    std::vector<GeoEntry> extra_entries;  ///< more lines of the georeference file
    std::vector<Sheet> insets;
    Position corner;  ///< of an inset: the upper left of its frame on the chart
};

Sheet english_channel();
Sheet western_channel();
Sheet channel_lambert();
Sheet gulf_of_maine();
Sheet fiji();

/// The layouts of a sheet and of its insets.
Layout layout_of(const Sheet& sheet);
std::vector<Layout> inset_layouts_of(const Sheet& sheet, const Layout& layout);

/// Draws the sheet with its insets.
Canvas draw_sheet(const Sheet& sheet, const std::string& coast_dir);

/// The contents of the sheet's georeference file.
GeoFile georeference_of(const Sheet& sheet);

}  // namespace samples
