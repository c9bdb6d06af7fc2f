// The process between the program and a command that it runs: it sees to it that nothing of the command outlives its
// end, even if that hides in sessions of its own, and even if the program dies.
#pragma once

#include <sys/types.h>

// Starts one that runs the command line and writes its wait status to `tell`. SIGTERM to it ends the command with all
// that it started, and then the keeper. -1 with errno when there is no room for another process.
pid_t start_command_keeper(const char* command_line, int tell);
