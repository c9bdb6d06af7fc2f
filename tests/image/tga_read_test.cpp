// Reading TGA images: every row of the table of variants, every refusal, every kind of damage.
#include "image/tga.h"

#include "support/temporary_directory.h"
#include "support/tga_words.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TargaPicture decode(const Bytes& file) {
    TargaPicture result = decode_targa(file);
    EXPECT_EQ(result.image == nullptr, result.error != 0);
    return result;
}

using ColourMap = std::vector<TargaEntry>;

std::vector<std::uint32_t> pixels_of(const Image& image) {
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            pixels.push_back(image.pixel(x, y));
    return pixels;
}

std::vector<std::uint32_t> decoded_pixels(const TargaFields& fields, const Bytes& data) {
    const auto decoded = decode(joined({targa_header(fields), data}));
    EXPECT_EQ(decoded.error, 0);
    return decoded.image ? pixels_of(*decoded.image) : std::vector<std::uint32_t>{};
}

using Pixels = std::vector<std::uint32_t>;

TEST(TargaReader, Type10Depth32WithAlphaBits) {
    EXPECT_EQ(decoded_pixels({.image_type = 10, .width = 3, .height = 1, .depth = 32, .descriptor = 0x28},
                             byte_list({0x81, 1, 2, 3, 4, 0x00, 5, 6, 7, 8})),
              (Pixels{0x04030201, 0x04030201, 0x08070605}));
}

TEST(TargaReader, Type10Depth24BecomesOpaque) {
    EXPECT_EQ(decoded_pixels({.image_type = 10, .width = 3, .height = 1, .depth = 24},
                             byte_list({0x01, 1, 2, 3, 4, 5, 6, 0x80, 7, 8, 9})),
              (Pixels{0xFF030201, 0xFF060504, 0xFF090807}));
}

TEST(TargaReader, Type2Depth32WithAlphaBits) {
    EXPECT_EQ(decoded_pixels({.image_type = 2, .width = 2, .height = 1, .depth = 32, .descriptor = 0x21},
                             byte_list({1, 2, 3, 4, 5, 6, 7, 8})),
              (Pixels{0x04030201, 0x08070605}));
}

// Four bytes are read for a pixel of three, but for the last one of what there is.
TEST(TargaReader, Type2Depth24OfEveryLengthBecomesOpaque) {
    for (int width = 1; width <= 9; ++width) {
        Pixels expected;
        for (int x = 0; x < width; ++x)
            expected.push_back(0xFF000000u | static_cast<unsigned>((3 * x + 3) << 16 | (3 * x + 2) << 8 | (3 * x + 1)));
        Bytes data;
        for (int i = 1; i <= 3 * width; ++i)
            data.push_back(static_cast<std::byte>(i));
        EXPECT_EQ(decoded_pixels({.image_type = 2, .width = width, .height = 1, .depth = 24}, data), expected);
        data.pop_back(); // the last pixel lacks a byte
        expected.back() = 0;
        EXPECT_EQ(decoded_pixels({.image_type = 2, .width = width, .height = 1, .depth = 24}, data), expected);
    }
}

TEST(TargaReader, Type2Depth24BecomesOpaque) {
    EXPECT_EQ(decoded_pixels({.image_type = 2, .width = 2, .height = 1, .depth = 24}, byte_list({1, 2, 3, 4, 5, 6})),
              (Pixels{0xFF030201, 0xFF060504}));
}

// ODDITY targa-16-bit-paths-differ
TEST(TargaReader, The16BitPathsDifferOnPurpose) {
    for (const int alpha : {0, 1, 15}) {
        const TargaFields plain{.image_type = 2, .width = 2, .height = 1, .depth = 16, .descriptor = 0x20 | alpha};
        TargaFields packed = plain;
        packed.image_type = 10;
        // 0xFFFF and 0x8421: as they are, and as 5-6-5 without the top bit.
        EXPECT_EQ(decoded_pixels(plain, byte_list({0xFF, 0xFF, 0x21, 0x84})), (Pixels{0xFFFF, 0x8421}));
        EXPECT_EQ(decoded_pixels(packed, byte_list({0x01, 0xFF, 0xFF, 0x21, 0x84})), (Pixels{0xFFDF, 0x0841}));
        EXPECT_EQ(decoded_pixels(packed, byte_list({0x81, 0x20, 0x7C})), (Pixels{0xF840, 0xF840}));
    }
}

