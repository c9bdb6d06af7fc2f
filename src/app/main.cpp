// The editor's entry: the command line, a window of SDL, the program behind it.

#include "app/command_line.h"
#include "app/program.h"
#include "base/config.h"
#include "window/backend.h"
#include "window/sdl_backend.h"

#include <cstdio>
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
    start_with(path);
    run_screens();
    shut_down();
    use_backend(nullptr);
    return 0;
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
    return run(words.empty() ? std::string() : words.front(), line.path);
}
