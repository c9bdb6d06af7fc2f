#include "widgets/page.h"

#include "widgets/nested_loop.h"
#include "widgets/widgets.h"
#include "window/window.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

constexpr Rectangle work_area{0, 0, screen_width - 1, work_area_bottom};
constexpr Rectangle frame{10, 50, 949, 589};

// The pixels of the work area, put back when it ends.
class KeptWorkArea {
public:
    KeptWorkArea() {
        const auto pixels = area();
        kept_.assign(pixels.begin(), pixels.end());
    }
    ~KeptWorkArea() {
        const ScreenLock one_frame;
        std::ranges::copy(kept_, area().begin());
        screen().add_damage(work_area);
    }
    KeptWorkArea(const KeptWorkArea&) = delete;
    KeptWorkArea& operator=(const KeptWorkArea&) = delete;

private:
    static std::span<std::uint8_t> area() {
        Image& picture = screen().image();
        return picture.bytes().first(picture.pitch() * (work_area_bottom + 1));
    }

    std::vector<std::uint8_t> kept_;
};

} // namespace

void draw_page(Canvas& canvas, const std::string& title, const std::string& heading, const std::string& hint) {
    clear_work_area(canvas);
    draw_text(canvas, 16, 16, title, colour::title);
    draw_text(canvas, frame.x2 + 1 - glyph_width * static_cast<int>(hint.size()), 16, hint, colour::label);
    draw_section(canvas, frame, heading, false);
}

std::optional<Point> show_page(const std::function<void(Canvas&)>& draw,
                               const std::function<bool(const Input&)>& moved) {
    const KeptWorkArea kept;
    std::optional<Point> pressed;
    run_nested([&] { draw(screen()); },
               [&](const Input& input) {
                   if (input.left_pressed()) pressed = input.mouse.at();
                   if (input.pressed() || !input.key.empty()) return Answer::done;
                   return moved && moved(input) ? Answer::changed : Answer::nothing;
               });
    spend_press();
    return pressed;
}
