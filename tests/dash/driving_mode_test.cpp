#include "dash_test.h"

namespace {

class DrivingTest : public DashTest {
protected:
    void SetUp() override {
        DashTest::SetUp();
        add("whl1", 4, 4, 0, 0, ink::red);
        add("whl2", 4, 4, 0, 0, ink::green);
        add("whl3", 4, 4, 0, 0, ink::blue);
        for (int marker = 0; marker <= last_marker; ++marker)
            set_wheel_marker(marker, {100 + marker, 50 + marker});
    }
    void add_dots() {
        add("dot ", 5, 5, 0, 0, ink::white);
        add("dota", 5, 5, 0, 0, 0);
        add("dot1", 3, 3, 0, 0, ink::brown);
        add("dot2", 3, 3, 0, 0, ink::grey);
    }
    void draw_steered(Steering steering, int zoom = 2) {
        state.steering = steering;
        draw_at(zoom);
    }
    // A square of canvas pixels around a canvas point, on the screen.
    static Rectangle square(CockpitPoint centre, int side, int zoom = 2) {
        const Point corner = view_at(zoom).at({centre.x - side / 2, centre.y - side / 2});
        return {corner.x, corner.y, corner.x + side * zoom - 1, corner.y + side * zoom - 1};
    }
};

// A window that notes what the place of the wheel comes to show.
class WatchedWheel : public ScriptedBackend {
public:
    std::vector<std::uint32_t> seen;

    WatchedWheel() {
        std::string error;
        open(screen_width, screen_height, error);
    }
    void present(const Image& picture, std::span<const Rectangle> changed) override {
        ScriptedBackend::present(picture, changed);
        const std::uint32_t wheel = shown_pixel(52, 102);
        if (seen.empty() || seen.back() != wheel) seen.push_back(wheel);
    }
};

} // namespace

TEST_F(DrivingTest, TheWheelTurnsWhileACursorKeyIsHeld) {
    const auto shows = [this](std::uint8_t ink) {
        return look([this, ink] { EXPECT_EQ(shown(52, 102), Pixel{colour_of(ink)}); });
    };
    OPMODE = dash_mode::driving;
    play_screen({mouse_at(5, 590), shows(ink::green), key_down(Key::left), shows(ink::red), key_up(Key::left),
                 shows(ink::green), key_down(Key::right), shows(ink::blue), key_down(Key::left), shows(ink::green),
                 key_up(Key::right), shows(ink::red), key_up(Key::left), shows(ink::green)});
}

TEST_F(DrivingTest, ATapThatIsOverBeforeItIsPolledTurnsTheWheelOnce) {
    WatchedWheel watched;
    use_backend(&watched);
    watched.play({mouse_at(5, 590), key_press(Key::left), key_press(Key::right), key_press(Key::escape)});
    OPMODE = dash_mode::driving;
    DASHMANAGER();
    use_backend(&window);
    const std::uint32_t straight = colour_of(ink::green), left = colour_of(ink::red), right = colour_of(ink::blue);
    EXPECT_EQ(watched.seen, (std::vector{straight, left, straight, right, straight}));
}

TEST_F(DrivingTest, InOtherModesTheWheelStaysStraight) {
    OPMODE = dash_mode::gear_box;
    play_screen({mouse_at(5, 590), key_down(Key::left),
                 look([this] { EXPECT_EQ(shown(52, 102), Pixel{colour_of(ink::green)}); }), key_up(Key::left)});
}

TEST_F(DrivingTest, HasATitleAndNoPanel) {
    enter(dash_mode::driving);
    draw();
    EXPECT_TRUE(screen_shows(16, 16, "= DASH MANAGER =", colour::title));
    EXPECT_TRUE(shows_section(47, 90, 692, 502, "Driving test"));
    EXPECT_EQ(found(colour::label), Rectangle{});
    EXPECT_EQ(found(colour::value), Rectangle{});
}

TEST_F(DrivingTest, StandsOnTheBackground) {
    enter(dash_mode::driving);
    draw();
    EXPECT_EQ(drawn(300, 300), Pixel{colour::background});
    draw_at(3);
    EXPECT_EQ(drawn(300, 300), Pixel{colour::background});
    EXPECT_TRUE(screen_shows(16, 16, "= DASH MANAGER =", colour::title)); // where nothing covers it
}

TEST_F(DrivingTest, TheDotIsOnTheFirstMarkerOrOnThatOfATurnedWheel) {
    add_dots();
    enter(dash_mode::driving);
    for (const int zoom : {2, 3}) {
        draw_steered(Steering::straight, zoom);
        EXPECT_EQ(found(colour_of(ink::white)), square({100, 50}, 5, zoom));
        draw_steered(Steering::right, zoom);
        EXPECT_EQ(found(colour_of(ink::grey)), square({110, 60}, 3, zoom));
        draw_steered(Steering::left, zoom);
        EXPECT_EQ(found(colour_of(ink::brown)), square({90, 60}, 3, zoom));
    }
}

TEST_F(DrivingTest, WithoutMarkersThereIsNoDot) {
    add_dots();
    enter(dash_mode::driving);
    for (int marker = 0; marker <= last_marker; ++marker)
        set_wheel_marker(marker, {});
    for (const Steering steering : {Steering::left, Steering::straight, Steering::right}) {
        draw_steered(steering);
        for (const std::uint8_t ink : {ink::white, ink::brown, ink::grey})
            EXPECT_EQ(found(colour_of(ink)), Rectangle{});
    }
    set_wheel_marker(0, {0, 50});
    draw_steered(Steering::straight);
    EXPECT_NE(found(colour_of(ink::white)), Rectangle{});
}

TEST_F(DrivingTest, OnlyTheDotOfTheSteeringIsShown) {
    add_dots();
    enter(dash_mode::driving);
    draw_steered(Steering::right);
    EXPECT_EQ(count(screen().image(), colour_of(ink::white)), 0);
    EXPECT_EQ(count(screen().image(), colour_of(ink::brown)), 0);
}

TEST_F(DrivingTest, TheStraightDotHasAMaskIfThereIsOne) {
    add("roof", 320, 100, 0, 0, ink::grey);
    add("dot ", 2, 1, 0, 0, ink::white);
    enter(dash_mode::driving);
    bitmap("dot ").pixels.edit()[1] = ink::none;
    const Point at = view_at(2).at({99, 50});
    draw();
    EXPECT_EQ(drawn(at.x + 2, at.y), Pixel{colour_of(ink::none)}); // drawn as it is
    add("dota", 2, 1, 0, 0, 0);
    bitmap("dota").pixels.edit()[1] = 255;
    draw();
    EXPECT_EQ(drawn(at.x, at.y), Pixel{colour_of(ink::white)});
    EXPECT_EQ(drawn(at.x + 2, at.y), Pixel{colour_of(ink::grey)});
}

TEST_F(DrivingTest, TheMouseDoesNothing) {
    enter(dash_mode::driving);
    const auto before = DOCUMENT;
    state.redraw = false;
    click_on(60, 110);
    EXPECT_TRUE(DOCUMENT == before);
    EXPECT_FALSE(state.redraw);
    EXPECT_EQ(state.item, 1);
}
