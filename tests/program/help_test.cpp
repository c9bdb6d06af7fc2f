// F1 in a real window: on every screen, in every mode, and while something else has the keys.
#include "program/program_test.h"

#include "widgets/page.h"

namespace {

class Help : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        start();
    }
    void go_to(int cell, const std::string& title) {
        window->click(cell * 48 + 24, 620);
        ASSERT_TRUE(screen_becomes(title));
        window->move(5, 590);
    }
    // The first words of the page, and the page gone again by that key.
    void expect_page(const std::string& first, std::uint32_t colour, const std::string& key,
                     const std::string& title) const {
        window->key("F1");
        EXPECT_TRUE(screen_becomes("= KEYS =")) << first;
        EXPECT_TRUE(window->wait_for_text(page_text.x1, page_text.y1, first, colour)) << first;
        window->key(key);
        EXPECT_TRUE(screen_becomes(title)) << first;
    }
    void expect_checks(const std::string& title) const {
        window->key("F2");
        EXPECT_TRUE(screen_becomes("= CHECKS =")) << title;
        window->key("x");
        EXPECT_TRUE(screen_becomes(title)) << title;
    }
};

constexpr const char* titles[] = {"= FILES =", "= 3D EDITOR =", "= DASH MANAGER =", "= PHYSICAL PARAMETERS ="};

} // namespace

TEST_F(Help, OnEveryScreenAndInEveryMode) {
    expect_page("click on a row", colour::value, "F1", titles[0]);
    expect_checks(titles[0]);
    go_to(1, titles[1]);
    for (const char* mode : {"Car", "Wheels", "Resize W.", "Collision"}) {
        ASSERT_TRUE(window->wait_for_text(860, 144, mode, colour::value));
        expect_page("pointer in a view", colour::value, "Tab", titles[1]);
        expect_checks(titles[1]);
        window->key("Tab");
    }
    go_to(2, titles[2]);
    for (const char* heading :
         {"In the driving test:", "Among the images:", "At the steering wheel:", "At speedometer and tachometer:",
          "At speedometer and tachometer:", "At the gear box:"}) {
        expect_page(heading, colour::section_title, "Escape", titles[2]);
        expect_checks(titles[2]);
        window->key("Tab");
    }
    go_to(3, titles[3]);
    expect_page("click on a value", colour::value, "Return", titles[3]);
    expect_checks(titles[3]);
    window->key("Escape");
    EXPECT_EQ(program->wait_for_end(), 0);
}

TEST_F(Help, InThePickerThePanelAndAnEdit) {
    go_to(2, titles[2]);
    window->key("Tab");
    window->key("Return");
    ASSERT_TRUE(screen_becomes(titles[0]));
    expect_page("click on a row", colour::value, "a", titles[0]);
    expect_checks(titles[0]);
    go_to(1, titles[1]);
    window->move(500, 540);
    window->key("Return");
    ASSERT_TRUE(window->wait_for_text(764, 42, "Paint jobs", colour::section_title));
    expect_page("In the paint-job panel:", colour::section_title, "a", titles[1]);
    EXPECT_TRUE(window->wait_for_text(764, 42, "Paint jobs", colour::section_title)) << "the panel is there again";
    window->key("Escape");
    go_to(3, titles[3]);
    window->click(30, 110); // the mass, 20
    window->type("7");
    ASSERT_TRUE(window->wait_for_text(121, 102, "207", 0xFF64FF64));
    window->key("F1");
    ASSERT_TRUE(screen_becomes("= KEYS ="));
    window->type("5");
    ASSERT_TRUE(window->wait_for_text(121, 102, "207", 0xFF64FF64)) << "the edit goes on";
    window->type("3");
    window->key("Return");
    EXPECT_TRUE(window->wait_for_text(121, 102, "2073", 0xFF00FA00) ||
                window->wait_for_text(121, 102, "2073", colour::value));
}

TEST_F(Help, AClickClosesItAndTheCloseButtonEndsTheProgram) {
    window->key("F1");
    ASSERT_TRUE(screen_becomes("= KEYS ="));
    window->click(72, 620); // the menu bar
    ASSERT_TRUE(screen_becomes(titles[0]));
    window->click(72, 620);
    ASSERT_TRUE(screen_becomes(titles[1]));
    window->key("F1");
    ASSERT_TRUE(screen_becomes("= KEYS ="));
    window->ask_to_close();
    EXPECT_EQ(program->wait_for_end(), 0);
}

TEST_F(Help, AKeyThatDoesNothingSaysWhereTheKeysAre) {
    go_to(1, titles[1]);
    for (const char* key : {"question", "h", "F5"}) {
        window->key(key);
        EXPECT_TRUE(window->wait_for_text(208, 616, "F1 shows the keys", colour::title)) << key;
        window->key("c", {"Control_L"});
        EXPECT_TRUE(window->wait_for_text(208, 616, "Showroom copied", colour::title)) << key;
    }
}
