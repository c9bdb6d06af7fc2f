// Image buffers, and drawing one on another.
#include "image/image.h"

#include "drawing/drawing.h"
#include "support/picture_words.h"

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(ImageBuffer, WithoutAColourIsFilledWithTheTransparentMask) {
    EXPECT_EQ(count(*create_image(3, 2), 0xFFFF00FF), 6);
    EXPECT_EQ(count(*create_image(3, 2, std::nullopt, 32), 0xFFFF00FF), 6);
    EXPECT_EQ(count(*create_image(3, 2, std::nullopt, 16), 0xF81F), 6);
    EXPECT_EQ(count(*create_image(3, 2, std::nullopt, 8), 0), 6);
    EXPECT_EQ(count(*create_image(3, 2, 0x12345678), 0x12345678), 6);
}

TEST(ImageBuffer, DepthZeroIsTheScreensDepth) { EXPECT_EQ(create_image(3, 2)->bytes_per_pixel(), 4); }

TEST(ImageBuffer, RefusesSidesAndDepthsThatCannotBe) {
    for (const int side : {0, -1, 32768, 2147483647}) {
        EXPECT_EQ(create_image(side, 5), nullptr);
        EXPECT_EQ(create_image(5, side), nullptr);
    }
    for (const int depth : {1, 4, 15, 24, 33, -8})
        EXPECT_EQ(create_image(5, 5, std::nullopt, depth), nullptr);
    EXPECT_NE(create_image(32767, 1, 7, 8), nullptr);
}

TEST(ImageBuffer, OneThatIsAboutToBeSetHasItsSizeAndRefusesTheSame) {
    const auto image = create_unset_image(5, 3, 16);
    EXPECT_EQ(image->bytes_per_pixel(), 2);
    EXPECT_EQ(image->pitch(), 10u);
    EXPECT_EQ(image->bytes().size(), 30u);
    EXPECT_EQ(create_unset_image(0, 3, 16), nullptr);
    EXPECT_EQ(create_unset_image(5, 32768, 16), nullptr);
    EXPECT_EQ(create_unset_image(5, 3, 24), nullptr);
}

TEST(ImageBuffer, RowsArePaddedOnlyWhenAsked) {
    EXPECT_EQ(create_image(5, 2, 1, 8)->pitch(), 5u);
    const auto padded = create_image(5, 3, 9, 8, 16);
    EXPECT_EQ(padded->pitch(), 16u);
    EXPECT_EQ(padded->bytes().size(), 48u);
    EXPECT_EQ(padded->row(2).size(), 5u);
    const ImageInfo info = image_info(*padded);
    EXPECT_EQ(info.width, 5);
    EXPECT_EQ(info.height, 3);
    EXPECT_EQ(info.bytes_per_pixel, 1);
    EXPECT_EQ(info.pitch, 16u);
    EXPECT_EQ(info.pixels, padded->bytes().data());
}

TEST(ImageBuffer, PixelsAreLittleEndianWords) {
    const auto image = create_image(2, 1, 0);
    image->set_pixel(1, 0, 0xAABBCCDD);
    const auto bytes = image->bytes();
    EXPECT_EQ(std::vector<std::uint8_t>(bytes.begin() + 4, bytes.end()),
              (std::vector<std::uint8_t>{0xDD, 0xCC, 0xBB, 0xAA}));
    EXPECT_EQ(image->pixel(1, 0), 0xAABBCCDDu);
    EXPECT_EQ(image->pixel(2, 0), 0u);
    EXPECT_EQ(image->pixel(0, -1), 0u);
    image->set_pixel(-1, 0, 5);
    image->set_pixel(0, 1, 5);
    EXPECT_EQ(image->pixel(0, 0), 0u);
}

TEST(ImagePalette, EntriesAreSetAndReadAndOthersIgnored) {
    const std::uint32_t before = palette_entry(7);
    set_palette_entry(7, 0x11, 0x22, 0x33);
    EXPECT_EQ(palette_entry(7), 0x112233u);
    set_palette_entry(7, static_cast<std::uint8_t>(before >> 16), static_cast<std::uint8_t>(before >> 8),
                      static_cast<std::uint8_t>(before));
    set_palette_entry(-1, 1, 2, 3);
    set_palette_entry(256, 1, 2, 3);
    EXPECT_EQ(palette_entry(-1), 0u);
    EXPECT_EQ(palette_entry(256), 0u);
    EXPECT_EQ(palette_entry(200), 0xC8C8C8u);
}

// One pixel of a 1 x 1 picture drawn on one of another.
std::uint32_t combined(std::uint32_t target, std::uint32_t source, DrawMode mode, int target_depth = 32,
                       int source_depth = 32) {
    const auto below = create_image(1, 1, target, target_depth);
    const auto above = create_image(1, 1, source, source_depth);
    Canvas canvas(*below);
    draw_image(canvas, *above, 0, 0, mode);
    return below->pixel(0, 0);
}

TEST(DrawImage, AndWithAllOnesAndOrWithZeroLeaveTheTarget) {
    EXPECT_EQ(combined(0x12345678, 0xFFFFFFFF, DrawMode::and_), 0x12345678u);
    EXPECT_EQ(combined(0x12345678, 0, DrawMode::or_), 0x12345678u);
    EXPECT_EQ(combined(0xF0F0F0F0, 0x3C3C3C3C, DrawMode::and_), 0x30303030u);
    EXPECT_EQ(combined(0xF0F0F0F0, 0x3C3C3C3C, DrawMode::or_), 0xFCFCFCFCu);
    EXPECT_EQ(combined(0x12345678, 0x00FF00FF, DrawMode::copy), 0x00FF00FFu);
}

