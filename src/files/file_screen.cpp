#include "files/file_screen.h"

#include "base/config.h"
#include "files/file_list.h"
#include "files/transfer.h"
#include "widgets/line_edit.h"
#include "widgets/screen_loop.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t field_limit = 62;
constexpr int field_cells = 63; // of a field's text that have room beside its label, the caret behind the last included
constexpr int list_rows = 28;
constexpr int no_row = 65535;

constexpr std::uint32_t field_caret = 0xFF00FA00;
constexpr std::uint32_t file_colour = colour::label, file_hovered = 0xFFF0F0F0;
constexpr std::uint32_t directory_colour = 0xFF00FA00, directory_hovered = 0xFFC8FAC8;

constexpr Rectangle list_area{18, 130, 597, 585};
constexpr Rectangle field_area{90, 60, 597, 91};
constexpr Rectangle status_area{650, 150, 937, 197};
constexpr std::size_t status_cells = 36;
constexpr std::size_t status_lines = 3;

constexpr int load_button = 1, save_button = 2, toggle_button = 3;

const std::string picture_filter = ".tga.bmp.jpg.jpeg.png.gif.pcx.";

enum class Field : std::size_t { directory, file };

struct FileScreen : ScreenState {
    std::uint8_t mode = file_screen_mode::cars;
    std::array<LineEdit, 2> fields{LineEdit(field_limit, current_directory()), LineEdit(field_limit)};
    Field focus = Field::file;
    int top = 1;
    int hover_row = no_row;
    int chosen = 0;
    std::string list_mode{};
    bool rescan = true, redraw_list = true, redraw_fields = true;
    std::string result{};

    explicit FileScreen(std::uint8_t in_mode);
    LineEdit& field(Field which) { return fields[static_cast<std::size_t>(which)]; }
    LineEdit& focused() { return field(focus); }
};

std::string first_list_mode(std::uint8_t mode) {
    switch (mode) {
    case file_screen_mode::cars: return cars_mode;
    case file_screen_mode::pictures: return picture_filter;
    default: return {};
    }
}

FileScreen::FileScreen(std::uint8_t in_mode) : mode(in_mode), list_mode(first_list_mode(in_mode)) {}

// --- drawing -------------------------------------------------------------------------------------------------------

// Draws inside an area only, on fresh background.
template <typename Draw>
void redraw_area(const Rectangle& area, Draw draw) {
    const ScreenLock lock;
    const ClipGuard clip(screen(), area);
    fill_box(screen(), area.x1, area.y1, area.x2, area.y2, colour::background);
    draw();
}

void draw_frame(std::uint8_t mode) {
    clear_work_area();
    draw_text(screen(), 16, 16, "= FILES =", colour::title);
    DRAWSECTION(16, 50, 599, 99, "Input", false);
    DRAWSECTION(16, 119, 599, 589, "Files", false);
    DRAWSECTION(620, 50, 939, 199, "Options", false);
    draw_text(screen(), 30, 60, "Dir:", colour::label);
    draw_text(screen(), 30, 76, "File:", colour::label);
    BUTTONS = 0;
    CREATESIMPLEBUTTON(650, 70, " Load File ", load_button);
    APPENDBUTTON(" Save File ", save_button, false);
    if (mode == file_screen_mode::cars) CREATESIMPLEBUTTON(650, 110, " Toggle Cars/Files ", toggle_button);
}

// A text longer than the field has room for is shown from where its caret can be seen.
void draw_field(const LineEdit& field, int y, bool focused) {
    const int caret = focused ? static_cast<int>(field.caret()) : 0;
    const int first = std::max(0, caret - (field_cells - 1));
    draw_text(screen(), field_area.x1, y, std::string_view(field.text()).substr(static_cast<std::size_t>(first)),
              colour::value);
    if (focused) draw_box_relative(screen(), field_area.x1 + glyph_width * (caret - first), y, 0, 14, field_caret);
}

void draw_fields(FileScreen& state) {
    redraw_area(field_area, [&] {
        draw_field(state.field(Field::directory), 60, state.focus == Field::directory);
        draw_field(state.field(Field::file), 76, state.focus == Field::file);
    });
    state.redraw_fields = false;
}

struct ListRow {
    std::string text;
    std::uint32_t colour;
};

