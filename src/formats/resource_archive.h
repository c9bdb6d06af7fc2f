// The game's resource archive: named resources found through a table of ids and offsets.
//
//   0       u32    file size (written last; ignored when read)
//   4       u16    n, number of resources
//   6       4 x n  ids, four characters each
//   6 + 4n  4 x n  u32 offsets, relative to the data area
//   6 + 8n         data area
//
// No lengths are stored: each reader knows how much it takes.
#pragma once

#include "base/byte_writer.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

constexpr std::size_t archive_count_at = 4;
constexpr std::size_t archive_ids_at = 6;
constexpr std::size_t archive_id_length = 4;

struct ArchiveEntry {
    std::string id;             // four characters
    std::uint64_t position = 0; // of its data, from the start of the file
};

struct ArchiveDirectory {
    std::uint16_t count = 0;           // n as the file says
    std::vector<ArchiveEntry> entries; // those whose id and offset the file really holds, in table order
    bool whole = false;                // the file holds the count and all entries that were asked for
    std::uint64_t tables_end = 0;      // where reading stops after the tables of the entries asked for

    // Position of the first entry of exactly this id.
    std::optional<std::uint64_t> find(std::string_view id) const;
};

// Reads the tables of the first `most_entries` entries; their data positions still use the full count.
ArchiveDirectory read_archive_directory(std::span<const std::byte> file,
                                        std::size_t most_entries = std::numeric_limits<std::uint16_t>::max());

struct ArchiveResource {
    std::string id;
    Bytes content;
};

// The bytes of an archive: the resources back to back in the order given.
Bytes encode_archive(const std::vector<ArchiveResource>& resources);
