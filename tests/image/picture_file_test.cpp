// Reading pictures of other programs, kind by kind, and what the fence keeps out.
#include "image/picture_file.h"
#include "support/child_process.h"
#include "support/picture_bytes.h"
#include "support/temporary_directory.h"
#include "support/tga_words.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

ImageHandle decoded(const Bytes& file) { return decode_picture(file).image; }

// All pixels, row by row; empty without an image.
std::vector<std::uint32_t> pixels_of(const ImageHandle& image) {
    std::vector<std::uint32_t> pixels;
    for (int y = 0; image && y < image->height(); ++y)
        for (int x = 0; x < image->width(); ++x)
            pixels.push_back(image->pixel(x, y));
    return pixels;
}
std::vector<std::uint32_t> pixels_of(const Bytes& file) { return pixels_of(decoded(file)); }

using Pixels = std::vector<std::uint32_t>;

// Different at every place.
png::Samples samples_at(int x, int y) {
    return {static_cast<unsigned>(10 * x + 1), static_cast<unsigned>(20 * y + 2), static_cast<unsigned>(x + y),
            static_cast<unsigned>(255 - x)};
}
std::uint32_t pixel_at(int x, int y) {
    const png::Samples s = samples_at(x, y);
    return s[3] << 24 | s[0] << 16 | s[1] << 8 | s[2];
}

void expect_samples(const Bytes& file, int width, int height) {
    const ImageHandle image = decoded(file);
    ASSERT_TRUE(image);
    ASSERT_EQ(image->width(), width);
    ASSERT_EQ(image->height(), height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            ASSERT_EQ(image->pixel(x, y), pixel_at(x, y)) << x << ", " << y;
}

} // namespace

// --- PNG ------------------------------------------------------------------------------------------------------------

TEST(PngPictures, KeepEveryPixelAndItsAlpha) {
    expect_samples(png::file({.width = 11, .height = 9}, samples_at), 11, 9);
    expect_samples(png::file({.width = 11, .height = 9, .interlaced = true}, samples_at), 11, 9);
}

TEST(PngPictures, HaveRowsOfAMultipleOfSixteenBytes) {
    const ImageHandle image = decoded(png::file({.width = 3, .height = 2}, samples_at));
    EXPECT_EQ(image->pitch(), 16U);
    EXPECT_EQ(image->bytes_per_pixel(), 4);
    EXPECT_EQ(decoded(png::file({.width = 4, .height = 1}, samples_at))->pitch(), 16U);
    EXPECT_EQ(decoded(png::file({.width = 5, .height = 1}, samples_at))->pitch(), 32U);
}

TEST(PngPictures, Of16BitsKeepTheUpperEight) {
    const Bytes file = png::file({.depth = 16}, [](int, int) { return png::Samples{0x12FF, 0x3400, 0x5678, 0x80AA}; });
    EXPECT_EQ(pixels_of(file), (Pixels{0x80123456}));
}

TEST(PngPictures, WithoutAlphaAreOpaque) {
    EXPECT_EQ(pixels_of(png::file({.colour = png::colour::rgb},
                                  [](int, int) {
                                      return png::Samples{1, 2, 3};
                                  })),
              (Pixels{0xFF010203}));
    EXPECT_EQ(pixels_of(png::file({.colour = png::colour::grey}, [](int, int) { return png::Samples{7}; })),
              (Pixels{0xFF070707}));
    EXPECT_EQ(pixels_of(png::file({.colour = png::colour::grey_alpha},
                                  [](int, int) {
                                      return png::Samples{7, 9};
                                  })),
              (Pixels{0x09070707}));
}

