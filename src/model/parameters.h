// The car's physical parameters and its three texts.
//
// PAR is the raw content of the game's "simd" resource, 776 bytes, little-endian, addressed by byte offset; what is not
// understood is kept byte for byte.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

constexpr std::size_t parameter_bytes = 776;

extern std::array<std::byte, parameter_bytes> PAR;
extern std::string CARNAME;     // "gnam": the car's full name
extern std::string CARSIGNNAME; // "gsna": the short name on the sign
extern std::string CARINFO;     // "edes": the description, every line ended by "]"

// Byte offsets in PAR of what has a name outside the table of edit targets.
namespace par_offset {
constexpr int gear_count = 0; // u8
constexpr int mass = 2;       // u16
constexpr int idle_rpm = 6;   // u16, and the next three
constexpr int downshift_rpm = 8;
constexpr int upshift_rpm = 10;
constexpr int maximum_rpm = 12;
constexpr int torque_curve = 58; // 104 bytes, point i at 128 x i revolutions per minute
} // namespace par_offset

constexpr int torque_points = 104;

// Bytes and 16-bit words of PAR at a byte offset. An offset that does not lie wholly inside PAR reads as 0 and writes
// nothing.
std::uint8_t par_byte(int offset);
void set_par_byte(int offset, std::uint8_t value);
std::uint16_t par_word(int offset);
void set_par_word(int offset, std::uint16_t value);

// All bytes 0, all texts empty.
void reset_parameters();
