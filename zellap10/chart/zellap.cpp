#include "zellap10/chart/zellap.h"

#include <utility>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/chart/header.h>
#include <zellap10/chart/layout.h>
#include <zellap10/chart/line_table.h>
#include <zellap10/georef/points.h>
#include <zellap10/platform/file.h>

CZellap::CZellap() : Version("1.0") {}

CZellap::~CZellap() {
    CZellap::CloseZellap();
}

int CZellap::OpenZellap(const char* path, int infoOnly) {
    using namespace zellap10::chart;

    if (path == nullptr) return 0;
    Path = path;
    path = Path;  // the argument may be a text of this object, which may change below
    try {
        if (!zellap10::platform::open_for_reading(TextStream, path)) return 0;
        const Header header = read_header(*this);
        TextStream.close();
        File file;
        BinaryPart part;
        if (infoOnly == 0) {
            file.reset(std::fopen(path, "rb"));
            if (file == nullptr || !read_binary_part(file.get(), header.height, part)) return 0;
        }
        // Only Path has changed so far. From here on, the open cannot return 0.
        take_header(header, infoOnly, *this);
        BaseRec.ReadGEO(georeference_path(path).c_str(), infoOnly);
        if (infoOnly != 0) return 1;
        BuildPal();
        BuildPalIndex();
        BitsPerPixel = part.bits_per_pixel;
        ColourShift = 7 - BitsPerPixel;
        RunMask = (1 << ColourShift) - 1;
        ColourMask = ((1 << BitsPerPixel) - 1) << ColourShift;
        LineCount = part.line_count;
        LineOffsets = part.line_offsets.release();
        ChartFile = file.release();
    } catch (...) {
        CloseZellap();
        throw;
    }
    return 1;
}

void CZellap::CloseZellap() {
    if (TextStream.is_open()) TextStream.close();
    zellap10::chart::File(std::exchange(ChartFile, nullptr)).reset();
    if (PaletteHandle != nullptr) DeleteObject(std::exchange(PaletteHandle, nullptr));
    delete[] std::exchange(LineOffsets, nullptr);
    zellap10::georef::delete_all(BaseRec.Insets);
    zellap10::georef::delete_all(BaseRec.Vertices);
    zellap10::georef::delete_all(BaseRec.Points);
}

CSize CZellap::GetDocumentSize() const {
    return {Width, Height};
}

HPALETTE CZellap::GetPaletteHandle() const {
    return PaletteHandle;
}

CGEORec* CZellap::GetBaseGeoRec() {
    return &BaseRec;
}
