#include "formats/palette_file.h"

#include "base/config.h"
#include "model/colours.h"

#include "support/clean_car.h"

namespace {
using Palette = std::array<std::uint32_t, 256>;

Palette numbered_palette() {
    Palette palette{};
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = static_cast<std::uint32_t>(0x12345678 * (i + 1));
    return palette;
}

class PaletteFile : public CleanCar {
protected:
    PaletteFile() { PROGDIR = directory.path() + "/"; }
};
} // namespace

TEST(PaletteFormat, EncodesExactBytes) {
    Palette palette{};
    palette[0] = 0xFF102030;
    palette[255] = 0x00000001;
    const Bytes file = encode_palette(palette);
    EXPECT_EQ(file.size(), 1024U);
    EXPECT_EQ(first_bytes(file, 5), byte_list({0x30, 0x20, 0x10, 0xFF, 0}));
    EXPECT_EQ(last_bytes(file, 5), byte_list({0, 1, 0, 0, 0}));
}

TEST(PaletteFormat, DecodesWhatItEncodedAlphaIncluded) {
    Palette palette{};
    decode_palette(encode_palette(numbered_palette()), palette);
    EXPECT_EQ(palette, numbered_palette());
}

TEST(PaletteFormat, CutAtEveryByteLeavesTheEntriesPastItsEnd) {
    const Bytes file = encode_palette(numbered_palette());
    for (std::size_t length = 0; length <= file.size(); ++length) {
        Palette palette;
        palette.fill(7);
        decode_palette(first_bytes(file, length), palette);
        for (std::size_t i = 0; i < palette.size(); ++i)
            ASSERT_EQ(palette[i], i < length / 4 ? numbered_palette()[i] : 7U) << length << " bytes, entry " << i;
    }
}

TEST(PaletteFormat, WordsPastTheLastEntryAreLeftOut) {
    Palette palette{};
    decode_palette(joined({encode_palette(numbered_palette()), bytes_of("more")}), palette);
    EXPECT_EQ(palette, numbered_palette());
}

TEST_F(PaletteFile, LoadsFromTheProgramsDirectory) {
    put_file(directory / "vortag.col", encode_palette(numbered_palette()));
    LOADPALETTE();
    EXPECT_EQ(PAL, numbered_palette());
    EXPECT_EQ(FILE_FILE, "");
    EXPECT_SUCCESS();
}

TEST_F(PaletteFile, MissingFileIsSilentAndLeavesThePalette) {
    PAL = numbered_palette();
    LOADPALETTE();
    std::filesystem::create_directory(directory / "vortag.col");
    LOADPALETTE();
    EXPECT_EQ(PAL, numbered_palette());
    EXPECT_EQ(FILE_FILE, "");
    EXPECT_SUCCESS();
}
