// The words of the command line.
#pragma once

#include <optional>
#include <span>
#include <string>

struct CommandLine {
    std::string path{};  // to start with; empty for none
    bool garage = false; // enter the person's own garage first
    // What ends the program before it has begun: text for the standard output, or one line for the standard error.
    std::optional<std::string> answer{}, error{};
};
// The arguments behind the program's name: [FILE | DIRECTORY], --garage, --help, --version; "--" ends the options.
CommandLine read_command_line(std::span<const std::string> arguments);
