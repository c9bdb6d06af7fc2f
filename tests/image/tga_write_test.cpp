// Writing TGA images: exact bytes, the packet builder's choices, and back through the reader.
#include "image/tga.h"

#include "support/temporary_directory.h"
#include "support/tga_words.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

namespace {

constexpr std::uint32_t a = 0xFF000001, b = 0xFF000002, c = 0xFF000003;

Bytes pixel_24(std::uint32_t pixel) {
    return byte_list(
        {static_cast<int>(pixel & 0xFF), static_cast<int>(pixel >> 8 & 0xFF), static_cast<int>(pixel >> 16 & 0xFF)});
}

Bytes packet(int header, std::initializer_list<std::uint32_t> pixels) {
    Bytes bytes = byte_list({header});
    for (const std::uint32_t pixel : pixels)
        bytes = joined({bytes, pixel_24(pixel)});
    return bytes;
}

Bytes row_packets(std::initializer_list<std::uint32_t> pixels) { return packets_of(encode_targa_32(*row_of(pixels))); }

TEST(TargaWriter, OpaqueImageIsWrittenWith24BitsByteForByte) {
    const auto image = create_image(2, 2, 0xFF102030);
    image->set_pixel(0, 0, 0xFFA0B0C0);
    image->set_pixel(1, 0, 0xFF405060);
    EXPECT_EQ(encode_targa_32(*image),
              joined({byte_list({0, 0, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 2, 0, 24, 0}),
                      byte_list({0x81, 0x30, 0x20, 0x10}),                   // lower row first
                      byte_list({0x01, 0xC0, 0xB0, 0xA0, 0x60, 0x50, 0x40}), // upper row
                      byte_list({0, 0, 0, 0, 0, 0, 0, 0}), bytes_of("TRUEVISION-XFILE."), byte_list({0})}));
}

TEST(TargaWriter, ImageWithAlphaIsWrittenWith32Bits) {
    const auto image = row_of({0x80102030, 0xFF405060});
    EXPECT_EQ(encode_targa_32(*image),
              joined({byte_list({0, 0, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 1, 0, 32, 8}),
                      byte_list({0x01, 0x30, 0x20, 0x10, 0x80, 0x60, 0x50, 0x40, 0xFF}), targa_footer()}));
}

TEST(TargaWriter, OneTranslucentPixelAnywhereMakesIt32Bits) {
    const auto image = create_image(5, 4, 0xFFFFFFFF);
    EXPECT_EQ(byte_at(encode_targa_32(*image), 16), 24);
    image->set_pixel(4, 3, 0xFEFFFFFF);
    EXPECT_EQ(byte_at(encode_targa_32(*image), 16), 32);
}

TEST(TargaWriter, PaddingTakesNoPartInTheAlphaScan) {
    const auto image = create_image(3, 2, 0xFFFFFFFF, 32, 16); // 12 bytes a row and 4 of padding, which are 0
    EXPECT_EQ(byte_at(encode_targa_32(*image), 16), 24);
}

TEST(TargaWriter, FromTheTopDownRowsAndDescriptorChangeAndNothingElse) {
    const auto image = create_image(2, 2, 0xFF102030);
    image->set_pixel(0, 1, 0xFF405060);
    const Bytes up = encode_targa_32(*image), down = encode_targa_32(*image, TargaRows::top_down);
    EXPECT_EQ(byte_at(up, 17), 0);
    EXPECT_EQ(byte_at(down, 17), 0x20);
    EXPECT_EQ(packets_of(down), byte_list({0x81, 0x30, 0x20, 0x10, 0x01, 0x60, 0x50, 0x40, 0x30, 0x20, 0x10}));
    EXPECT_EQ(packets_of(up), byte_list({0x01, 0x60, 0x50, 0x40, 0x30, 0x20, 0x10, 0x81, 0x30, 0x20, 0x10}));
    image->set_pixel(1, 1, 0x80FFFFFF);
    const Bytes clear = encode_targa_32(*image, TargaRows::top_down);
    EXPECT_EQ(byte_at(clear, 17), 0x28);
    EXPECT_EQ(decode_targa(clear).image->pixel(1, 1), 0x80FFFFFFU);
    EXPECT_EQ(decode_targa(clear).image->pixel(1, 0), 0xFF102030U);
}

TEST(TargaWriter, ImageWithoutAreaHasNoPackets) {
    const Image narrow(0, 3, 4, 0), flat(3, 0, 4, 12);
    for (const Image* image : {&narrow, &flat})
        EXPECT_EQ(encode_targa_32(*image).size(), 18U + 26U);
    EXPECT_EQ(encode_targa_16(Image(0, 2, 2, 0)).size(), 18U + 26U);
}

TEST(TargaWriter, RunOf300IsWrittenAs128And128And44) {
    const auto image = create_image(300, 1, a);
    EXPECT_EQ(packets_of(encode_targa_32(*image)), joined({packet(255, {a}), packet(255, {a}), packet(171, {a})}));
}

TEST(TargaWriter, PacketsAtTheirLimits) {
    EXPECT_EQ(row_packets({a}), packet(0, {a}));
    EXPECT_EQ(row_packets({a, a}), packet(129, {a}));
    EXPECT_EQ(row_packets({a, b}), packet(1, {a, b}));
    EXPECT_EQ(row_packets({a, b, b}), joined({packet(0, {a}), packet(129, {b})}));
    EXPECT_EQ(row_packets({a, a, b}), joined({packet(129, {a}), packet(0, {b})}));
    EXPECT_EQ(row_packets({a, b, c, c, a}), joined({packet(1, {a, b}), packet(129, {c}), packet(0, {a})}));
    for (const int width : {127, 128, 129, 130, 256, 257}) {
        const auto run = create_image(width, 1, a);
        Bytes expected;
        for (int left = width; left > 0; left -= 128)
            expected = joined({expected, left == 1 ? packet(0, {a}) : packet(std::min(left, 128) + 127, {a})});
        EXPECT_EQ(packets_of(encode_targa_32(*run)), expected) << width;

        const auto literals = create_image(width, 1, 0);
        Bytes wanted;
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = 0xFF000000u + static_cast<std::uint32_t>(x);
            literals->set_pixel(x, 0, pixel);
            if (x % 128 == 0) wanted = joined({wanted, byte_list({std::min(width - x, 128) - 1})});
            wanted = joined({wanted, pixel_24(pixel)});
        }
        EXPECT_EQ(packets_of(encode_targa_32(*literals)), wanted) << width;
    }
}

