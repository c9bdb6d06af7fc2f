// The strip beside the menu bar, (200,600)-(959,647): what the program has to say that no screen has a place for.
//
// At its left stands the last message, at its right the facts that hold. It is plain background while there is nothing
// to say. A message goes with the next one, or after ten seconds; nothing blinks.
#pragma once

#include <optional>
#include <string>

constexpr int strip_left = 200, strip_right = 959, strip_top = 600, strip_bottom = 647;
constexpr double message_seconds = 10;

// Shows a message in place of the last one. Bytes are characters of code page 437. An empty one says nothing.
void say(const std::string& message);
// Takes this message back, if it is the one that stands there.
void unsay(const std::string& message);
// The message that stands there, "" for none.
const std::string& said();

// Facts stand at the right until they are given anew; "" for none. One belongs to the screen that runs (and goes with
// it), one to the car.
void set_screen_fact(const std::string& fact);
void set_car_fact(const std::string& fact);

// Draws the strip if what it shows has changed, or if a message's time is over, and sets the alarm for that. Files that
// silent readers noted as unreadable (file_status.h) are a message. Every loop calls this before it reads.
void keep_strip();
// The timer() at which the message goes, if one stands there.
std::optional<double> strip_changes_at();

void reset_strip();
