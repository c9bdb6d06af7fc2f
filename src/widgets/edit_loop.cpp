#include "widgets/edit_loop.h"

#include "widgets/nested_loop.h"
#include "widgets/undo_keys.h"

#include <optional>

namespace {

std::optional<EditEnd> end_by(const std::string& typed, TabKey tab) {
    if (typed == key::enter) return EditEnd::stored;
    if (typed == key::escape) return EditEnd::escaped;
    if (typed == key::tab && tab == TabKey::leads_on) return EditEnd::next;
    return std::nullopt;
}

} // namespace

EditEnd run_edit(const Rectangle& field, const std::function<void()>& draw,
                 const std::function<bool(const std::string&)>& on_key, TabKey tab, const KeyScope::Tables& keys) {
    EditEnd end = EditEnd::closed;
    bool handed_back = false;
    const auto answer = [&](const Input& input) {
        if (input.pressed()) {
            end = EditEnd::pressed;
            handed_back = !field.contains(input.mouse.at());
            return handed_back ? Answer::hand_back : Answer::done;
        }
        if (const auto ended = end_by(input.key, tab)) {
            end = *ended;
            return Answer::done;
        }
        return !input.key.empty() && on_key(with_one_redo_key(input)) ? Answer::changed : Answer::nothing;
    };
    run_nested(draw, answer, keys);
    if (!handed_back) spend_press();
    return end;
}
