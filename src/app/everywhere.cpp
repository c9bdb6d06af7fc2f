#include "app/everywhere.h"

#include "app/check_page.h"
#include "app/editing.h"
#include "widgets/key_page.h"
#include "widgets/key_scope.h"
#include "widgets/menu_bar.h"
#include "widgets/screen_loop.h"

namespace {

void show_keys(const Input&) {
    std::vector<KeyHelpTable> tables = keys_of_the_moment();
    tables.push_back(everywhere_keys());
    show_key_page(tables);
}

void check(const Input&) { show_check_page(); }

using EverywhereKey = KeyRow<void (*)(const Input&)>;
constexpr EverywhereKey keys[] = {
    {{key::f1}, "shows these keys, as they are at this moment", show_keys},
    {{key::f2}, "checks the car; a click on a finding goes to where it is mended", check},
    {{}, "goes to that screen", nullptr, "click on the menu bar"},
};

} // namespace

KeyHelpTable everywhere_keys() {
    KeyHelpTable help = key_help("On every screen:", keys);
    const std::vector<KeyHelp> of_editing = editing_keys();
    help.rows.insert(help.rows.end() - 1, of_editing.begin(), of_editing.end());
    return help;
}

void load_dropped(const Input&) {
    CURMENU = screen_number::files;
    leave_screens();
    unread_input();
}

bool act_everywhere(const Input& input) {
    const EverywhereKey* const row = row_of(std::span<const EverywhereKey>(keys), input.key);
    if (!row) return false;
    row->action(input);
    return true;
}
