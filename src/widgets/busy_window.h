// External programs that the window waits for without standing still.
#pragma once

#include "base/shell.h"

// A ProgramRunner (base/shell.h). Meanwhile the window is drawn, moved and resized, and what is done in it stays
// unread; if it takes a while, the strip says what is waited for. Escape, or asking the window to close, ends the
// program with all that it started; so does its time, when it has a limit.
CommandOutcome run_beside_window(const std::string& command_line, const std::string& what,
                                 std::optional<std::chrono::milliseconds> limit);
