#include "formats/resource_archive.h"

#include "base/byte_reader.h"

#include <algorithm>

namespace {
constexpr std::uint64_t offset_width = 4;
constexpr std::uint64_t entry_width = archive_id_length + offset_width;
static_assert(archive_ids_at == archive_count_at + sizeof(std::uint16_t));

// An id of exactly four characters: cut, or filled up with blanks.
std::string four_characters(std::string id) {
    id.resize(archive_id_length, ' ');
    return id;
}
} // namespace

std::optional<std::uint64_t> ArchiveDirectory::find(std::string_view id) const {
    const auto entry = std::ranges::find(entries, id, &ArchiveEntry::id);
    if (entry == entries.end()) return std::nullopt;
    return entry->position;
}

ArchiveDirectory read_archive_directory(std::span<const std::byte> file, std::size_t most_entries) {
    ArchiveDirectory directory;
    const bool counted = ByteReader(file, archive_count_at).u16(directory.count);

    const std::uint64_t offsets_at = archive_ids_at + archive_id_length * directory.count;
    const std::uint64_t data_at = archive_ids_at + entry_width * directory.count;
    const std::size_t seen = std::min<std::size_t>(directory.count, most_entries);

    ByteReader ids(file, archive_ids_at);
    ByteReader offsets(file, offsets_at);
    for (std::size_t i = 0; i < seen; ++i) {
        std::string id = ids.text(archive_id_length);
        std::uint32_t offset = 0;
        if (id.size() < archive_id_length || !offsets.u32(offset)) break;
        directory.entries.push_back({std::move(id), data_at + offset});
    }
    directory.whole = counted && directory.entries.size() == seen;
    directory.tables_end = seen == 0 ? archive_ids_at : offsets_at + offset_width * seen;
    return directory;
}

Bytes encode_archive(const std::vector<ArchiveResource>& resources) {
    ByteWriter writer;
    writer.u32(0);
    writer.u16(static_cast<std::uint16_t>(resources.size()));
    for (const ArchiveResource& resource : resources)
        writer.text(four_characters(resource.id));

    std::size_t offset = 0;
    for (const ArchiveResource& resource : resources) {
        writer.u32(static_cast<std::uint32_t>(offset));
        offset += resource.content.size();
    }
    for (const ArchiveResource& resource : resources)
        writer.bytes(std::span<const std::byte>(resource.content));
    writer.u32_at(0, static_cast<std::uint32_t>(writer.position()));
    return writer.take();
}
