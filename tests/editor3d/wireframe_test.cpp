// Wireframes, figure by figure.
#include "editor3d/wireframe.h"

#include "drawing/drawing.h"
#include "support/models.h"
#include "support/picture_words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

constexpr int side = 80;
constexpr ViewMapping mapping{40, 50, 10};

bool operator==(const SHAPEVERTEX& vertex, const std::array<double, 3>& at) {
    return vertex.x == at[0] && vertex.y == at[1] && vertex.z == at[2];
}

TEST(TurnOntoPlane, FrontIsXAndZSideIsYAndZ) {
    SHAPEMODEL model;
    add_vertex(model, 1, 2, 3);
    SHAPEMODEL top = model, front = model, from_side = model;
    turn_onto_plane(top, Plane::top);
    turn_onto_plane(front, Plane::front);
    turn_onto_plane(from_side, Plane::side);
    EXPECT_TRUE(top.verts[0] == (std::array{1.0, 2.0, 3.0}));
    EXPECT_TRUE(front.verts[0] == (std::array{1.0, 3.0, 2.0}));
    EXPECT_TRUE(from_side.verts[0] == (std::array{2.0, 3.0, 1.0}));
}

class Wireframe : public testing::Test {
protected:
    // The picture of the model's wireframe, white where it is drawn in either colour.
    ImageHandle drawn(Plane plane = Plane::top) {
        auto image = create_image(side, side, black);
        Canvas canvas(*image);
        draw_wireframe(canvas, model, plane, mapping);
        return image;
    }
    static ImageHandle figures(const std::function<void(Canvas&)>& draw) {
        auto image = create_image(side, side, black);
        Canvas canvas(*image);
        draw(canvas);
        return image;
    }
    static void line(Canvas& canvas, double x1, double y1, double x2, double y2) {
        draw_line(canvas, mapping.x(x1), mapping.y(y1), mapping.x(x2), mapping.y(y2), white);
    }

    SHAPEMODEL model;
};

TEST_F(Wireframe, AQuadrilateralIsItsClosedOutline) {
    add_vertex(model, -1, -1, 0);
    add_vertex(model, 2, -1, 5);
    add_vertex(model, 2, 1.5, 0);
    add_vertex(model, -1, 2, 0);
    add_primitive(model, 4, {0, 1, 2, 3});
    EXPECT_EQ(picture(*drawn()), picture(*figures([](Canvas& canvas) {
                  line(canvas, -1, -1, 2, -1);
                  line(canvas, 2, -1, 2, 1.5);
                  line(canvas, 2, 1.5, -1, 2);
                  line(canvas, -1, 2, -1, -1);
              })));
}

TEST_F(Wireframe, TheVerticalAxisPointsUp) {
    add_vertex(model, 1, 2, 0);
    add_vertex(model, 1, 2, 0);
    add_primitive(model, 2, {0, 1});
    const auto image = drawn();
    EXPECT_EQ(count(*image, wireframe_colour), 1);
    EXPECT_EQ(image->pixel(50, 30), wireframe_colour);
}

// Two corners: there and back would be the same pixels, so the closing line shows in a triangle only.
TEST_F(Wireframe, ALineIsOneLineAndATriangleIsClosed) {
    add_vertex(model, -2, 0, 0);
    add_vertex(model, 2, 0, 0);
    add_vertex(model, 0, 2, 0);
    add_primitive(model, 2, {0, 1});
    EXPECT_EQ(picture(*drawn()), picture(*figures([](Canvas& canvas) { line(canvas, -2, 0, 2, 0); })));
    model.nprims = 0;
    add_primitive(model, 3, {0, 1, 2});
    EXPECT_EQ(drawn()->pixel(30, 40), wireframe_colour); // half way from the third corner to the first
}

TEST_F(Wireframe, ATenCornerPolygonIsClosed) {
    std::vector<int> corners;
    for (int i = 0; i < 10; ++i)
        corners.push_back(add_vertex(model, 3 * std::cos(i * 0.6), 3 * std::sin(i * 0.6), 0));
    add_primitive(model, 10, corners);
    EXPECT_EQ(picture(*drawn()), picture(*figures([](Canvas& canvas) {
                  for (int i = 0; i < 10; ++i) {
                      const int next = (i + 1) % 10;
                      line(canvas, 3 * std::cos(i * 0.6), 3 * std::sin(i * 0.6), 3 * std::cos(next * 0.6),
                           3 * std::sin(next * 0.6));
                  }
              })));
}

