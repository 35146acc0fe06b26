#include "viewer/painter.h"

#include <algorithm>
#include <cmath>
#include <new>

#include <zellap10/plotter/text.h>

namespace viewer {

namespace {

constexpr double kTurn = 2 * 3.14159265359;
constexpr double kPadding = 4;         // of a paper around its text
constexpr double kLineStep = 1.3;      // of the text's size
constexpr std::size_t kLongest = 160;  // bytes of a line of text, which cairo draws only if it is UTF-8
constexpr std::size_t kMostLabels = 400;

void set_face(cairo_t* cairo, const TextStyle& style, double scale) {
    cairo_select_font_face(cairo, style.face == Typeface::kFixed ? "DejaVu Sans Mono" : "DejaVu Sans",
                           CAIRO_FONT_SLANT_NORMAL,
                           style.face == Typeface::kBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, style.size * scale);
}

}  // namespace

Painter::Painter(const Bitmap& bitmap, double scale, bool soft)
    : surface_(
          cairo_image_surface_create_for_data(static_cast<unsigned char*>(bitmap.pixels), CAIRO_FORMAT_RGB24,
                                              bitmap.width, bitmap.height, static_cast<int>(bitmap.stride)),
          cairo_surface_destroy),
      cairo_(cairo_create(surface_.get()), cairo_destroy),
      size_{bitmap.width, bitmap.height},
      scale_(scale),
      soft_(soft) {
    cairo_set_line_join(cairo_.get(), CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(cairo_.get(), CAIRO_LINE_CAP_ROUND);
    cairo_save(cairo_.get());
}

void Painter::set_colour(Argb colour, double cover) {
    const auto channel = [&](int shift) { return (colour >> shift & 0xFF) / 255.0; };
    cairo_set_source_rgba(cairo_.get(), channel(16), channel(8), channel(0), cover);
}

// The centre of a pixel is a whole number here and half past one there.
void Painter::path(const std::vector<ScreenPixel>& pixels) {
    cairo_new_path(cairo_.get());
    for (const ScreenPixel pixel : pixels)
        cairo_line_to(cairo_.get(), pixel.x + 0.5, pixel.y + 0.5);
}

void Painter::stroke(const Pen& pen) {
    const double dash = pen.dash * scale_;
    set_colour(pen.colour);
    cairo_set_line_width(cairo_.get(), pen.width * scale_);
    cairo_set_dash(cairo_.get(), &dash, dash > 0 ? 1 : 0, 0);
    cairo_set_antialias(cairo_.get(), pen.soft && soft_ ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
    cairo_stroke(cairo_.get());
    cairo_set_antialias(cairo_.get(), CAIRO_ANTIALIAS_DEFAULT);
}

// In pieces, since the time of cairo grows faster than the number of edges.
void Painter::line(const std::vector<ScreenPixel>& pixels, const Pen& pen) {
    constexpr std::size_t kPiece = 64;
    for (std::size_t first = 0; first + 1 < pixels.size(); first += kPiece) {
        const auto begin = pixels.begin() + static_cast<std::ptrdiff_t>(first);
        const std::size_t count = std::min(kPiece + 1, pixels.size() - first);
        path({begin, begin + static_cast<std::ptrdiff_t>(count)});
        stroke(pen);
    }
}

void Painter::polygon(const std::vector<ScreenPixel>& corners, Argb colour, const Pen& edge) {
    path(corners);
    cairo_close_path(cairo_.get());
    set_colour(colour);
    cairo_fill_preserve(cairo_.get());
    stroke(edge);
}

void Painter::circle(ScreenPixel middle, double radius, const Pen& pen) {
    cairo_new_path(cairo_.get());
    cairo_arc(cairo_.get(), middle.x + 0.5, middle.y + 0.5, radius * scale_, 0, kTurn);
    stroke(pen);
}

void Painter::box(const Box& box, Argb colour, double cover) {
    cairo_rectangle(cairo_.get(), box.upper_left.x, box.upper_left.y, box.lower_right.x - box.upper_left.x,
                    box.lower_right.y - box.upper_left.y);
    set_colour(colour, cover);
    cairo_fill(cairo_.get());
}

Box Painter::text_box(ScreenPixel at, const std::vector<std::string>& lines, const TextStyle& style) {
    set_face(cairo_.get(), style, scale_);
    double width = 0;
    for (const std::string& line : lines) {
        cairo_text_extents_t extents;
        cairo_text_extents(cairo_.get(), utf8_text(line, kLongest).c_str(), &extents);
        width = std::max(width, extents.x_advance);
    }
    width = std::ceil(width + 2 * kPadding * scale_);
    const double height =
        std::ceil(scale_ * (style.size * kLineStep * static_cast<double>(lines.size()) + kPadding));
    const ScreenPixel corner{std::round(at.x - style.anchor.x * width),
                             std::round(at.y - style.anchor.y * height)};
    return {corner, {corner.x + width, corner.y + height}};
}

Box Painter::text(ScreenPixel at, const std::vector<std::string>& lines, const TextStyle& style) {
    const Box covered = text_box(at, lines, style);
    box(covered, style.paper.colour, style.paper.cover);
    set_colour(style.paper.ink);
    double y = covered.upper_left.y + scale_ * (kPadding / 2 + style.size);
    for (const std::string& line : lines) {
        cairo_move_to(cairo_.get(), covered.upper_left.x + kPadding * scale_, std::round(y));
        cairo_show_text(cairo_.get(), utf8_text(line, kLongest).c_str());
        y += style.size * kLineStep * scale_;
    }
    cairo_new_path(cairo_.get());
    keep_free(covered);
    return covered;
}

void Painter::label(ScreenPixel at, const std::string& text, const TextStyle& style, Rank rank) {
    if (!cairo_in_clip(cairo_.get(), at.x + 0.5, at.y + 0.5)) return;
    if (labels_.size() < 4 * kMostLabels) labels_.push_back({at, text, style, rank});
}

void Painter::draw_labels() {
    std::stable_sort(labels_.begin(), labels_.end(),
                     [](const Label& a, const Label& b) { return a.rank < b.rank; });
    labels_.resize(std::min(labels_.size(), kMostLabels), {});
    for (const Label& label : labels_) {
        Box wanted = text_box(label.at, {label.text}, label.style);
        // Into the bitmap, if its edge would cut it.
        const auto inward = [](double from, double to, double size) {
            return std::max(std::min(0.0, size - to), -from);
        };
        const ScreenPixel at{label.at.x + inward(wanted.upper_left.x, wanted.lower_right.x, size_.width),
                             label.at.y + inward(wanted.upper_left.y, wanted.lower_right.y, size_.height)};
        wanted = text_box(at, {label.text}, label.style);
        const auto overlaps = [&](const Box& taken) { return !shared_part(wanted, taken).is_empty(); };
        if (std::none_of(taken_.begin(), taken_.end(), overlaps)) text(at, {label.text}, label.style);
    }
    labels_.clear();
}

void Painter::clip_to(const Box& box) {
    const double left = std::round(box.upper_left.x);
    const double top = std::round(box.upper_left.y);
    // A rectangle of complete pixels costs nothing.
    cairo_rectangle(cairo_.get(), left, top, std::round(box.lower_right.x) + 1 - left,
                    std::round(box.lower_right.y) + 1 - top);
    cairo_clip(cairo_.get());
}

void Painter::clip_to(const std::vector<ScreenPixel>& outline) {
    path(outline);
    cairo_clip(cairo_.get());
}

void Painter::clip_out(const std::vector<ScreenPixel>& outline) {
    path(outline);
    cairo_close_path(cairo_.get());
    cairo_rectangle(cairo_.get(), 0, 0, size_.width, size_.height);
    cairo_set_fill_rule(cairo_.get(), CAIRO_FILL_RULE_EVEN_ODD);
    cairo_clip(cairo_.get());
}

void Painter::end_clips() {
    cairo_restore(cairo_.get());
    cairo_save(cairo_.get());
}

std::string Painter::png() {
    cairo_surface_flush(surface_.get());
    std::string bytes;
    const auto append = [](void* to, const unsigned char* data, unsigned length) {
        try {
            static_cast<std::string*>(to)->append(reinterpret_cast<const char*>(data), length);
        } catch (const std::bad_alloc&) {
            return CAIRO_STATUS_NO_MEMORY;
        }
        return CAIRO_STATUS_SUCCESS;
    };
    const bool written =
        cairo_surface_write_to_png_stream(surface_.get(), append, &bytes) == CAIRO_STATUS_SUCCESS;
    return written ? bytes : std::string();
}

}  // namespace viewer
