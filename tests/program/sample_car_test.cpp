#include "program/sample_car_test.h"

#include "base/reset.h"
#include "files/transfer.h"
#include "formats/data_files.h"
#include "model/items.h"
#include "support/text_file.h"
#include "window/window.h"

namespace {

constexpr Rectangle work_area{0, 0, screen_width - 1, 599};

} // namespace

void SampleCarTest::SetUp() {
    ProgramTest::SetUp();
    reset_program();
    for (const auto& entry : std::filesystem::directory_iterator(KAROSMIT_GARAGE))
        std::filesystem::copy_file(entry.path(), folder / entry.path().filename());
    make_file("karosmit.cfg", "imagick = sh converter\n");
    make_file("converter", "exec convert \"$@\"\n");
    start();
    type_identifier(identifier());
    window->key("l", {"Control_L"});
    ASSERT_TRUE(window->wait_for_text(650, 150, "Loaded " + identifier(), colour::success));

    const CurrentDirectory inside{folder.string()};
    INITDASHITEMS();
    load_data_files(KAROSMIT_PROGRAM);
    ASSERT_FALSE(transfer(Transfer::load, identifier()).failed);
}

void SampleCarTest::TearDown() {
    ProgramTest::TearDown();
    reset_program();
}

void SampleCarTest::type_identifier(const std::string& identifier) {
    window->type(identifier);
    ASSERT_TRUE(file_field_becomes(identifier));
}

void SampleCarTest::go_to(int cell, const std::string& title) {
    window->click(cell * 48 + 24, 620);
    ASSERT_TRUE(screen_becomes(title));
}

bool SampleCarTest::work_area_becomes_ours() const {
    return wait_until([&] { return window->shows_picture(screen().image(), work_area); });
}

std::string SampleCarTest::content_of(const std::string& name) const { return read_text(folder / name); }

void SampleCarTest::save_as_xrux() {
    go_to(0, "= FILES =");
    type_identifier("xrux");
    window->key("s", {"Control_L"});
    ASSERT_TRUE(window->wait_for_text(650, 150, "Saved xrux", colour::success));
}