TEST(DrawImage, AlphaIsExactForEveryAlphaAndChannel) {
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha)
        for (const std::uint32_t source : {0u, 1u, 127u, 128u, 200u, 255u})
            for (const std::uint32_t target : {0u, 1u, 90u, 128u, 254u, 255u}) {
                const double exact = (source * alpha + target * (255.0 - alpha)) / 255.0;
                const auto rounded = static_cast<std::uint32_t>(std::lround(exact));
                const std::uint32_t result =
                    combined(0xFF000000 | target * 0x010101, alpha << 24 | source * 0x010101, DrawMode::alpha);
                ASSERT_EQ(result, 0xFF000000 | rounded * 0x010101) << alpha << ' ' << source << ' ' << target;
            }
}

TEST(DrawImage, AlphaOnATransparentTargetAddsUp) {
    EXPECT_EQ(combined(0x00000000, 0x80FFFFFF, DrawMode::alpha) >> 24, 0x80u);
    EXPECT_EQ(combined(0x80000000, 0x80FFFFFF, DrawMode::alpha) >> 24, 0xC0u);
}

TEST(DrawImage, DepthsAreConverted) {
    EXPECT_EQ(combined(0, 0xF81F, DrawMode::copy, 32, 16), 0xFFFF00FFu);
    EXPECT_EQ(combined(0, 0x07E0, DrawMode::copy, 32, 16), 0xFF00FF00u);
    EXPECT_EQ(combined(0, 200, DrawMode::copy, 32, 8), 0xFFC8C8C8u);
    EXPECT_EQ(combined(0, 0xFFFFFFFF, DrawMode::copy, 16, 32), 0xFFFFu);
    EXPECT_EQ(combined(0, 0x40C8C8C8, DrawMode::copy, 8, 32), 200u);
    EXPECT_EQ(combined(0, 0xFFFF, DrawMode::copy, 8, 16), 255u);
    EXPECT_EQ(combined(0, 255, DrawMode::copy, 16, 8), 0xFFFFu);
    EXPECT_EQ(combined(100, 0x80FFFFFF, DrawMode::alpha, 8, 32), 178u); // (255 x 128 + 100 x 127) / 255
    EXPECT_EQ(combined(0, 0x00FFFFFF, DrawMode::alpha, 16, 32), 0u);
    EXPECT_EQ(combined(0x0F, 0xF1, DrawMode::or_, 8, 8), 0xFFu);
    EXPECT_EQ(combined(0x0FF0, 0x3C3C, DrawMode::and_, 16, 16), 0x0C30u);
}

ImageHandle numbered(int width, int height) {
    auto image = create_image(width, height, 0);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image->set_pixel(x, y, 0xFF000000u + static_cast<std::uint32_t>(y * 256 + x + 1));
    return image;
}

TEST(DrawImage, IsCutAtTheClipRectangleFromEverySide) {
    const auto source = numbered(12, 9);
    std::mt19937 random(3);
    std::uniform_int_distribution<int> place(-15, 35);
    for (int round = 0; round < 300; ++round) {
        const auto target = create_image(30, 25, black);
        Canvas canvas(*target);
        const Rectangle clip{5, 4, 22, 19};
        canvas.set_clip(clip.x1, clip.y1, clip.x2, clip.y2);
        const int left = place(random), top = place(random);
        draw_image(canvas, *source, left, top, DrawMode::copy);
        Rectangle touched;
        for (int y = 0; y < 25; ++y)
            for (int x = 0; x < 30; ++x) {
                const bool drawn = inside(clip, x, y) && inside({left, top, left + 11, top + 8}, x, y);
                ASSERT_EQ(target->pixel(x, y), drawn ? source->pixel(x - left, y - top) : black);
                if (drawn) touched = bounding(touched, {x, y, x, y});
            }
        ASSERT_EQ(canvas.take_damage().around(), touched);
    }
}

TEST(DrawImage, OnItselfIsDrawnAsItWasBefore) {
    for (const auto& [dx, dy] : {std::pair{3, 2}, {-3, 2}, {3, -2}, {-3, -2}, {1, 0}, {0, 1}, {0, 0}}) {
        const auto image = numbered(20, 15);
        const auto before = numbered(20, 15);
        Canvas canvas(*image);
        draw_image(canvas, *image, dx, dy, DrawMode::copy);
        for (int y = 0; y < 15; ++y)
            for (int x = 0; x < 20; ++x) {
                const bool drawn = inside({0, 0, 19, 14}, x - dx, y - dy);
                ASSERT_EQ(image->pixel(x, y), drawn ? before->pixel(x - dx, y - dy) : before->pixel(x, y));
            }
    }
}

TEST(DrawImage, OnItselfKeepsIndicesOfEqualColours) {
    const std::uint32_t before = palette_entry(5);
    set_palette_entry(5, 9, 9, 9); // the same colour as entry 9
    const auto image = create_image(4, 1, 9, 8);
    image->set_pixel(0, 0, 5);
    Canvas canvas(*image);
    draw_image(canvas, *image, 1, 0, DrawMode::copy);
    EXPECT_EQ(image->pixel(1, 0), 5u);
    EXPECT_EQ(image->pixel(2, 0), 9u);
    set_palette_entry(5, static_cast<std::uint8_t>(before), static_cast<std::uint8_t>(before),
                      static_cast<std::uint8_t>(before));
}

} // namespace
