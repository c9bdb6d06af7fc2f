// The signals by which the system asks a program to end: hang-up, interrupt, termination.
#pragma once

// From now on these signals ask instead of ending the process, but for those that were ignored when the program started
// (nohup): they stay ignored. A second one of a kind ends the process: a program that hangs can still be stopped.
void catch_termination_signals();
// Whether one has arrived since the last call.
bool termination_asked();
// Can be read once a signal has arrived, for whoever waits; -1 before catch_termination_signals().
int termination_descriptor();
