// What a move of the mouse over the torque curve costs, against a full redraw of the graph: everything that the screen
// does in a pass, without a window.
#include "alternate.h"
#include "app/backend.h"
#include "app/window.h"
#include "model/parameters.h"
#include "params/parameter_screen.h"
#include "params/parameter_table.h"
#include "params/target_edit.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

namespace {

constexpr double limit = 0.1;
constexpr int moves = torque_points; // in one measured run: from point to point over the whole curve

// A mouse that hops from curve point to curve point, one at every look, and a window that shows nothing.
class HoppingMouse : public Backend {
public:
    bool open(int, int, std::string&) override { return true; }
    void set_title(const std::string&) override {}
    void present(const Image&, const Rectangle&) override {}
    void poll(std::vector<InputEvent>& events) override {
        point_ = (point_ + 1) % torque_points;
        InputEvent event;
        event.kind = InputEvent::Kind::mouse_move;
        event.x = graph_area::left + pixels_per_point * point_ + 2;
        event.y = 400;
        events.push_back(event);
    }
    void wait(int) override {}
    double seconds() override { return 0; }

private:
    int point_ = 0;
};

// A curve of every kind of point, as an engine has it.
void make_curve() {
    for (int point = 0; point < torque_points; ++point)
        set_torque(point, static_cast<int>(40 + 100 * std::sin(std::numbers::pi * point / torque_points)));
}

void redraw(ParameterScreen& state) {
    state.redraw = true;
    draw(state);
    benchmark::DoNotOptimize(screen().image().bytes().data());
}

void hover(ParameterScreen& state) {
    state.last = state.now;
    state.now = read_mouse();
    MAINTAINTARGETS(1, 35);
    on_mouse(state);
    benchmark::DoNotOptimize(screen().image().bytes().data());
}

} // namespace

int main() {
    HoppingMouse mouse_and_window;
    use_backend(&mouse_and_window);
    INITPARAMTARGETS();
    make_curve();
    ParameterScreen state;
    redraw(state);

    const auto run = compare(
        21,
        [&] {
            for (int i = 0; i < moves; ++i)
                hover(state);
        },
        [&] {
            for (int i = 0; i < moves; ++i)
                redraw(state);
        });
    const double ratio = 1 / run.ratio;
    std::printf("full redraw of the graph: %.1f us; hover move: %.1f us\n", run.theirs / moves * 1000,
                run.ours / moves * 1000);
    std::printf("hover move: %.3f x full redraw (limit %.1f) %s\n", ratio, limit, ratio <= limit ? "ok" : "MISSED");
    use_backend(nullptr);
    return ratio <= limit ? 0 : 1;
}
