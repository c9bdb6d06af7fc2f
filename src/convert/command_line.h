// The converter's command line, and which target each source has.
#pragma once

#include "convert/conversion.h"
#include "convert/file_kinds.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct CommandLine {
    enum class Action { convert, check, help, version };
    Action action = Action::convert;
    std::vector<std::string> sources;
    std::string target;
    std::optional<FileKind> to; // the kind of all targets, which then stand in the folder `target`
    ConvertOptions options;
    int jobs = 0; // processes at a time; 0: as many as usual
};

// What is wrong with a command line, in one line.
struct UsageError {
    std::string text;
};

// The arguments behind the program's name. Throws a UsageError.
CommandLine read_command_line(std::span<const char* const> arguments);

struct PlannedConversion {
    std::string source, target;
    std::string refusal{}; // why there is no target
};
// A conversion, or a check without a target, a source. A single source goes to the target itself; into a folder go
// several ones, one with `to`, and one that cannot become a folder. The later one of two with the same target is
// refused.
std::vector<PlannedConversion> plan(const CommandLine& line);

extern const std::string_view usage_text;