// ODDITY targa-look-ahead
TEST(TargaWriter, LookAheadOfTheLastColumnSeesTheFirstPixelOfTheNextRowInMemory) {
    const auto image = create_image(3, 2, c);
    image->set_pixel(0, 0, a);
    image->set_pixel(1, 0, b);
    image->set_pixel(2, 0, c); // the lower row begins with c as well
    EXPECT_EQ(packets_of(encode_targa_32(*image)), joined({packet(130, {c}), packet(1, {a, b}), packet(0, {c})}));
    image->set_pixel(0, 1, a); // now it does not
    EXPECT_EQ(packets_of(encode_targa_32(*image)), joined({packet(0, {a}), packet(129, {c}), packet(2, {a, b, c})}));
}

// ODDITY targa-look-ahead
TEST(TargaWriter, LookAheadOfTheLastColumnSeesThePaddingOfARow) {
    const auto image = create_image(3, 1, 0xFF000000, 32, 16); // one word of padding, which is 0
    image->set_pixel(0, 0, 0x11111111);
    image->set_pixel(1, 0, 0x22222222);
    image->set_pixel(2, 0, 0x00000000);
    EXPECT_EQ(packets_of(encode_targa_32(*image)),
              byte_list({1, 0x11, 0x11, 0x11, 0x11, 0x22, 0x22, 0x22, 0x22, 0, 0, 0, 0, 0}));
    image->set_pixel(2, 0, 0x00000001);
    EXPECT_EQ(packets_of(encode_targa_32(*image)),
              byte_list({2, 0x11, 0x11, 0x11, 0x11, 0x22, 0x22, 0x22, 0x22, 1, 0, 0, 0}));
}

