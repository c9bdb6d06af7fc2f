#include "files/file_screen.h"

#include "base/config.h"
#include "base/text.h"
#include "files/file_list.h"
#include "files/list_view.h"
#include "files/transfer.h"
#include "widgets/line_edit.h"
#include "widgets/screen_loop.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t field_limit = 62;
constexpr int field_cells = 63; // of a field's text that have room beside its label, the caret behind the last included
constexpr std::uint32_t field_caret = 0xFF00FA00;

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
    ListView list;
    int drawn_row = no_list_row; // that the screen shows as pointed at
    int chosen = 0;
    TransferReport status;
    std::string list_mode{};
    bool rescan = true, redraw_list = true, redraw_fields = true, redraw_status = false;
    std::string result{};

    explicit FileScreen(std::uint8_t in_mode);
    LineEdit& field(Field which) { return fields[static_cast<std::size_t>(which)]; }
    const LineEdit& field(Field which) const { return fields[static_cast<std::size_t>(which)]; }
    LineEdit& focused() { return field(focus); }
};

std::string first_list_mode(std::uint8_t mode) {
    switch (mode) {
    case file_screen_mode::cars: return cars_mode;
    case file_screen_mode::pictures: return picture_filter;
    default: return {};
    }
}

void create_buttons(std::uint8_t mode) {
    BUTTONS = 0;
    CREATESIMPLEBUTTON(650, 70, " Load File ", load_button);
    APPENDBUTTON(" Save File ", save_button, false);
    if (mode == file_screen_mode::cars) CREATESIMPLEBUTTON(650, 110, " Toggle Cars/Files ", toggle_button);
}

FileScreen::FileScreen(std::uint8_t in_mode) : mode(in_mode), list_mode(first_list_mode(in_mode)) {
    create_buttons(mode);
}

// --- drawing -------------------------------------------------------------------------------------------------------

void draw_frame(Canvas& canvas) {
    clear_work_area(canvas);
    draw_text(canvas, 16, 16, "= FILES =", colour::title);
    draw_section(canvas, {16, 50, 599, 99}, "Input", false);
    draw_section(canvas, {16, 119, 599, 589}, "Files", false);
    draw_section(canvas, {620, 50, 939, 199}, "Options", false);
    draw_text(canvas, 30, 60, "Dir:", colour::label);
    draw_text(canvas, 30, 76, "File:", colour::label);
}

// A text longer than the field has room for is shown from where its caret can be seen.
void draw_field(const LineEdit& field, int y, bool focused, Canvas& canvas) {
    const int caret = focused ? static_cast<int>(field.caret()) : 0;
    const int first = std::max(0, caret - (field_cells - 1));
    draw_text(canvas, field_area.x1, y, std::string_view(field.text()).substr(static_cast<std::size_t>(first)),
              colour::value);
    if (focused) draw_box_relative(canvas, field_area.x1 + glyph_width * (caret - first), y, 0, 14, field_caret);
}

void draw_fields(const FileScreen& state, Canvas& canvas) {
    const ClipGuard clip(canvas, field_area);
    fill_box(canvas, field_area, colour::background);
    draw_field(state.field(Field::directory), 60, state.focus == Field::directory, canvas);
    draw_field(state.field(Field::file), 76, state.focus == Field::file, canvas);
}

// The status line, and what goes on below it: the rest of a longer text, the first of several files that failed.
void draw_status(const TransferReport& report, Canvas& canvas) {
    fill_box(canvas, status_area, colour::background);
    std::vector<std::string> lines = wrapped(report.text, status_cells);
    const std::size_t lines_of_text = lines.size();
    std::ranges::copy(wrapped(report.first_failure, status_cells), std::back_inserter(lines));
    for (std::size_t line = 0; line < std::min(lines.size(), status_lines); ++line) {
        const bool failed = report.failed || line >= lines_of_text;
        draw_text(canvas, status_area.x1, status_area.y1 + glyph_height * static_cast<int>(line), lines[line],
                  failed ? colour::error : colour::success);
    }
}

// A pointer that has moved on changes two rows.
void draw_list_changes(FileScreen& state, Canvas& canvas) {
    if (state.redraw_list) {
        draw_list(state.list, canvas);
    } else if (state.drawn_row != state.list.row) {
        draw_list_row(state.list, state.drawn_row, canvas);
        draw_list_row(state.list, state.list.row, canvas);
    }
    state.drawn_row = state.list.row;
    state.redraw_list = false;
}

void rescan(FileScreen& state) {
    UPDATEFILELIST(state.list_mode);
    state.list.top = 1;
    state.rescan = false;
    state.redraw_list = true;
}

void redraw(FileScreen& state) {
    if (state.repaint) {
        draw_frame(screen());
        forget_drawn_buttons();
        state.redraw_fields = state.redraw_list = state.redraw_status = true;
    }
    if (state.rescan) rescan(state);
    if (state.redraw_fields) draw_fields(state, screen());
    if (state.redraw_status) draw_status(state.status, screen());
    draw_list_changes(state, screen());
    state.redraw_fields = state.redraw_status = false;
}

// A click that was acted on is over with the release. False when the window is closed before it.
bool finish_click(FileScreen& state) {
    {
        const ScreenLock one_frame;
        redraw(state);
    }
    return wait_for_release();
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
    state.status = report.unknown_format ? report_unknown_format() : report;
    state.redraw_status = true;
    if (!report.note.empty()) say(report.note);
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

// --- mouse ---------------------------------------------------------------------------------------------------------

void scroll(FileScreen& state, int rows_down) {
    scroll_list(state.list, rows_down);
    state.redraw_list = true;
}

void on_mouse(FileScreen& state) {
    const MouseState& at = state.input.mouse;
    const bool inside = in_list(at.at());
    state.list.row = inside ? list_row_at(at.at()) : no_list_row;
    if (!inside) return;
    const int entry = list_entry(state.list, state.list.row);
    if (at.buttons == 1 && entry != 0 && finish_click(state)) state.chosen = entry;
    if (at.wheel != state.input.before.wheel) scroll(state, state.input.before.wheel - at.wheel);
}

void maintain_buttons(FileScreen& state) {
    switch (MAINTAINBUTTONS()) {
    case load_button: run_transfer(state, Transfer::load); break;
    case save_button: run_transfer(state, Transfer::save); break;
    case toggle_button:
        if (finish_click(state)) toggle_list(state);
        return;
    default: return;
    }
    finish_click(state);
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

bool names_something(const FileScreen& state) { return stands_for_files(state.field(Field::file).text()); }
bool is_in_directory_field(const FileScreen& state) { return state.focus == Field::directory; }
bool lists_cars(const FileScreen& state) { return state.mode == file_screen_mode::cars; }

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
     "Enter in Dir",
     is_in_directory_field},
    {{key::ctrl<'L'>}, "loads", transfer_by_key<Transfer::load>, "Ctrl+L, \"Load File\"", names_something},
    {{key::ctrl<'S'>}, "saves", transfer_by_key<Transfer::save>, "Ctrl+S, \"Save File\"", names_something},
    {{key::ctrl<'C'>}, "shows cars by name, or car files", toggle_list, "Ctrl+C, \"Toggle Cars/Files\"", lists_cars},
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