TEST(TargaReader, Type9Depth8WithItsColourMap) {
    for (const int entry_bytes : {3, 4}) {
        const TargaFields fields{.map_type = 1,
                                 .image_type = 9,
                                 .map_first = 2,
                                 .map_length = 2,
                                 .map_entry_bits = entry_bytes * 8,
                                 .width = 3,
                                 .height = 1,
                                 .depth = 8};
        const Bytes map =
            entry_bytes == 3 ? byte_list({10, 11, 12, 20, 21, 22}) : byte_list({10, 11, 12, 13, 20, 21, 22, 23});
        const auto decoded = decode(joined({targa_header(fields), map, byte_list({0x81, 2, 0x00, 3})}));
        ASSERT_EQ(decoded.error, 0);
        EXPECT_EQ(decoded.image->bytes_per_pixel(), 1);
        EXPECT_EQ(pixels_of(*decoded.image), (Pixels{2, 2, 3}));
        EXPECT_EQ(decoded.first_entry, 2u);
        EXPECT_EQ(decoded.colour_map, (ColourMap{{10, 11, 12}, {20, 21, 22}}));
    }
}

// One entry, of index 7.
Bytes file_with_a_colour_map() {
    const TargaFields fields{
        .map_type = 1, .image_type = 9, .map_first = 7, .map_length = 1, .map_entry_bits = 24, .depth = 8};
    return joined({targa_header(fields), byte_list({10, 20, 30}), byte_list({0, 7})});
}

TEST(TargaReader, DecodingTouchesNoPaletteOfTheProgram) {
    const std::uint32_t before = palette_entry(7);
    EXPECT_EQ(decode(file_with_a_colour_map()).colour_map, (ColourMap{{10, 20, 30}}));
    EXPECT_EQ(palette_entry(7), before);
}

TEST(TargaReader, ColourMapIsCutAtEntry256AndAtTheEndOfTheFile) {
    const TargaFields past{
        .map_type = 1, .image_type = 9, .map_first = 255, .map_length = 65535, .map_entry_bits = 24, .depth = 8};
    EXPECT_EQ(decode(joined({targa_header(past), byte_list({1, 2, 3, 4, 5, 6})})).colour_map, (ColourMap{{1, 2, 3}}));
    const TargaFields far{
        .map_type = 1, .image_type = 9, .map_first = 65535, .map_length = 65535, .map_entry_bits = 24, .depth = 8};
    EXPECT_EQ(decode(joined({targa_header(far), counting_bytes(30)})).colour_map, ColourMap());
    const TargaFields cut{.map_type = 1, .image_type = 9, .map_length = 3, .map_entry_bits = 32, .depth = 8};
    const auto partly = decode(joined({targa_header(cut), byte_list({1, 2, 3, 4, 5, 6, 7})}));
    EXPECT_EQ(partly.colour_map, (ColourMap{{1, 2, 3}})) << "the second entry lacks a byte";
}

TEST(TargaReader, IdFieldAndColourMapAreSteppedOver) {
    const TargaFields fields{.id_length = 3, .map_type = 1, .image_type = 2, .map_length = 2, .map_entry_bits = 15};
    // 15 bits are one whole byte an entry here: 2 bytes of map.
    EXPECT_EQ(decoded_pixels(fields, byte_list({90, 91, 92, 80, 81, 1, 2, 3})), (Pixels{0xFF030201}));
    TargaFields without = fields;
    without.map_type = 0;
    EXPECT_EQ(decoded_pixels(without, byte_list({90, 91, 92, 1, 2, 3})), (Pixels{0xFF030201}));
}

