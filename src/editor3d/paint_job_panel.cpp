#include "editor3d/paint_job_panel.h"

#include "model/car.h"
#include "model/colours.h"
#include "model/paint_jobs.h"
#include "widgets/nested_loop.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"
#include "window/window.h"

#include <string>
#include <vector>

namespace {

constexpr Rectangle panel_area{735, 42, 954, 570};
constexpr int row_height = 16;
constexpr int first_row_y = 70;
constexpr int shades = 4, shade_left = 765, shade_step = 40, shade_width = 37, shade_height = 14;
constexpr int highlight_left = 764, highlight_width = 159, highlight_height = 16;
constexpr int rows_left = 764, rows_right = 925; // a scheme is hit between them
constexpr std::uint32_t highlight = 0xFFFAFA00;
constexpr int no_scheme = 0;

struct PaintJobPanel {
    int hovered = no_scheme; // 1 .. PJCOLS
    int shown = no_scheme;   // the one with the highlight
    int chosen = no_scheme;
};

void clear_panel() {
    const ScreenLock lock;
    fill_box(screen(), panel_area.x1, panel_area.y1, panel_area.x2, panel_area.y2, colour::background);
}

int row_y(int scheme) { return first_row_y + row_height * (scheme - 1); }

void draw_scheme(int scheme) {
    for (int shade = 0; shade < shades; ++shade) {
        const std::uint8_t material = PJCOL[scheme][static_cast<std::size_t>(shade)];
        fill_box_relative(screen(), shade_left + shade_step * shade, row_y(scheme), shade_width - 1, shade_height - 1,
                          MATERIAL[material].colour);
    }
}

void draw_panel() {
    const ScreenLock lock;
    clear_panel();
    DRAWSECTION(740, 50, 949, 565, "Paint jobs", false);
    for (int scheme = 1; scheme <= PJCOLS; ++scheme)
        draw_scheme(scheme);
}

void draw_highlight(int scheme, std::uint32_t colour) {
    if (scheme == no_scheme) return;
    draw_box_relative(screen(), highlight_left, row_y(scheme) - 1, highlight_width - 1, highlight_height - 1, colour);
}

void move_highlight(PaintJobPanel& panel) {
    if (panel.shown == panel.hovered) return;
    draw_highlight(panel.shown, colour::background);
    draw_highlight(panel.hovered, highlight);
    panel.shown = panel.hovered;
}

int scheme_at(Point at) {
    const bool inside = at.x > rows_left && at.x < rows_right && at.y >= first_row_y;
    const int scheme = inside ? (at.y - first_row_y) / row_height + 1 : no_scheme;
    return scheme <= PJCOLS ? scheme : no_scheme;
}

Answer cancel(PaintJobPanel&) { return Answer::done; }

// What a key or button does ends the panel.
using PanelKey = KeyRow<Answer (*)(PaintJobPanel&)>;
constexpr PanelKey keys[] = {
    {{}, "recolours the paint job with the scheme", nullptr, "left button on a scheme"},
    {{key::escape}, "closes the panel and changes nothing", cancel, "Escape, right button"},
};

Answer on_input(PaintJobPanel& panel, const Input& input) {
    panel.hovered = scheme_at(input.mouse.at());
    if (input.mouse.buttons == 2) return cancel(panel);
    if (!input.key.empty()) {
        const PanelKey* const row = row_of(std::span<const PanelKey>(keys), input.key);
        if (row) return row->action(panel);
        say_where_keys_are();
    }
    if (input.mouse.buttons == 1 && panel.hovered != no_scheme) {
        panel.chosen = panel.hovered;
        return Answer::done;
    }
    return panel.shown == panel.hovered ? Answer::nothing : Answer::changed;
}

void recolour_with(int scheme) {
    const int faces = recolour(shown_slot().edit(), CURPJ, PJCOL[scheme]);
    if (faces == 0) return say("No face of a group: nothing recoloured");
    say(std::to_string(faces) + (faces == 1 ? " face recoloured" : " faces recoloured"));
}

} // namespace

void PJSELECTION() {
    draw_panel();
    if (PJCOLS == 0) say("No schemes: they come from pjobs.cfg where the program is started");
    PaintJobPanel panel;
    panel.hovered = scheme_at(mouse().at());
    if (wait_for_release())
        run_nested([&] { move_highlight(panel); }, [&](const Input& input) { return on_input(panel, input); },
                   [] { return std::vector{paint_job_panel_keys()}; });
    if (panel.chosen != no_scheme) recolour_with(panel.chosen);
    wait_for_release();
    // ODDITY panel-leaves-a-gap (kept): nothing is drawn in the panel's place, and the views keep the old colours,
    // until something else asks for a redraw.
    clear_panel();
}

KeyHelpTable paint_job_panel_keys() { return key_help("In the paint-job panel:", keys); }
