#include "files/file_screen.h"

#include "base/code_page.h"
#include "base/config.h"
#include "base/text.h"
#include "files/dropped_path.h"
#include "files/file_fields.h"
#include "files/file_list.h"
#include "files/kept_work.h"
#include "files/list_view.h"
#include "files/transfer.h"
#include "model/check_car.h"
#include "widgets/screen_loop.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

namespace {

constexpr Rectangle status_area{650, 150, 937, 197};
constexpr std::size_t status_cells = 36;
constexpr std::size_t status_lines = 3;

constexpr int load_button = 1, save_button = 2, toggle_button = 3;

struct FileScreen : ScreenState {
    std::uint8_t mode = file_screen_mode::cars;
    FileFields fields{current_directory()};
    ListView list;
    int drawn_row = no_list_row; // that the screen shows as pointed at
    int chosen = 0;
    TransferReport status;
    std::string list_mode{};
    bool rescan = true, redraw_list = true, redraw_fields = true, redraw_status = false;
    std::string result{};

    explicit FileScreen(std::uint8_t in_mode);
};

std::string first_list_mode(std::uint8_t mode) {
    switch (mode) {
    case file_screen_mode::cars: return cars_mode;
    case file_screen_mode::pictures: return std::string(picture_filter);
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
    FileFields::draw_labels(canvas);
}

// The status line, and what goes on below it: the rest of a longer text, the first of several files that failed.
void draw_status(const TransferReport& report, Canvas& canvas) {
    fill_box(canvas, status_area, colour::background);
    std::vector<std::string> lines = wrapped(code_page_from_utf8(report.text), status_cells);
    const std::size_t lines_of_text = lines.size();
    std::ranges::copy(wrapped(code_page_from_utf8(report.first_failure), status_cells), std::back_inserter(lines));
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

// Reads the list, which stays where it stands as long as there is something to see.
void read_list(FileScreen& state) {
    UPDATEFILELIST(state.list_mode);
    if (state.mode == file_screen_mode::cars) list_kept_work();
    keep_in_list(state.list);
    const bool cut = listable_entries() > LFILES;
    set_screen_fact(cut ? std::to_string(LFILES) + " of " + std::to_string(listable_entries()) + " entries" : "");
    state.redraw_list = true;
}

void rescan(FileScreen& state) {
    state.list.top = 1;
    state.rescan = false;
    read_list(state);
}

void redraw(FileScreen& state) {
    if (state.repaint) {
        draw_frame(screen());
        forget_drawn_buttons();
        state.redraw_fields = state.redraw_list = state.redraw_status = true;
    }
    if (state.rescan) rescan(state);
    if (state.redraw_fields) {
        state.fields.keep_caret_in_view();
        state.fields.draw(screen());
    }
    if (state.redraw_status) draw_status(state.status, screen());
    draw_list_changes(state, screen());
    if (state.repaint) MAINTAINBUTTONS(); // as part of this frame; a click is seen by the step that looks for it
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
    state.fields.put_text(which, text);
    state.redraw_fields = true;
}

// The Dir field says again where files come from and go to, whatever was typed there and not entered; the list has what
// was saved.
void show_where_it_went(FileScreen& state, Transfer direction) {
    const std::string directory = current_directory();
    if (state.fields.text(Field::directory) != directory) put_text(state, Field::directory, directory);
    if (direction == Transfer::save) read_list(state);
}

// What there is to say about what was done; the message about something earlier goes also when that is nothing.
void tell(const std::string& message) {
    unsay(said());
    say(code_page_from_utf8(message));
}

// What was saved, and the game will not take.
void tell_checks(const std::string& note) {
    const std::size_t failed = serious_findings(check_car(DOCUMENT));
    if (failed > 0) tell((note.empty() ? "" : note + "; ") + counted(failed, "check", "checks") + " failed, F2");
}

void run_transfer(FileScreen& state, Transfer direction) {
    const std::string name = state.fields.text(Field::file);
    const TransferReport report = transfer(direction, name);
    if (report.unknown_format && state.mode == file_screen_mode::pictures) {
        state.result = (direction == Transfer::load ? "L:" : "S:") + name;
        state.leave = true;
        return;
    }
    state.status = report.unknown_format ? report_unknown_format() : report;
    state.redraw_status = true;
    tell(report.note);
    if (direction == Transfer::save && !report.failed && !report.text.empty()) tell_checks(report.note);
    show_where_it_went(state, direction);
}

bool lists_no_file() {
    return std::all_of(LFILE.begin(), LFILE.begin() + LFILES,
                       [](const LISTEDFILE& entry) { return entry.kind != entry_kind::file; });
}

void toggle_list(FileScreen& state) {
    if (state.mode != file_screen_mode::cars) return;
    state.list_mode = state.list_mode == cars_mode ? car_file_filter() : cars_mode;
    rescan(state);
    const std::string kind = state.list_mode == cars_mode ? "cars" : "car files";
    tell(lists_no_file() ? "No " + kind + " in this directory" : "");
}

// Why a directory was not entered, or that it is the same one; nothing where the list shows it.
std::string entered(const std::string& path) {
    const std::string before = current_directory();
    std::string reason;
    if (path.empty()) return "Nothing to enter: the Dir field is empty";
    if (!change_directory(path, &reason)) return "Cannot enter: " + path + ": " + reason;
    return current_directory() == before ? "The directory is read anew" : "";
}

void enter_directory(FileScreen& state, const std::string& path) {
    tell(entered(path));
    put_text(state, Field::directory, current_directory());
    state.rescan = true;
}

void switch_focus(FileScreen& state) {
    state.fields.switch_focus();
    state.redraw_fields = true;
}

// --- mouse ---------------------------------------------------------------------------------------------------------

void scroll(FileScreen& state, int rows_down) {
    scroll_list(state.list, rows_down);
    state.redraw_list = true;
}

void on_mouse(FileScreen& state) {
    const MouseState& at = state.input.mouse;
    if (state.input.left_pressed() && at.buttons == 1)
        if (const auto field = FileFields::at(at.at())) {
            state.fields.click_into(*field, at.x);
            state.redraw_fields = true;
        }
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
    if (state.fields.handle_key(state.input.key))
        state.redraw_fields = true;
    else if (key::printable(state.input.key))
        tell(std::to_string(field_limit) + " characters at most");
}

void empty_field(FileScreen& state) { put_text(state, state.fields.focus(), ""); }

template <int pages_down>
void page(FileScreen& state) {
    page_list(state.list, pages_down);
    state.redraw_list = true;
}

void enter_typed_directory(FileScreen& state) {
    if (state.fields.focus() == Field::file) return tell("Ctrl+L loads, Ctrl+S saves");
    enter_directory(state, state.fields.text(Field::directory));
}

template <Transfer direction>
void transfer_by_key(FileScreen& state) {
    run_transfer(state, direction);
}

bool names_something(const FileScreen& state) { return stands_for_files(state.fields.text(Field::file)); }
bool is_in_directory_field(const FileScreen& state) { return state.fields.focus() == Field::directory; }
bool lists_cars(const FileScreen& state) { return state.mode == file_screen_mode::cars; }

constexpr KeyBinding<FileScreen> keys[] = {
    {{},
     "a car or file goes into the File field; a directory or link is entered; unsaved work is loaded. \" (c/p)\" marks "
     "a project",
     nullptr,
     "click on a row"},
    {{}, "scrolls it, to the last row but one; the list has room for 200 entries", nullptr, "wheel over the list"},
    {{key::page_up}, "the list, a page up", page<-1>},
    {{key::page_down}, "the list, a page down, to the last entry", page<1>},
    {{}, "the caret goes there", nullptr, "click into a field"},
    {{key::tab, key::up, key::down}, "changes between the Dir and the File field", switch_focus},
    {{key::any_character, key::backspace, key::delete_, key::left, key::right},
     "edit the field, 62 characters at most",
     edit_field},
    {{key::home, key::end}, "the caret goes to the front or behind the text", edit_field},
    {{key::ctrl<'U'>}, "empties the field", empty_field},
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

// --- what is dropped on the window ---------------------------------------------------------------------------------

// Whether files are looked for there from now on; if not, the status says why.
bool go_to_folder(FileScreen& state, const std::string& folder) {
    std::string reason;
    if (!change_directory(folder, &reason)) {
        state.status = {.text = "Cannot enter: " + folder + ": " + reason, .failed = true};
        state.redraw_status = true;
        return false;
    }
    put_text(state, Field::directory, current_directory());
    state.rescan = true;
    return true;
}

bool take_drop(FileScreen& state) {
    const DroppedPath path = dropped_path(state.input.dropped);
    if (!go_to_folder(state, path.folder) || path.name.empty()) return true;
    put_text(state, Field::file, path.name);
    run_transfer(state, Transfer::load);
    return true;
}

// --- the screen ----------------------------------------------------------------------------------------------------

void take_kept_work(FileScreen& state, const std::string& stem) {
    state.status = load_kept_work(stem);
    state.redraw_status = true;
    tell(state.status.note);
    read_list(state);
}

void act_on_chosen(FileScreen& state) {
    if (state.chosen == 0) return;
    const LISTEDFILE entry = LFILE[state.chosen];
    state.chosen = 0;
    switch (entry.kind) {
    case entry_kind::file: put_text(state, Field::file, entry.name); break;
    case entry_kind::directory: enter_directory(state, entry.name); break;
    case entry_kind::link: enter_directory(state, with_home(entry.name)); break;
    case entry_kind::kept_work: take_kept_work(state, entry.name); break;
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
    .on_drop = take_drop,
};

} // namespace

std::string FILEHANDLING(std::uint8_t mode) {
    FileScreen state(mode);
    run_screen(state, file_screen);
    BUTTONS = 0;
    return state.result;
}

std::vector<KeyHelpTable> file_screen_keys() { return {key_help("", keys)}; }