TEST(TargaReader, RowsAreBottomUpUnlessDescriptorBit5IsSet) {
    const Bytes data = byte_list({1, 1, 1, 2, 2, 2, 3, 3, 3});
    EXPECT_EQ(decoded_pixels({.height = 3, .descriptor = 0}, data), (Pixels{0xFF030303, 0xFF020202, 0xFF010101}));
    EXPECT_EQ(decoded_pixels({.height = 3, .descriptor = 0x20}, data), (Pixels{0xFF010101, 0xFF020202, 0xFF030303}));
}

// ODDITY targa-packets-cross-rows
TEST(TargaReader, PacketsRunOverTheEndsOfRows) {
    const TargaFields fields{.image_type = 10, .width = 2, .height = 3};
    EXPECT_EQ(decoded_pixels(fields, byte_list({0x82, 1, 1, 1, 0x02, 2, 2, 2, 3, 3, 3, 4, 4, 4})),
              (Pixels{0xFF010101, 0xFF010101, 0xFF010101, 0xFF020202, 0xFF030303, 0xFF040404}));
    EXPECT_EQ(decoded_pixels({.image_type = 10, .width = 2, .height = 2, .descriptor = 0},
                             byte_list({0x82, 1, 1, 1, 0x00, 2, 2, 2})),
              (Pixels{0xFF010101, 0xFF020202, 0xFF010101, 0xFF010101}));
}

TEST(TargaReader, PacketsPastTheImageAreCut) {
    const TargaFields fields{.image_type = 10, .width = 2, .height = 2};
    EXPECT_EQ(decoded_pixels(fields, byte_list({0xFF, 1, 1, 1})), Pixels(4, 0xFF010101));
    EXPECT_EQ(decoded_pixels(fields, joined({byte_list({0x7F}), Bytes(128 * 3, std::byte{2})})), Pixels(4, 0xFF020202));
}

TEST(TargaReader, NoAlphaBitsAt32AndAlphaBitsAt24AreUnsupported) { // ODDITY targa-alpha-bits-must-fit
    for (const int type : {2, 10}) {
        EXPECT_EQ(decode(targa_header({.image_type = type, .depth = 32, .descriptor = 0x20})).error,
                  targa_error::unsupported);
        EXPECT_EQ(decode(targa_header({.image_type = type, .depth = 24, .descriptor = 0x28})).error,
                  targa_error::unsupported);
        EXPECT_EQ(decode(targa_header({.image_type = type, .depth = 24, .descriptor = 0x21})).error,
                  targa_error::unsupported);
    }
}

TEST(TargaReader, EveryOtherCombinationIsUnsupported) {
    const auto is_read = [](int type, int depth, int alpha, int map_bits) {
        const bool true_colour = type == 2 || type == 10;
        if (true_colour && depth == 32) return alpha != 0;
        if (true_colour && depth == 24) return alpha == 0;
        if (true_colour && depth == 16) return true;
        return type == 9 && depth == 8 && (map_bits == 24 || map_bits == 32);
    };
    for (int type = 0; type < 256; ++type)
        for (const int depth : {0, 1, 8, 15, 16, 24, 32, 40, 255})
            for (const int alpha : {0, 1, 8, 15})
                for (const int map_bits : {0, 15, 16, 24, 32}) {
                    const auto decoded = decode(targa_header({.map_type = type == 1 || type == 9,
                                                              .image_type = type,
                                                              .map_entry_bits = map_bits,
                                                              .depth = depth,
                                                              .descriptor = 0x20 | alpha}));
                    ASSERT_EQ(decoded.error, is_read(type, depth, alpha, map_bits) ? 0 : targa_error::unsupported)
                        << type << ' ' << depth << ' ' << alpha << ' ' << map_bits;
                }
}

