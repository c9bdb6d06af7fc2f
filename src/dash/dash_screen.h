// The Dash manager: the cockpit as the game shows it, its bitmaps in and out, and the cockpit data of the parameters.
#pragma once

#include "dash/dash_state.h"

#include <cstdint>
#include <vector>

// The mode that the screen is in, kept between visits.
extern std::uint8_t OPMODE;
namespace dash_mode {
constexpr std::uint8_t driving = 0, images = 1, wheel = 2, speedometer = 3, tachometer = 4, gear_box = 5, count = 6;
}

// The mode of a number, which is taken modulo their count.
const DashMode& mode_of(std::uint8_t number);

extern const Screen<DashScreen> dash_screen;

// Runs until another screen is picked or the program is to end (CURMENU = 255).
void DASHMANAGER();

// Its keys, one table for all modes and one for each.
std::vector<KeyHelpTable> dash_screen_keys();
