// Everything that a program has when it starts, again: what every test begins with.
//
// Whoever owns global tables registers the procedure that empties them, beside them:
//     const ResetWithProgram registered(reset_colours);
#pragma once

class ResetWithProgram {
public:
    explicit ResetWithProgram(void (*reset)());
    ResetWithProgram(const ResetWithProgram&) = delete;
    ResetWithProgram& operator=(const ResetWithProgram&) = delete;

private:
    void (*const reset_)();
    const ResetWithProgram* const next_;

    friend void reset_program();
};

// Calls all procedures that the program at hand has registered, in no particular order.
void reset_program();