TEST(TargaReader, UncompressedColourMappedIsUnsupported) {
    EXPECT_EQ(decode(joined({targa_header(
                                 {.map_type = 1, .image_type = 1, .map_length = 1, .map_entry_bits = 24, .depth = 8}),
                             byte_list({1, 2, 3, 0})}))
                  .error,
              targa_error::unsupported);
}

TEST(TargaReader, SidesUpTo8192AreAcceptedLargerOnesAreTooLarge) {
    const auto largest = decode(targa_header({.image_type = 10, .width = 8192, .height = 8192}));
    ASSERT_EQ(largest.error, 0);
    EXPECT_EQ(largest.image->width(), 8192);
    EXPECT_EQ(largest.image->height(), 8192);
    EXPECT_EQ(largest.image->pixel(8191, 8191), 0u);
    for (const int side : {8193, 40000, 65535}) {
        EXPECT_EQ(decode(targa_header({.width = side, .height = 1})).error, targa_error::too_large);
        EXPECT_EQ(decode(targa_header({.width = 1, .height = side})).error, targa_error::too_large);
    }
}

TEST(TargaReader, InvertedXAxisIsRefusedAfterTheSizeAndBeforeTheFormat) {
    EXPECT_EQ(decode(targa_header({.descriptor = 0x10})).error, targa_error::inverted_x);
    EXPECT_EQ(decode(targa_header({.image_type = 77, .descriptor = 0x30})).error, targa_error::inverted_x);
    EXPECT_EQ(decode(targa_header({.width = 8193, .descriptor = 0x10})).error, targa_error::too_large);
}

TEST(TargaReader, SideOfZeroIsUnsupported) {
    EXPECT_EQ(decode(targa_header({.width = 0})).error, targa_error::unsupported);
    EXPECT_EQ(decode(targa_header({.height = 0})).error, targa_error::unsupported);
}

// Every good file below, cut at every byte: what the file holds is there, the rest of the image is 0.
struct GoodFile {
    const char* name;
    Bytes bytes;
};

std::vector<GoodFile> good_files() {
    return {
        {"packets of 32 bits",
         joined({targa_header({.image_type = 10, .width = 3, .height = 2, .depth = 32, .descriptor = 8}),
                 byte_list({0x83, 1, 2, 3, 4, 0x01, 5, 6, 7, 8, 9, 10, 11, 12})})},
        {"packets of 24 bits",
         joined({targa_header({.image_type = 10, .width = 3, .height = 2, .depth = 24, .descriptor = 0}),
                 byte_list({0x83, 1, 2, 3, 0x01, 5, 6, 7, 9, 10, 11})})},
        {"plain 32 bits",
         joined({targa_header({.width = 2, .height = 2, .depth = 32, .descriptor = 8}), counting_bytes(16)})},
        {"plain 24 bits", joined({targa_header({.id_length = 4, .width = 2, .height = 2}), counting_bytes(16)})},
        {"packets of 16 bits", joined({targa_header({.image_type = 10, .width = 3, .height = 2, .depth = 16}),
                                       byte_list({0x83, 1, 2, 0x01, 5, 6, 9, 10})})},
        {"plain 16 bits", joined({targa_header({.width = 2, .height = 2, .depth = 16}), counting_bytes(8)})},
        {"packets of indices", joined({targa_header({.map_type = 1,
                                                     .image_type = 9,
                                                     .map_length = 2,
                                                     .map_entry_bits = 24,
                                                     .width = 3,
                                                     .height = 2,
                                                     .depth = 8}),
                                       byte_list({1, 2, 3, 4, 5, 6, 0x83, 1, 0x01, 2, 3})})},
    };
}