ListRow list_row(const LISTEDFILE& entry, bool hovered) {
    switch (entry.kind) {
    case entry_kind::file: return {entry.shown, hovered ? file_hovered : file_colour};
    case entry_kind::directory: return {"[" + entry.shown + "]", hovered ? directory_hovered : directory_colour};
    default: return {"[ - " + entry.shown + " - ]", hovered ? directory_hovered : directory_colour};
    }
}

void draw_list(FileScreen& state) {
    redraw_area(list_area, [&] {
        for (int row = 0; row < list_rows && state.top + row <= LFILES; ++row) {
            const ListRow shown = list_row(LFILE[state.top + row], row == state.hover_row);
            draw_text(screen(), 50, list_area.y1 + glyph_height * row, shown.text, shown.colour);
        }
    });
    state.redraw_list = false;
}

// A text longer than the box is wide goes on below.
void append_wrapped(std::vector<ListRow>& lines, const std::string& text, std::uint32_t colour) {
    for (std::size_t at = 0; at < text.size(); at += status_cells)
        lines.push_back({text.substr(at, status_cells), colour});
}

void draw_status(const TransferReport& report) {
    std::vector<ListRow> lines;
    append_wrapped(lines, report.text, report.failed ? colour::error : colour::success);
    append_wrapped(lines, report.first_failure, colour::error);
    lines.resize(std::min(lines.size(), status_lines));
    redraw_area(status_area, [&] {
        int y = status_area.y1;
        for (const ListRow& line : lines) {
            draw_text(screen(), status_area.x1, y, line.text, line.colour);
            y += glyph_height;
        }
    });
}

// --- actions -------------------------------------------------------------------------------------------------------

void put_text(FileScreen& state, Field which, const std::string& text) {
    state.field(which).set_text(text);
    if (state.focus == which) state.focused().caret_to_end();
    state.redraw_fields = true;
}

// The Dir field says again where files come from and go to, whatever was typed there and not entered; the list has what
// was saved.
void show_where_it_went(FileScreen& state, Transfer direction) {
    const std::string directory = current_directory();
    if (state.field(Field::directory).text() != directory) put_text(state, Field::directory, directory);
    if (direction == Transfer::load) return;
    UPDATEFILELIST(state.list_mode);
    state.redraw_list = true;
}

void run_transfer(FileScreen& state, Transfer direction) {
    const std::string name = state.field(Field::file).text();
    const TransferReport report = transfer(direction, name);
    if (report.unknown_format && state.mode == file_screen_mode::pictures) {
        state.result = (direction == Transfer::load ? "L:" : "S:") + name;
        state.leave = true;
        return;
    }
    draw_status(report.unknown_format ? report_unknown_format() : report);
    show_where_it_went(state, direction);
}

void toggle_list(FileScreen& state) {
    if (state.mode != file_screen_mode::cars) return;
    state.list_mode = state.list_mode == cars_mode ? car_file_filter() : cars_mode;
    state.rescan = true;
}

void enter_directory(FileScreen& state, const std::string& path) {
    change_directory(path);
    put_text(state, Field::directory, current_directory());
    state.rescan = true;
}

void switch_focus(FileScreen& state) {
    state.focus = state.focus == Field::file ? Field::directory : Field::file;
    state.focused().caret_to_end();
    state.redraw_fields = true;
}

void rescan(FileScreen& state) {
    UPDATEFILELIST(state.list_mode);
    state.top = 1;
    state.rescan = false;
    state.redraw_list = true;
}

// --- mouse ---------------------------------------------------------------------------------------------------------

bool in_list(const MouseState& at) { return at.x > 39 && at.x <= 549 && at.y > 129 && at.y <= 579; }

void hover(FileScreen& state, int row) {
    if (row == state.hover_row) return;
    state.hover_row = row;
    state.redraw_list = true;
}

// ODDITY files-wheel-stops-short (kept): in a list of more than 28 entries the wheel never brings the last one into
// view.
void scroll(FileScreen& state, int rows_down) {
    state.top = std::max(1, std::min(state.top + rows_down, LFILES - list_rows));
    state.redraw_list = true;
}

// A click on a row is over with the release.
void choose(FileScreen& state, int entry) {
    if (state.redraw_list) draw_list(state);
    if (wait_for_release()) state.chosen = entry;
}