// ODDITY targa-look-ahead
TEST(TargaWriter, AtTheVeryEndOfThePixelAreaTheLookAheadCountsAsDifferent) {
    for (const std::uint32_t last : {0u, 0xFFFFFFFFu, 0xFF00FF00u})
        EXPECT_EQ(packets_of(encode_targa_32(*row_of({0x11111111, 0x22222222, last}))).size(), 1 + 3 * 4u);
    EXPECT_EQ(packets_of(encode_targa_8(*row_of({1, 2, 0}, 8), {})).size(), 768 + 1 + 3u);
    EXPECT_EQ(packets_of(encode_targa_16(*row_of({1, 2, 0xFFFF}, 16))).size(), 1 + 3 * 2u);
}

TEST(TargaWriter, SixteenBitPixelsBecome1555WithTheTopBit) {
    EXPECT_EQ(encode_targa_16(*row_of({0xFFFF, 0x0000, 0xF800, 0x07E0, 0x001F, 0x0841}, 16)),
              joined({byte_list({0, 0, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 6, 0, 1, 0, 16, 0}),
                      byte_list({5, 0xFF, 0xFF, 0x00, 0x80, 0x00, 0xFC, 0xE0, 0x83, 0x1F, 0x80, 0x21, 0x84}),
                      targa_footer()}));
}

TEST(TargaWriter, EightBitImagesCarryThePaletteGiven) {
    const std::vector<std::uint8_t> palette = {1, 2, 3, 4, 5, 6, 7}; // two entries and a byte more, written as they are
    EXPECT_EQ(encode_targa_8(*row_of({9, 9, 8}, 8), palette),
              joined({byte_list({0, 1, 9, 0, 0, 2, 0, 24, 0, 0, 0, 0, 3, 0, 1, 0, 8, 0}),
                      byte_list({1, 2, 3, 4, 5, 6, 7}), byte_list({129, 9, 0, 8}), targa_footer()}));
}

TEST(TargaWriter, EightBitImagesWithoutAPaletteCarryTheScreensAsBlueGreenRed) {
    set_palette_entry(1, 10, 20, 30);
    const Bytes file = encode_targa_8(*row_of({5}, 8), {});
    set_palette_entry(1, 1, 1, 1);
    EXPECT_EQ(first_bytes(file, 24),
              byte_list({0, 1, 9, 0, 0, 0, 1, 24, 0, 0, 0, 0, 1, 0, 1, 0, 8, 0, 0, 0, 0, 30, 20, 10}));
    EXPECT_EQ(file.size(), 18 + 768 + 2 + 26u);
}

// Pictures with runs and literals of every length, in a few colours so that chance runs and look-aheads happen.
ImageHandle mixed_picture(int width, int height, int depth, unsigned seed, std::size_t alignment = 1) {
    std::mt19937 random(seed);
    auto image = create_image(width, height, 0, depth, alignment);
    std::uint32_t pixel = 0;
    unsigned long left = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            if (left == 0) {
                left = random() % 3 == 0 ? random() % 200 : 1;
                pixel = static_cast<std::uint32_t>(random() % 4) * 0x31415927u | (seed % 2 ? 0xFF000000u : 0u);
            }
            left -= left > 0;
            image->set_pixel(x, y, pixel);
        }
    return image;
}

void expect_same_pixels(const Image& read, const Image& written) {
    ASSERT_EQ(read.width(), written.width());
    ASSERT_EQ(read.height(), written.height());
    ASSERT_EQ(read.bytes_per_pixel(), written.bytes_per_pixel());
    for (int y = 0; y < read.height(); ++y)
        for (int x = 0; x < read.width(); ++x)
            ASSERT_EQ(read.pixel(x, y), written.pixel(x, y)) << x << ' ' << y;
}

// The packet builder as a machine of three states that moves pixel by pixel, for 32-bit pixels.
class PacketMachine {
public:
    explicit PacketMachine(const Image& image) : image_(image) {}

