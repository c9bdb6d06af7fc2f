// What a move of the mouse over the torque curve costs, against a full redraw of the graph: everything that the screen
// does in a pass, and the copying of what it shows.
#include "alternate.h"
#include "model/parameters.h"
#include "params/parameter_screen.h"
#include "params/parameter_table.h"
#include "window/backend.h"
#include "window/window.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

namespace {

constexpr double limit = 0.1;
constexpr int moves = torque_points; // in one measured run: from point to point over the whole curve

// A mouse that hops from curve point to curve point, one at every look, and a window that copies what it is to show, as
// a real one does: a frame costs by its size.
class HoppingMouse : public Backend {
public:
    bool open(int, int, std::string&) override { return true; }
    void set_title(const std::string&) override {}
    void present(const Image& picture, std::span<const Rectangle> changed) override {
        for (const Rectangle& rectangle : changed)
            copy(picture, rectangle);
        benchmark::DoNotOptimize(shown_.data());
    }
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
    static constexpr int bytes_per_pixel = 4;

    void copy(const Image& picture, const Rectangle& changed) {
        const auto first = static_cast<std::size_t>(changed.x1) * bytes_per_pixel;
        const auto length = static_cast<std::size_t>(changed.x2 - changed.x1 + 1) * bytes_per_pixel;
        for (int y = changed.y1; y <= changed.y2; ++y) {
            const auto from = picture.row(y).subspan(first, length);
            std::copy(from.begin(), from.end(), shown_.begin() + y * screen_width * bytes_per_pixel);
        }
    }

    int point_ = 0;
    std::vector<std::uint8_t> shown_ =
        std::vector<std::uint8_t>(static_cast<std::size_t>(screen_width * screen_height * bytes_per_pixel));
};

// A curve of every kind of point, as an engine has it.
void make_curve() {
    for (int point = 0; point < torque_points; ++point)
        set_torque(point, static_cast<int>(40 + 100 * std::sin(std::numbers::pi * point / torque_points)));
}

void redraw(ParameterScreen& state) {
    state.redraw = true;
    redraw_screen(state, parameter_screen);
    benchmark::DoNotOptimize(screen().image().bytes().data());
}

// The screen's own pass.
void hover(ParameterScreen& state, RunningScreen& running) {
    run_pass(state, parameter_screen, running);
    benchmark::DoNotOptimize(screen().image().bytes().data());
}

} // namespace

int main() {
    HoppingMouse mouse_and_window;
    use_backend(&mouse_and_window);
    INITPARAMTARGETS();
    make_curve();
    ParameterScreen state;
    RunningScreen running(state);
    redraw(state);

    const auto run = compare(
        21,
        [&] {
            for (int i = 0; i < moves; ++i)
                hover(state, running);
        },
        [&] {
            for (int i = 0; i < moves; ++i)
                redraw(state);
        });
    std::printf("hover move: median %.2f us, fastest %.2f; full redraw of the graph: median %.2f us, fastest %.2f\n",
                run.our_median / moves * 1000, run.ours / moves * 1000, run.their_median / moves * 1000,
                run.theirs / moves * 1000);
    const bool kept = report_at_most("hover move", 1 / run.ratio, "x full redraw of the graph", limit);
    use_backend(nullptr);
    return kept ? 0 : 1;
}
