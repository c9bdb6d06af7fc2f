#include "model/document.h"
#include "model/items.h"

#include "model/bitmap_table.h"

#include <gtest/gtest.h>

namespace {
class DashItems : public testing::Test {
protected:
    DashItems() { INITDASHITEMS(); }
    static void add(const std::string& name) { BITMAP[++BITMAPS].name = name; }
};
} // namespace

TEST_F(DashItems, AreTheFifteenKindsInOrder) {
    const std::vector<std::pair<std::string, std::string>> kinds = {
        {"Dashboard", "dash"},       {"Dashboard top", "dast"},    {"Roof", "roof"},         {"Steering wheel", "whl2"},
        {"Steering (left)", "whl1"}, {"Steering (right)", "whl3"}, {"Instruments", "ins2"},  {"Inst. (left)", "ins1"},
        {"Inst. (right)", "ins3"},   {"Gear box", "gbox"},         {"Gear knob", "gnob"},    {"Steer dot", "dot "},
        {"Steer dot I", "dot1"},     {"Steer dot II", "dot2"},     {"Speed digit 0", "dig0"}};
    ASSERT_EQ(kinds.size(), 15U);
    for (int i = 1; i <= dash_items; ++i) {
        EXPECT_EQ(DASHITEM[i].label, kinds[static_cast<std::size_t>(i - 1)].first);
        EXPECT_EQ(DASHITEM[i].id, kinds[static_cast<std::size_t>(i - 1)].second);
        EXPECT_EQ(DASHITEM[i].bitmap, 0);
    }
}

TEST_F(DashItems, EntryZeroIsTheCanvas) {
    EXPECT_EQ(BITMAP[0].width, 320);
    EXPECT_EQ(BITMAP[0].height, 200);
    EXPECT_EQ(BITMAP[0].relative_x, 0);
    EXPECT_EQ(BITMAP[0].relative_y, 0);
    EXPECT_EQ(BITMAP[0].absolute_x, 0);
    EXPECT_EQ(BITMAP[0].absolute_y, 0);
    EXPECT_EQ(BITMAP[0].name, "");
    EXPECT_EQ(BITMAPS, 0);
}

TEST_F(DashItems, BindToTheBitmapOfTheirId) {
    add("gnob");
    add("whl2");
    add("dasm");
    UPDATEDASHITEMS();
    EXPECT_EQ(DASHITEM[11].bitmap, 1);
    EXPECT_EQ(DASHITEM[4].bitmap, 2);
    for (const int unbound : {1, 2, 3, 5, 6, 7, 8, 9, 10, 12, 13, 14, 15})
        EXPECT_EQ(DASHITEM[unbound].bitmap, 0);
}

TEST_F(DashItems, BindToExactlyTheirId) {
    add("dot");
    add("DASH");
    UPDATEDASHITEMS();
    EXPECT_EQ(DASHITEM[12].bitmap, 0);
    EXPECT_EQ(DASHITEM[1].bitmap, 0);
    add("dot ");
    UPDATEDASHITEMS();
    EXPECT_EQ(DASHITEM[12].bitmap, 3);
}

// ODDITY last-duplicate-bitmap
TEST_F(DashItems, BindToTheLastOfSeveralBitmapsOfOneId) {
    add("roof");
    add("dash");
    add("roof");
    UPDATEDASHITEMS();
    EXPECT_EQ(DASHITEM[3].bitmap, 3);
    EXPECT_EQ(RBM("roof"), 1);
}

TEST_F(DashItems, LoseBitmapsThatAreGone) {
    add("roof");
    UPDATEDASHITEMS();
    drop_bitmap(1);
    UPDATEDASHITEMS();
    EXPECT_EQ(DASHITEM[3].bitmap, 0);
}

TEST_F(DashItems, FollowADigitThatWasChosen) {
    add("dig0");
    add("dig7");
    DASHITEM[15].id = "dig7";
    UPDATEDASHITEMS();
    EXPECT_EQ(DASHITEM[15].bitmap, 2);
}
