// The driving test: the wheel turns while a cursor key is held.
#include "dash/modes.h"

namespace {

void draw_view(const DashScreen& state) {
    draw_cockpit(state.view(), state.steering);
    draw_steering_dot(state.view(), state.steering);
}

constexpr KeyBinding<DashScreen> keys[] = {
    {{key::left}, "steers left, as long as it is held"},
    {{key::right}, "steers right, as long as it is held"},
};

} // namespace

const DashMode driving_mode{.key_heading = "In the driving test:",
                            .view_title = "Driving test",
                            .draw_view = draw_view,
                            .draw_panel = nullptr,
                            .on_mouse = nullptr,
                            .keys = keys};
