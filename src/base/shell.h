// External programs, run through the system shell.
#pragma once

#include <string>

// Runs the command line and waits until it ends. Returns its exit status, or -1 when it could not be run or was killed.
int run_command(const std::string& command_line);

// The argument quoted so that the shell takes it as one word, whatever it holds; one that begins with "-" is made a
// path.
std::string shell_quoted(const std::string& argument);
