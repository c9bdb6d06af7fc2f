#include "image/dds.h"
#include "support/picture_bytes.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Pixels = std::vector<std::uint32_t>;
constexpr PictureSize most{4096, 4096};

Pixels pixels_of(const dds::Form& form, const Bytes& data) {
    const ImageHandle image = decode_dds(dds::file(form, data), most);
    Pixels pixels;
    for (int y = 0; image && y < image->height(); ++y)
        for (int x = 0; x < image->width(); ++x)
            pixels.push_back(image->pixel(x, y));
    return pixels;
}

// A block of colours: two of 5-6-5 and two bits a pixel.
Bytes colours(int first, int second, std::uint32_t choices) {
    ByteWriter writer;
    writer.u16(static_cast<std::uint16_t>(first));
    writer.u16(static_cast<std::uint16_t>(second));
    writer.u32(choices);
    return writer.take();
}

constexpr int red = 0xF800, blue = 0x001F;
constexpr std::uint32_t in_turn = 0xE4; // pixel i takes choice i, in the first row

} // namespace

TEST(Dds, WholeValuesAreTakenApartByTheirMasks) {
    EXPECT_EQ(pixels_of({}, byte_list({3, 2, 1, 4})), (Pixels{0x04010203}));
    EXPECT_EQ(pixels_of({.flags = 0x40}, byte_list({3, 2, 1, 4})), (Pixels{0xFF010203}));
    EXPECT_EQ(pixels_of({.masks = {0xFF, 0xFF00, 0xFF0000, 0xFF000000}}, byte_list({1, 2, 3, 4})),
              (Pixels{0x04010203}));
    EXPECT_EQ(pixels_of({.bits = 24, .masks = {0xFF0000, 0xFF00, 0xFF, 0}}, byte_list({3, 2, 1})),
              (Pixels{0xFF010203}));
    EXPECT_EQ(pixels_of({.bits = 16, .masks = {0xF800, 0x07E0, 0x1F, 0}}, byte_list({0xE0, 0x07})),
              (Pixels{0xFF00FF00}));
    EXPECT_EQ(pixels_of({.bits = 16, .masks = {0xF00, 0xF0, 0xF, 0xF000}}, byte_list({0x3F, 0x82})),
              (Pixels{0x882233FF}));
    EXPECT_EQ(pixels_of({.bits = 8, .masks = {0xE0, 0x1C, 0x03, 0}}, byte_list({0xE3})), (Pixels{0xFFFF00FF}));
}

TEST(Dds, RowsFollowEachOtherFromTheTop) {
    EXPECT_EQ(pixels_of({.width = 1, .height = 2}, byte_list({1, 1, 1, 255, 2, 2, 2, 255})),
              (Pixels{0xFF010101, 0xFF020202}));
}

TEST(Dds, Dxt1HasFourColoursOrThreeAndAHole) {
    EXPECT_EQ(pixels_of({.width = 4, .code = "DXT1"}, colours(red, blue, in_turn)),
              (Pixels{0xFFFF0000, 0xFF0000FF, 0xFFAA0055, 0xFF5500AA}));
    EXPECT_EQ(pixels_of({.width = 4, .code = "DXT1"}, colours(blue, red, in_turn)),
              (Pixels{0xFF0000FF, 0xFFFF0000, 0xFF7F007F, 0}));
}

TEST(Dds, Dxt3HasFourBitsOfAlphaAndNoHole) {
    const Bytes block = joined({byte_list({0x10, 0xF8, 0, 0, 0, 0, 0, 0}), colours(blue, red, in_turn)});
    EXPECT_EQ(pixels_of({.width = 4, .code = "DXT3"}, block), (Pixels{0x000000FF, 0x11FF0000, 0x885500AA, 0xFFAA0055}));
}

TEST(Dds, Dxt5MixesItsAlphas) {
    // Choices 0 to 3 in the first row: three bits each, the first one lowest.
    const Bytes down = joined({byte_list({210, 0, 0x88, 0x06, 0, 0, 0, 0}), colours(red, red, 0)});
    EXPECT_EQ(pixels_of({.width = 4, .code = "DXT5"}, down), (Pixels{0xD2FF0000, 0x00FF0000, 0xB4FF0000, 0x96FF0000}));
    // Choices 0, 1, 6, 7: with the first one not the larger, nothing and all.
    const Bytes up = joined({byte_list({10, 20, 0x88, 0x0F, 0, 0, 0, 0}), colours(red, red, 0)});
    EXPECT_EQ(pixels_of({.width = 4, .code = "DXT5"}, up), (Pixels{0x0AFF0000, 0x14FF0000, 0x00FF0000, 0xFFFF0000}));
}

TEST(Dds, BlocksAtTheEdgesAreCut) {
    const Bytes four =
        joined({colours(red, red, 0), colours(blue, blue, 0), colours(blue, blue, 0), colours(red, red, 0)});
    const ImageHandle image = decode_dds(dds::file({.width = 5, .height = 6, .code = "DXT1"}, four), most);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixel(3, 3), 0xFFFF0000);
    EXPECT_EQ(image->pixel(4, 3), 0xFF0000FF);
    EXPECT_EQ(image->pixel(0, 5), 0xFF0000FF);
    EXPECT_EQ(image->pixel(4, 5), 0xFFFF0000);
    EXPECT_EQ(image->pitch() % 16, 0U);
}

TEST(Dds, CutAnywhereAreNone) {
    const std::vector<Bytes> files = {
        dds::file({.width = 3, .height = 2}, counting_bytes(24)),
        dds::file({.width = 5, .height = 4, .code = "DXT1"}, counting_bytes(16)),
        dds::file({.width = 4, .height = 4, .code = "DXT5"}, counting_bytes(16)),
    };
    for (const Bytes& file : files) {
        EXPECT_TRUE(decode_dds(file, most));
        for (std::size_t length = 0; length < file.size(); ++length)
            ASSERT_FALSE(decode_dds(first_bytes(file, length), most)) << length;
    }
}

TEST(Dds, OfOtherFormatsAndSizesAreNone) {
    const Bytes data(4096);
    for (const std::string_view code : {"DXT2", "DXT4", "DX10", "ATI2"})
        EXPECT_FALSE(decode_dds(dds::file({.code = code}, data), most)) << code;
    for (const int bits : {0, 1, 12, 40, 64, 1 << 30})
        EXPECT_FALSE(decode_dds(dds::file({.bits = bits}, data), most)) << bits;
    EXPECT_FALSE(decode_dds(dds::file({.flags = 0x20000}, data), most)); // luminance
    EXPECT_FALSE(decode_dds(dds::file({.width = 0}, data), most));
    EXPECT_FALSE(decode_dds(dds::file({.height = 0}, data), most));
    EXPECT_FALSE(decode_dds(dds::file({.width = 4097}, data), most));
    EXPECT_FALSE(decode_dds(dds::file({.width = -1, .height = -1}, data), most));
    EXPECT_EQ(dds_size(dds::file({.width = 65000, .height = 65000}, {}))->width, 65000);
    EXPECT_FALSE(dds_size(bytes_of("DDS ")));
}
