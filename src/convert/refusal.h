// Why a conversion is not done: thrown wherever that turns out, caught by convert() and nowhere else, so that what
// stands in between only says what it does when all goes well.
#pragma once

#include <stdexcept>

struct Refusal : std::runtime_error {
    using std::runtime_error::runtime_error;
};
