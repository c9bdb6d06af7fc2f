// What the keys mean in the loop that runs: the innermost one that told it.
#pragma once

#include "widgets/key_table.h"

#include <functional>
#include <vector>

// A loop tells its keys for as long as this lives.
class KeyScope {
public:
    using Tables = std::function<std::vector<KeyHelpTable>()>;

    explicit KeyScope(Tables keys);
    ~KeyScope();
    KeyScope(const KeyScope&) = delete;
    KeyScope& operator=(const KeyScope&) = delete;

private:
    const Tables keys_;
    KeyScope* const around_;

    friend std::vector<KeyHelpTable> keys_of_the_moment();
};

// None when no loop runs, or when it told none.
std::vector<KeyHelpTable> keys_of_the_moment();
