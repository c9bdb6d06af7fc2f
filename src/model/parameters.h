// Where things lie in PAR, the 776 raw bytes of the car's physical parameters, and its bytes and words.
#pragma once

#include "model/document.h"

#include <cstddef>
#include <cstdint>

// Byte offsets in PAR. Points are two bytes or two words, x first. What is not named here is not understood.
namespace par_offset {
constexpr int gear_count = 0; // u8
constexpr int purple = 1;     // u8
constexpr int mass = 2;       // u16, as all that follows where nothing else is said
constexpr int brakes = 4;
constexpr int idle_rpm = 6;
constexpr int downshift_rpm = 8;
constexpr int upshift_rpm = 10;
constexpr int maximum_rpm = 12;
constexpr int yellow = 14;
constexpr int gear_ratio(int gear) { return 14 + 2 * gear; } // of gear 1 to 6
constexpr int knobs = 28; // points: the gate, then gears 1 to 6, relative to the gear box
constexpr int air_drag = 56;
constexpr int torque_curve = 58; // 104 bytes, point i at 128 x i revolutions per minute
constexpr int blue = 162;
constexpr int intrinsic_grip = 164;
constexpr int red(int number) { return 164 + 2 * number; } // 1 to 7
constexpr int grip_airborne = 180;
constexpr int grip_on_asphalt = 182;
constexpr int grip_on_dirt = 184;
constexpr int grip_on_ice = 186;
constexpr int grip_on_grass = 188;
constexpr int orange(int number) { return 188 + 2 * number; } // 1 to 5
constexpr int collision_half_width = 200;
constexpr int collision_height = 202;
constexpr int collision_half_length = 204;
constexpr int collision_radius = 206;
constexpr int centre_height = 208;
constexpr int wheels = 210;           // four times three: across, nothing known, along
constexpr int steering_markers = 234; // 31 u8 points on the canvas
constexpr int speedometer = 296;      // centre x, y and point count, then the needle tips as u8 points
constexpr int tachometer = 510;       // the same
} // namespace par_offset

constexpr int torque_points = 104;
constexpr int most_gears = 6;
constexpr int most_speedometer_points = 103;
constexpr int most_tachometer_points = 127;

// The 16-bit word of a block at a byte offset. An offset that does not lie wholly inside the block reads as 0 and
// writes nothing.
std::uint16_t word_of(const ParameterBlock& block, int offset);
void set_word(ParameterBlock& block, int offset, std::uint16_t value);

// Bytes and 16-bit words of PAR at a byte offset. An offset that does not lie wholly inside PAR reads as 0 and writes
// nothing.
std::uint8_t par_byte(int offset);
void set_par_byte(int offset, std::uint8_t value);
std::uint16_t par_word(int offset);
void set_par_word(int offset, std::uint16_t value);

// All bytes 0, all texts empty.
void reset_parameters();
