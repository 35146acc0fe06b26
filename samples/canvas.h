#pragma once

#include <memory>
#include <string>
#include <vector>

#include <cairo.h>

#include <samples/layout.h>

/// A raster of colour indexes to draw on, without anti-aliasing.
namespace samples {

using Line = std::vector<Pixel>;

enum class Typeface { kUpright, kBold, kItalic };
enum class Align { kLeft, kCentre, kRight };

/// The place and the look of a text.
struct TextStyle {
    Pixel at;         ///< half the height of the capitals; left, middle or right by `align`
    double size = 0;  ///< of the typeface, pixels
    int colour = 0;
    Typeface face = Typeface::kUpright;
    Align align = Align::kCentre;
};

class Canvas {
public:
    /// Throws std::runtime_error if cairo cannot create the raster.
    Canvas(int width, int height, int background);

    void fill(const Line& outline, int colour);
    void fill(const std::vector<Line>& outlines, int colour);  ///< even-odd
    void stroke(const Line& line, int colour, double width);
    void stroke_closed(const Line& line, int colour, double width);
    void circle(Pixel middle, double radius, int colour, double width);
    void text(const std::string& text, const TextStyle& style);
    double text_width(const std::string& text, const TextStyle& style);

    /// Restricts drawing to the inside of an outline, until end_clip.
    void clip(const Line& outline);
    void end_clip();

    int width() const;
    int height() const;
    /// The colour indexes of one line.
    const unsigned char* line(int y) const;

private:
    void path(const Line& line, bool closed);
    void stroke_path(int colour, double width);

    std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface_;
    std::unique_ptr<cairo_t, void (*)(cairo_t*)> cairo_;
};

}  // namespace samples
