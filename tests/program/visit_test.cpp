// A whole visit in a real window: a sample car is edited on every screen, saved as a set and as a project, and found
// again by the next start of the program. The same is done to the car here, and every byte of the files compared.
#include "program/sample_car_test.h"

#include "base/reset.h"
#include "files/transfer.h"
#include "formats/car_files.h"
#include "formats/obj_file.h"
#include "formats/project_file.h"
#include "model/bitmap_table.h"
#include "model/car.h"
#include "model/gauges.h"
#include "model/generators.h"
#include "model/items.h"
#include "model/parameters.h"
#include "model/placement.h"
#include "support/temporary_directory.h"

#include <map>

namespace {

constexpr std::uint32_t edit_ground = 0xFF280A14;
constexpr int name_y = 70, brakes_y = 134, value_x = 121;
const std::string new_name = "Visited, and back";
constexpr int new_brakes = 777, torque_point = 20, new_torque = 80;

using Files = std::map<std::string, std::string>; // what they hold, by what they hold of a car

class WholeVisit : public SampleCarTest, public testing::WithParamInterface<const char*> {
protected:
    std::string identifier() const override { return GetParam(); }

    void keys(const std::string& name, int times) {
        for (int i = 0; i < times; ++i)
            window->key(name);
    }
    // Into the File field, whatever is there; then the key, and what the screen says of it.
    void transfer_by_key(const std::string& name, const std::string& key, const std::string& word) {
        keys("End", 1);
        keys("BackSpace", 12);
        type_identifier(name);
        window->key(key, {"Control_L"});
        ASSERT_TRUE(window->wait_for_text(650, 150, word + " " + name, colour::success)) << name;
    }
    void load(const std::string& name) { transfer_by_key(name, "l", "Loaded"); }
    void save(const std::string& name) { transfer_by_key(name, "s", "Saved"); }
    void quit() {
        window->key("Escape");
        EXPECT_EQ(program->wait_for_end(), 0) << program->error_output();
    }

    void show_slot(const std::string& digit, const std::string& name) {
        window->type(digit);
        ASSERT_TRUE(window->wait_for_text(860, 64, name, colour::value));
    }

    void edit_models() {
        go_to(1, "= 3D EDITOR =");
        show_slot("2", "Game");
        window->key("c", {"Control_L"});
        show_slot("4", "Aux 1");
        window->key("v", {"Control_L"});
        CAR[3] = CAR[1];

        show_slot("1", "Showroom");
        window->move(40, 70); // over the top view
        keys("Right", 3);
        keys("Up", 2);
        CURMODEL = 0;
        for (int i = 0; i < 3; ++i)
            MOVECAR(0.1, 0, 0);
        for (int i = 0; i < 2; ++i)
            MOVECAR(0, 0.1, 0);
        show_slot("3", "Intro"); // where the body goes
    }
    void edit_on_files() {
        go_to(0, "= FILES =");
        load("hull.obj");
        LOADOBJ(folder / "hull.obj", 2);
    }
    void move_item(int item, int left, int up) {
        for (int i = 0; i < left; ++i)
            move_item_to(item, -1, 0);
        for (int i = 0; i < up; ++i)
            move_item_to(item, 0, -1);
        keys("Left", left);
        keys("Up", up);
    }
    static void move_item_to(int item, int x, int y) {
        const int bitmap = DASHITEM[item].bitmap;
        ASSERT_NE(bitmap, 0) << DASHITEM[item].label;
        MOVEDASHIMAGETO(bitmap, BITMAP[bitmap].absolute_x + x, BITMAP[bitmap].absolute_y + y);
    }
    void edit_dashboard() {
        constexpr int gear_box = 10, digits = 15;
        go_to(2, "= DASH MANAGER =");
        UPDATEDASHITEMS();
        window->key("Tab"); // the images
        keys("Next", gear_box - 1);
        move_item(gear_box, 3, 5);
        keys("Next", digits - gear_box);
        window->type("7");
        DASHITEM[digits].bitmap = static_cast<std::uint8_t>(RBM("dig7"));
        move_item(digits, 4, 0);

        window->key("Tab"); // the steering wheel's marker 0
        keys("Right", 2);
        keys("Down", 3);
        set_wheel_marker(0, wheel_marker(0) + CockpitPoint{2, 3});
    }
    void type_value(int y, const std::string& text) {
        window->click(29, y + 8);
        ASSERT_TRUE(window->wait_for_pixel(value_x - 7, y + 1, edit_ground));
        keys("BackSpace", 24);
        window->type(text);
        window->key("Return");
        ASSERT_TRUE(wait_until([&] { return window->pixel(value_x - 7, y + 1) != edit_ground; })) << text;
    }
    void edit_parameters() {
        go_to(3, "= PHYSICAL PARAMETERS =");
        type_value(name_y, new_name);
        type_value(brakes_y, std::to_string(new_brakes));
        window->click(65 + 6 * torque_point + 3, 500 - 2 * new_torque);
        CARNAME = new_name;
        set_par_word(par_offset::brakes, new_brakes);
        set_par_byte(par_offset::torque_curve + torque_point, new_torque);
    }

