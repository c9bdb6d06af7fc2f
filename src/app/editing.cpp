#include "app/editing.h"

#include "app/history.h"
#include "app/recovery.h"
#include "base/code_page.h"
#include "base/reset.h"
#include "formats/saved_car.h"
#include "model/car.h"
#include "model/items.h"
#include "widgets/nested_loop.h"
#include "widgets/screen_loop.h"
#include "widgets/strip.h"
#include "widgets/undo_keys.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace {

struct Editing {
    History history{DOCUMENT};
    std::uint32_t saved_revision = 0; // that the strip shows
    Recovery recovery;
};
std::unique_ptr<Editing> editing;

bool button_is_down(const Input& input) { return input.mouse.buttons != 0 || bar_mouse().buttons != 0; }

// At the strip's right: the car, and whether it lies in files. Nothing while that is the car of the start.
void show_car_fact() {
    const SavedCar car = saved_car();
    std::string fact = car.name.empty() && car.unsaved ? "new car" : car.name;
    if (car.unsaved) fact += ", unsaved";
    if (!car.reason.empty()) fact += ": " + car.reason;
    set_car_fact(code_page_from_utf8(fact));
}

void tell_what_changed() {
    show_car_fact();
    editing->recovery.changed();
}

// What follows from a car that was put in another one's place. The title follows by itself.
void settle_what_follows() {
    settle_paint_jobs();
    UPDATEDASHITEMS();
    repaint_screens();
    tell_what_changed();
}

void show_step(const char* done, const char* nothing, const std::string& words) {
    if (words.empty()) return say(nothing);
    settle_what_follows();
    say(code_page_from_utf8(done + words));
}

void undo(Editing& now) { show_step("Undone: ", "Nothing to undo", now.history.undo(DOCUMENT)); }
void redo(Editing& now) { show_step("Redone: ", "Nothing to redo", now.history.redo(DOCUMENT)); }

bool can_undo(const Editing& now) { return !nested_loop_runs() && now.history.can_undo(); }
bool can_redo(const Editing& now) { return !nested_loop_runs() && now.history.can_redo(); }

constexpr KeyBinding<Editing> keys[] = {
    {{key::undo}, "takes back the last step, as far as the start of the program", undo, key::undo_label, can_undo},
    {{key::redo}, "brings it again", redo, key::redo_label, can_redo},
};

// A stroke or a drag that goes on is no step yet.
bool take_key(const Input& input) {
    const auto* const row = row_of(std::span<const KeyBinding<Editing>>(keys), with_one_redo_key(input));
    if (!row || button_is_down(input)) return false;
    row->action(*editing);
    return true;
}

void note_what_was_done(const Input& input) {
    if (button_is_down(input)) return editing->history.end_run();
    const bool changed = editing->history.note(DOCUMENT, input.key, timer());
    if (!changed && editing->saved_revision == saved_car_revision()) return;
    editing->saved_revision = saved_car_revision();
    tell_what_changed();
}

void keep_work(const Input& last) { editing->recovery.waiting(last); }

} // namespace

LoopHooks begin_editing() {
    begin_with_saved_car();
    editing = std::make_unique<Editing>();
    return {.before = take_key, .after = note_what_was_done, .waiting = keep_work};
}

void end_editing() {
    if (!editing) return;
    editing->recovery.finish();
    set_loop_hooks({});
    editing.reset();
}

std::vector<KeyHelp> editing_keys() {
    if (!editing) return key_help("", keys).rows;
    return key_help_now("", std::span<const KeyBinding<Editing>>(keys), *editing).rows;
}

namespace {
const ResetWithProgram registered([] { editing.reset(); });
}
