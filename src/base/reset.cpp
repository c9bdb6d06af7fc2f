#include "base/reset.h"

#include <utility>

namespace {

// Zero before any object of the program is made, so that they may register in any order.
constinit const ResetWithProgram* first = nullptr;

} // namespace

ResetWithProgram::ResetWithProgram(void (*reset)()) : reset_(reset), next_(std::exchange(first, this)) {}

void reset_program() {
    for (const ResetWithProgram* one = first; one; one = one->next_)
        one->reset_();
}
