#include "widgets/undo_keys.h"

std::string with_one_redo_key(const Input& input) {
    return input.key == key::undo && input.qualifiers.shift() ? key::redo : input.key;
}
