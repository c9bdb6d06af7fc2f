#include "app/command_line.h"

#include "base/version.h"

namespace {

std::string help_text() {
    return std::string(program_title) + R"(

Usage: karosmit [--garage] [FILE | DIRECTORY]

Edits the car files of a racing game. FILE is loaded at the start: one of a car's
files, a project (.car) or a body (.obj); carabcd.res stands for the four files of
the car abcd. DIRECTORY is the one to start in.

  --garage   starts in a garage of your own, ~/.local/share/karosmit/garage, which
             the first time gets the sample cars and their colour schemes
  --help     shows this text
  --version  shows name and version

In the window F1 shows the keys, F2 checks the car.
)";
}

} // namespace

CommandLine read_command_line(std::span<const std::string> arguments) {
    CommandLine line;
    bool options_are_over = false, has_path = false;
    for (const std::string& argument : arguments) {
        const bool is_option = !options_are_over && argument.size() > 1 && argument.starts_with('-');
        if (is_option && argument == "--")
            options_are_over = true;
        else if (is_option && argument == "--garage")
            line.garage = true;
        else if (is_option && argument == "--help")
            return {.answer = help_text()};
        else if (is_option && argument == "--version")
            return {.answer = std::string(program_title) + "\n"};
        else if (is_option)
            return {.error = "unknown option " + argument + "; --help shows what there is"};
        else if (has_path)
            return {.error = "one file or directory at most; " + argument + " is the second"};
        else {
            line.path = argument;
            has_path = true;
        }
    }
    return line;
}
