// The engine's torque curve and its four engine-speed markers as a graph on the screen.
//
// The curve is 104 bytes of PAR; point i stands for 128 x i revolutions per minute and lies 6 pixels right of the one
// before. The markers are words of PAR. Nothing here reads the mouse or a key.
#pragma once

#include "base/table.h"
#include "drawing/drawing.h"
#include "model/parameters.h"

#include <cstdint>

constexpr int rpm_per_point = 128;
constexpr int pixels_per_point = 6;

namespace graph_area {
constexpr int left = 65, right = 686;              // of the area that the mouse paints in
constexpr int top = 245, bottom = 500;             // torque 255 at zoom 1, torque 0
constexpr int strip_top = 510, strip_bottom = 540; // where the markers are dragged
} // namespace graph_area

struct SpeedMarker {
    const char* letter;
    const char* label;
    std::uint32_t colour;
    int offset; // of its speed, a word in PAR
};
constexpr int speed_markers = 4;
const SpeedMarker& speed_marker(int marker); // 1 idle, 2 downshift, 3 upshift, 4 maximum
int marker_speed(int marker);
// Kept within 16 bits.
void set_marker_speed(int marker, int speed);

struct TorqueGraph {
    int zoom = 2;          // 1 .. 4
    int selected = 0;      // curve point, 0 .. 103
    int hovered_speed = 0; // of the curve point last pointed at
    int dragged = 0;       // marker, 0 none
};

std::uint8_t torque(int point);
void set_torque(int point, int value); // kept within 8 bits

// Window coordinates.
bool over_curve(int x, int y);
bool over_marker_strip(int x, int y);
// What a place over the curve stands for; x in 65 .. 686, y in 245 .. 500.
int point_at(int x);
int torque_at(int y, int zoom);
// Every point strictly between those of two places over the curve gets the torque of the straight way between them.
void set_torque_between(Point from, Point to, int zoom);
// The engine speed of a place, cut to a whole number as a marker is dragged, and the nearest one as a key sets it.
int dragged_speed(int x);
int keyed_speed(int x);
// How far right of the graph's origin a speed is drawn.
int marker_place(int speed);
// The marker nearest to a speed and less than 1000 away, the first of several; 0 when there is none.
int marker_near(int speed);

// Clears the graph's area and draws everything anew.
void draw_torque_graph(Canvas& canvas, const TorqueGraph& graph);
// Whether what that draws reaches outside the area that it clears: a selected point far above the graph, or markers at
// speeds right of it.
bool reaches_outside(const TorqueGraph& graph);
// Moves the highlight to another point. graph.hovered_speed still is the one before.
void draw_hovered_point(Canvas& canvas, const TorqueGraph& graph, int point);
// Shows the engine speed and the torque of a point below the graph.
void draw_hovered_values(Canvas& canvas, int point);
