// F2 in a real window: a car with each fault is dropped on it, the line of the page clicked, and the place is there.
#include "program/program_test.h"

#include "base/file_status.h"
#include "base/reset.h"
#include "formats/project_file.h"
#include "model/items.h"
#include "support/faults.h"
#include "widgets/page.h"

namespace {

using one_fault::Fault;

constexpr std::uint32_t selection_bar = 0xFF646478;

class Checks : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        reset_program();
        INITDASHITEMS();
        start();
    }
    void TearDown() override {
        ProgramTest::TearDown();
        reset_program();
    }

    // The car as a project, if that can hold the fault.
    bool make_project(const Fault& fault) const {
        DOCUMENT = faultless_car();
        fault.put(DOCUMENT);
        const std::string name = folder / (std::string(fault.name) + ".car");
        SAVECAR(name);
        LOADCAR(name);
        const Findings findings = check_car(DOCUMENT);
        return FILE_ERNUM == file_status::success && findings.size() == 1 && findings[0].what == fault.what;
    }

    bool value_becomes(int y, const std::string& value) const {
        return window->wait_for_text(815, y, value, colour::value);
    }
    bool field_opens(int x, int y) const { return window->wait_for_pixel(x, y, colour::pressed); }
    bool item_becomes(const std::string& id) const {
        int item = dash_items; // the digits'
        for (int i = 1; i < dash_items; ++i)
            if (DASHITEM[i].id == id) item = i;
        return window->wait_for_pixel(751, 16 * item + 90, selection_bar);
    }
    bool row_opens(int offset) const {
        if (offset == par_offset::gear_count) return field_opens(637, 70);
        return offset == 18 && field_opens(637, 102);
    }
    bool place_is_shown(const CheckPlace& place) const {
        const std::string number = std::to_string(place.number);
        switch (place.spot) {
        case CheckSpot::model:
            return screen_becomes("= 3D EDITOR =") &&
                   window->wait_for_text(
                       860, 64, std::array{"Showroom", "Game", "Intro"}.at(static_cast<std::size_t>(place.number)),
                       colour::value);
        case CheckSpot::bitmap: return screen_becomes("= DASH MANAGER =") && item_becomes(place.id);
        case CheckSpot::speedometer_tip:
            return window->wait_for_text(744, 82, "Speed-o-meter", colour::section_title) &&
                   value_becomes(100, number + " / 5");
        case CheckSpot::tachometer_tip:
            return window->wait_for_text(744, 82, "Tach-o-meter", colour::section_title) &&
                   value_becomes(100, number + " / 5");
        case CheckSpot::knob: return value_becomes(100, place.number == 0 ? "Tabs" : "Gear " + number + "/2");
        case CheckSpot::parameter: return row_opens(place.number);
        case CheckSpot::name: return field_opens(117, 70);
        case CheckSpot::sign_name: return field_opens(117, 86);
        case CheckSpot::description: return field_opens(746, 560);
        case CheckSpot::engine_speed:
        case CheckSpot::torque_curve: return screen_becomes("= PHYSICAL PARAMETERS =");
        }
        return false;
    }
};

} // namespace

TEST_F(Checks, EachIsShownForItsCarAndLeadsToItsPlace) {
    std::vector<std::string> not_in_a_file;
    for (const Fault& fault : one_fault::faults) {
        SCOPED_TRACE(fault.name);
        if (!make_project(fault)) {
            not_in_a_file.emplace_back(fault.name);
            continue;
        }
        const std::string name = std::string(fault.name) + ".car";
        ASSERT_TRUE(window->drop(folder / name));
        ASSERT_TRUE(screen_becomes("= FILES ="));
        ASSERT_TRUE(file_field_becomes(name));
        window->key("F2");
        ASSERT_TRUE(screen_becomes("= CHECKS ="));
        EXPECT_TRUE(window->wait_for_text(page_text.x1 + 160, page_text.y1, fault.what, colour::title));
        window->click(300, page_text.y1 + 10);
        EXPECT_TRUE(place_is_shown(fault.place));
    }
    EXPECT_THAT(not_in_a_file, testing::ElementsAre("BitmapWithoutPixels")) << "a file has pixels for every bitmap";
}

TEST_F(Checks, ASaveThatFindsSeriousOnesSaysSo) {
    window->type("abcd");
    window->key("s", {"Control_L"});
    ASSERT_TRUE(window->wait_for_text(650, 150, "Saved abcd", colour::success));
    EXPECT_TRUE(wait_until([&] {
        for (int checks = 2; checks < 20; ++checks)
            if (window->shows_text(208, 616, std::to_string(checks) + " checks failed, F2", colour::title)) return true;
        return false;
    }));
}