TEST(PngPictures, OfFewGreysAreSpread) {
    const auto bit = [](int x, int) { return png::Samples{static_cast<unsigned>(x % 2)}; };
    EXPECT_EQ(pixels_of(png::file({.width = 3, .depth = 1, .colour = png::colour::grey}, bit)),
              (Pixels{0xFF000000, 0xFFFFFFFF, 0xFF000000}));
    const auto quarter = [](int x, int) { return png::Samples{static_cast<unsigned>(x)}; };
    EXPECT_EQ(pixels_of(png::file({.width = 4, .depth = 2, .colour = png::colour::grey}, quarter)),
              (Pixels{0xFF000000, 0xFF555555, 0xFFAAAAAA, 0xFFFFFFFF}));
}

TEST(PngPictures, OfAPaletteTakeItsColoursAndTransparency) {
    png::Form form{.width = 3, .depth = 8, .colour = png::colour::palette};
    form.palette = byte_list({1, 2, 3, 4, 5, 6});
    form.transparency = byte_list({128});
    const auto index = [](int x, int) { return png::Samples{static_cast<unsigned>(x)}; };
    const Pixels pixels = pixels_of(png::file(form, index));
    ASSERT_EQ(pixels.size(), 3U);
    EXPECT_EQ(pixels[0], 0x80010203U);
    EXPECT_EQ(pixels[1], 0xFF040506U);
    EXPECT_EQ(pixels[2], pixels_of(png::file(form, index))[2]); // past the palette: whatever, but always the same
    form.depth = 4;
    EXPECT_EQ(pixels_of(png::file(form, index))[1], 0xFF040506U);
}

TEST(PngPictures, MayBeginWithAnEmptyPieceOfData) {
    const png::Form form{.width = 1, .height = 1};
    const auto red = [](int, int) { return png::Samples{255, 0, 0, 255}; };
    const Bytes empty = png::chunk("IDAT", {}), data = png::chunk("IDAT", png::stored(png::rows(form, red)));
    const Bytes front = joined({png::signature(), png::header(form)}), end = png::chunk("IEND", {});
    EXPECT_EQ(pixels_of(joined({front, empty, data, end})), (Pixels{0xFFFF0000}));
    EXPECT_EQ(pixels_of(joined({front, empty, empty, data, empty, end})), (Pixels{0xFFFF0000}));
}

TEST(PngPictures, OfOneTransparentColourHaveAHole) {
    png::Form form{.width = 2, .colour = png::colour::rgb};
    form.transparency = byte_list({0, 1, 0, 2, 0, 3});
    const auto pixel = [](int x, int) { return png::Samples{1, 2, static_cast<unsigned>(3 + x)}; };
    EXPECT_EQ(pixels_of(png::file(form, pixel)), (Pixels{0x00010203, 0xFF010204}));
}

TEST(PngPictures, CutAnywhereBeforeTheirEndAreNone) {
    const Bytes file = png::file({.width = 5, .height = 4}, samples_at);
    constexpr std::size_t end_chunk = 12;
    for (std::size_t length = 0; length < file.size() - end_chunk; ++length)
        ASSERT_FALSE(decoded(first_bytes(file, length))) << length;
    EXPECT_TRUE(decoded(file));
}

TEST(PngPictures, ThatClaimMuchAreRefusedBeforeAnythingIsDecoded) {
    EXPECT_EQ(decode_picture(png::file_of_size(65000, 65000)).reason, not_a_picture);
    EXPECT_EQ(decode_picture(png::file_of_size(16000, 16000)).reason, "Image is too large");
    EXPECT_FALSE(decoded(png::file_of_size(0, 0)));
    EXPECT_FALSE(decoded(png::file_of_size(320, 0)));
    EXPECT_FALSE(decoded(png::file_of_size(320, 200))); // holds no pixels
    EXPECT_EQ(picture_size(png::file_of_size(321, 200))->width, 321);
}

TEST(PngPictures, ThatAskForMuchMemoryAreRefused) {
    // A chunk of 2 GiB of which nothing is there.
    Bytes file = joined({png::signature(), png::header({.width = 4, .height = 4}), bytes_of("\x7F\xFF\xFF\xF0IDAT")});
    const auto refused = [&] { return decoded(file) ? 1 : 0; };
    EXPECT_EQ(run_with_memory_limit(std::size_t{256} << 20, refused), 0);
    EXPECT_EQ(decode_picture(file).reason, "Out of memory");
}

