#include "base/shell.h"

#include <cstdlib>
#include <sys/wait.h>

int run_command(const std::string& command_line) {
    const int status = std::system(command_line.c_str());
    return status != -1 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string shell_quoted(const std::string& argument) {
    std::string quoted = "'";
    if (argument.starts_with('-')) quoted += "./";
    for (const char c : argument) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    return quoted + "'";
}
