#include "app/history.h"

#include "app/step_words.h"
#include "model/bitmap_table.h"
#include "model/car.h"
#include "model/parameters.h"
#include "model/power_gear.h"
#include "params/parameter_table.h"
#include "window/key_strings.h"

#include <gtest/gtest.h>

namespace {

class HistoryTest : public testing::Test {
protected:
    HistoryTest() { INITPARAMTARGETS(); }

    static void set_mass(std::uint16_t mass) { set_par_word(par_offset::mass, mass); }
    // The words for a change, and that it can be taken back and brought again.
    static std::string words_for(const std::function<void()>& change) {
        History history(DOCUMENT);
        const CarDocument before = DOCUMENT;
        change();
        const CarDocument after = DOCUMENT;
        history.note(DOCUMENT, "", 0);
        std::string undone = history.undo(DOCUMENT);
        EXPECT_EQ(DOCUMENT, before);
        EXPECT_EQ(history.redo(DOCUMENT), undone);
        EXPECT_EQ(DOCUMENT, after);
        return undone;
    }
};

TEST_F(HistoryTest, TakesBackStepByStepAndBringsAgain) {
    History history(DOCUMENT);
    EXPECT_EQ(history.undo(DOCUMENT), "");
    for (std::uint16_t mass = 1; mass <= 3; ++mass) {
        set_mass(mass);
        history.note(DOCUMENT, "\r", mass);
    }
    EXPECT_EQ(history.steps(), 3u);
    EXPECT_EQ(history.undo(DOCUMENT), "mass");
    EXPECT_EQ(par_word(par_offset::mass), 2);
    history.undo(DOCUMENT);
    history.undo(DOCUMENT);
    EXPECT_EQ(par_word(par_offset::mass), 20);
    EXPECT_FALSE(history.can_undo());
    for (int mass = 1; mass <= 3; ++mass) {
        EXPECT_EQ(history.redo(DOCUMENT), "mass");
        EXPECT_EQ(par_word(par_offset::mass), mass);
    }
    EXPECT_EQ(history.redo(DOCUMENT), "");
}

TEST_F(HistoryTest, AStepThatChangedNothingIsNone) {
    History history(DOCUMENT);
    history.note(DOCUMENT, "\r", 0);
    set_mass(5);
    set_mass(20);
    history.note(DOCUMENT, "\r", 0);
    EXPECT_EQ(history.steps(), 0u);
}

TEST_F(HistoryTest, ANewEditEndsWhatCouldBeBroughtAgain) {
    History history(DOCUMENT);
    set_mass(1);
    history.note(DOCUMENT, "", 0);
    history.undo(DOCUMENT);
    set_mass(2);
    history.note(DOCUMENT, "", 0);
    EXPECT_FALSE(history.can_redo());
    EXPECT_EQ(history.steps(), 1u);
    history.undo(DOCUMENT);
    EXPECT_EQ(par_word(par_offset::mass), 20);
    EXPECT_EQ(history.bytes() > 0, history.can_redo());
}

TEST_F(HistoryTest, ARunOfOneCursorKeyWithinASecondIsOneStep) {
    History history(DOCUMENT);
    for (int k = 1; k <= 5; ++k) {
        set_mass(static_cast<std::uint16_t>(20 + k));
        history.note(DOCUMENT, key::right, k * 0.9);
    }
    EXPECT_EQ(history.steps(), 1u);
    set_mass(30);
    history.note(DOCUMENT, key::right, 5 * 0.9 + 1.1); // too late
    set_mass(40);
    history.note(DOCUMENT, key::left, 5 * 0.9 + 1.2); // another key
    EXPECT_EQ(history.steps(), 3u);
    history.undo(DOCUMENT);
    history.undo(DOCUMENT);
    EXPECT_EQ(par_word(par_offset::mass), 25);
    history.undo(DOCUMENT);
    EXPECT_EQ(par_word(par_offset::mass), 20);
}

TEST_F(HistoryTest, WhatWasDoneMeanwhileEndsARunAlsoWhenItChangedNothing) {
    History history(DOCUMENT);
    set_mass(21);
    history.note(DOCUMENT, key::right, 0);
    history.note(DOCUMENT, "", 0.1); // a pause, or the mouse moved
    set_mass(22);
    history.note(DOCUMENT, key::right, 0.2);
    EXPECT_EQ(history.steps(), 1u);
    history.note(DOCUMENT, key::page_down, 0.3); // what is moved next
    set_mass(23);
    history.note(DOCUMENT, key::right, 0.4);
    EXPECT_EQ(history.steps(), 2u);
}

TEST_F(HistoryTest, ARunThatComesBackToItsBeginningIsNoStep) {
    History history(DOCUMENT);
    set_mass(21);
    history.note(DOCUMENT, key::right, 0);
    set_mass(20);
    history.note(DOCUMENT, key::right, 0.5);
    EXPECT_EQ(history.steps(), 0u);
    EXPECT_EQ(history.bytes(), 0u);
}

TEST_F(HistoryTest, OtherKeysAndAnUndoneRunAreStepsOfTheirOwn) {
    History history(DOCUMENT);
    set_mass(21);
    history.note(DOCUMENT, "*", 0);
    set_mass(22);
    history.note(DOCUMENT, "*", 0.1);
    EXPECT_EQ(history.steps(), 2u);
    set_mass(23);
    history.note(DOCUMENT, key::up, 0.2);
    history.undo(DOCUMENT);
    set_mass(24);
    history.note(DOCUMENT, key::up, 0.3);
    EXPECT_EQ(history.steps(), 3u);
    history.undo(DOCUMENT);
    EXPECT_EQ(par_word(par_offset::mass), 22);
}

TEST_F(HistoryTest, TheOldestStepsGoWhenThereIsNoRoom) {
    History history(DOCUMENT);
    for (int k = 1; k <= 9; ++k) {
        BITMAPS = 1;
        BITMAP[1].name = "dash";
        BITMAP[1].pixels = Pixels(std::size_t{40} << 20, static_cast<std::uint8_t>(k));
        history.note(DOCUMENT, "", k);
    }
    EXPECT_LE(history.bytes(), most_history_bytes);
    EXPECT_LT(history.steps(), 9u);
    EXPECT_GE(history.steps(), 2u);
    while (history.can_undo())
        history.undo(DOCUMENT);
    EXPECT_GT(BITMAP[1].pixels->at(0), 1);
}

TEST_F(HistoryTest, TheTitleGoesBackWithTheCar) {
    History history(DOCUMENT);
    TITLENAME = "Brux";
    DOCUMENT.origin.loaded = "brux";
    DOCUMENT.origin.load = 1;
    set_mass(700);
    history.note(DOCUMENT, "", 0);
    EXPECT_EQ(history.undo(DOCUMENT), "load of brux");
    EXPECT_EQ(TITLENAME, "");
    history.redo(DOCUMENT);
    EXPECT_EQ(TITLENAME, "Brux");
}

TEST_F(HistoryTest, NamesWhatChanged) {
    EXPECT_EQ(words_for([] { set_mass(33); }), "mass");
    EXPECT_EQ(words_for([] {
                  set_mass(34);
                  UPDATEPG(false);
              }),
              "mass");
    EXPECT_EQ(words_for([] { POWERGEAR = (POWERGEAR + 1) % 5; }), "powergear");
    EXPECT_EQ(words_for([] { set_par_byte(58, 9); }), "torque curve");
    EXPECT_EQ(words_for([] { set_par_byte(161, 9); }), "torque curve");
    EXPECT_EQ(words_for([] { set_par_word(162, 9); }), "blue");
    EXPECT_EQ(words_for([] { set_par_byte(0, 1); }), "gears");
    EXPECT_EQ(words_for([] { set_par_word(28, 9); }), "gear knobs");
    EXPECT_EQ(words_for([] { set_par_word(54, 9); }), "gear knobs");
    EXPECT_EQ(words_for([] { set_par_word(56, 9); }), "air drag");
    EXPECT_EQ(words_for([] { set_par_word(10, 9); }), "upshift rpm");
    EXPECT_EQ(words_for([] { set_par_word(204, 9); }), "collision size");
    EXPECT_EQ(words_for([] { set_par_word(232, 9); }), "wheel positions");
    EXPECT_EQ(words_for([] { set_par_byte(234, 9); }), "steering dots");
    EXPECT_EQ(words_for([] { set_par_byte(509, 9); }), "speedometer");
    EXPECT_EQ(words_for([] { set_par_byte(771, 9); }), "tachometer");
    EXPECT_EQ(words_for([] {
                  set_mass(40);
                  set_par_word(4, 1);
              }),
              "parameters");
    EXPECT_EQ(words_for([] { CARNAME += "x"; }), "car name");
    EXPECT_EQ(words_for([] { CARSIGNNAME += "x"; }), "sign name");
    EXPECT_EQ(words_for([] { CARINFO += "x"; }), "description");
}

TEST_F(HistoryTest, NamesWhatChangedInAModel) {
    EXPECT_EQ(words_for([] { CAR[0].edit().verts[40].x = 1; }), "Showroom: places");
    EXPECT_EQ(words_for([] { CAR[4].edit().nverts = 3; }), "Aux 2: shape");
    EXPECT_EQ(words_for([] { CAR[1].edit().prims[0].material[0] = 3; }), "Game: colours");
    EXPECT_EQ(words_for([] { CEXP[1].edit().nverts = 3; }), "debris");
    EXPECT_EQ(words_for([] { ++PAINTJOBS; }), "paint job added");
    EXPECT_EQ(words_for([] { --PAINTJOBS; }), "paint job removed");
    EXPECT_EQ(words_for([] {
                  CAR[0].edit().verts[0].x = 9;
                  CAR[1].edit().verts[0].x = 9;
              }),
              "models");
}

TEST_F(HistoryTest, NamesWhatChangedInTheCockpit) {
    const auto add = [](const char* id) {
        BITMAP[++BITMAPS].name = id;
        BITMAP[BITMAPS].pixels = Pixels{1};
        link_mask(BITMAP[BITMAPS]);
    };
    EXPECT_EQ(words_for([&] { add("roof"); }), "picture of roof");
    EXPECT_EQ(words_for([&] {
                  add("dast");
                  add("dasm");
              }),
              "picture of dast");
    EXPECT_EQ(words_for([] { BITMAP[RBM("roof")].relative_x = 7; }), "place of roof");
    EXPECT_EQ(words_for([] { BITMAP[RBM("roof")].pixels.edit()[0] = 7; }), "picture of roof");
    add("ins3");
    EXPECT_EQ(words_for([] { std::swap(BITMAP[1], BITMAP[BITMAPS]); }), "bitmaps");
    EXPECT_EQ(words_for([] { drop_bitmap(RBM("roof")); }), "removal of roof");
    add("ins2");
    add("ins1");
    EXPECT_EQ(words_for([] {
                  BITMAP[RBM("ins2")].relative_x = 7;
                  BITMAP[RBM("ins1")].absolute_x = 7;
              }),
              "place of ins2");
}

} // namespace
