// The Physical parameters screen in a real window: what a person does there, and the bytes that the saved file holds.
#include "program/program_test.h"

#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t hovered_value = 0xFF00FA00, edit_ground = 0xFF280A14;
constexpr std::size_t parameters_at = 38; // of the file, after the archive's tables
constexpr std::size_t parameter_count = 776;

using FileBytes = std::vector<unsigned char>;

// Where a row of the parameter table stands.
struct Place {
    int label_x, y, value_x;
};
constexpr Place car_name{25, 70, 121}, sign_name{25, 86, 121}, mass{25, 102, 121}, powergear{25, 118, 121},
    brakes{25, 134, 121}, on_ice{335, 118, 431}, gears{545, 70, 641}, first_ratio{545, 86, 641}, purple{755, 70, 851},
    orange_5{755, 294, 851};

class Parameters : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        start();
        go_to(3, "= PHYSICAL PARAMETERS =");
    }

    void go_to(int cell, const std::string& title) {
        window->click(cell * 48 + 24, 620);
        ASSERT_TRUE(screen_becomes(title));
    }

    bool edit_opens(const Place& row) const { return window->wait_for_pixel(row.value_x - 7, row.y + 1, edit_ground); }
    // Clicks the row, takes characters off its end, types others and stores.
    void change(const Place& row, int taken_off, const std::string& typed, const std::string& shown) {
        window->click(row.label_x + 4, row.y + 8);
        ASSERT_TRUE(edit_opens(row)) << typed;
        for (int i = 0; i < taken_off; ++i)
            window->key("BackSpace");
        window->type(typed);
        window->key("Return");
        EXPECT_TRUE(window->wait_for_text(row.value_x, row.y, shown, hovered_value)) << shown;
    }
    void open_description() {
        window->click(800, 500);
        ASSERT_TRUE(window->wait_for_pixel(746, 560, edit_ground));
    }
    // Looks for the marker's speed before the button is released, and that it goes then.
    void drag_marker(const std::vector<std::pair<int, int>>& path, const std::string& shown, std::uint32_t colour) {
        window->move(path.front().first, path.front().second);
        window->press();
        for (const auto& [x, y] : path)
            window->move(x, y);
        EXPECT_TRUE(window->wait_for_text(72, 545, shown, colour));
        window->release();
        EXPECT_TRUE(wait_until([&] { return !window->shows_text(72, 545, shown, colour); })) << shown;
    }
    bool description_closes() const { return window->wait_for_pixel(746, 560, colour::background); }

    // Saves the parameters alone and reads them back.
    FileBytes saved() {
        const std::filesystem::path path = folder / "test.res";
        std::filesystem::remove(path);
        go_to(0, "= FILES =");
        window->type("test.res");
        window->key("s", {"Control_L"});
        EXPECT_TRUE(wait_until([&] { return std::filesystem::exists(path); }));
        std::ifstream file(path, std::ios::binary);
        FileBytes bytes{std::istreambuf_iterator<char>(file), {}};
        bytes.resize(std::max(bytes.size(), parameters_at + parameter_count));
        return bytes;
    }
    static int byte_of(const FileBytes& file, int offset) {
        return file[parameters_at + static_cast<std::size_t>(offset)];
    }
    static int word_of(const FileBytes& file, int offset) {
        return byte_of(file, offset) | byte_of(file, offset + 1) << 8;
    }
    // What follows the parameters: name, sign name and description, each ended by a zero byte.
    static std::string texts_of(const FileBytes& file) {
        return {file.begin() + parameters_at + parameter_count, file.end()};
    }
};

const std::string zero(1, '\0');

} // namespace

TEST_F(Parameters, ValuesOfEverySectionReachTheFile) {
    change(brakes, 1, "7", "307");
    change(on_ice, 2, "65535", "65535");
    change(gears, 1, "4", "4");
    change(first_ratio, 0, "", "30000");
    change(first_ratio, 5, "12345", "12345");
    change(purple, 0, "255", "255");
    change(orange_5, 1, "", "6");
    change(car_name, 3, "bus 9~", "New bus 9~");
    change(sign_name, 1, "?!", "New?");
    const FileBytes file = saved();
    EXPECT_EQ(word_of(file, 4), 307);
    EXPECT_EQ(word_of(file, 186), 65535);
    EXPECT_EQ(byte_of(file, 0), 4);
    EXPECT_EQ(word_of(file, 16), 12345);
    EXPECT_EQ(byte_of(file, 1), 255);
    EXPECT_EQ(word_of(file, 198), 6);
    EXPECT_EQ(texts_of(file), "New bus 9~" + zero + "New?" + zero + "New car]" + zero);
    EXPECT_EQ(word_of(file, 2), 20); // and what was not edited
    EXPECT_EQ(word_of(file, 12), 10000);
    EXPECT_EQ(word_of(file, 188), 128);
}

TEST_F(Parameters, TheMassThatIsTypedClassifiesAndPowergearMovesTheMass) {
    ASSERT_TRUE(window->wait_for_text(powergear.value_x, powergear.y, "Flexible", colour::value));
    change(mass, 1, "4", "24");
    EXPECT_TRUE(window->wait_for_text(powergear.value_x, powergear.y, "None", colour::value));
    window->click(powergear.label_x + 4, powergear.y + 8);
    EXPECT_TRUE(window->wait_for_text(powergear.value_x, powergear.y, "No (bug-free)", hovered_value));
    EXPECT_TRUE(window->wait_for_text(mass.value_x, mass.y, "32", colour::value));
    EXPECT_EQ(word_of(saved(), 2), 32);
}

