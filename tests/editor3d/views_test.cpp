// Whole views on the screen.
#include "editor3d/views.h"

#include "drawing/triangle.h"
#include "editor3d/view_ground.h"
#include "editor3d/wireframe.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/parameters.h"
#include "support/models.h"
#include "support/picture_words.h"
#include "support/play.h"
#include "widgets/widgets.h"

#include <chrono>
#include <cmath>
#include <functional>
#include <limits>

namespace {

constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr std::uint32_t ground = colour::background;

class Views : public ScriptedTest {
protected:
    void SetUp() override {
        ScriptedTest::SetUp();
        INIT3DWINDOWS();
        for (std::size_t i = 0; i < MATERIAL.size(); ++i)
            MATERIAL[i].colour = 0xFF000100U | static_cast<std::uint32_t>(i);
    }

    static SHAPEMODEL& model() { return shown_slot().edit(); }
    static std::uint32_t material_colour(int material) { return 0xFF000100U | static_cast<std::uint32_t>(material); }

    // What a view shows, against the same picture put together by hand.
    static void expect_view(int view, const std::function<void(Canvas&)>& draw) {
        const auto expected = create_image(screen_width, screen_height, black);
        Canvas canvas(*expected);
        const WINDOW3D& frame = W3D[view];
        canvas.set_clip(frame.left + 2, frame.top + 8, frame.right - 2, frame.bottom - 2);
        fill_box(canvas, 0, 0, 959, 647, ground);
        draw_circle(canvas, frame.origin_x, frame.origin_y, 2, 0xFFFAFAFA);
        draw(canvas);
        reset_screen();
        UPDATE3DWINDOW(static_cast<std::uint8_t>(view));
        int different = 0;
        for (int y = 0; y < screen_height; ++y)
            for (int x = 0; x < screen_width; ++x)
                different += screen().image().pixel(x, y) != expected->pixel(x, y);
        EXPECT_EQ(different, 0);
    }

