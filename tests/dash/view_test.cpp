#include "dash_test.h"

namespace {
using View = DashTest;
}

TEST_F(View, StandsInItsSectionOrOverTheWholeWorkArea) {
    EXPECT_EQ(view_at(2).at({0, 0}), (Point{50, 100}));
    EXPECT_EQ(view_at(2).at({319, 199}), (Point{688, 498}));
    EXPECT_EQ(view_at(3).at({0, 0}), (Point{0, 0}));
    EXPECT_EQ(view_at(3).at({-5, 250}), (Point{-15, 750}));
    EXPECT_EQ(view_at(2).area, (Rectangle{50, 100, 689, 499}));
    EXPECT_EQ(view_at(3).area, (Rectangle{0, 0, 959, 599}));
}

TEST_F(View, LeadsBackToTheCanvasByWholePixels) {
    EXPECT_EQ(view_at(2).canvas_point({50, 100}), (CockpitPoint{0, 0}));
    EXPECT_EQ(view_at(2).canvas_point({51, 103}), (CockpitPoint{0, 1}));
    EXPECT_EQ(view_at(2).canvas_point({689, 499}), (CockpitPoint{319, 199}));
    EXPECT_EQ(view_at(3).canvas_point({2, 3}), (CockpitPoint{0, 1}));
    EXPECT_EQ(view_at(3).canvas_point({959, 599}), (CockpitPoint{319, 199}));
}

TEST_F(View, EndsAtItsRightAndBottomEdges) {
    for (const Point outside : {Point{49, 300}, Point{690, 300}, Point{300, 99}, Point{300, 500}, Point{-1, -1}})
        EXPECT_FALSE(view_at(2).canvas_point(outside)) << outside.x << ", " << outside.y;
    for (const Point outside : {Point{960, 300}, Point{300, 600}, Point{-1, -1}})
        EXPECT_FALSE(view_at(3).canvas_point(outside)) << outside.x << ", " << outside.y;
}

TEST_F(View, TheOtherZoomOfTwoIsThree) {
    EXPECT_EQ(other_zoom(2), 3);
    EXPECT_EQ(other_zoom(3), 2);
}
