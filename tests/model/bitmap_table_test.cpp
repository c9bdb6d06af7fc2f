#include "model/bitmap_table.h"
#include "model/document.h"

#include "model/colours.h"

#include <gtest/gtest.h>

namespace {
class BitmapTable : public testing::Test {
protected:
    BitmapTable() {
        for (std::uint32_t i = 0; i < 256; ++i)
            PAL[i] = 0x40000000 + i * 0x010203;
    }

    static BitmapRecord& add(const std::string& name, int width = 1, int height = 1) {
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
    static std::string names() {
        std::string all;
        for (int i = 1; i <= BITMAPS; ++i)
            all += BITMAP[i].name + " ";
        return all;
    }
};
} // namespace

TEST_F(BitmapTable, LookUpComparesTheWholeIdAndFindsTheFirst) {
    add("dash");
    add("dot ");
    add("dash");
    EXPECT_EQ(RBM("dash"), 1);
    EXPECT_EQ(RBM("dot "), 2);
    for (const char* id : {"dot", "DASH", "das", "dash ", "roof", ""})
        EXPECT_EQ(RBM(id), 0) << id;
}

TEST_F(BitmapTable, LookUpDoesNotSeeFreeEntries) {
    add("dash");
    BITMAPS = 0;
    EXPECT_EQ(RBM("dash"), 0);
}

TEST_F(BitmapTable, OwnersAndMasksArePairs) {
    const std::vector<std::pair<std::string, std::string>> pairs = {
        {"dast", "dasm"}, {"dot ", "dota"}, {"ins1", "inm1"}, {"ins3", "inm3"}, {"gnob", "gnab"}};
    for (const auto& [owner, mask] : pairs) {
        const BitmapRecord& bitmap = add(owner);
        EXPECT_EQ(bitmap.has_mask, 255);
        EXPECT_EQ(bitmap.mask_name, mask);
        EXPECT_EQ(bitmap.is_mask, 0);
        const BitmapRecord& mask_bitmap = add(mask);
        EXPECT_EQ(mask_bitmap.has_mask, 0);
        EXPECT_EQ(mask_bitmap.mask_name, "");
        EXPECT_EQ(mask_bitmap.is_mask, 255);
    }
}

TEST_F(BitmapTable, OtherIdsAreNeitherOwnersNorMasks) {
    for (const char* id : {"dash", "dot", "dot1", "ins2", "inm2", "DAST", "", "dast/dasm"}) {
        const BitmapRecord& bitmap = add(id);
        EXPECT_EQ(bitmap.has_mask + bitmap.is_mask, 0) << id;
    }
}

TEST_F(BitmapTable, FourPanelsBelongToTheInstruments) {
    for (const char* id : {"ins1", "ins3", "inm1", "inm3"})
        EXPECT_TRUE(is_instrument_panel(id)) << id;
    for (const char* id : {"ins2", "inm2", "dash", "", "ins"})
        EXPECT_FALSE(is_instrument_panel(id)) << id;
}

TEST_F(BitmapTable, PixelBufferIsWholeOrNone) {
    BitmapRecord& bitmap = add("dash", 3, 2);
    EXPECT_TRUE(has_pixel_buffer(bitmap));
    bitmap.pixels.edit().pop_back();
    EXPECT_FALSE(has_pixel_buffer(bitmap));
    bitmap.pixels = {};
    EXPECT_FALSE(has_pixel_buffer(bitmap));
    EXPECT_TRUE(has_pixel_buffer(add("roof", 0, 9)));
}

TEST_F(BitmapTable, CountsThePixelsOfTheEntriesInUse) {
    add("dash", 3, 2);
    add("roof", 4, 4);
    EXPECT_EQ(bitmap_pixels(), 22U);
    BITMAPS = 1;
    EXPECT_EQ(bitmap_pixels(), 6U);
}

TEST_F(BitmapTable, DroppingGivesThePlaceToTheLastEntry) {
    for (const char* id : {"aaaa", "bbbb", "cccc", "dddd"})
        add(id, 2, 2);
    const Shared<Pixels> moved = BITMAP[4].pixels;
    drop_bitmap(2);
    EXPECT_EQ(names(), "aaaa dddd cccc ");
    EXPECT_TRUE(BITMAP[2].pixels.is(moved));
    EXPECT_EQ(BITMAP[4].name, "");
    EXPECT_TRUE(BITMAP[4].pixels->empty());
    drop_bitmap(3);
    EXPECT_EQ(names(), "aaaa dddd ");
}

TEST_F(BitmapTable, DroppingAnIndexNotInUseChangesNothing) {
    add("aaaa");
    BITMAP[0].width = 320;
    for (const int index : {0, 2, 101, -1})
        drop_bitmap(index);
    EXPECT_EQ(names(), "aaaa ");
    EXPECT_EQ(BITMAP[0].width, 320);
}

TEST_F(BitmapTable, PanelsArePlacedRelativeToTheInstruments) {
    for (const char* id : {"ins1", "inm1", "ins3", "inm3", "dash", "ins2"}) {
        BitmapRecord& bitmap = add(id);
        bitmap.relative_x = 10;
        bitmap.relative_y = -20;
    }
    BITMAP[6].relative_x = 100;
    BITMAP[6].relative_y = 150;
    resolve_positions();
    for (int panel = 1; panel <= 4; ++panel) {
        EXPECT_EQ(BITMAP[panel].absolute_x, 110);
        EXPECT_EQ(BITMAP[panel].absolute_y, 130);
    }
    EXPECT_EQ(BITMAP[5].absolute_x, 10);
    EXPECT_EQ(BITMAP[5].absolute_y, -20);
    EXPECT_EQ(BITMAP[6].absolute_x, 100);
}

TEST_F(BitmapTable, PositionsWrapInSixteenBits) {
    add("ins2").relative_x = 32767;
    add("ins1").relative_x = 2;
    resolve_positions();
    EXPECT_EQ(BITMAP[2].absolute_x, -32767);
}

TEST_F(BitmapTable, ResetEmptiesEveryEntry) {
    add("dash");
    BITMAP[0].width = 320;
    reset_bitmaps();
    EXPECT_EQ(BITMAPS, 0);
    for (const BitmapRecord& bitmap : BITMAP)
        EXPECT_TRUE(bitmap.name.empty() && bitmap.width == 0);
}
