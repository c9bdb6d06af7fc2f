// The signals by which the system asks a program to end: hang-up, interrupt, termination.
#pragma once

// From now on these signals ask instead of ending the process. A second one of a kind ends it: a program that hangs can
// still be stopped.
void catch_termination_signals();
// Whether one has arrived since the last call.
bool termination_asked();
