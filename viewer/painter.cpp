#include "viewer/painter.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace viewer {

namespace {

constexpr double kTurn = 2 * 3.14159265359;
constexpr double kPadding = 4;     // of a paper around its text, pixels
constexpr double kLineStep = 1.3;  // of the lettering's size

// The length of the UTF-8 character that a text begins with; 0 where it begins with none.
std::size_t character_length(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80) return 1;
    const std::size_t length = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : 2;
    if (byte(0) < 0xC0 || length > text.size()) return 0;
    unsigned code = byte(0) & 0xFFU >> (length + 1);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
        code = code << 6 | (byte(i) & 0x3F);
    }
    constexpr unsigned kFewest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool is_surrogate = code >= 0xD800 && code < 0xE000;
    return code >= kFewest[length] && code <= 0x10FFFF && !is_surrogate ? length : 0;
}

// A text as cairo takes it, which otherwise draws nothing more: what is no UTF-8 is taken for Latin 1, as
// charts have it, and what is longer than any bar is cut.
std::string presentable(std::string_view text) {
    constexpr std::size_t kLongest = 160;
    std::string out;
    while (!text.empty() && out.size() < kLongest) {
        const std::size_t length = character_length(text);
        if (length > 0) {
            out.append(text.substr(0, length));
        } else {
            out += static_cast<char>(0xC0 | static_cast<unsigned char>(text[0]) >> 6);
            out += static_cast<char>(0x80 | (static_cast<unsigned char>(text[0]) & 0x3F));
        }
        text.remove_prefix(length > 0 ? length : 1);
    }
    return out;
}

void set_face(cairo_t* cairo, const TextStyle& style) {
    cairo_select_font_face(cairo, style.face == Typeface::kFixed ? "DejaVu Sans Mono" : "DejaVu Sans",
                           CAIRO_FONT_SLANT_NORMAL,
                           style.face == Typeface::kBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, style.size);
}

}  // namespace

Painter::Painter(const Bitmap& picture)
    : surface_(cairo_image_surface_create_for_data(static_cast<unsigned char*>(picture.pixels),
                                                   CAIRO_FORMAT_RGB24, picture.width, picture.height,
                                                   static_cast<int>(picture.stride)),
               cairo_surface_destroy),
      cairo_(cairo_create(surface_.get()), cairo_destroy),
      size_{picture.width, picture.height} {
    cairo_set_line_join(cairo_.get(), CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(cairo_.get(), CAIRO_LINE_CAP_ROUND);
    cairo_save(cairo_.get());
}

void Painter::set_colour(Argb colour, double cover) {
    const auto channel = [&](int shift) { return (colour >> shift & 0xFF) / 255.0; };
    cairo_set_source_rgba(cairo_.get(), channel(16), channel(8), channel(0), cover);
}

// The middle of a pixel is a whole number here and half past one there.
void Painter::path(const std::vector<ScreenPixel>& spots) {
    cairo_new_path(cairo_.get());
    for (const ScreenPixel& spot : spots)
        cairo_line_to(cairo_.get(), spot.x + 0.5, spot.y + 0.5);
}

void Painter::stroke(const Pen& pen) {
    set_colour(pen.colour);
    cairo_set_line_width(cairo_.get(), pen.width);
    cairo_set_dash(cairo_.get(), &pen.dash, pen.dash > 0 ? 1 : 0, 0);
    cairo_stroke(cairo_.get());
}

void Painter::line(const std::vector<ScreenPixel>& spots, const Pen& pen) {
    path(spots);
    stroke(pen);
}

void Painter::circle(ScreenPixel middle, double radius, const Pen& pen) {
    cairo_new_path(cairo_.get());
    cairo_arc(cairo_.get(), middle.x + 0.5, middle.y + 0.5, radius, 0, kTurn);
    stroke(pen);
}

void Painter::box(ScreenPixel upper_left, ScreenSize size, const Paper& paper) {
    cairo_rectangle(cairo_.get(), upper_left.x, upper_left.y, size.width, size.height);
    set_colour(paper.colour, paper.cover);
    cairo_fill(cairo_.get());
}

ScreenSize Painter::text_size(const std::vector<std::string>& lines, const TextStyle& style) {
    set_face(cairo_.get(), style);
    double width = 0;
    for (const std::string& line : lines) {
        cairo_text_extents_t extents;
        cairo_text_extents(cairo_.get(), presentable(line).c_str(), &extents);
        width = std::max(width, extents.x_advance);
    }
    const double height = style.size * kLineStep * static_cast<double>(lines.size());
    return {static_cast<int>(std::ceil(width + 2 * kPadding)),
            static_cast<int>(std::ceil(height + kPadding))};
}

void Painter::text(ScreenPixel at, const std::vector<std::string>& lines, const TextStyle& style) {
    if (clips_) {
        if (cairo_in_clip(cairo_.get(), at.x + 0.5, at.y + 0.5)) after_clips_.push_back({at, lines, style});
        return;
    }
    const ScreenSize size = text_size(lines, style);
    const ScreenPixel corner{std::round(at.x - style.anchor.x * size.width),
                             std::round(at.y - style.anchor.y * size.height)};
    box(corner, size, style.paper);
    set_colour(style.paper.ink);
    double y = corner.y + kPadding / 2 + style.size;
    for (const std::string& line : lines) {
        cairo_move_to(cairo_.get(), corner.x + kPadding, std::round(y));
        cairo_show_text(cairo_.get(), presentable(line).c_str());
        y += style.size * kLineStep;
    }
    cairo_new_path(cairo_.get());
}

void Painter::clip() {
    cairo_clip(cairo_.get());
    clips_ = true;
}

void Painter::clip_to(const Box& box) {
    const double left = std::round(box.upper_left.x);
    const double top = std::round(box.upper_left.y);
    // Whole pixels, so that it stays a plain rectangle, which costs nothing.
    cairo_rectangle(cairo_.get(), left, top, std::round(box.lower_right.x) + 1 - left,
                    std::round(box.lower_right.y) + 1 - top);
    clip();
}

void Painter::clip_to(const std::vector<ScreenPixel>& outline) {
    path(outline);
    clip();
}

void Painter::clip_out(const std::vector<ScreenPixel>& outline) {
    path(outline);
    cairo_close_path(cairo_.get());
    cairo_rectangle(cairo_.get(), 0, 0, size_.width, size_.height);
    cairo_set_fill_rule(cairo_.get(), CAIRO_FILL_RULE_EVEN_ODD);
    clip();
}

void Painter::end_clips() {
    cairo_restore(cairo_.get());
    cairo_save(cairo_.get());
    clips_ = false;
    for (const Text& later : after_clips_)
        text(later.at, later.lines, later.style);
    after_clips_.clear();
}

bool Painter::save(const std::string& path) {
    cairo_surface_flush(surface_.get());
    return cairo_surface_write_to_png(surface_.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}

}  // namespace viewer
