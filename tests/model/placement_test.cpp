#include "model/placement.h"

#include "model/bitmap_table.h"
#include "model/items.h"
#include "support/bitmaps.h"

#include <gtest/gtest.h>

namespace {

struct Place {
    int x = 0, y = 0;
    bool operator==(const Place&) const = default;
};
void PrintTo(const Place& place, std::ostream* out) { *out << '(' << place.x << ", " << place.y << ')'; }

class Placement : public testing::Test {
protected:
    Placement() { INITDASHITEMS(); }

    static void add(const std::string& name, int width, int height, int x = 0, int y = 0) {
        BitmapRecord& bitmap = BITMAP[++BITMAPS];
        bitmap.name = name;
        bitmap.width = static_cast<std::uint16_t>(width);
        bitmap.height = static_cast<std::uint16_t>(height);
        bitmap.relative_x = static_cast<std::int16_t>(x);
        bitmap.relative_y = static_cast<std::int16_t>(y);
        link_mask(bitmap);
        resolve_positions();
        UPDATEDASHITEMS();
    }
    // Instruments of 100 x 60 at (80, 120), with a panel of 30 x 20 at (10, 5) in them.
    static void add_instruments() {
        add("ins2", 100, 60, 80, 120);
        add("ins1", 30, 20, 10, 5);
    }
    static void move(std::string_view id, int x, int y) { MOVEDASHIMAGETO(RBM(id), x, y); }
    static Place absolute(std::string_view id) { return {BITMAP[RBM(id)].absolute_x, BITMAP[RBM(id)].absolute_y}; }
    static Place relative(std::string_view id) { return {BITMAP[RBM(id)].relative_x, BITMAP[RBM(id)].relative_y}; }
};

using Removal = Placement;

} // namespace

TEST_F(Placement, ABitmapGoesWhereItIsPut) {
    add("gbox", 40, 30, 7, 9);
    move("gbox", 120, 33);
    EXPECT_EQ(absolute("gbox"), (Place{120, 33}));
    EXPECT_EQ(relative("gbox"), (Place{120, 33}));
}

TEST_F(Placement, ABitmapStaysOnTheCanvas) {
    add("gbox", 40, 30);
    move("gbox", -5, 250);
    EXPECT_EQ(absolute("gbox"), (Place{0, 170}));
    move("gbox", 400, -1);
    EXPECT_EQ(absolute("gbox"), (Place{280, 0}));
    EXPECT_EQ(relative("gbox"), (Place{280, 0}));
}

TEST_F(Placement, APanelStaysInsideTheInstruments) {
    add_instruments();
    move("ins1", 85, 130);
    EXPECT_EQ(absolute("ins1"), (Place{85, 130}));
    EXPECT_EQ(relative("ins1"), (Place{5, 10}));
    move("ins1", 20, 10); // left of them and above
    EXPECT_EQ(absolute("ins1"), (Place{80, 120}));
    EXPECT_EQ(relative("ins1"), (Place{0, 0}));
    move("ins1", 300, 199); // past their right and bottom edge
    EXPECT_EQ(absolute("ins1"), (Place{150, 160}));
    EXPECT_EQ(relative("ins1"), (Place{70, 40}));
}

TEST_F(Placement, APanelWithoutInstrumentsStaysOnTheCanvas) {
    add("ins3", 30, 20);
    move("ins3", 310, -4);
    EXPECT_EQ(absolute("ins3"), (Place{290, 0}));
    EXPECT_EQ(relative("ins3"), (Place{290, 0}));
}

TEST_F(Placement, ThePanelsMoveWithTheInstrumentsAndKeepWhatIsStored) {
    add_instruments();
    add("ins3", 10, 10, 50, 30);
    add("inm1", 30, 20, 10, 5);
    add("inm3", 10, 10, 50, 30);
    move("ins2", 90, 100);
    EXPECT_EQ(absolute("ins2"), (Place{90, 100}));
    for (const std::string_view id : {"ins1", "inm1"}) {
        EXPECT_EQ(absolute(id), (Place{100, 105}));
        EXPECT_EQ(relative(id), (Place{10, 5}));
    }
    for (const std::string_view id : {"ins3", "inm3"}) {
        EXPECT_EQ(absolute(id), (Place{140, 130}));
        EXPECT_EQ(relative(id), (Place{50, 30}));
    }
}

TEST_F(Placement, TheMaskGoesWhereItsOwnerGoes) {
    add("dast", 320, 20, 0, 80);
    add("dasm", 320, 20, 3, 4);
    move("dast", 0, 60);
    EXPECT_EQ(absolute("dasm"), (Place{0, 60}));
    EXPECT_EQ(relative("dasm"), (Place{0, 60}));
}

TEST_F(Placement, AMaskOfAPanelTakesAllFourPositions) {
    add_instruments();
    add("inm1", 30, 20);
    move("ins1", 100, 140);
    EXPECT_EQ(absolute("inm1"), (Place{100, 140}));
    EXPECT_EQ(relative("inm1"), (Place{20, 20}));
}

