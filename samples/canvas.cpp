#include "samples/canvas.h"

#include <stdexcept>

namespace samples {

namespace {

constexpr double kSlant = 0.2;  // of italics: pixels to the right per pixel up

// The surface has an alpha channel only and the operator replaces it, so its bytes are the colour indexes.
void set_colour(cairo_t* cairo, int colour) {
    cairo_set_source_rgba(cairo, 0, 0, 0, colour / 255.0);
}

void set_up(cairo_t* cairo) {
    cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
    cairo_set_antialias(cairo, CAIRO_ANTIALIAS_NONE);
    cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_NONE);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_FULL);
    cairo_set_font_options(cairo, options);
    cairo_font_options_destroy(options);
}

// Few machines have the italic font, so italics are slanted upright letters: a sheet then looks the same
// everywhere.
void set_face(cairo_t* cairo, const TextStyle& style) {
    cairo_select_font_face(cairo, "DejaVu Serif", CAIRO_FONT_SLANT_NORMAL,
                           style.face == Typeface::kBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    const double slant = style.face == Typeface::kItalic ? kSlant : 0;
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, style.size, 0, -slant * style.size, style.size, 0, 0);
    cairo_set_font_matrix(cairo, &matrix);
}

}  // namespace

Canvas::Canvas(int width, int height, int background)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height), cairo_surface_destroy),
      cairo_(cairo_create(surface_.get()), cairo_destroy) {
    if (cairo_status(cairo_.get()) != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(std::string("cannot create the raster: ") +
                                 cairo_status_to_string(cairo_status(cairo_.get())));
    }
    set_up(cairo_.get());
    set_colour(cairo_.get(), background);
    cairo_paint(cairo_.get());
}

void Canvas::path(const Line& line, bool closed) {
    // Pixel centres are whole numbers here; in cairo they are at 0.5.
    for (const Pixel& p : line)
        cairo_line_to(cairo_.get(), p.x + 0.5, p.y + 0.5);
    if (closed)
        cairo_close_path(cairo_.get());
    else
        cairo_new_sub_path(cairo_.get());
}

void Canvas::stroke_path(int colour, double width) {
    set_colour(cairo_.get(), colour);
    cairo_set_line_width(cairo_.get(), width);
    cairo_stroke(cairo_.get());
}

void Canvas::fill(const Line& outline, int colour) {
    fill(std::vector<Line>{outline}, colour);
}

void Canvas::fill(const std::vector<Line>& outlines, int colour) {
    for (const Line& outline : outlines)
        path(outline, true);
    set_colour(cairo_.get(), colour);
    cairo_fill(cairo_.get());
}

void Canvas::stroke(const Line& line, int colour, double width) {
    path(line, false);
    stroke_path(colour, width);
}

void Canvas::stroke_closed(const Line& line, int colour, double width) {
    path(line, true);
    stroke_path(colour, width);
}

void Canvas::circle(Pixel middle, double radius, int colour, double width) {
    cairo_new_sub_path(cairo_.get());
    cairo_arc(cairo_.get(), middle.x + 0.5, middle.y + 0.5, radius, 0, 2 * kPi);
    stroke_path(colour, width);
}

void Canvas::text(const std::string& text, const TextStyle& style) {
    double x = style.at.x + 0.5;
    if (style.align == Align::kCentre) x -= text_width(text, style) / 2;
    if (style.align == Align::kRight) x -= text_width(text, style);
    set_face(cairo_.get(), style);
    cairo_text_extents_t capital;
    cairo_text_extents(cairo_.get(), "H", &capital);
    set_colour(cairo_.get(), style.colour);
    cairo_move_to(cairo_.get(), x, style.at.y + 0.5 + capital.height / 2);
    cairo_show_text(cairo_.get(), text.c_str());
    cairo_new_path(cairo_.get());
}

double Canvas::text_width(const std::string& text, const TextStyle& style) {
    set_face(cairo_.get(), style);
    cairo_text_extents_t extents;
    cairo_text_extents(cairo_.get(), text.c_str(), &extents);
    return extents.x_advance;
}

void Canvas::clip(const Line& outline) {
    cairo_save(cairo_.get());
    path(outline, true);
    cairo_clip(cairo_.get());
}

void Canvas::end_clip() {
    cairo_restore(cairo_.get());
}

int Canvas::width() const {
    return cairo_image_surface_get_width(surface_.get());
}

int Canvas::height() const {
    return cairo_image_surface_get_height(surface_.get());
}

const unsigned char* Canvas::line(int y) const {
    cairo_surface_flush(surface_.get());
    return cairo_image_surface_get_data(surface_.get()) +
           static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface_.get());
}

}  // namespace samples
