// The way of a whole car in a real window: listed by its name, clicked, loaded, saved under another identifier.
#include "program/program_test.h"

#include <fstream>
#include <iterator>
#include <vector>

namespace {

class Cars : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        for (const auto& entry : std::filesystem::directory_iterator(KAROSMIT_GARAGE))
            std::filesystem::copy_file(entry.path(), folder / entry.path().filename());
        start();
    }

    // Into the File field, whatever is there.
    void enter(const std::string& name) {
        window->key("Home");
        for (int i = 0; i < 12; ++i)
            window->key("Delete");
        window->type(name);
        ASSERT_TRUE(file_field_becomes(name));
    }
    void load(const std::string& name) {
        enter(name);
        window->key("l", {"Control_L"});
        ASSERT_TRUE(window->wait_for_text(650, 150, "Loaded " + name, colour::success));
    }
    void save(const std::string& name) {
        enter(name);
        window->key("s", {"Control_L"});
        ASSERT_TRUE(window->wait_for_text(650, 150, "Saved " + name, colour::success));
    }

    std::vector<char> content_of(const std::string& name) const {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void expect_same_car(const std::string& one, const std::string& other) const {
        for (const auto& [front, back] :
             {std::pair("car", ".res"), {"st", ".3sh"}, {"stda", ".vsh"}, {"stdb", ".vsh"}}) {
            EXPECT_FALSE(content_of(front + one + back).empty()) << front << one << back;
            EXPECT_EQ(content_of(front + one + back), content_of(front + other + back)) << front << one << back;
        }
    }
};

} // namespace

TEST_F(Cars, ASampleCarIsLoadedByClickAndKeySavedUnderAnotherNameAndTheSameByteForByte) {
    ASSERT_TRUE(window->wait_for_text(50, 130 + 16, "Haldmark Brux 3.0 E (BRUX)", colour::label));
    window->click(120, 130 + 16 + 8);
    ASSERT_TRUE(file_field_becomes("brux"));
    window->key("l", {"Control_L"});
    EXPECT_TRUE(window->wait_for_text(650, 150, "Loaded brux", colour::success));
    EXPECT_TRUE(wait_until([&] { return window->title() == "Karosmit 1.0.4 - Haldmark Brux 3.0 E"; }));

    window->key("Home");
    window->key("Delete");
    window->type("x");
    window->key("s", {"Control_L"});
    EXPECT_TRUE(window->wait_for_text(650, 150, "Saved xrux", colour::success));
    expect_same_car("xrux", "brux");
}

TEST_F(Cars, TheButtonsDoTheSame) {
    window->click(120, 130 + 2 * 16 + 8);
    ASSERT_TRUE(file_field_becomes("vela"));
    window->click(700, 85);
    EXPECT_TRUE(window->wait_for_text(650, 150, "Loaded vela", colour::success));
    window->key("BackSpace");
    window->type("x");
    window->click(840, 85);
    EXPECT_TRUE(window->wait_for_text(650, 150, "Saved velx", colour::success));
    expect_same_car("velx", "vela");
}

TEST_F(Cars, AProjectHoldsTheWholeCar) {
    load("brux");
    save("brux.car");
    load("vela");
    load("brux.car");
    save("xrux");
    expect_same_car("xrux", "brux");
}
