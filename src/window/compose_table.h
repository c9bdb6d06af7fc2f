// A small compose table in place of the X library's: what dead keys and the Compose key make of the keys after them.
//
// The library reads half a million bytes of such sequences at every start, a third of the time until the first frame.
// The program takes the characters " " to "~" only, which a few dozen sequences make.
#pragma once

#include "base/descriptor.h"

#include <string_view>

// In the form that the library reads.
std::string_view small_compose_table();

// While it lives the library reads the small table when it connects to the display; unless the user has a table of his
// own (XCOMPOSEFILE, ~/.XCompose), which goes before.
class SmallComposeTable {
public:
    SmallComposeTable();
    ~SmallComposeTable();
    SmallComposeTable(const SmallComposeTable&) = delete;
    SmallComposeTable& operator=(const SmallComposeTable&) = delete;

private:
    Descriptor file_;
};