TEST_F(Parameters, ACurvePaintedInOneStrokeKeepsEveryPosition) {
    std::vector<std::pair<int, int>> path;
    for (int point = 0; point < 104; ++point)
        path.emplace_back(65 + 6 * point + 3, 490 - 2 * point);
    {
        const Busy busy(*program);
        window->drag(path);
    }
    const FileBytes file = saved();
    for (int point = 0; point < 104; ++point)
        EXPECT_EQ(byte_of(file, 58 + point), 5 + point) << point;
}

TEST_F(Parameters, EveryZoomStoresItsOwnTorque) {
    const std::vector<std::pair<int, std::string>> zooms{{127, "127"}, {85, "84"}, {63, "63"}, {255, "255"}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(window->wait_for_text(29, 237, zooms[static_cast<std::size_t>(i)].second, colour::label));
        window->click(65 + 6 * (20 + i) + 3, 245);
        window->key("z");
    }
    EXPECT_TRUE(window->wait_for_text(29, 237, "127", colour::label));
    const FileBytes file = saved();
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(byte_of(file, 58 + 20 + i), zooms[static_cast<std::size_t>(i)].first) << i;
}

TEST_F(Parameters, MarkersAreDragged) {
    drag_marker({{112, 520}, {160, 530}, {201, 515}}, "Idle: 2901 RPM", 0xFFB4A000);
    drag_marker({{159, 520}, {250, 520}}, "Downshift: 3946 RPM", 0xFF3C3CB4);
    drag_marker({{487, 520}, {400, 520}}, "Upshift: 7146 RPM", 0xFF3CB4B4);
    drag_marker({{534, 520}, {686, 540}}, "Max: 13248 RPM", 0xFFF05000);
    const FileBytes file = saved();
    EXPECT_EQ(word_of(file, 6), 2901);
    EXPECT_EQ(word_of(file, 8), 3946);
    EXPECT_EQ(word_of(file, 10), 7146);
    EXPECT_EQ(word_of(file, 12), 13248);
}

TEST_F(Parameters, MarkersAreSetByKeys) {
    const std::vector<std::pair<int, std::string>> keys{{67, "i"}, {201, "d"}, {400, "u"}, {686, "m"}};
    for (const auto& [x, key] : keys) {
        window->move(x, 300);
        window->key(key);
    }
    const FileBytes file = saved();
    EXPECT_EQ(word_of(file, 6), 43);
    EXPECT_EQ(word_of(file, 8), 2901);
    EXPECT_EQ(word_of(file, 10), 7147);
    EXPECT_EQ(word_of(file, 12), 13248);
}

TEST_F(Parameters, CursorKeysChangeThePointThatTheRightButtonSelected) {
    window->click(65 + 6 * 50 + 3, 300, 3);
    for (const char* key : {"Up", "Up", "Up", "Down", "Right", "Up", "Left", "Left", "Up"})
        window->key(key);
    const FileBytes file = saved();
    EXPECT_EQ(byte_of(file, 58 + 49), 1);
    EXPECT_EQ(byte_of(file, 58 + 50), 2);
    EXPECT_EQ(byte_of(file, 58 + 51), 1);
}

TEST_F(Parameters, TheDescriptionIsWrittenCancelledAndCleared) {
    open_description();
    window->key("End");
    window->type(", GT");
    window->key("Down");
    window->key("Down");
    window->type("third line");
    window->key("Return");
    ASSERT_TRUE(description_closes());
    EXPECT_TRUE(window->wait_for_text(750, 397, "third line", colour::value));
    open_description();
    window->type("never ");
    window->key("Escape");
    ASSERT_TRUE(description_closes());
    EXPECT_EQ(texts_of(saved()), "New car" + zero + "New!" + zero + "New car, GT]]third line]" + zero);

    go_to(3, "= PHYSICAL PARAMETERS =");
    open_description();
    window->key("Tab");
    window->key("Return");
    ASSERT_TRUE(description_closes());
    EXPECT_EQ(texts_of(saved()), "New car" + zero + "New!" + zero + zero);
}

TEST_F(Parameters, MoreThanNineLinesStayUntilTheTextIsStored) {
    open_description();
    window->key("Tab");
    window->type("1]2]3]4]5]6]7]8]9]10]11");
    window->key("Return");
    ASSERT_TRUE(description_closes());
    EXPECT_TRUE(window->wait_for_text(750, 493, "9", colour::value));
    EXPECT_EQ(texts_of(saved()), "New car" + zero + "New!" + zero + "1]2]3]4]5]6]7]8]9]10]11]" + zero);

    go_to(3, "= PHYSICAL PARAMETERS =");
    open_description();
    window->key("Return");
    ASSERT_TRUE(description_closes());
    EXPECT_EQ(texts_of(saved()), "New car" + zero + "New!" + zero + "1]2]3]4]5]6]7]8]9]" + zero);
}

TEST_F(Parameters, TheCloseButtonEndsTheProgramInEveryEdit) {
    window->click(mass.label_x + 4, mass.y + 8);
    ASSERT_TRUE(edit_opens(mass));
    window->ask_to_close();
    EXPECT_EQ(program->wait_for_end(), 0);

    start();
    go_to(3, "= PHYSICAL PARAMETERS =");
    open_description();
    window->ask_to_close();
    EXPECT_EQ(program->wait_for_end(), 0);
}
