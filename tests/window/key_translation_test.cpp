#include "window/key_translation.h"

#include "window/input.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Strings = std::vector<std::string>;

InputEvent down(Key key, Modifiers modifiers = {}) {
    InputEvent event;
    event.kind = InputEvent::Kind::key_down;
    event.key = key;
    event.modifiers = modifiers;
    return event;
}

InputEvent up(Key key, Modifiers modifiers = {}) {
    InputEvent event = down(key, modifiers);
    event.kind = InputEvent::Kind::key_up;
    return event;
}

InputEvent text(const std::string& utf8, Modifiers modifiers = {}) {
    InputEvent event;
    event.kind = InputEvent::Kind::text;
    event.text = utf8;
    event.modifiers = modifiers;
    return event;
}

// The key strings of a recorded sequence of events.
Strings typed_by(const std::vector<InputEvent>& events) {
    Strings keys;
    for (const InputEvent& event : events)
        for (const std::string& key : key_strings(event))
            keys.push_back(key);
    return keys;
}

const Modifiers no_modifiers{};
const Modifiers control{.control = true};
const Modifiers shift{.shift = true};
const Modifiers alt{.alt = true};
const Modifiers num_lock{.num_lock = true};

struct NamedKey {
    Key key;
    std::string string;
};
const NamedKey named_keys[] = {
    {Key::escape, "\x1B"},  {Key::enter, "\x0D"},    {Key::backspace, "\x08"},    {Key::tab, "\x09"},
    {Key::home, "\xFFG"},   {Key::up, "\xFFH"},      {Key::page_up, "\xFFI"},     {Key::left, "\xFFK"},
    {Key::right, "\xFFM"},  {Key::end, "\xFFO"},     {Key::down, "\xFFP"},        {Key::page_down, "\xFFQ"},
    {Key::insert, "\xFFR"}, {Key::delete_, "\xFFS"}, {Key::keypad_enter, "\x0D"}, {Key::f1, "\xFF\x3B"},
    {Key::f2, "\xFF\x3C"},  {Key::f3, "\xFF\x3D"},   {Key::f4, "\xFF\x3E"},       {Key::f5, "\xFF\x3F"},
    {Key::f6, "\xFF\x40"},  {Key::f7, "\xFF\x41"},   {Key::f8, "\xFF\x42"},       {Key::f9, "\xFF\x43"},
    {Key::f10, "\xFF\x44"}, {Key::f11, "\xFF\x85"},  {Key::f12, "\xFF\x86"},
};

TEST(KeyTranslation, NamedKeysHaveTheirStrings) {
    for (const NamedKey& row : named_keys)
        EXPECT_THAT(key_strings(down(row.key)), ElementsAre(row.string)) << static_cast<int>(row.key);
}

TEST(KeyTranslation, NamedKeysMeanTheSameWithControlAndNumLock) {
    for (const NamedKey& row : named_keys) {
        EXPECT_THAT(key_strings(down(row.key, control)), ElementsAre(row.string)) << static_cast<int>(row.key);
        EXPECT_THAT(key_strings(down(row.key, num_lock)), ElementsAre(row.string)) << static_cast<int>(row.key);
    }
}

TEST(KeyTranslation, NamedKeysMeanTheSameWithShiftExceptTab) {
    for (const NamedKey& row : named_keys)
        EXPECT_THAT(key_strings(down(row.key, shift)),
                    ElementsAre(row.key == Key::tab ? std::string("\xFF\x0F") : row.string))
            << static_cast<int>(row.key);
}

TEST(KeyTranslation, ControlAndShiftWithTabIsShiftTab) {
    EXPECT_THAT(key_strings(down(Key::tab, {.control = true, .shift = true})), ElementsAre(key::shift_tab));
}

TEST(KeyTranslation, TheNamesInTheKeyListAreTheseStrings) {
    EXPECT_EQ(key::shift_tab, std::string("\xFF\x0F"));
    EXPECT_EQ(key::close_window, std::string("\xFFk"));
    EXPECT_EQ(key::control('A'), "\x01");
    EXPECT_EQ(key::control('W'), "\x17");
    EXPECT_TRUE(key::printable(" ") && key::printable("~") && key::printable("A"));
    EXPECT_FALSE(key::printable("") || key::printable("\x7F") || key::printable("\xFFG") || key::printable("\x1F") ||
                 key::printable("\x81"));
}