TEST_F(Wireframe, ASphereIsACircleThroughItsSecondVertexAsThePlaneSeesIt) {
    add_vertex(model, 1, 0.5, 9);
    add_vertex(model, 2.2, 0.5, -9); // 1.2 in the plane, whatever the third axis says
    add_primitive(model, 11, {0, 1});
    EXPECT_EQ(picture(*drawn()), picture(*figures([](Canvas& canvas) { draw_circle(canvas, 50, 45, 12, white); })));
}

class WireWheel : public Wireframe {
protected:
    WireWheel() {
        // In a view's coordinates: P0, P1, P2 on one face, P3 to P5 on the other.
        add_vertex(model, -1, 0, 0);
        add_vertex(model, -1, 1.5, 2); // 2.5 from P0, 1.5 in the plane
        add_vertex(model, -1, 0.7, 0);
        add_vertex(model, 2, 0.2, 0);
        add_vertex(model, 2, 1.7, 0);
        add_vertex(model, 2, 0.7, 0);
        add_primitive(model, 12, {0, 1, 2, 3, 4, 5});
    }
};

TEST_F(WireWheel, FromTopAndFrontABoxAsHighAsTheWholeRadius) {
    const auto box = figures([](Canvas& canvas) { draw_box(canvas, 30, 25, 60, 75, white); });
    EXPECT_EQ(picture(*drawn(Plane::top)), picture(*box));
    EXPECT_EQ(picture(*drawn(Plane::front)), picture(*box));
}

TEST_F(WireWheel, FromTheSideTwoCirclesAroundTheFirstVertex) {
    EXPECT_EQ(picture(*drawn(Plane::side)), picture(*figures([](Canvas& canvas) {
                  draw_circle(canvas, 30, 50, 15, white);
                  draw_circle(canvas, 30, 50, 7, white);
              })));
}

TEST_F(WireWheel, MarkedPrimitivesHaveTheirOwnColour) {
    model.prims[0].mark = 1;
    EXPECT_GT(count(*drawn(), marked_wireframe_colour), 100);
    EXPECT_EQ(count(*drawn(), wireframe_colour), 0);
    model.prims[0].mark = 0;
    EXPECT_EQ(count(*drawn(), marked_wireframe_colour), 0);
}

TEST_F(Wireframe, OtherKindsAreNotDrawn) {
    for (int i = 0; i < 12; ++i)
        add_vertex(model, i, i, 0);
    for (const int type : {0, 1, 13, 100, 255})
        add_primitive(model, type, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    EXPECT_EQ(count(*drawn(), black), side * side);
}

TEST_F(Wireframe, AnIndexPastTheVerticesLeavesThePrimitiveOut) {
    for (int i = 0; i < 6; ++i)
        add_vertex(model, i % 2, i % 3, 0);
    add_primitive(model, 3, {0, 1, 6});
    add_primitive(model, 11, {65535, 0});
    add_primitive(model, 12, {0, 1, 2, 3, 4, 600});
    EXPECT_EQ(count(*drawn(), black), side * side);
    EXPECT_EQ(count(*drawn(Plane::side), black), side * side);
}

TEST_F(Wireframe, SidesToAVertexThatIsNowhereAreLeftOutAndTheOthersAreWhereTheyBelong) {
    add_vertex(model, -1, 0, 0);
    add_vertex(model, nan_value, 0, 0);
    add_vertex(model, 2, 0, 0);
    add_vertex(model, 2, 2, 0);
    add_primitive(model, 4, {0, 1, 2, 3});
    EXPECT_EQ(picture(*drawn()), picture(*figures([](Canvas& canvas) {
                  line(canvas, 2, 0, 2, 2);
                  line(canvas, 2, 2, -1, 0);
              })));
}

TEST_F(Wireframe, HugeAndInfiniteCoordinatesAreDrawnAsFarAsThePictureGoes) {
    add_vertex(model, -1e300, 1, 0);
    add_vertex(model, infinite, 1, 0);
    add_vertex(model, 0, 1e300, 0);
    for (int i = 0; i < 3; ++i)
        add_vertex(model, 0, 0, 0);
    add_primitive(model, 2, {0, 1});
    add_primitive(model, 11, {3, 2});
    add_primitive(model, 12, {0, 1, 2, 3, 4, 5});
    const auto image = drawn();
    for (int x = 0; x < side; ++x)
        EXPECT_EQ(image->pixel(x, 40), wireframe_colour);
    drawn(Plane::side);
}

} // namespace