TEST(TargaReader, FilesCutAtEveryByteLeaveTheRestOfTheImageZero) {
    for (const auto& [name, bytes] : good_files()) {
        const auto whole = decode(bytes);
        ASSERT_EQ(whole.error, 0) << name;
        for (const std::uint32_t pixel : pixels_of(*whole.image))
            ASSERT_NE(pixel, 0u) << name;
        int filled_before = 0;
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const auto cut = decode(first_bytes(bytes, length));
            if (length < 18) {
                // Without a whole header there is no format; a descriptor of 0 alone reads as one without alpha bits.
                if (length < 17) {
                    ASSERT_EQ(cut.error, targa_error::unsupported) << name << ' ' << length;
                }
                continue;
            }
            ASSERT_EQ(cut.error, 0) << name << ' ' << length;
            int filled = 0;
            for (int y = 0; y < cut.image->height(); ++y)
                for (int x = 0; x < cut.image->width(); ++x) {
                    const std::uint32_t pixel = cut.image->pixel(x, y);
                    if (pixel != 0) {
                        ASSERT_EQ(pixel, whole.image->pixel(x, y)) << name << ' ' << length;
                    }
                    filled += pixel != 0;
                }
            ASSERT_GE(filled, filled_before) << name << ' ' << length;
            filled_before = filled;
        }
        EXPECT_LT(filled_before, whole.image->width() * whole.image->height()) << name;
    }
}

class TargaLoad : public ::testing::Test {
protected:
    // Loads these bytes from a file.
    ImageHandle load(const Bytes& bytes) {
        put_file(path(), bytes);
        return TARGALOAD(path());
    }
    std::string path() const { return directory_ / "picture.tga"; }

    TemporaryDirectory directory_;
};

TEST_F(TargaLoad, GoodFileClearsTheErrorOfAnEarlierCall) {
    EXPECT_EQ(TARGALOAD(directory_ / "missing.tga"), nullptr);
    EXPECT_EQ(TARGAERROR, 201);
    const auto image = load(joined({targa_header({}), byte_list({1, 2, 3})}));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->pixel(0, 0), 0xFF030201u);
    EXPECT_EQ(TARGAERROR, 0);
    EXPECT_EQ(TARGAERRORMESSAGE, "");
}

TEST_F(TargaLoad, TheColourMapGoesIntoTheBufferOrIntoThePaletteOf8BitImages) {
    const std::uint32_t before = palette_entry(8);
    load(file_with_a_colour_map());
    EXPECT_EQ(palette_entry(7), 0x1E140Au) << "red is the third byte";
    EXPECT_EQ(palette_entry(8), before);
    set_palette_entry(7, 7, 7, 7);

    TargaPalette palette{};
    TARGALOAD(path(), &palette);
    EXPECT_EQ(std::vector<int>(palette.begin() + 18, palette.begin() + 27),
              (std::vector<int>{0, 0, 0, 10, 20, 30, 0, 0, 0}));
    EXPECT_EQ(palette_entry(7), 0x070707u) << "with a buffer the palette stays";
}

TEST_F(TargaLoad, EveryFailureSetsItsCodeAndMessage) {
    EXPECT_EQ(TARGALOAD(directory_ / "missing.tga"), nullptr);
    EXPECT_EQ(TARGAERROR, 201);
    EXPECT_EQ(TARGAERRORMESSAGE, "File not found");
    EXPECT_EQ(TARGALOAD(directory_.path()), nullptr);
    EXPECT_EQ(TARGAERROR, 201);
    EXPECT_EQ(load(targa_header({.width = 8193})), nullptr);
    EXPECT_EQ(TARGAERROR, 202);
    EXPECT_EQ(TARGAERRORMESSAGE, "Image is too large");
    EXPECT_EQ(load(targa_header({.descriptor = 0x10})), nullptr);
    EXPECT_EQ(TARGAERROR, 203);
    EXPECT_EQ(TARGAERRORMESSAGE, "Format not supported: X axis is inverted");
    EXPECT_EQ(load(targa_header({.image_type = 1})), nullptr);
    EXPECT_EQ(TARGAERROR, 205);
    EXPECT_EQ(TARGAERRORMESSAGE, "Unsupported format");
    EXPECT_EQ(load({}), nullptr);
    EXPECT_EQ(TARGAERROR, 205);
}

} // namespace