    // The files of a car in the folder.
    Files set_of(const std::string& car) const {
        Files files;
        for (const CarFile& file : car_files)
            files[std::string(file.prefix)] = content_of(car_file_name(file, car));
        return files;
    }
    // What the car here is in files.
    Files set_of_ours() const {
        const CurrentDirectory inside{folder.string()};
        EXPECT_FALSE(transfer(Transfer::save, "ours").failed);
        return set_of("ours");
    }
    std::string project_of_ours() const {
        SAVECAR(folder / "ours.car");
        return content_of("ours.car");
    }
    static void expect_same(const Files& found, const Files& expected) {
        for (const auto& [prefix, content] : expected)
            EXPECT_TRUE(found.at(prefix) == content) << "the file " << prefix;
    }
    static void expect_all_changed(const Files& found, const Files& before) {
        for (const auto& [prefix, content] : before)
            EXPECT_FALSE(found.at(prefix) == content) << "the file " << prefix;
    }
    // Said once more in numbers, without the procedures that made the edits here.
    void expect_values_in(const std::string& project) const {
        reset_program();
        const FileOutcome outcome = LOADCAR(folder / project);
        EXPECT_TRUE(outcome.succeeded());
        EXPECT_EQ(CARNAME, new_name);
        EXPECT_EQ(par_word(par_offset::brakes), new_brakes);
        EXPECT_EQ(par_byte(par_offset::torque_curve + torque_point), new_torque);
        EXPECT_TRUE(*CAR[3] == *CAR[1]);
        EXPECT_GT(CAR[2]->nprims, 4);
        EXPECT_EQ(CAR[4]->nprims, 0);
    }
};

} // namespace

TEST_P(WholeVisit, EveryByteIsWhatTheEditsMadeOfItAlsoAfterTheNextStart) {
    const Files before = set_of(identifier());
    edit_models();
    edit_on_files();
    edit_dashboard();
    edit_parameters();
    go_to(0, "= FILES =");
    save("xone");
    save("visit.car");
    quit();
    const Files expected = set_of_ours();
    const std::string expected_project = project_of_ours();
    expect_same(set_of("xone"), expected);
    expect_all_changed(expected, before);
    expect_same(set_of(identifier()), before);
    EXPECT_TRUE(content_of("visit.car") == expected_project);

    start();
    load("xone");
    EXPECT_TRUE(wait_until([&] { return window->title() == "Karosmit 1.0.4 - " + new_name; }));
    save("xtwo");
    quit();
    expect_same(set_of("xtwo"), expected);

    start();
    load("visit.car");
    save("xtri");
    save("again.car");
    quit();
    expect_same(set_of("xtri"), expected);
    EXPECT_TRUE(content_of("again.car") == expected_project);
    expect_values_in("again.car");
}

INSTANTIATE_TEST_SUITE_P(OfEverySampleCar, WholeVisit, testing::Values("brux", "tarn", "vela"),
                         [](const auto& car) { return std::string(car.param); });