    // One triangle, facing the eye, in front of nothing; its corners at the middle depth.
    static void show_triangle(std::array<double, 3> a, std::array<double, 3> b, std::array<double, 3> c,
                              std::uint16_t material) {
        model() = {};
        for (const auto& [x, y, z] : {a, b, c})
            add_vertex(model(), x, y, z);
        add_first_four(model());
        add_primitive(model(), 3, {0, 1, 2}, material).flags = 1;
    }
    static int pixels_of(int material) { return count(screen().image(), material_colour(material)); }
};

TEST_F(Views, StartWhereTheTableSays) {
    EXPECT_EQ(W3D[1].caption, "Top");
    EXPECT_EQ(W3D[2].caption, "Front");
    EXPECT_EQ(W3D[3].caption, "Side");
    EXPECT_EQ(W3D[4].caption, "3D view");
    const std::array<std::array<int, 6>, 4> frames{{{20, 50, 370, 300, 195, 175},
                                                    {380, 50, 730, 300, 555, 275},
                                                    {20, 315, 370, 565, 195, 540},
                                                    {380, 315, 730, 565, 555, 440}}};
    const std::array zooms{40.0, 80.0, 60.0, 60.0};
    for (int i = 1; i <= 4; ++i) {
        const auto& frame = frames[static_cast<std::size_t>(i - 1)];
        EXPECT_EQ(W3D[i].left, frame[0]);
        EXPECT_EQ(W3D[i].top, frame[1]);
        EXPECT_EQ(W3D[i].right, frame[2]);
        EXPECT_EQ(W3D[i].bottom, frame[3]);
        EXPECT_EQ(W3D[i].origin_x, frame[4]);
        EXPECT_EQ(W3D[i].origin_y, frame[5]);
        EXPECT_EQ(W3D[i].zoom, zooms[static_cast<std::size_t>(i - 1)]);
        EXPECT_EQ(W3D[i].enabled, 255);
    }
}

TEST_F(Views, DrawInsideTheirFrameAlone) {
    for (std::uint8_t view = 1; view <= 4; ++view) {
        reset_screen();
        UPDATE3DWINDOW(view);
        const WINDOW3D& frame = W3D[view];
        EXPECT_EQ(screen().take_damage().around(),
                  (Rectangle{frame.left + 2, frame.top + 8, frame.right - 2, frame.bottom - 2}));
        EXPECT_EQ(drawn(frame.left + 1, frame.top + 100), Pixel{black});
        EXPECT_EQ(screen().clip(), (Rectangle{0, 0, 959, 647}));
    }
}

TEST_F(Views, WireframesLieOverGridAndPhysicalData) {
    set_par_word(200, 22);
    set_par_word(202, 30);
    set_par_word(204, 50);
    set_par_word(206, 60);
    set_par_word(210, 1300);
    CURMODEL = 2;
    for (const double x : {-0.8, 0.8})
        for (const double y : {-1.9, 2.1})
            for (const double z : {0.2, 1.1})
                add_vertex(model(), x, y, z);
    add_primitive(model(), 4, {0, 1, 3, 2});
    add_primitive(model(), 4, {4, 5, 7, 6}).mark = 7;
    add_primitive(model(), 11, {0, 1});
    const SHAPEMODEL before = model();
    for (int view = 1; view <= 3; ++view)
        expect_view(view, [&](Canvas& canvas) {
            const Plane plane = std::array{Plane::top, Plane::front, Plane::side}[static_cast<std::size_t>(view - 1)];
            const ViewMapping mapping{static_cast<double>(W3D[view].origin_x), static_cast<double>(W3D[view].origin_y),
                                      W3D[view].zoom};
            draw_grid(canvas, mapping);
            draw_physical_data(canvas, plane, mapping);
            SHAPEMODEL turned = model();
            turn_onto_plane(turned, plane);
            draw_wireframe(canvas, turned, plane, mapping);
        });
    EXPECT_EQ(model(), before);
}

TEST_F(Views, ThreeDimensionsOfOneVertexInTheThreePlanes) {
    const auto at = add_vertex(model(), 0.3, 0.9, 1.7);
    add_primitive(model(), 2, {at, at});
    for (std::uint8_t view = 1; view <= 3; ++view)
        UPDATE3DWINDOW(view);
    EXPECT_EQ(drawn(195 + 12, 175 - 36), Pixel{wireframe_colour});
    EXPECT_EQ(drawn(555 + 24, 275 - 136), Pixel{wireframe_colour});
    EXPECT_EQ(drawn(195 + 54, 540 - 102), Pixel{wireframe_colour});
}

TEST_F(Views, AFaceInThe3dViewIsItsTriangleInItsMaterialsColour) {
    show_triangle({-1, 0, 0.2}, {1, 0, 0.3}, {0.1, 0, 1.11}, 77);
    expect_view(4, [](Canvas& canvas) {
        DRAWTRIANGLE(canvas, 495, 428, 615, 422, 561, 373, material_colour(77)); // 440 - 66.6 is 373.4
    });
}

TEST_F(Views, PerspectiveYawAndPitchPlaceTheFace) {
    show_triangle({-1, 0.5, 0.2}, {1, 0.5, 0.3}, {0.1, -0.5, 1.1}, 3);
    CURYAW = 0.7;
    CURPITCH = -0.4;
    const auto at = [](double x, double y, double z) {
        const double x1 = x * std::cos(0.7) + y * std::sin(0.7), y1 = y * std::cos(0.7) - x * std::sin(0.7);
        const double y2 = y1 * std::cos(-0.4) + z * std::sin(-0.4), z2 = z * std::cos(-0.4) - y1 * std::sin(-0.4);
        return std::pair{static_cast<std::int16_t>(std::nearbyint(555 + 5 * x1 / (5 - y2) * 60)),
                         static_cast<std::int16_t>(std::nearbyint(440 - 5 * z2 / (5 - y2) * 60))};
    };
    expect_view(4, [&](Canvas& canvas) {
        const auto [x1, y1] = at(-1, 0.5, 0.2);
        const auto [x2, y2] = at(1, 0.5, 0.3);
        const auto [x3, y3] = at(0.1, -0.5, 1.1);
        DRAWTRIANGLE(canvas, x1, y1, x2, y2, x3, y3, material_colour(3));
    });
}

TEST_F(Views, ALineInThe3dViewIsALine) {
    add_vertex(model(), -1, 0, 0.5);
    add_vertex(model(), 1, 0, 0.25);
    add_first_four(model());
    add_primitive(model(), 2, {0, 1}, 9);
    expect_view(4, [](Canvas& canvas) { draw_line(canvas, 495, 410, 615, 425, material_colour(9)); });
}

TEST_F(Views, SpheresAreNotDrawnInThe3dView) {
    add_vertex(model(), 0, 0, 0);
    add_vertex(model(), 1, 0, 0);
    add_first_four(model());
    add_primitive(model(), 11, {0, 1}, 9);
    expect_view(4, [](Canvas&) {});
}

TEST_F(Views, AModelOfItsFirstFourPrimitivesShowsNothingInThe3dView) {
    for (int i = 0; i < 4; ++i)
        add_vertex(model(), i - 1.5, 0.1 * i, 0.2 * i * i);
    for (int i = 0; i < 4; ++i)
        add_primitive(model(), 4, {0, 1, 2, 3}, 5).flags = 1;
    expect_view(4, [](Canvas&) {});
}

TEST_F(Views, AClockwiseFaceIsNotSeen) {
    show_triangle({-1, 0, 0}, {0, 0, 1}, {1, 0, 0}, 5);
    UPDATE3DWINDOW(4);
    EXPECT_GT(pixels_of(5), 1000);
    model().prims[4].flags = 0;
    UPDATE3DWINDOW(4);
    EXPECT_EQ(pixels_of(5), 0);
    std::swap(model().prims[4].vertex[1], model().prims[4].vertex[2]);
    UPDATE3DWINDOW(4);
    EXPECT_GT(pixels_of(5), 1000);
}

TEST_F(Views, APentagonIsFilledWhole) {
    for (const auto& [x, z] : {std::pair{-1.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.5}, {-1.0, 1.0}})
        add_vertex(model(), x, 0, z);
    add_first_four(model());
    add_primitive(model(), 5, {0, 1, 2, 3, 4}, 5);
    expect_view(4, [](Canvas& canvas) {
        DRAWTRIANGLE(canvas, 495, 440, 615, 440, 615, 380, material_colour(5));
        DRAWTRIANGLE(canvas, 495, 440, 615, 380, 555, 350, material_colour(5));
        DRAWTRIANGLE(canvas, 495, 440, 555, 350, 495, 380, material_colour(5));
    });
}

TEST_F(Views, NearFacesCoverFarOnes) {
    show_triangle({-1, -1, 0}, {1, -1, 0}, {0, -1, 1}, 5);
    for (const double x : {-1.0, 1.0})
        add_vertex(model(), x, 1, 0);
    add_vertex(model(), 0, 1, 1);
    add_primitive(model(), 3, {3, 4, 5}, 6);
    std::swap(model().prims[4], model().prims[5]);
    UPDATE3DWINDOW(4);
    EXPECT_EQ(pixels_of(5), 0);
    CURYAW = 3.14159;
    model().prims[4].flags = 1;
    UPDATE3DWINDOW(4);
    EXPECT_EQ(pixels_of(6), 0);
}

TEST_F(Views, MaterialsAbove255AreDrawnAsTheirLowByte) {
    show_triangle({-1, 0, 0}, {1, 0, 0}, {0, 0, 1}, 0x1200 + 7);
    UPDATE3DWINDOW(4);
    EXPECT_GT(pixels_of(7), 1000);
    EXPECT_EQ(model().prims[4].material[0], 0x1207);
}

TEST_F(Views, MaterialsAreThoseOfTheCurrentPaintJobAndModelSlot) {
    CURMODEL = 4;
    CURPJ = 6;
    show_triangle({-1, 0, 0}, {1, 0, 0}, {0, 0, 1}, 5);
    model().prims[4].material[6] = 8;
    UPDATE3DWINDOW(4);
    EXPECT_EQ(pixels_of(5), 0);
    EXPECT_GT(pixels_of(8), 1000);
}

TEST_F(Views, AFaceThatReachesTheEyeOrBeyondIsLeftOut) {
    show_triangle({-1, 0, 0}, {1, 0, 0}, {0, 4.9, 1}, 5);
    UPDATE3DWINDOW(4);
    EXPECT_GT(pixels_of(5), 0);
    for (const double depth : {5.0, 5.1, 1000.0}) {
        model().verts[2].y = depth;
        expect_view(4, [](Canvas&) {});
    }
    model().prims[4].type = 2;
    model().prims[4].vertex[1] = 2;
    expect_view(4, [](Canvas&) {});
}

TEST_F(Views, CoordinatesThatAreNoNumbersLeaveTheFaceOut) {
    for (const double bad : {nan_value, -nan_value}) {
        show_triangle({-1, 0, 0}, {1, 0, 0}, {0, 0, bad}, 5);
        expect_view(4, [](Canvas&) {});
        show_triangle({-1, 0, 0}, {1, bad, 0}, {0, 0, 1}, 5);
        expect_view(4, [](Canvas&) {});
    }
}

TEST_F(Views, AHugeFaceIsDrawnAsFarAsItCanBeAndCostsNoTime) {
    show_triangle({-1e12, 0, -1e12}, {1e12, 0, -1e12}, {0, 0, 1e12}, 5);
    const auto begin = std::chrono::steady_clock::now();
    UPDATE3DWINDOW(4);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
    EXPECT_EQ(pixels_of(5), 347 * 241);
    show_triangle({-infinite, 0, 0}, {infinite, 0, 0}, {0, 0, infinite}, 5);
    UPDATE3DWINDOW(4);
    CURYAW = 1;
    UPDATE3DWINDOW(4);
}

TEST_F(Views, ZoomEnlargesAroundTheOrigin) {
    W3D[4].zoom = 120;
    show_triangle({-1, 0, 0}, {1, 0, 0}, {0, 0, 0.5}, 5);
    expect_view(4, [](Canvas& canvas) { DRAWTRIANGLE(canvas, 435, 440, 675, 440, 555, 380, material_colour(5)); });
}

} // namespace