TEST(KeyTranslation, TheCloseRequestIsAKey) {
    InputEvent event;
    event.kind = InputEvent::Kind::close_request;
    EXPECT_THAT(key_strings(event), ElementsAre("\xFFk"));
}

TEST(KeyTranslation, EventsOfTheMouseAndTheFocusAndKeysLetGoAreNoKeys) {
    for (const auto kind : {InputEvent::Kind::mouse_move, InputEvent::Kind::button_down, InputEvent::Kind::button_up,
                            InputEvent::Kind::wheel, InputEvent::Kind::focus_lost, InputEvent::Kind::key_up}) {
        InputEvent event = down(Key::escape);
        event.kind = kind;
        event.text = "a";
        EXPECT_THAT(key_strings(event), IsEmpty()) << static_cast<int>(kind);
    }
}

TEST(KeyTranslation, ControlWithEveryLetterIsItsControlCharacter) {
    for (int i = 0; i < 26; ++i) {
        const Key letter = static_cast<Key>(static_cast<int>(Key::a) + i);
        const std::string expected(1, static_cast<char>(1 + i));
        EXPECT_THAT(key_strings(down(letter, control)), ElementsAre(expected));
        EXPECT_THAT(key_strings(down(letter, {.control = true, .shift = true})), ElementsAre(expected));
        EXPECT_THAT(key_strings(down(letter)), IsEmpty()) << "the text follows";
        EXPECT_THAT(key_strings(down(letter, shift)), IsEmpty());
    }
}

TEST(KeyTranslation, LettersComeAsText) {
    EXPECT_THAT(typed_by({down(Key::i), text("i"), up(Key::i)}), ElementsAre("i"));
    EXPECT_THAT(typed_by({down(Key::shift_left), down(Key::i, shift), text("I", shift), up(Key::i, shift)}),
                ElementsAre("I"));
}

TEST(KeyTranslation, CapsLockActsOnTextButNotOnControl) {
    EXPECT_THAT(typed_by({down(Key::other), up(Key::other), down(Key::s), text("S"), up(Key::s)}), ElementsAre("S"));
    EXPECT_THAT(typed_by({down(Key::control_left), down(Key::s, control), up(Key::s, control)}), ElementsAre("\x13"));
}

TEST(KeyTranslation, EveryPrintableCharacterIsItself) {
    for (char character = ' '; character <= '~'; ++character)
        EXPECT_THAT(key_strings(text({character})), ElementsAre(std::string(1, character)));
}

TEST(KeyTranslation, TextWithControlHeldIsNoTyping) {
    for (const char* sent : {"-", "=", "0", "1", "9", "s"})
        EXPECT_THAT(typed_by({down(Key::other, control), text(sent, control)}), IsEmpty()) << sent;
}

TEST(KeyTranslation, TextWithTheLeftAltKeyHeldIsNoTyping) {
    EXPECT_THAT(typed_by({down(Key::x, alt), text("x", alt), up(Key::x, alt)}), IsEmpty());
    EXPECT_THAT(typed_by({down(Key::enter, alt), down(Key::left, alt), down(Key::f4, alt)}), IsEmpty());
    EXPECT_THAT(typed_by({down(Key::x, {.control = true, .alt = true})}), IsEmpty());
}

// A German keyboard sends "@" and "~" with the right Alt key, which is no modifier here.
TEST(KeyTranslation, TextWithTheRightAltKeyIsTyping) {
    EXPECT_THAT(typed_by({down(Key::other), down(Key::q), text("@"), up(Key::q), up(Key::other)}), ElementsAre("@"));
}

// Dead circumflex, then "e"; dead acute twice; dead key and blank.
TEST(KeyTranslation, ADeadKeyGivesTheCombinedCharacter) {
    EXPECT_THAT(typed_by({down(Key::e), text("\xC3\xAA"), up(Key::e)}), ElementsAre("\x88"));
    EXPECT_THAT(typed_by({text("\xC2\xB4")}), IsEmpty()) << "the page has no acute accent";
    EXPECT_THAT(typed_by({text("`")}), ElementsAre("`"));
}

