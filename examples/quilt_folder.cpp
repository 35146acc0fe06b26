#include <cstdio>
#include <cstdlib>
#include <memory>

#include <cairo.h>

#include <zellap10/plotter/plotter.h>

using namespace zellap10::plotter;

// Draws the charts of a folder around a position as one map into a PNG of 1200 by 700 pixels.
int main(int argc, char** argv) {
    if (argc < 6) {
        std::fprintf(stderr, "quilt_folder FOLDER LATITUDE LONGITUDE METRES_PER_PIXEL PNG [COURSE_UP]\n");
        return 2;
    }
    auto catalogue = std::make_shared<Catalogue>();
    std::printf("%d charts\n", catalogue->add_folder(argv[1]).added);

    const Position centre{std::strtod(argv[2], nullptr), std::strtod(argv[3], nullptr)};
    const double course_up = argc > 6 ? std::strtod(argv[6], nullptr) : 0.0;
    const MapView view(centre, std::strtod(argv[4], nullptr), {1200, 700}, course_up);

    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 1200, 700);
    const Bitmap bitmap{cairo_image_surface_get_data(surface), 1200, 700,
                        cairo_image_surface_get_stride(surface)};
    Quilt quilt(catalogue);
    const Quilt::Result result = quilt.draw_complete(view, ColourScheme::kDay, 0xFF808080, bitmap);
    cairo_surface_mark_dirty(surface);
    const bool is_written = cairo_surface_write_to_png(surface, argv[5]) == CAIRO_STATUS_SUCCESS;
    cairo_surface_destroy(surface);

    for (const CatalogueEntry* chart : result.charts)
        std::printf("%s\n", chart->name.c_str());
    for (const Quilt::Problem& problem : quilt.problems())
        std::fprintf(stderr, "%s: %s\n", problem.path.c_str(), problem.text.c_str());
    return result.complete && is_written ? 0 : 1;
}