TEST_F(Placement, AMissingMaskIsIgnored) {
    add("dast", 320, 20);
    move("dast", 0, 60);
    EXPECT_EQ(absolute("dast"), (Place{0, 60}));
}

TEST_F(Placement, AMaskThatIsItsOwnOwnerIsNoTrouble) {
    add("what", 10, 10);
    BITMAP[1].has_mask = 255;
    BITMAP[1].mask_name = "what";
    move("what", 20, 30);
    EXPECT_EQ(absolute("what"), (Place{20, 30}));
}

// ODDITY oversized-bitmap-at-negative
TEST_F(Placement, WhatIsLargerThanItsRoomIsFlushWithTheFarEdge) {
    add("dash", 400, 250);
    move("dash", 10, 20);
    EXPECT_EQ(absolute("dash"), (Place{-80, -50}));
    EXPECT_EQ(relative("dash"), (Place{-80, -50}));
    add_instruments();
    BITMAP[RBM("ins1")].width = 130;
    move("ins1", 100, 130);
    EXPECT_EQ(relative("ins1"), (Place{-30, 10}));
    EXPECT_EQ(absolute("ins1"), (Place{50, 130}));
}

TEST_F(Placement, SumsWrapTo16Bits) {
    add("dash", 65535, 65535);
    move("dash", 0, 0);
    EXPECT_EQ(absolute("dash"), (Place{321, 201})); // 320 - 65535 and 200 - 65535 in 16 bits
    add_instruments();
    BITMAP[RBM("ins2")].relative_x = -32768;
    move("ins1", 32767, 130);
    EXPECT_EQ(relative("ins1").x, 0); // 65535 in 16 bits is -1
    EXPECT_EQ(absolute("ins1").x, -32768);
}

TEST_F(Placement, NoBitmapMovesNothing) {
    add("roof", 10, 10, 4, 5);
    for (const int index : {0, 2, -1, 101, 1000})
        MOVEDASHIMAGETO(index, 50, 60);
    EXPECT_EQ(absolute("roof"), (Place{4, 5}));
    EXPECT_EQ(BITMAP[0].absolute_x, 0);
}

TEST_F(Removal, TakesTheBitmapAndItsMask) {
    add("dash", 2, 2);
    add("dast", 2, 2);
    add("dasm", 2, 2);
    add("roof", 2, 2);
    REMOVEBITMAP(RBM("dast"));
    EXPECT_EQ(table_names(), "dash/roof/");
    EXPECT_EQ(DASHITEM[2].bitmap, 0);
    EXPECT_EQ(DASHITEM[3].bitmap, 2);
}

TEST_F(Removal, FindsTheOwnerThatMovedIntoItsMasksPlace) {
    add("dash", 2, 2);
    add("dasm", 2, 2);
    add("roof", 2, 2);
    add("dast", 2, 2); // the last one: takes the mask's place when that goes
    REMOVEBITMAP(4);
    EXPECT_EQ(table_names(), "dash/roof/");
}

TEST_F(Removal, TakesTheOneThatWasAskedForOfTwoWithOneId) {
    add("roof", 2, 2);
    add("roof", 3, 3);
    add("dash", 2, 2);
    REMOVEBITMAP(2);
    EXPECT_EQ(table_names(), "roof/dash/");
    EXPECT_EQ(BITMAP[1].width, 2);
    EXPECT_EQ(DASHITEM[3].bitmap, 1);
}

TEST_F(Removal, AMaskThatGoesAloneLeavesItsOwnerWithALinkToNothing) {
    add("dast", 2, 2);
    add("dasm", 2, 2);
    REMOVEBITMAP(2);
    EXPECT_EQ(table_names(), "dast/");
    EXPECT_EQ(BITMAP[1].mask_name, "dasm");
    MOVEDASHIMAGETO(1, 5, 6);
    EXPECT_EQ(absolute("dast"), (Place{5, 6}));
    REMOVEBITMAP(1);
    EXPECT_EQ(BITMAPS, 0);
}

TEST_F(Removal, LinksInARingEndAfterOneStep) {
    add("aaaa", 2, 2);
    add("bbbb", 2, 2);
    add("cccc", 2, 2);
    for (int i = 1; i <= 3; ++i) {
        BITMAP[i].has_mask = 255;
        BITMAP[i].mask_name = BITMAP[i % 3 + 1].name;
    }
    REMOVEBITMAP(1);
    EXPECT_EQ(table_names(), "cccc/");
    BITMAP[1].mask_name = "cccc";
    REMOVEBITMAP(1);
    EXPECT_EQ(BITMAPS, 0);
}

TEST_F(Removal, NoBitmapTakesNothing) {
    add("roof", 2, 2);
    for (const int index : {0, 2, -1, 101})
        REMOVEBITMAP(index);
    EXPECT_EQ(table_names(), "roof/");
}
