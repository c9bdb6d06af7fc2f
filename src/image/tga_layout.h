// What the TGA reader and the writers share of the file's layout.
#pragma once

#include <cstddef>
#include <cstdint>
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

// The longest file of use: header, ID field, the longest colour map, and the largest image of 32 bits with a packet for
// every pixel. What follows the pixels is never read.
constexpr std::size_t longest_id = 255, longest_map = 65535 * (255 / 8);
constexpr std::size_t largest_targa =
    header_bytes + longest_id + longest_map + std::size_t{largest_side} * largest_side * (4 + 1);

} // namespace targa_layout
