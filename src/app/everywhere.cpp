#include "app/everywhere.h"

#include "widgets/key_page.h"
#include "widgets/key_scope.h"

namespace {

void show_keys(const Input&) {
    std::vector<KeyHelpTable> tables = keys_of_the_moment();
    tables.push_back(everywhere_keys());
    show_key_page(tables);
}

using EverywhereKey = KeyRow<void (*)(const Input&)>;
constexpr EverywhereKey keys[] = {
    {{key::f1}, "shows these keys, as they are at this moment", show_keys},
    {{}, "goes to that screen", nullptr, "click on the menu bar"},
};

} // namespace

KeyHelpTable everywhere_keys() { return key_help("On every screen:", keys); }

bool act_everywhere(const Input& input) {
    const EverywhereKey* const row = row_of(std::span<const EverywhereKey>(keys), input.key);
    if (!row) return false;
    row->action(input);
    return true;
}
