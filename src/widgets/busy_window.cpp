#include "widgets/busy_window.h"

#include "widgets/screen_loop.h"
#include "widgets/strip.h"
#include "window/input.h"

namespace {

// What is over sooner needs no word.
constexpr int silent_questions = 15; // some 300 ms

} // namespace

CommandOutcome run_beside_window(const std::string& command_line, const std::string& what,
                                 std::optional<std::chrono::milliseconds> limit) {
    const std::string waiting = "Waiting for " + what + ". Escape ends it.";
    BusyInput meanwhile;
    int questions = 0;
    const auto go_on = [&] {
        if (++questions > silent_questions) say(waiting); // anew each time: it stands as long as it is true
        about_to_read({});
        return meanwhile.go_on();
    };
    const CommandOutcome outcome = run_command(command_line, go_on, limit);
    unsay(waiting);
    keep_strip();
    return outcome;
}