TEST(PngPictures, ThatUnpackToMuchAreRefused) {
    const auto file = [](int bytes) {
        return joined({png::signature(), png::header({.width = 4, .height = 4}),
                       png::chunk("IDAT", png::packed_zeros(bytes)), png::chunk("IEND", {})});
    };
    EXPECT_EQ(decode_picture(file(30 << 20)).reason, "Out of memory");
    EXPECT_TRUE(decoded(file(4 * (1 + 4 * 4))));
    EXPECT_FALSE(decoded(file(4 * (1 + 4 * 4) - 1)));
}

// --- JPEG -----------------------------------------------------------------------------------------------------------

TEST(JpegPictures, OfOneLevelAreGrey) {
    const ImageHandle image = decoded(jpeg::grey(17, 9, 77));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 17);
    EXPECT_EQ(image->height(), 9);
    for (const std::uint32_t pixel : pixels_of(image))
        ASSERT_EQ(pixel, 0xFF4D4D4D);
}

TEST(JpegPictures, OfSeveralBlocksAndComponents) {
    const auto block = [](int column, int row) { return std::vector{40 * column + 100 * row, 128, 128}; };
    for (const bool progressive : {false, true}) {
        const ImageHandle image =
            decoded(jpeg::file({.width = 16, .height = 16, .progressive = progressive}, 3, block));
        ASSERT_TRUE(image);
        EXPECT_EQ(image->pixel(0, 0), 0xFF000000);
        EXPECT_EQ(image->pixel(8, 7), 0xFF282828);
        EXPECT_EQ(image->pixel(15, 15), 0xFF8C8C8C);
    }
}

TEST(JpegPictures, OfFourInksAreMixed) {
    const auto block = [](int column, int) {
        return column == 0 ? std::vector{255, 128, 0, 255} : std::vector{255, 255, 255, 100};
    };
    const ImageHandle image = decoded(jpeg::file({.width = 16, .adobe = true}, 4, block));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixel(0, 0), 0xFFFF8000);
    EXPECT_EQ(image->pixel(12, 4), 0xFF646464);
}

TEST(JpegPictures, CutAnywhereAreWholeInSizeOrNone) {
    const Bytes file = jpeg::file({.width = 20, .height = 12}, 3, [](int column, int row) {
        return std::vector{90 * column, 60 * row, 200};
    });
    for (std::size_t length = 0; length <= file.size(); ++length) {
        const ImageHandle image = decoded(first_bytes(file, length));
        ASSERT_TRUE(!image || (image->width() == 20 && image->height() == 12)) << length;
    }
}

TEST(JpegPictures, WithTooManyCodesInATableAreRefused) {
    Bytes table(1 + 16 + 300);
    table[16] = std::byte{255};
    table[15] = std::byte{2}; // 257 codes in all
    const Bytes file = jpeg::grey(8, 8, 100);
    const auto before_frame = [&](const Bytes& segment) {
        return joined({first_bytes(file, 2), segment, last_bytes(file, file.size() - 2)});
    };
    const auto before_end = [&](const Bytes& segment) {
        return joined({first_bytes(file, file.size() - 2), segment, last_bytes(file, 2)});
    };
    EXPECT_FALSE(decoded(before_frame(jpeg::segment(0xC4, table))));
    EXPECT_FALSE(decoded(before_end(jpeg::segment(0xC4, table))));
    // Bytes that fill the room before a marker, and bytes that are none, hide nothing.
    const Bytes filled = joined({byte_list({0xFF, 0xFF, 0xFF}), jpeg::segment(0xC4, table)});
    EXPECT_FALSE(decoded(before_frame(filled)));
    EXPECT_FALSE(decoded(before_frame(joined({byte_list({0, 1, 0xFF}), filled}))));
    EXPECT_FALSE(decoded(joined({byte_list({0xFF}), before_frame(filled)})));
    // In a comment it is no table.
    EXPECT_TRUE(decoded(before_frame(jpeg::segment(0xFE, jpeg::segment(0xC4, table)))));
}

