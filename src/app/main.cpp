// The editor's entry: the command line, a window of SDL, the program behind it.

#include "app/command_line.h"
#include "app/editing.h"
#include "app/garage.h"
#include "app/program.h"
#include "base/config.h"
#include "base/table.h"
#include "window/backend.h"
#include "window/sdl_backend.h"

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

namespace {

constexpr int no_window = 1, bad_command_line = 2; // exit statuses

int run(const std::string& invocation_path, const std::string& path) {
    const auto window = make_sdl_backend(program_directory(invocation_path) + "icon.tga");
    use_backend(window.get());

    std::string error;
    if (!start_up(invocation_path, error)) {
        std::fprintf(stderr, "karosmit: %s\n", error.c_str());
        return no_window;
    }
    // Also when the window system goes away, which ends the program from within, or a table's guard does.
    std::atexit(end_editing);
    set_rescue(end_editing);
    start_with(path);
    run_screens();
    shut_down();
    use_backend(nullptr);
    return 0;
}

// A path as it was meant in this directory, for use in another one.
std::string absolute(const std::string& path) {
    return path.empty() || path.starts_with('/') ? path : current_directory() + "/" + path;
}

int run_in_garage(const std::string& invocation_path, const std::string& path) {
    const std::string program = absolute(invocation_path), file = absolute(path);
    if (const std::string failure = enter_garage(program_directory(program) + "garage"); !failure.empty())
        std::fprintf(stderr, "karosmit: %s\n", failure.c_str());
    return run(program, file);
}

} // namespace

int main(int argument_count, char** arguments) {
    const std::vector<std::string> words(arguments, arguments + argument_count);
    const auto options = std::span(words).subspan(words.empty() ? 0 : 1);
    const CommandLine line = read_command_line(options);
    if (line.error) {
        std::fprintf(stderr, "karosmit: %s\n", line.error->c_str());
        return bad_command_line;
    }
    if (line.answer) {
        std::fputs(line.answer->c_str(), stdout);
        return 0;
    }
    return (line.garage ? run_in_garage : run)(words.empty() ? std::string() : words.front(), line.path);
}
