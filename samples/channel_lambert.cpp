#include <samples/channel.h>

namespace samples {

Sheet channel_lambert() {
    Sheet sheet = channel_sheet();
    sheet.file = "channel_lambert";
    sheet.name = "CHANNEL LAMBERT";
    sheet.projection.kind = ProjectionKind::kLambert;
    sheet.projection.central_meridian = -2;
    sheet.projection.origin_lat = 49.75;
    sheet.projection.first_parallel = 48.75;
    sheet.projection.second_parallel = 50.75;
    sheet.scale = {1000000, 127, 0};
    sheet.em = 22;
    sheet.area = {-6.5, 2.2, 48.1, 51.45};
    sheet.graduation = {30, 30, 10, 2};
    sheet.title.middle = {1.05, 48.85};
    sheet.title.background = sheet.inks.land;
    sheet.title.lines = {"ENGLISH CHANNEL",
                         "Lambert conformal conic, 1:1 000 000",
                         "The blue tints are distance from the coast:",
                         "1.5, 3 and 6 nautical miles",
                         "Coast: Natural Earth 1:10m (public domain)",
                         "NOT FOR NAVIGATION"};
    sheet.rose = Position{-5.6, 49.2};
    sheet.crossings = {120, 60};
    sheet.vertices_per_parallel = 9;
    sheet.extra_entries = {{"Id", "SAMPLE-3"},
                           {"Source", "Natural Earth 1:10m land"},
                           {"Country", "GB, FR"},
                           {"Depth Units", "NONE"},
                           {"Datum", "WGS 84"}};
    return sheet;
}

}  // namespace samples