    Bytes packets() {
        for (y_ = image_.height() - 1; y_ >= 0; --y_)
            row();
        return writer_.take();
    }

private:
    enum class State { start, run, raw };

    void row() {
        State state = State::start;
        int x = 0, count = 0;
        std::uint32_t first = 0;
        while (true) {
            if (state != State::start && x == image_.width()) {
                state == State::run ? emit_run(count, first) : emit_raw(count, x);
                return;
            }
            switch (state) {
            case State::start:
                first = word(x);
                if (x == image_.width() - 1) return emit_raw(1, x + 1);
                count = 0;
                state = word(x + 1) == first ? State::run : State::raw;
                break;
            case State::run:
                if (word(x) != first || count == 128) {
                    emit_run(count, first);
                    state = State::start;
                } else {
                    ++count;
                    ++x;
                }
                break;
            case State::raw:
                if (equals_next(x) || count == 128) {
                    emit_raw(count, x);
                    state = State::start;
                } else {
                    ++count;
                    ++x;
                }
                break;
            }
        }
    }

    // The word at a column of the row, which may be the one behind it in the pixel area.
    std::size_t place(int x) const {
        return static_cast<std::size_t>(y_) * image_.pitch() + static_cast<std::size_t>(x) * 4;
    }
    std::uint32_t word(int x) const {
        const auto area = image_.bytes().subspan(place(x), 4);
        return area[0] | std::uint32_t{area[1]} << 8 | std::uint32_t{area[2]} << 16 | std::uint32_t{area[3]} << 24;
    }
    bool equals_next(int x) const { return place(x + 1) + 4 <= image_.bytes().size() && word(x) == word(x + 1); }

    void emit_run(int count, std::uint32_t pixel) {
        writer_.u8(static_cast<std::uint8_t>(count + 127));
        writer_.u32(pixel);
    }
    void emit_raw(int count, int end) {
        writer_.u8(static_cast<std::uint8_t>(count - 1));
        for (int x = end - count; x < end; ++x)
            writer_.u32(word(x));
    }

    const Image& image_;
    int y_ = 0;
    ByteWriter writer_;
};

constexpr std::pair<int, int> sizes[] = {{1, 1},   {2, 1},   {1, 2},    {127, 2},   {128, 2},
                                         {129, 3}, {130, 2}, {255, 1},  {256, 2},   {257, 2},
                                         {3, 300}, {1, 999}, {8192, 1}, {320, 200}, {31, 17}};

TEST(TargaWriter, PacketsAreThoseOfTheMachineOfThreeStates) {
    unsigned seed = 0;
    for (const auto& [width, height] : sizes)
        for (const std::size_t alignment : {std::size_t{1}, std::size_t{16}}) {
            seed += 2; // pictures with alpha
            const auto image = mixed_picture(width, height, 32, seed, alignment);
            image->set_pixel(0, 0, 0x01020304);
            ASSERT_EQ(packets_of(encode_targa_32(*image)), PacketMachine(*image).packets()) << width << ' ' << height;
        }
}

TEST(TargaRoundTrip, PicturesOf32BitsComeBack) {
    unsigned seed = 0;
    for (const auto& [width, height] : sizes)
        for (const std::size_t alignment : {std::size_t{1}, std::size_t{16}}) {
            const auto image = mixed_picture(width, height, 32, ++seed, alignment);
            const TargaPicture read = decode_targa(encode_targa_32(*image));
            ASSERT_EQ(read.error, 0);
            expect_same_pixels(*read.image, *image);
        }
}

TEST(TargaRoundTrip, PicturesOf8BitsComeBackWithTheirPalette) {
    std::vector<std::uint8_t> palette(768);
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = static_cast<std::uint8_t>(i * 5);
    unsigned seed = 0;
    for (const auto& [width, height] : sizes) {
        const auto image = mixed_picture(width, height, 8, ++seed);
        const TargaPicture read = decode_targa(encode_targa_8(*image, palette));
        ASSERT_EQ(read.error, 0);
        expect_same_pixels(*read.image, *image);
        EXPECT_EQ(read.first_entry, 0u);
        ASSERT_EQ(read.colour_map.size(), 256u);
        for (std::size_t i = 0; i < 256; ++i)
            ASSERT_EQ(read.colour_map[i], (TargaEntry{palette[3 * i], palette[3 * i + 1], palette[3 * i + 2]}));
    }
}

