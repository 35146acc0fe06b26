#include "png.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <new>

#include <libdeflate.h>

namespace zellap10::python {

using plotter::Argb;

namespace {

constexpr int kPalette = 3;
constexpr int kRgb = 2;
constexpr int kRgba = 6;
constexpr unsigned char kSubtractAbove = 2;

/// The index of each colour of a tile, by a hash table with open addressing.
class ColourIndexes {
public:
    /// The index of a colour, a new one if needed; -1 without room for it.
    int index_of(Argb colour, std::vector<Argb>& palette) {
        std::uint32_t slot = (colour * 2654435769U) >> 22U;
        while (indexes_[slot] >= 0) {
            if (colours_[slot] == colour) return indexes_[slot];
            slot = (slot + 1) % kSlots;
        }
        if (palette.size() == 256) return -1;
        colours_[slot] = colour;
        indexes_[slot] = static_cast<std::int16_t>(palette.size());
        palette.push_back(colour);
        return indexes_[slot];
    }

    ColourIndexes() { indexes_.fill(-1); }

private:
    static constexpr std::uint32_t kSlots = 1024;  // the 10 upper bits of the hash
    std::array<std::int16_t, kSlots> indexes_;
    std::array<Argb, kSlots> colours_;
};

void append_number(std::string& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<char>(value >> shift));
}

void append_chunk(std::string& bytes, const char* type, const void* data, std::size_t size) {
    append_number(bytes, static_cast<std::uint32_t>(size));
    const std::size_t start = bytes.size();
    bytes.append(type, 4);
    if (size > 0) bytes.append(static_cast<const char*>(data), size);
    append_number(bytes, libdeflate_crc32(0, bytes.data() + start, bytes.size() - start));
}

unsigned char part(Argb colour, int shift) {
    return static_cast<unsigned char>(colour >> shift);
}

}  // namespace

PngEncoder::PngEncoder(int width, int height, int level)
    : width_(static_cast<std::size_t>(width)),
      height_(static_cast<std::size_t>(height)),
      compressor_(libdeflate_alloc_compressor(level), libdeflate_free_compressor),
      indexes_(width_ * height_),
      rows_((width_ * 4 + 1) * height_) {
    if (compressor_ == nullptr) throw std::bad_alloc();
    compressed_.resize(libdeflate_zlib_compress_bound(compressor_.get(), rows_.size()));
}

std::string PngEncoder::encode(const Argb* pixels, std::size_t stride) {
    if (find_palette(pixels, stride)) {
        if (palette_.size() == 1 && palette_[0] == 0) return {};
        const std::size_t colours = palette_.size();
        const int bits = colours <= 2 ? 1 : colours <= 4 ? 2 : colours <= 16 ? 4 : 8;
        pack_indexes(bits);
        return file(bits, kPalette);
    }
    pack_colours(pixels, stride, !opaque_);
    return file(8, opaque_ ? kRgb : kRgba);
}

bool PngEncoder::find_palette(const Argb* pixels, std::size_t stride) {
    palette_.clear();
    ColourIndexes known;
    Argb all = 0xFF000000;
    bool fits = true;
    Argb before = ~pixels[0];
    int index = 0;
    unsigned char* to = indexes_.data();
    for (std::size_t y = 0; y < height_; ++y) {
        const Argb* row = pixels + y * stride;
        for (std::size_t x = 0; x < width_; ++x) {
            all &= row[x];
            if (!fits) continue;
            if (row[x] != before) {
                before = row[x];
                index = known.index_of(before, palette_);
                fits = index >= 0;
            }
            *to++ = static_cast<unsigned char>(index);
        }
    }
    opaque_ = all == (all | 0xFF000000);
    return fits;
}

/// The leftmost pixel is in the highest bits of a byte.
void PngEncoder::pack_indexes(int bits) {
    const auto in_byte = static_cast<std::size_t>(8 / bits);
    rows_.resize(height_ * (1 + (width_ + in_byte - 1) / in_byte));
    unsigned char* to = rows_.data();
    const unsigned char* from = indexes_.data();
    for (std::size_t y = 0; y < height_; ++y, from += width_) {
        *to++ = 0;
        for (std::size_t x = 0; x < width_; x += in_byte) {
            unsigned byte = 0;
            for (std::size_t i = 0; i < in_byte; ++i) {
                byte = byte << bits | (x + i < width_ ? from[x + i] : 0U);
            }
            *to++ = static_cast<unsigned char>(byte);
        }
    }
}

void PngEncoder::pack_colours(const Argb* pixels, std::size_t stride, bool alpha) {
    const std::size_t bytes = alpha ? 4 : 3;
    rows_.resize(height_ * (1 + width_ * bytes));
    unsigned char* to = rows_.data();
    const std::vector<Argb> none(width_, 0);
    const Argb* above = none.data();
    for (std::size_t y = 0; y < height_; ++y, above = pixels, pixels += stride) {
        *to++ = kSubtractAbove;
        for (std::size_t x = 0; x < width_; ++x) {
            const Argb a = pixels[x];
            const Argb b = above[x];
            *to++ = static_cast<unsigned char>(part(a, 16) - part(b, 16));
            *to++ = static_cast<unsigned char>(part(a, 8) - part(b, 8));
            *to++ = static_cast<unsigned char>(part(a, 0) - part(b, 0));
            if (alpha) *to++ = static_cast<unsigned char>(part(a, 24) - part(b, 24));
        }
    }
}

std::string PngEncoder::file(int bits, int colour_type) {
    const std::size_t size = libdeflate_zlib_compress(compressor_.get(), rows_.data(), rows_.size(),
                                                      compressed_.data(), compressed_.size());
    std::string bytes("\x89PNG\r\n\x1a\n", 8);
    std::string header;
    append_number(header, static_cast<std::uint32_t>(width_));
    append_number(header, static_cast<std::uint32_t>(height_));
    for (const int value : {bits, colour_type, 0, 0, 0})
        header.push_back(static_cast<char>(value));
    append_chunk(bytes, "IHDR", header.data(), header.size());
    if (colour_type == kPalette) {
        std::string colours;
        std::string alphas;
        for (const Argb colour : palette_) {
            for (const int shift : {16, 8, 0})
                colours.push_back(static_cast<char>(part(colour, shift)));
            alphas.push_back(static_cast<char>(part(colour, 24)));
        }
        append_chunk(bytes, "PLTE", colours.data(), colours.size());
        if (!opaque_) append_chunk(bytes, "tRNS", alphas.data(), alphas.size());
    }
    append_chunk(bytes, "IDAT", compressed_.data(), size);
    append_chunk(bytes, "IEND", nullptr, 0);
    return bytes;
}

}  // namespace zellap10::python
