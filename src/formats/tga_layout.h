// What the TGA reader and the writers share of the file's layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace targa_layout {

constexpr std::size_t header_bytes = 18;
constexpr std::uint16_t largest_side = 8192;

constexpr std::uint8_t true_colour = 2, run_length_mapped = 9, run_length_true_colour = 10;

// Image descriptor.
constexpr std::uint8_t alpha_bits = 0x0F, right_to_left = 0x10, top_to_bottom = 0x20;

// Packet header: with the top bit a run of (header - 127) equal pixels, without it (header + 1) literal ones.
constexpr std::uint8_t run_packet = 0x80;
constexpr int longest_packet = 128;

constexpr std::string_view footer_signature = "TRUEVISION-XFILE.";

} // namespace targa_layout

// Sets the outcome of a call, message included; `bits` is the depth that the message of wrong_depth names.
void set_targa_error(std::int16_t code, int bits = 0);