TEST(JpegPictures, OfMoreScansThanAnyoneMakesAreRefused) {
    const Bytes file = jpeg::file({.progressive = true}, 1, [](int, int) { return std::vector{50}; });
    const std::size_t scan_length = 10 + 2; // marker, header, two bytes of data
    const Bytes end = last_bytes(file, 2);
    Bytes many = first_bytes(file, file.size() - 2);
    const Bytes scan = last_bytes(many, scan_length);
    for (int i = 0; i < 99; ++i)
        many = joined({many, scan});
    EXPECT_TRUE(decoded(joined({many, end})));
    EXPECT_FALSE(decoded(joined({many, scan, end})));
}

// --- Windows bitmaps, Truevision files under other names, and others ------------------------------------------------

TEST(BmpPictures, OfEveryDepth) {
    const Bytes palette = byte_list({3, 2, 1, 0, 6, 5, 4, 0});
    EXPECT_EQ(pixels_of(bmp::file({.width = 2, .depth = 1, .palette = palette}, byte_list({0x40, 0, 0, 0}))),
              (Pixels{0xFF010203, 0xFF040506}));
    EXPECT_EQ(pixels_of(bmp::file({.width = 2, .depth = 4, .palette = palette}, byte_list({0x10, 0, 0, 0}))),
              (Pixels{0xFF040506, 0xFF010203}));
    EXPECT_EQ(pixels_of(bmp::file({.width = 2, .depth = 8, .palette = palette}, byte_list({1, 0, 0, 0}))),
              (Pixels{0xFF040506, 0xFF010203}));
    EXPECT_EQ(pixels_of(bmp::file({.depth = 16}, byte_list({0x00, 0x7C, 0, 0}))), (Pixels{0xFFFF0000}));
    EXPECT_EQ(pixels_of(bmp::file({.depth = 24}, byte_list({3, 2, 1, 0}))), (Pixels{0xFF010203}));
    EXPECT_EQ(pixels_of(bmp::file({.depth = 32}, byte_list({3, 2, 1, 4}))), (Pixels{0x04010203}));
    EXPECT_EQ(pixels_of(bmp::file({.depth = 32}, byte_list({3, 2, 1, 0}))), (Pixels{0xFF010203})); // no alpha at all
}

TEST(BmpPictures, OfEitherRowOrder) {
    const Bytes rows = byte_list({3, 2, 1, 0, 6, 5, 4, 0});
    EXPECT_EQ(pixels_of(bmp::file({.height = 2}, rows)), (Pixels{0xFF040506, 0xFF010203}));
    EXPECT_EQ(pixels_of(bmp::file({.height = -2}, rows)), (Pixels{0xFF010203, 0xFF040506}));
}

TEST(BmpPictures, WithMasks) {
    const bmp::Form form{.depth = 16, .compression = 3, .masks = {0xF800, 0x07E0, 0x001F}};
    EXPECT_EQ(pixels_of(bmp::file(form, byte_list({0xE0, 0x07, 0, 0}))), (Pixels{0xFF00FF00}));
}

TEST(BmpPictures, InPacketsOrOfNoAreaAreRefused) {
    EXPECT_FALSE(decoded(bmp::file({.depth = 8, .compression = 1, .palette = Bytes(1024)}, byte_list({1, 0, 0, 1}))));
    EXPECT_FALSE(decoded(bmp::file({.width = 0}, Bytes(8))));
    EXPECT_FALSE(decoded(bmp::file({.height = 0}, Bytes(8))));
    EXPECT_FALSE(decoded(bmp::file({.width = 65000, .height = 65000}, Bytes(8))));
    EXPECT_FALSE(decoded(bmp::file({.height = -2147483647 - 1}, Bytes(8))));
    EXPECT_FALSE(decoded(bmp::file({.width = -1}, Bytes(8))));
}

