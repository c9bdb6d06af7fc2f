// Visits at random on all screens: undo leads back to the start of the program, redo to the end of the visit, byte for
// byte in all files. KAROSMIT_RANDOM_VISITS asks for more of them.
#include "app/editing_test.h"

#include "base/reset.h"
#include "base/shell.h"
#include "formats/bitmap_file.h"
#include "formats/parameter_file.h"
#include "formats/project_file.h"
#include "formats/shape_file.h"

#include <array>
#include <cstdlib>
#include <random>

namespace {

int random_visits() {
    const char* const asked = std::getenv("KAROSMIT_RANDOM_VISITS");
    return asked ? std::atoi(asked) : 25;
}

// All that a save writes, and what the window's title says.
struct SavedBytes {
    Bytes parameters, shapes, dashboard, dots, project;
    std::string title;
    bool operator==(const SavedBytes&) const = default;
};
SavedBytes saved_bytes() {
    return {parameter_file_of_car().bytes,
            shape_file_of_car().bytes,
            encode_bitmap_file(BitmapSet::dashboard),
            encode_bitmap_file(BitmapSet::dots_and_digits),
            encode_project_file(project_of_tables()),
            TITLENAME};
}

class Person {
public:
    explicit Person(unsigned seed) : random_(seed) {}

    std::vector<ScriptStep> visit() {
        std::vector<ScriptStep> steps;
        const int actions = number(5, 40);
        for (int k = 0; k < actions; ++k)
            steps = std::move(steps) + action();
        return steps;
    }

private:
    int number(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }
    int x() { return number(0, 959); }
    int y() { return number(0, 599); }

    std::vector<ScriptStep> action() {
        switch (number(0, 11)) {
        case 0: return {to_screen(number(0, 3))};
        case 1: return {click(x(), y(), number(1, 2)), typed(std::to_string(number(0, 9999))), key_press(Key::enter)};
        case 2: return drag({{x(), y()}, {x(), y()}, {x(), y()}});
        case 3: return {to_screen(3), mouse_at(number(65, 680), number(245, 500)), typed(one_of("iduzm"))};
        case 4: return std::vector<ScriptStep>{to_screen(3)} + drag({{number(65, 680), 300}, {number(65, 680), 400}});
        case 5: return std::vector<ScriptStep>{to_screen(0)} + load(car());
        case 6: return {to_screen(1), mouse_at(number(20, 700), number(60, 590)), control(letter())};
        case 7: return {to_screen(2), key_press(Key::tab), key_press(Key::page_down), click(number(60, 680), 300)};
        case 8: return {control(Key::z)};
        case 9: return {control(Key::y)};
        default: return keys();
        }
    }
    std::vector<ScriptStep> keys() {
        constexpr std::array often = {Key::left, Key::right,     Key::up,      Key::down,
                                      Key::tab,  Key::page_down, Key::page_up, Key::delete_};
        std::vector<ScriptStep> steps;
        for (int k = number(1, 5); k > 0; --k)
            steps.push_back(number(0, 3) == 0 ? typed(one_of("mp,.12345+-<>*/ oc=d"))
                                              : key_press(often[static_cast<std::size_t>(number(0, 7))]));
        return steps;
    }
    Key letter() {
        constexpr std::array letters = {Key::a, Key::b, Key::c, Key::d, Key::o, Key::p, Key::v, Key::w};
        return letters[static_cast<std::size_t>(number(0, 7))];
    }
    std::string one_of(const std::string& characters) {
        return characters.substr(static_cast<std::size_t>(number(0, static_cast<int>(characters.size()) - 1)), 1);
    }
    std::string car() {
        constexpr std::array cars = {"brux", "vela", "tarn", "carbrux.res", "stdavela.vsh", "sttarn.3sh"};
        return cars[static_cast<std::size_t>(number(0, 5))];
    }

    std::mt19937 random_;
};

} // namespace

TEST_F(EditingTest, OfRandomVisitsUndoLeadsToTheStartAndRedoToTheEnd) {
    int all_steps = 0;
    for (int seed = 1; seed <= random_visits(); ++seed) {
        reset_program();
        SetUpWindow();
        start();
        const SavedBytes at_start = saved_bytes();
        const CarDocument first = DOCUMENT;
        play_to_the_end(Person(static_cast<unsigned>(seed)).visit(), run_screens);
        const SavedBytes at_end = saved_bytes();
        const CarDocument last = DOCUMENT;

        CURMENU = screen_number::files;
        int undone = 0, redone = 0;
        const auto repeat = [](const ScriptStep& key, const std::string& word, int& count) {
            std::vector<ScriptStep> steps;
            for (int k = 0; k < 120; ++k) {
                steps.push_back(key);
                steps.push_back(look([word, &count] { count += said().starts_with(word) ? 1 : 0; }));
            }
            return steps;
        };
        visit(repeat(undo_step, "Undone: ", undone));
        ASSERT_EQ(said(), "Nothing to undo") << "seed " << seed;
        ASSERT_TRUE(saved_bytes() == at_start) << "seed " << seed;
        ASSERT_TRUE(DOCUMENT == first) << "seed " << seed;
        visit(repeat(redo_step, "Redone: ", redone));
        ASSERT_EQ(said(), "Nothing to redo") << "seed " << seed;
        ASSERT_GE(redone, undone) << "seed " << seed;
        if (redone == undone) {
            ASSERT_TRUE(saved_bytes() == at_end) << "seed " << seed;
            ASSERT_TRUE(DOCUMENT == last) << "seed " << seed;
        }
        all_steps += undone;
    }
    EXPECT_GT(all_steps, 2 * random_visits()) << "the visits hardly edit";
}