void on_list(FileScreen& state) {
    const MouseState& at = state.input.mouse;
    const int row = (at.y - list_area.y1) / glyph_height;
    const bool is_row = row < list_rows;
    hover(state, is_row ? row : no_row);
    if (at.buttons == 1 && is_row && state.top + row <= LFILES) choose(state, state.top + row);
    if (at.wheel != state.input.before.wheel) scroll(state, state.input.before.wheel - at.wheel);
}

void on_mouse(FileScreen& state) {
    if (in_list(state.input.mouse))
        on_list(state);
    else
        hover(state, no_row);
}

void maintain_buttons(FileScreen& state) {
    switch (MAINTAINBUTTONS()) {
    case load_button: run_transfer(state, Transfer::load); break;
    case save_button: run_transfer(state, Transfer::save); break;
    case toggle_button:
        if (wait_for_release()) toggle_list(state);
        return;
    default: return;
    }
    wait_for_release();
}

// --- keys ----------------------------------------------------------------------------------------------------------

void edit_field(FileScreen& state) {
    if (state.focused().handle_key(state.input.key)) state.redraw_fields = true;
}

void enter_typed_directory(FileScreen& state) {
    if (state.focus == Field::directory) enter_directory(state, state.focused().text());
}

template <Transfer direction>
void transfer_by_key(FileScreen& state) {
    run_transfer(state, direction);
}

constexpr KeyBinding<FileScreen> keys[] = {
    {{},
     "a car or file goes into the File field; a directory or link is entered. \" (c/p)\" marks a project",
     nullptr,
     "click on a row"},
    {{}, "scrolls it, to the last row but one; the list has room for 200 entries", nullptr, "wheel over the list"},
    {{key::tab, key::up, key::down}, "changes between the Dir and the File field", switch_focus},
    {{key::any_character, key::backspace, key::delete_, key::left, key::right},
     "edit the field, 62 characters at most",
     edit_field},
    {{key::home, key::end}, "the caret goes to the front or behind the text", edit_field},
    {{key::enter},
     "enters that directory; until then files come from, and go to, the one before",
     enter_typed_directory,
     "Enter in Dir"},
    {{key::ctrl<'L'>}, "loads", transfer_by_key<Transfer::load>, "Ctrl+L, \"Load File\""},
    {{key::ctrl<'S'>}, "saves", transfer_by_key<Transfer::save>, "Ctrl+S, \"Save File\""},
    {{key::ctrl<'C'>}, "shows cars by name, or car files", toggle_list, "Ctrl+C, \"Toggle Cars/Files\""},
    {{key::escape, key::close_window}, "ends the program", end_program<FileScreen>},
};

// --- the screen ----------------------------------------------------------------------------------------------------

void act_on_chosen(FileScreen& state) {
    if (state.chosen == 0) return;
    const LISTEDFILE entry = LFILE[state.chosen];
    state.chosen = 0;
    switch (entry.kind) {
    case entry_kind::file: put_text(state, Field::file, entry.name); break;
    case entry_kind::directory:
    case entry_kind::link: enter_directory(state, entry.name); break;
    case entry_kind::completed_link: enter_directory(state, entry.name + "."); break;
    default: break;
    }
    state.redraw_list = state.redraw_fields = true;
}

void redraw(FileScreen& state) {
    if (state.repaint) {
        draw_frame(state.mode);
        state.redraw_fields = state.redraw_list = true;
    }
    if (state.rescan) rescan(state);
    if (state.redraw_fields) draw_fields(state);
    if (state.redraw_list) draw_list(state);
}

constexpr Step order[] = {Step::redraw, Step::read, Step::mouse, Step::widgets, Step::key, Step::menu_bar, Step::after};
constexpr Screen<FileScreen> file_screen{
    .order = order,
    .redraw = redraw,
    .on_mouse = on_mouse,
    .widgets = maintain_buttons,
    .keys = keys,
    .after = act_on_chosen,
};

} // namespace

std::string FILEHANDLING(std::uint8_t mode) {
    FileScreen state(mode);
    run_screen(state, file_screen);
    BUTTONS = 0;
    return state.result;
}

std::vector<KeyHelpTable> file_screen_keys() { return {key_help("", keys)}; }
