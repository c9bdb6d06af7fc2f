// The edit targets of the parameter table on the screen: showing their values, pointing at them, typing a new one.
#pragma once

#include "params/parameter_table.h"
#include "widgets/edit_loop.h"
#include "widgets/key_table.h"
#include "widgets/line_edit.h"
#include "widgets/undo_keys.h"

#include <string>

// The value of a row as the screen shows it; of a name at most the first 21 characters.
std::string target_text(const PARAMINPUT& target);
// How many characters the box behind the value holds.
int target_box_width(const PARAMINPUT& target);
// The row's hover area, and whether a place lies in it.
Rectangle target_area(const PARAMINPUT& target);
bool over_target(const PARAMINPUT& target, int x, int y);

// Draws rows first .. last of PTARGET that look otherwise than when they were drawn last; without the mark of the one
// that is pointed at when `pointed` is false.
void draw_targets(int first, int last, bool pointed = true);
// The screen was cleared: all rows must be drawn again.
void forget_drawn_targets();

// Draws the rows if the mouse changed since the last call, and, unless `opens` is false, edits the last one that the
// left button alone is down on. Returns 1 if one was edited, else 0. The caller has read the mouse in this pass.
unsigned MAINTAINTARGETS(int first, int last, bool opens = true);

// Edits a row in place: steps an option on and moves the mass to it, or takes a number or a name until the person
// stores it or leaves. Returns why that ended.
EditEnd EDITTARGET(int row);

// A number or a name while it is typed.
class TargetEntry {
public:
    explicit TargetEntry(const PARAMINPUT& target);

    const LineEdit& field() const { return field_; }
    // Every key but those that end the edit. True when something changed.
    bool on_key(const std::string& key);
    // One that its table of keys knows.
    bool type(const std::string& key);
    bool take_back();
    bool bring_again();
    // Into PAR or the name.
    void store() const;

private:
    bool is_number() const;
    void say_how_much() const;
    bool settle_typed_digit(const LineEdit& before);
    void settle_deletion();

    const PARAMINPUT& target_;
    LineEdit field_;
    TypedStep<LineEdit> step_;
};

// The keys while a value is edited.
KeyHelpTable target_entry_keys();

// No mouse seen, nothing drawn.
void reset_targets();
