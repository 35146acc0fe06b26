#include <algorithm>

#include <samples/channel.h>

namespace samples {

namespace {

// The Channel's names are east of this sheet.
void name_the_waters(Sheet& sheet) {
    std::vector<Place>& places = sheet.places;
    const auto is_wide = [](const Place& place) {
        return place.mark == Mark::kWideWater || place.mark == Mark::kWater;
    };
    places.erase(std::remove_if(places.begin(), places.end(), is_wide), places.end());
    places.push_back({"W E S T E R N   C H A N N E L", -4.45, 49.60, Mark::kWideWater, Beside::kOn});
    places.push_back({"L A   M A N C H E", -4.45, 49.38, Mark::kWater, Beside::kOn});
}

}  // namespace

Sheet western_channel() {
    Sheet sheet = channel_sheet();
    name_the_waters(sheet);
    sheet.file = "western_channel";
    sheet.name = "WESTERN CHANNEL";
    sheet.projection.kind = ProjectionKind::kTransverseMercator;
    sheet.projection.central_meridian = -4.5;
    sheet.projection.origin_lat = 49;
    sheet.scale = {1000000, 254, 1.2};  // a sheet askew under the scanner
    sheet.bits_per_pixel = 5;
    sheet.em = 30;
    sheet.area = {-6.3, -2.6, 48.2, 50.6};
    sheet.title.middle = {-3.65, 48.44};
    sheet.title.background = sheet.inks.land;
    sheet.title.lines = {"WESTERN CHANNEL",
                         "Transverse Mercator, 1:1 000 000",
                         "The blue tints are distance from the coast:",
                         "1.5, 3 and 6 nautical miles",
                         "Coast: Natural Earth 1:10m (public domain)",
                         "NOT FOR NAVIGATION"};
    sheet.rose = Position{-5.7, 49.3};
    sheet.crossings = {60, 30};
    sheet.vertices_per_parallel = 9;
    sheet.extra_entries = {{"Id", "SAMPLE-2"},
                           {"Source", "Natural Earth 1:10m land"},
                           {"Country", "GB, FR"},
                           {"Depth Units", "NONE"},
                           {"Datum", "WGS 84"}};
    return sheet;
}

}  // namespace samples
