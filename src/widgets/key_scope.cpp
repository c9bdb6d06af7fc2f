#include "widgets/key_scope.h"

#include <utility>

namespace {
KeyScope* innermost = nullptr;
}

KeyScope::KeyScope(Tables keys) : keys_(std::move(keys)), around_(std::exchange(innermost, this)) {}

KeyScope::~KeyScope() { innermost = around_; }

std::vector<KeyHelpTable> keys_of_the_moment() {
    if (!innermost || !innermost->keys_) return {};
    return innermost->keys_();
}
