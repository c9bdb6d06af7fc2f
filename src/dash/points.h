// Lists of points that are edited one by one or laid along an arc: what the keys do that the steering wheel and the
// gauges share.
#pragma once

#include "dash/dash_state.h"

// A list, and what its keys may do with it.
struct PointList {
    PointEdit DashScreen::*edit;
    int (*last)();                    // the highest index that can be selected
    CockpitPoint (*point)(int index); // as it is stored
    void (*set_point)(int index, CockpitPoint at);
    int highest_y; // how far up keys go
    int least_radius, most_radius;
    void (*lay)(const Arc& arc);
};

// The selected point, or the arc's radius, one up or down.
void step_selection(DashScreen& state, const PointList& list, int step);
// The selected point, or the arc's centre.
void move_point(DashScreen& state, const PointList& list, int across, int down);
void widen_arc(DashScreen& state, const PointList& list);
void narrow_arc(DashScreen& state, const PointList& list);
void lay_points(DashScreen& state, const PointList& list);

// Whether these do anything now.
bool can_step_selection(const DashScreen& state, const PointList& list, int step);
bool can_move_point(const DashScreen& state, const PointList& list, int across, int down);
bool can_widen_arc(const DashScreen& state, const PointList& list);
bool can_narrow_arc(const DashScreen& state, const PointList& list);

// The selected index, lowered to the last one if the list has become shorter.
int selected_point(const DashScreen& state, const PointList& list);

// The same as actions for tables of keys.
template <const PointList& list, int step>
void step_selection_by_key(DashScreen& state) {
    step_selection(state, list, step);
}
template <const PointList& list, int across, int down>
void move_point_by_key(DashScreen& state) {
    move_point(state, list, across, down);
}
template <const PointList& list, void (*act)(DashScreen&, const PointList&)>
void act_by_key(DashScreen& state) {
    act(state, list);
}
template <const PointList& list, int step>
bool can_step_selection_by_key(const DashScreen& state) {
    return can_step_selection(state, list, step);
}
template <const PointList& list, int across, int down>
bool can_move_point_by_key(const DashScreen& state) {
    return can_move_point(state, list, across, down);
}
template <const PointList& list, bool (*can)(const DashScreen&, const PointList&)>
bool can_by_key(const DashScreen& state) {
    return can(state, list);
}
inline bool edits_arc(const DashScreen& state) { return state.arcs; }

// The rows of the keys that every list has.
template <const PointList& list, int step>
constexpr KeyBinding<DashScreen> selection_row(const char* key, const char* words) {
    return {{key}, words, step_selection_by_key<list, step>, nullptr, can_step_selection_by_key<list, step>};
}
template <const PointList& list, int across, int down>
constexpr KeyBinding<DashScreen> move_row(const char* key, const char* words) {
    return {{key}, words, move_point_by_key<list, across, down>, nullptr, can_move_point_by_key<list, across, down>};
}
