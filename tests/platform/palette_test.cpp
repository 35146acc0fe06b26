#include <zellap10/platform/palette.h>

#include <gtest/gtest.h>

namespace {

TEST(PaletteObject, GivesItsColoursBack) {
    LOGPALETTE256 colours;
    colours.palNumEntries = 256;
    for (int i = 0; i < 256; ++i) {
        const auto value = static_cast<unsigned char>(i);
        colours.palPalEntry[i] = {value, static_cast<unsigned char>(255 - i), 7, 0};
    }
    const HPALETTE palette = CreatePalette(&colours);
    ASSERT_NE(palette, nullptr);
    PALETTEENTRY entries[256] = {};
    EXPECT_EQ(GetPaletteEntries(palette, 0, 0, nullptr), 256u);
    EXPECT_EQ(GetPaletteEntries(palette, 250, 100, entries), 6u);
    EXPECT_EQ(entries[5].peRed, 255);
    EXPECT_EQ(entries[5].peGreen, 0);
    EXPECT_EQ(entries[6].peBlue, 0);  // behind the palette's end: not written
    EXPECT_EQ(GetPaletteEntries(palette, 256, 1, entries), 0u);
    EXPECT_NE(DeleteObject(palette), 0);
}

}  // namespace
