// The cockpit as it is put together: order, masks, what is not there, what lies far out.
#include "dash_test.h"

namespace {

class CockpitTest : public DashTest {
protected:
    // What stands at a canvas point, in the view of zoom 2 on grey ground.
    static std::uint32_t seen(int x, int y, int zoom = 2) {
        const Point at = view_at(zoom).at({x, y});
        return screen().image().pixel(at.x, at.y);
    }
    static void clear_ground() { fill_box(screen(), 0, 0, 959, 599, colour_of(ink::grey)); }
    static void draw_body_at(int zoom) {
        clear_ground();
        draw_body(view_at(zoom));
    }
    static void draw_steered(Steering steering) {
        clear_ground();
        draw_cockpit(view_at(2), steering);
    }
};

} // namespace

TEST_F(CockpitTest, BitmapsStandAtTheirPlacesInSquaresOfPixels) {
    add("dash", 2, 1, 10, 20, ink::red);
    bitmap("dash").pixels.edit()[1] = ink::blue;
    for (const int zoom : {2, 3}) {
        draw_body_at(zoom);
        const Point corner = view_at(zoom).at({10, 20});
        EXPECT_EQ(found(colour_of(ink::red)),
                  (Rectangle{corner.x, corner.y, corner.x + zoom - 1, corner.y + zoom - 1}));
        EXPECT_EQ(found(colour_of(ink::blue)),
                  (Rectangle{corner.x + zoom, corner.y, corner.x + 2 * zoom - 1, corner.y + zoom - 1}));
    }
}

TEST_F(CockpitTest, TheDashboardCoversTheRoofAndItsTopCoversBoth) {
    add("dast", 10, 10, 0, 0, ink::blue);
    add("dasm", 10, 10, 0, 0, 0);
    add("dash", 20, 20, 0, 0, ink::green);
    add("roof", 30, 30, 0, 0, ink::red);
    draw_body_at(2);
    EXPECT_EQ(seen(5, 5), colour_of(ink::blue));
    EXPECT_EQ(seen(15, 15), colour_of(ink::green));
    EXPECT_EQ(seen(25, 25), colour_of(ink::red));
}

TEST_F(CockpitTest, AMaskLetsThroughWhatLiesBehind) {
    add("dash", 10, 10, 0, 0, ink::green);
    add("dast", 2, 1, 0, 0, ink::none);
    add("dasm", 2, 1, 0, 0, 255);
    bitmap("dast").pixels.edit()[1] = ink::red;
    bitmap("dasm").pixels.edit()[1] = 0;
    draw_body_at(2);
    EXPECT_EQ(seen(0, 0), colour_of(ink::green));
    EXPECT_EQ(seen(1, 0), colour_of(ink::red));
}

TEST_F(CockpitTest, WithoutItsMaskTheTopIsMixedIn) {
    add("dash", 10, 10, 0, 0, ink::green);
    add("dast", 1, 1, 0, 0, ink::red);
    draw_body_at(2);
    EXPECT_EQ(seen(0, 0), 0xFFFFFF00);
    EXPECT_EQ(seen(1, 1), colour_of(ink::green));
}

TEST_F(CockpitTest, ANonzeroMaskPixelIsWhiteWhateverItsValue) {
    add("dash", 10, 10, 0, 0, ink::green);
    add("dasm", 1, 1, 0, 0, 1);
    draw_body_at(2);
    EXPECT_EQ(seen(0, 0), colour_of(ink::green));
}

TEST_F(CockpitTest, SteeringSwapsWheelAndInstruments) {
    add("whl1", 10, 10, 0, 0, ink::red);
    add("whl2", 10, 10, 0, 0, ink::green);
    add("whl3", 10, 10, 0, 0, ink::blue);
    add("ins2", 4, 4, 20, 0, ink::white);
    add("ins1", 4, 4, 0, 0, ink::brown);
    add("inm1", 4, 4, 0, 0, 0);
    add("ins3", 4, 4, 10, 0, ink::grey);
    add("inm3", 4, 4, 10, 0, 0);

    draw_steered(Steering::left);
    EXPECT_EQ(seen(5, 5), colour_of(ink::red));
    EXPECT_EQ(seen(22, 2), colour_of(ink::brown)); // at the place of "ins2" and its own
    draw_steered(Steering::straight);
    EXPECT_EQ(seen(5, 5), colour_of(ink::green));
    EXPECT_EQ(seen(22, 2), colour_of(ink::white));
    draw_steered(Steering::right);
    EXPECT_EQ(seen(5, 5), colour_of(ink::blue));
    EXPECT_EQ(seen(32, 2), colour_of(ink::grey));
    EXPECT_EQ(seen(22, 2), colour_of(ink::grey)); // the ground
}

TEST_F(CockpitTest, SteeringUsesTheMasksOfTheInstruments) {
    add("whl1", 30, 10, 0, 0, ink::red);
    add("ins1", 2, 1, 4, 0, ink::none);
    add("inm1", 2, 1, 4, 0, 255);
    bitmap("ins1").pixels.edit()[1] = ink::blue;
    bitmap("inm1").pixels.edit()[1] = 0;
    draw_steered(Steering::left);
    EXPECT_EQ(seen(4, 0), colour_of(ink::red));
    EXPECT_EQ(seen(5, 0), colour_of(ink::blue));
}

TEST_F(CockpitTest, WhatIsNotThereIsLeftOut) {
    const std::vector<std::string> all = {"roof", "dash", "dast", "dasm", "whl1", "whl2", "whl3", "ins1", "ins2",
                                          "ins3", "inm1", "inm3", "gbox", "dot ", "dot1", "dot2", "dota"};
    for (const std::string& missing : all) {
        reset_bitmaps();
        INITDASHITEMS();
        for (const std::string& id : all)
            if (id != missing) add(id, 10, 10, 5, 5, ink::red);
        for (const std::uint8_t mode : {dash_mode::driving, dash_mode::images, dash_mode::gear_box}) {
            enter(mode);
            draw();
            EXPECT_EQ(drawn(77, 127), Pixel{colour_of(ink::red)}) << missing << " in mode " << int{mode};
        }
    }
    reset_bitmaps();
    INITDASHITEMS();
    for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode) {
        enter(mode);
        draw();
        EXPECT_EQ(count(screen().image(), colour_of(ink::red)), 0);
    }
}

TEST_F(CockpitTest, BitmapsFarOutAndWithoutAreaAreCut) {
    for (const int x : {-32768, -9, 310, 32767}) {
        reset_bitmaps();
        INITDASHITEMS();
        for (const char* id : {"roof", "dash", "dast", "dasm", "whl2", "ins2", "gbox", "dot "})
            add(id, 20, 20, x, x / 2, ink::red);
        add("ins1", 20, 20, x, x, ink::red);
        add("dot1", 0, 7, x, x, ink::red);
        for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode)
            for (const int zoom : {2, 3}) {
                enter(mode);
                draw_at(zoom);
                const Rectangle seen_red = found(colour_of(ink::red));
                EXPECT_EQ(intersection(seen_red, view_at(zoom).area), seen_red);
            }
    }
}

TEST_F(CockpitTest, BitmapsWithoutAreaAreSelectedAndMovedLikeOthers) {
    add("dash", 0, 0, 5, 5, 0);
    enter(dash_mode::images);
    key(key::right);
    draw();
    EXPECT_EQ(bitmap("dash").absolute_x, 6);
    EXPECT_TRUE(shows_row(760, 406, "Dims", 824, "0x0"));
}
