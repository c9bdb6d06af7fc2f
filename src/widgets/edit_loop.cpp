#include "widgets/edit_loop.h"

#include "widgets/nested_loop.h"

EditEnd run_edit(const Rectangle& field, const std::function<void()>& draw,
                 const std::function<bool(const std::string&)>& on_key) {
    EditEnd end = EditEnd::closed;
    bool handed_back = false;
    run_nested(draw, [&](const Input& input) {
        if (input.pressed()) {
            end = EditEnd::pressed;
            handed_back = !field.contains(input.mouse.at());
            return handed_back ? Answer::hand_back : Answer::done;
        }
        if (input.key == key::enter || input.key == key::escape) {
            end = input.key == key::enter ? EditEnd::stored : EditEnd::escaped;
            return Answer::done;
        }
        return !input.key.empty() && on_key(input.key) ? Answer::changed : Answer::nothing;
    });
    if (!handed_back) spend_press();
    return end;
}
