// What must be true of a JPEG file before the decoder may see it: the decoder trusts the file's Huffman tables, and
// does as much work as there are scans.
#pragma once

#include <cstddef>
#include <span>

// Whether the file begins as a JPEG does, with any number of filling bytes before its first marker.
bool is_jpeg(std::span<const std::byte> file);

// Whether every Huffman table that the decoder could come upon has at most 256 codes, and the scans are no more than
// any encoder makes. Says nothing else about the file.
bool is_safe_jpeg(std::span<const std::byte> file);