// 5-6-5 goes out as 1-5-5-5 and comes back with the lowest bit of green lost.
TEST(TargaRoundTrip, PicturesOf16BitsComeBackWithoutTheLowestGreenBit) {
    unsigned seed = 0;
    for (const auto& [width, height] : sizes) {
        const auto image = mixed_picture(width, height, 16, ++seed);
        const TargaPicture read = decode_targa(encode_targa_16(*image));
        ASSERT_EQ(read.error, 0);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                image->set_pixel(x, y, image->pixel(x, y) & 0xFFDFu);
        expect_same_pixels(*read.image, *image);
    }
}

class TargaSave : public ::testing::Test {
protected:
    std::string path() const { return directory_ / "picture.tga"; }
    TemporaryDirectory directory_;
};

TEST_F(TargaSave, FilesHoldTheEncodedBytes) {
    const auto image = mixed_picture(20, 10, 32, 1);
    TARGASAVE(path(), image.get());
    EXPECT_EQ(TARGAERROR, 0);
    EXPECT_EQ(get_file(path()), encode_targa_32(*image));
    const auto sixteen = mixed_picture(20, 10, 16, 2);
    TARGASAVE16(path(), sixteen.get());
    EXPECT_EQ(get_file(path()), encode_targa_16(*sixteen));
    const auto eight = mixed_picture(20, 10, 8, 3);
    TARGASAVE8(path(), eight.get(), {});
    EXPECT_EQ(get_file(path()), encode_targa_8(*eight, {}));
}

TEST_F(TargaSave, NoImageIs101) {
    for (const auto save : {TARGASAVE, TARGASAVE32, TARGASAVE16}) {
        save(path(), nullptr);
        EXPECT_EQ(TARGAERROR, 101);
        EXPECT_EQ(TARGAERRORMESSAGE, "No image in buffer");
    }
    TARGASAVE8(path(), nullptr, {});
    EXPECT_EQ(TARGAERROR, 101);
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(TargaSave, WrongDepthIs102WithTheDepthInTheMessage) {
    const auto eight = create_image(1, 1, 0, 8);
    const auto sixteen = create_image(1, 1, 0, 16);
    const auto thirty_two = create_image(1, 1, 0, 32);
    for (const Image* image : {eight.get(), sixteen.get()}) {
        TARGASAVE32(path(), image);
        EXPECT_EQ(TARGAERROR, 102);
        EXPECT_EQ(TARGAERRORMESSAGE, "Not a 32bit image. Unsupported");
    }
    for (const Image* image : {eight.get(), thirty_two.get()}) {
        TARGASAVE16(path(), image);
        EXPECT_EQ(TARGAERROR, 102);
        EXPECT_EQ(TARGAERRORMESSAGE, "Not a 16bit image. Unsupported");
    }
    for (const Image* image : {sixteen.get(), thirty_two.get()}) {
        TARGASAVE8(path(), image, {});
        EXPECT_EQ(TARGAERROR, 102);
        EXPECT_EQ(TARGAERRORMESSAGE, "Not a 8bit image. Unsupported");
    }
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(TargaSave, FileThatCannotBeCreatedIs103AndASuccessClearsIt) {
    const auto image = create_image(1, 1);
    TARGASAVE(directory_ / "no/such/directory.tga", image.get());
    EXPECT_EQ(TARGAERROR, 103);
    EXPECT_EQ(TARGAERRORMESSAGE, "Failed to create image file");
    TARGASAVE(path(), image.get());
    EXPECT_EQ(TARGAERROR, 0);
    EXPECT_EQ(TARGAERRORMESSAGE, "");
}

} // namespace