TEST(TargaPictures, UnderAnyNameAreRead) {
    const Bytes file = joined({targa_header({.width = 2}), byte_list({3, 2, 1, 6, 5, 4})});
    EXPECT_EQ(pixels_of(file), (Pixels{0xFF010203, 0xFF040506}));
    const Bytes with_alpha = joined({targa_header({.depth = 32, .descriptor = 0x28}), byte_list({3, 2, 1, 9})});
    EXPECT_EQ(pixels_of(with_alpha), (Pixels{0x09010203}));
}

TEST(TargaPictures, LackingPixelsAreBlack) {
    const Bytes file = joined({targa_header({.width = 2}), byte_list({3, 2, 1})});
    EXPECT_EQ(pixels_of(file), (Pixels{0xFF000000, 0xFF000000})); // a row that is not whole is not taken
    EXPECT_EQ(pixels_of(targa_header({.image_type = 10, .width = 2})), (Pixels{0xFF000000, 0xFF000000}));
}

TEST(Pictures, OfOtherKindsAreNone) {
    const std::vector<Bytes> others = {
        {},
        bytes_of("x"),
        bytes_of(std::string(200, 'x')),
        bytes_of(std::string_view("GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;", 35)),
        joined({byte_list({0x0A, 5, 1, 8, 0, 0, 0, 0, 0, 0, 0, 0}), Bytes(116)}), // PCX
        bytes_of("P6 1 1 255 abc"),
        bytes_of("#?RADIANCE\n\n-Y 1 +X 1\nabcd"),
        joined({bytes_of("8BPS"), byte_list({0, 1}), Bytes(60)}),
    };
    for (const Bytes& file : others) {
        const DecodedPicture picture = decode_picture(file);
        EXPECT_FALSE(picture.image);
        EXPECT_EQ(picture.reason, not_a_picture);
        EXPECT_FALSE(picture_size(file));
    }
}

TEST(Pictures, LargerThanAskedForAreRefused) {
    const Bytes file = png::file({.width = 5, .height = 4}, samples_at);
    EXPECT_TRUE(decode_picture(file, {5, 4}).image);
    for (const PictureSize most : {PictureSize{4, 4}, PictureSize{5, 3}}) {
        EXPECT_FALSE(decode_picture(file, most).image);
        EXPECT_EQ(decode_picture(file, most).reason, "Image is too large");
    }
}

// --- files ----------------------------------------------------------------------------------------------------------

TEST(LoadRgbaFile, ReadsAPictureWhateverItsName) {
    const TemporaryDirectory directory;
    put_file(directory / "picture", png::file({.width = 3, .height = 2}, samples_at));
    const ImageHandle image = LoadRGBAFile(directory / "picture");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixel(2, 1), pixel_at(2, 1));
}

TEST(LoadRgbaFile, KeepsTheLastFailure) {
    const TemporaryDirectory directory;
    EXPECT_FALSE(LoadRGBAFile(""));
    EXPECT_EQ(picture_failure(), "Image load failed no filename !");
    EXPECT_FALSE(LoadRGBAFile(directory / "missing.png"));
    EXPECT_EQ(picture_failure(), "Unable to open file");
    put_file(directory / "bad.png", bytes_of("nothing"));
    EXPECT_FALSE(LoadRGBAFile(directory / "bad.png"));
    EXPECT_EQ(picture_failure(), not_a_picture);
    put_file(directory / "good.png", png::file({}, samples_at));
    EXPECT_TRUE(LoadRGBAFile(directory / "good.png"));
    EXPECT_EQ(picture_failure(), not_a_picture);
    Bytes cut = png::file({.width = 50, .height = 50}, samples_at);
    put_file(directory / "cut.png", first_bytes(cut, cut.size() / 2));
    EXPECT_FALSE(LoadRGBAFile(directory / "cut.png"));
    EXPECT_EQ(picture_failure(), "Corrupt PNG");
}