TEST(KeyTranslation, AHeldKeyRepeats) {
    EXPECT_THAT(typed_by({down(Key::left), down(Key::left), down(Key::left), up(Key::left)}),
                ElementsAre(key::left, key::left, key::left));
    EXPECT_THAT(typed_by({down(Key::a), text("a"), down(Key::a), text("a"), up(Key::a)}), ElementsAre("a", "a"));
    EXPECT_THAT(typed_by({down(Key::a, control), down(Key::a, control)}), ElementsAre("\x01", "\x01"));
}

TEST(KeyTranslation, OneTextEventMayHoldSeveralCharacters) {
    EXPECT_THAT(key_strings(text("a\xC3\xA4z")), ElementsAre("a", "\x84", "z"));
}

struct KeypadKey {
    Key key;
    std::string digit, string; // with Num Lock, and without
};
const KeypadKey keypad[] = {
    {Key::keypad_0, "0", key::insert},    {Key::keypad_1, "1", key::end},          {Key::keypad_2, "2", key::down},
    {Key::keypad_3, "3", key::page_down}, {Key::keypad_4, "4", key::left},         {Key::keypad_5, "5", ""},
    {Key::keypad_6, "6", key::right},     {Key::keypad_7, "7", key::home},         {Key::keypad_8, "8", key::up},
    {Key::keypad_9, "9", key::page_up},   {Key::keypad_period, ".", key::delete_},
};

TEST(KeyTranslation, TheKeypadGivesDigitsWithNumLock) {
    for (const KeypadKey& row : keypad)
        EXPECT_THAT(typed_by({down(row.key, num_lock), text(row.digit, num_lock), up(row.key, num_lock)}),
                    ElementsAre(row.digit));
}

TEST(KeyTranslation, TheKeypadIsACursorBlockWithoutNumLock) {
    for (const KeypadKey& row : keypad)
        EXPECT_EQ(typed_by({down(row.key), up(row.key)}), row.string.empty() ? Strings{} : Strings{row.string});
}

TEST(KeyTranslation, ShiftTurnsNumLockRound) {
    const Modifiers both{.shift = true, .num_lock = true};
    for (const KeypadKey& row : keypad) {
        EXPECT_EQ(typed_by({down(row.key, both), up(row.key, both)}),
                  row.string.empty() ? Strings{} : Strings{row.string});
        EXPECT_THAT(typed_by({down(row.key, shift), text(row.digit, shift)}), ElementsAre(row.digit));
    }
}

TEST(KeyTranslation, TheKeypadsSignsComeAsText) {
    for (const char* sign : {"/", "*", "-", "+"})
        EXPECT_THAT(typed_by({down(Key::other), text(sign)}), ElementsAre(sign));
}

TEST(KeyTranslation, CharactersOutsideTheCodePageAreDropped) {
    EXPECT_THAT(key_strings(text("\xE2\x82\xAC")), IsEmpty()) << "euro";
    EXPECT_THAT(key_strings(text("\xE6\x97\xA5")), IsEmpty());
    EXPECT_THAT(key_strings(text("\xF0\x9F\x9A\x97")), IsEmpty());
    EXPECT_THAT(key_strings(text("a\xE2\x82\xAC"
                                 "b")),
                ElementsAre("a", "b"));
}

TEST(KeyTranslation, ControlCharactersInTextAreNoTyping) {
    EXPECT_THAT(key_strings(text("\r\x01\x1B\x7F\t")), IsEmpty());
    EXPECT_THAT(key_strings(text("\xE2\x98\xBA")), IsEmpty()) << "the page's picture for character 1 is no Control+A";
}

TEST(KeyTranslation, Character255NeverStandsAlone) {
    EXPECT_THAT(key_strings(text("\xC2\xA0")), IsEmpty());
    EXPECT_THAT(key_strings(text("\xC3\xBF")), ElementsAre("\x98")) << "y with diaeresis";
}

TEST(KeyTranslation, DamagedTextGivesWhatIsWhole) {
    EXPECT_THAT(key_strings(text("\xC3")), IsEmpty());
    EXPECT_THAT(key_strings(text("\xC3"
                                 "a")),
                ElementsAre("a"));
    EXPECT_THAT(key_strings(text("\x80\xBF\xFF\xFE"
                                 "b")),
                ElementsAre("b"));
    EXPECT_THAT(key_strings(text("\xE2\x82")), IsEmpty());
    EXPECT_THAT(key_strings(text("\xF0\x9F\x9A")), IsEmpty());
    EXPECT_THAT(key_strings(text("")), IsEmpty());
}

} // namespace
