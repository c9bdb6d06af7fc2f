#include "model/preview.h"

#include "model/colours.h"
#include "model/document.h"

#include <gtest/gtest.h>

namespace {

class Preview : public testing::Test {
protected:
    Preview() {
        for (std::uint32_t i = 0; i < 256; ++i)
            PAL[i] = 0x40000000 + i * 0x010203;
    }

    static BitmapRecord& add(const std::string& name, int width, int height) {
        BitmapRecord& bitmap = BITMAP[++BITMAPS];
        bitmap = {};
        bitmap.name = name;
        bitmap.width = static_cast<std::uint16_t>(width);
        bitmap.height = static_cast<std::uint16_t>(height);
        for (int i = 0; i < width * height; ++i)
            bitmap.pixels.edit().push_back(static_cast<std::uint8_t>(i * 5));
        link_mask(bitmap);
        return bitmap;
    }
};

void expect_blocks_of(const BitmapRecord& bitmap, int scale) {
    const Image* shown = preview(bitmap, scale);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->width(), bitmap.width * scale);
    EXPECT_EQ(shown->height(), bitmap.height * scale);
    EXPECT_EQ(shown->bytes_per_pixel(), 4);
    EXPECT_EQ(shown->pitch(), static_cast<std::size_t>(bitmap.width * scale) * 4);
    for (int y = 0; y < shown->height(); ++y)
        for (int x = 0; x < shown->width(); ++x) {
            const auto source = static_cast<std::size_t>(y / scale * bitmap.width + x / scale);
            const std::uint8_t index = (*bitmap.pixels)[source];
            const std::uint32_t expected = bitmap.is_mask == 0 ? PAL[index] : index == 0 ? 0 : 0xFFFFFFFF;
            ASSERT_EQ(shown->pixel(x, y), expected) << x << ", " << y;
        }
}

TEST_F(Preview, ShowsEveryPixelAsABlockOfItsPaletteColour) {
    const BitmapRecord& bitmap = add("dash", 7, 5);
    expect_blocks_of(bitmap, 2);
    expect_blocks_of(bitmap, 3);
    EXPECT_EQ(preview(bitmap, 2)->pixel(0, 0), 0x40000000U); // alpha as the palette has it
}

TEST_F(Preview, IsPaintedWhenFirstAskedForAndKept) {
    const BitmapRecord& bitmap = add("dash", 3, 2);
    EXPECT_EQ(kept_previews(), 0u);
    const Image* painted = preview(bitmap, 3);
    ASSERT_TRUE(painted);
    EXPECT_EQ(kept_previews(), 1u);
    EXPECT_EQ(preview(bitmap, 3), painted);
    preview(bitmap, 2);
    EXPECT_EQ(preview(bitmap, 3), painted);
    EXPECT_EQ(kept_previews(), 1u);
}

TEST_F(Preview, OfAMaskIsWhiteOrNothing) {
    const BitmapRecord& bitmap = add("dasm", 4, 3);
    expect_blocks_of(bitmap, 2);
    expect_blocks_of(bitmap, 3);
    EXPECT_EQ(preview(bitmap, 3)->pixel(2, 2), 0U);
    EXPECT_EQ(preview(bitmap, 3)->pixel(3, 2), 0xFFFFFFFF);
}

TEST_F(Preview, IsMissingWhereThereIsNoAreaOrNoPixels) {
    EXPECT_FALSE(preview(add("dash", 7, 0), 2));
    BitmapRecord& bare = add("roof", 2, 2);
    EXPECT_TRUE(preview(bare, 2) && preview(bare, 3));
    bare.pixels = {};
    EXPECT_FALSE(preview(bare, 2) || preview(bare, 3));
}

TEST_F(Preview, TooWideForAnImageIsLeftOut) {
    const BitmapRecord& bitmap = add("dash", 12'000, 1);
    EXPECT_TRUE(preview(bitmap, 2));
    EXPECT_FALSE(preview(bitmap, 3));
}

TEST_F(Preview, OfChangedPixelsIsPaintedAnewAndTheOldOneGoes) {
    BitmapRecord& bitmap = add("dash", 2, 2);
    preview(bitmap, 2);
    const BitmapRecord& other = add("roof", 2, 2);
    const Image* untouched = preview(other, 2);
    const Shared<Pixels> earlier = bitmap.pixels;
    bitmap.pixels.edit()[0] = 200;
    expect_blocks_of(bitmap, 2);
    EXPECT_EQ(preview(other, 2), untouched);
    EXPECT_EQ(kept_previews(), 2u); // the earlier pixels are in no entry any more
}

TEST_F(Preview, TakesTwoShapesOfTheSamePixelsForTwo) {
    BitmapRecord& wide = add("dash", 6, 1);
    BitmapRecord& high = add("roof", 1, 6);
    high.pixels = wide.pixels;
    expect_blocks_of(wide, 2);
    expect_blocks_of(high, 2);
}

TEST_F(Preview, IsPaintedAnewAfterThePaletteWasForgotten) {
    const BitmapRecord& bitmap = add("dash", 2, 2);
    preview(bitmap, 2);
    PAL[0] = 0xFF010203;
    EXPECT_EQ(preview(bitmap, 2)->pixel(0, 0), 0x40000000U);
    forget_previews();
    EXPECT_EQ(preview(bitmap, 2)->pixel(0, 0), 0xFF010203);
}

} // namespace
