#include "model/document.h"

#include "model/bitmap_table.h"
#include "model/car.h"
#include "model/new_car.h"
#include "model/parameters.h"
#include "model/power_gear.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

class Document : public testing::Test {
protected:
    Document() {
        new_car();
        BITMAPS = 1;
        BITMAP[1].name = "dash";
        BITMAP[1].width = BITMAP[1].height = 1;
        BITMAP[1].pixels = Pixels{7};
    }
};

const std::vector<std::function<void()>> every_kind_of_change = {
    [] { set_par_byte(775, 1); },
    [] { CARNAME += "!"; },
    [] { CARSIGNNAME += "!"; },
    [] { CARINFO += "!"; },
    [] { POWERGEAR = 3; },
    [] { CAR[0].edit().nverts = 1; },
    [] { CAR[4].edit().prims[511].material[16] = 1; },
    [] { CAR[2].edit().verts[511].z = -0.0; },
    [] { CEXP[3].edit().verts[0].mark = 1; },
    [] { PAINTJOBS = 8; },
    [] { BITMAP[1].pixels.edit()[0] = 8; },
    [] { BITMAP[1].relative_x = 1; },
    [] { BITMAP[1].flags[3] = 1; },
    [] { BITMAP[1].mask_name = "dasm"; },
    [] { BITMAPS = 0; },
};

TEST_F(Document, EveryChangeOfTheCarIsADifference) {
    for (std::size_t k = 0; k < every_kind_of_change.size(); ++k) {
        const CarDocument before = DOCUMENT;
        ASSERT_EQ(DOCUMENT, before) << k;
        every_kind_of_change[k]();
        EXPECT_NE(DOCUMENT, before) << k;
    }
}

TEST_F(Document, PutBackIsWhatItWas) {
    const CarDocument before = DOCUMENT;
    for (const auto& change : every_kind_of_change)
        change();
    DOCUMENT = before;
    EXPECT_EQ(DOCUMENT, before);
    EXPECT_EQ(CARNAME, "New car");
    EXPECT_EQ(par_byte(775), 0);
    EXPECT_EQ(CAR[0]->nverts, 0);
    EXPECT_EQ(BITMAP[1].pixels->at(0), 7);
}

TEST_F(Document, TheNamesAreItsMembers) {
    DOCUMENT.name = "other";
    EXPECT_EQ(CARNAME, "other");
    EXPECT_EQ(&CAR[1], &DOCUMENT.models[1]);
    EXPECT_EQ(&BITMAP[3], &DOCUMENT.bitmaps[3]);
}

TEST_F(Document, WhatIsShownIsNoPartOfIt) {
    const CarDocument before = DOCUMENT;
    CURMODEL = 3;
    CURPJ = 2;
    CARCLIP.edit().nverts = 5;
    TITLENAME = "another";
    EXPECT_EQ(DOCUMENT, before);
    reset_car();
}

TEST_F(Document, ACoordinateThatIsNotANumberIsNoDifferenceToItself) {
    CAR[0].edit().verts[0].x = std::numeric_limits<double>::quiet_NaN();
    CarDocument copy = DOCUMENT;
    EXPECT_EQ(copy, DOCUMENT);
    copy.models[0] = Shared<SHAPEMODEL>(*copy.models[0]); // another block with the same content
    EXPECT_EQ(copy, DOCUMENT);
}

TEST_F(Document, CopiesShareWhatDidNotChange) {
    const CarDocument copy = DOCUMENT;
    CAR[1].edit().nverts = 3;
    for (std::size_t slot = 0; slot < CAR.size(); ++slot)
        EXPECT_EQ(CAR[slot].is(copy.models[slot]), slot != 1) << slot;
    EXPECT_TRUE(BITMAP[1].pixels.is(copy.bitmaps[1].pixels));
}

TEST_F(Document, ANewCarIsTheSameEveryTime) {
    const CarDocument first = DOCUMENT;
    for (const auto& change : every_kind_of_change)
        change();
    reset_bitmaps();
    new_car();
    DOCUMENT.bitmaps = first.bitmaps;
    DOCUMENT.bitmap_count = first.bitmap_count;
    EXPECT_EQ(DOCUMENT, first);
}

} // namespace
