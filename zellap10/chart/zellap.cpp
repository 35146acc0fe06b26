#include <zellap10/chart/zellap.h>

#include <utility>

#include <zellap10/chart/line_table.h>

namespace {

// A text stream that is open for as long as this object lives.
class OpenText {
public:
    OpenText(std::ifstream& stream, const char* path) : stream_(stream) {
        stream.clear();
        // Binary, because the rules of the text are the library's own and not the system's.
        stream.open(path, std::ios::in | std::ios::binary);
    }
    ~OpenText() {
        if (stream_.is_open()) stream_.close();
    }
    OpenText(const OpenText&) = delete;
    OpenText& operator=(const OpenText&) = delete;

private:
    std::ifstream& stream_;
};

}  // namespace

CZellap::CZellap() : Version("1.0") {}

CZellap::~CZellap() {
    CZellap::CloseZellap();
}

int CZellap::OpenZellap(const char* path, int infoOnly) {
    using zellap10::chart::BinaryPart;
    using zellap10::chart::File;

    if (path == nullptr) return 0;
    Path = path;
    {
        const OpenText text(TextStream, path);
        if (!TextStream.is_open()) return 0;
        ReadHeader(infoOnly);
    }
    // The georeference file that stands beside the chart is to be read here.
    if (infoOnly != 0) return 1;

    File file(std::fopen(path, "rb"));
    BinaryPart part;
    if (file == nullptr || !zellap10::chart::read_binary_part(file.get(), Height, part)) return 0;
    BuildPal();
    BuildPalIndex();

    // Nothing can fail from here on, so that a refusal leaves what was open before.
    BitsPerPixel = part.bits_per_pixel;
    ColourShift = 7 - BitsPerPixel;
    RunMask = (1 << ColourShift) - 1;
    ColourMask = ((1 << BitsPerPixel) - 1) << ColourShift;
    LineCount = part.line_count;
    LineOffsets = part.line_offsets.release();
    ChartFile = file.release();
    return 1;
}

void CZellap::CloseZellap() {
    if (TextStream.is_open()) TextStream.close();
    if (ChartFile != nullptr) std::fclose(std::exchange(ChartFile, nullptr));
    if (PaletteHandle != nullptr) DeleteObject(std::exchange(PaletteHandle, nullptr));
    delete[] std::exchange(LineOffsets, nullptr);
}

CSize CZellap::GetDocumentSize() const {
    return {Width, Height};
}

HPALETTE CZellap::GetPaletteHandle() const {
    return PaletteHandle;
}
