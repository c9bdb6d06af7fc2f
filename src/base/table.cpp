#include "base/table.h"

#include "base/reset.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

void (*rescue_in_use)() = nullptr;

const ResetWithProgram registered([] { set_rescue(nullptr); });

} // namespace

void set_rescue(void (*rescue)()) { rescue_in_use = rescue; }

void table_index_out_of_range(long index, long first, long last) {
    std::fprintf(stderr, "karosmit: table index %ld outside %ld..%ld\n", index, first, last);
    // Taken away first: a rescue that itself comes upon a wrong index must not begin again.
    if (void (*rescue)() = std::exchange(rescue_in_use, nullptr)) rescue();
    std::abort();
}
