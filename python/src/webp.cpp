#include "webp.h"

#include <algorithm>
#include <new>

#include <webp/encode.h>

namespace zellap10::python {

namespace {

constexpr int kEffort = 1;  // of 0 to 9: 6 is a tenth smaller and takes ten times as long

struct PictureFree {
    WebPPicture& picture;
    ~PictureFree() { WebPPictureFree(&picture); }
};

struct WriterClear {
    WebPMemoryWriter& writer;
    ~WriterClear() { WebPMemoryWriterClear(&writer); }
};

}  // namespace

std::string encode_webp(const plotter::Argb* pixels, int width, int height, std::size_t stride) {
    WebPConfig config;
    WebPPicture picture;
    if (WebPConfigInit(&config) == 0 || WebPPictureInit(&picture) == 0) throw std::bad_alloc();
    WebPConfigLosslessPreset(&config, kEffort);
    picture.use_argb = 1;
    picture.width = width;
    picture.height = height;
    const PictureFree free{picture};
    if (WebPPictureAlloc(&picture) == 0) throw std::bad_alloc();
    bool empty = true;
    for (int y = 0; y < height; ++y) {
        const plotter::Argb* row = pixels + static_cast<std::size_t>(y) * stride;
        std::copy(row, row + width, picture.argb + std::ptrdiff_t{y} * picture.argb_stride);
        empty = empty && std::all_of(row, row + width, [](plotter::Argb pixel) { return pixel == 0; });
    }
    if (empty) return {};
    WebPMemoryWriter writer;
    WebPMemoryWriterInit(&writer);
    const WriterClear clear{writer};
    picture.writer = WebPMemoryWrite;
    picture.custom_ptr = &writer;
    if (WebPEncode(&config, &picture) == 0) throw std::bad_alloc();
    return {reinterpret_cast<const char*>(writer.mem), writer.size};
}

}  // namespace zellap10::python
