#include "formats/saved_car.h"

#include "model/bitmap_table.h"
#include "model/parameters.h"

#include <gtest/gtest.h>

namespace {

CarDocument now() { return DOCUMENT; }

void add_bitmap(const std::string& id) {
    BITMAP[++BITMAPS].name = id;
    BITMAP[BITMAPS].pixels = Pixels{1};
    BITMAP[BITMAPS].width = BITMAP[BITMAPS].height = 1;
}

class SavedCarTest : public testing::Test {
protected:
    const std::vector<CarFileOnDisk> car = {file("carbrux.res"), file("stbrux.3sh"), file("stdabrux.vsh"),
                                            file("stdbbrux.vsh")};

    SavedCarTest() {
        add_bitmap("dash");
        add_bitmap("dot ");
        begin_with_saved_car();
    }
    static CarFileOnDisk file(const std::string& name) { return {"/cars/" + name, parts_in(name)}; }
    static void save(const std::string& name) {
        const CarFileOnDisk one = file(name);
        note_save(name, {&one, 1});
    }
    // As a load that brings fresh bitmaps.
    void load_brux() {
        const CarDocument before = DOCUMENT;
        set_par_word(par_offset::mass, 700);
        for (int i = 1; i <= BITMAPS; ++i)
            BITMAP[i].pixels = Pixels{9};
        note_load(before, "brux", car);
    }
};

TEST_F(SavedCarTest, TheCarOfTheStartIsNobodysWork) {
    EXPECT_EQ(saved_car(), SavedCar{});
    set_par_word(4, 1);
    EXPECT_EQ(saved_car(), (SavedCar{"", true}));
}

TEST_F(SavedCarTest, EachPartIsSavedByTheFilesThatHoldIt) {
    set_par_word(4, 1);
    CAR[1].edit().nverts = 1;
    BITMAP[1].relative_x = 1;
    BITMAP[2].relative_x = 1;
    CAR[4].edit().nverts = 1;
    for (const char* name : {"a.res", "a.3sh", "stdaa.vsh"}) {
        save(name);
        EXPECT_TRUE(saved_car().unsaved) << name;
    }
    save("stdba.vsh");
    EXPECT_EQ(saved_car(), (SavedCar{"stdba.vsh", true, "only a .car holds Aux 1 and 2"}));
    save("a.car");
    EXPECT_EQ(saved_car(), SavedCar{"a.car"});
    set_par_word(4, 2);
    EXPECT_TRUE(saved_car().unsaved);
    save("a.res");
    EXPECT_FALSE(saved_car().unsaved);
}

TEST_F(SavedCarTest, ALargeModelIsNotHeldByAShapeFile) {
    CAR[0].edit().nprims = 256;
    const CarFileOnDisk cut{"/cars/a.3sh", {}};
    note_save("a", {&cut, 1});
    EXPECT_EQ(saved_car(), (SavedCar{"", true, "a .3sh holds 255 vertices and primitives"}));
    CAR[0].edit().nprims = 255;
    EXPECT_EQ(saved_car(), (SavedCar{"", true}));
}

TEST_F(SavedCarTest, ALongTextIsNotHeldByAParameterFile) {
    CARNAME.assign(256, 'x');
    save("a.res");
    EXPECT_EQ(saved_car(), (SavedCar{"", true, "only a .car holds such a long text"}));
    CARNAME.assign(255, 'x');
    save("a.res");
    EXPECT_FALSE(saved_car().unsaved);
}

TEST_F(SavedCarTest, ABitmapThatNoCarsFileTakesIsHeldByAProjectOnly) {
    add_bitmap("what");
    EXPECT_EQ(saved_car(), (SavedCar{"", true, "only a .car holds bitmap what"}));
    save("a.car");
    EXPECT_FALSE(saved_car().unsaved);
}

TEST_F(SavedCarTest, WhoTakesALoadBackIsAskedAboutTheFilesBefore) {
    load_brux();
    EXPECT_EQ(saved_car(), SavedCar{"brux"});
    const CarDocument brux = now();
    set_par_word(4, 1);
    EXPECT_EQ(saved_car(), (SavedCar{"brux", true}));

    const CarDocument edited = now();
    load_brux();
    EXPECT_EQ(saved_car(), SavedCar{"brux"});
    DOCUMENT = edited;
    EXPECT_EQ(saved_car(), (SavedCar{"brux", true}));
    DOCUMENT = brux;
    EXPECT_EQ(saved_car(), SavedCar{"brux"});
}

TEST_F(SavedCarTest, AFileThatWasOverwrittenHoldsTheEarlierCarNoLonger) {
    load_brux();
    const CarDocument brux = now();
    load_brux();
    set_par_word(4, 1);
    save("carbrux.res");
    EXPECT_FALSE(saved_car().unsaved);
    DOCUMENT = brux;
    EXPECT_TRUE(saved_car().unsaved);
}

TEST_F(SavedCarTest, ALoadedFileThatBringsNotAllLeavesTheRestUnsaved) {
    BITMAP[1].relative_x = 5; // work
    const CarDocument before = now();
    const CarFileOnDisk dots = file("stdbx.vsh");
    BITMAP[2].pixels = Pixels{7};
    note_load(before, "stdbx.vsh", {&dots, 1});
    EXPECT_TRUE(saved_car().unsaved);
    BITMAP[1].relative_x = 0;
    EXPECT_FALSE(saved_car().unsaved);
}

TEST_F(SavedCarTest, AnotherOrderOfTheBitmapsIsNoChange) {
    add_bitmap("roof");
    load_brux();
    std::swap(BITMAP[1], BITMAP[3]);
    EXPECT_FALSE(saved_car().unsaved);
}

TEST_F(SavedCarTest, ABodyIsAnEditLikeOthers) {
    load_brux();
    const CarDocument before = now();
    const CarFileOnDisk body{"/cars/a.obj", {}};
    CAR[0].edit().nverts = 9;
    note_load(before, "a.obj", {&body, 1});
    EXPECT_EQ(saved_car(), (SavedCar{"brux", true}));
    EXPECT_EQ(DOCUMENT.origin.loaded, "a.obj");
    EXPECT_NE(DOCUMENT.origin.load, before.origin.load);
}

TEST_F(SavedCarTest, KeptWorkIsUnsavedUntilAllOfItIsInFiles) {
    note_load_of_kept_work("Haldmark Brux");
    EXPECT_EQ(saved_car(), (SavedCar{"Haldmark Brux", true}));
    note_save("brux", car);
    EXPECT_EQ(saved_car(), SavedCar{"brux"});
}

TEST_F(SavedCarTest, AFileIsKnownOnceItWasLoadedOrSaved) {
    EXPECT_FALSE(is_known_file("/cars/stbrux.3sh"));
    load_brux();
    EXPECT_TRUE(is_known_file("/cars/stbrux.3sh"));
    save("b.res");
    EXPECT_TRUE(is_known_file("/cars/b.res"));
    EXPECT_FALSE(is_known_file("/cars/c.res"));
}

} // namespace
