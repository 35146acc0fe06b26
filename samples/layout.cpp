#include <samples/layout.h>

#include <cmath>

namespace samples {

Layout linear_layout(const Area& area, int width, int margin) {
    const double middle_lat = (area.south + area.north) / 2;
    const double x_per_degree = (width - 1 - 2 * margin) / (area.east - area.west);
    const double y_per_degree = x_per_degree / std::cos(middle_lat * kPi / 180);
    Layout layout;
    layout.area = area;
    layout.width = width;
    layout.height = static_cast<int>(std::lround((area.north - area.south) * y_per_degree)) + 1 + 2 * margin;
    layout.pixels_per_mile = y_per_degree / 60;
    layout.to_pixel = [=](Position place) {
        return Pixel{margin + (place.lon - area.west) * x_per_degree,
                     margin + (area.north - place.lat) * y_per_degree};
    };
    return layout;
}

}  // namespace samples
