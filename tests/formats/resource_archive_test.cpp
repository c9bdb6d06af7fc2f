#include "formats/resource_archive.h"

#include "support/bytes.h"

#include <gtest/gtest.h>

namespace {
const std::vector<ArchiveResource> two_resources = {{"simd", byte_list({1, 2, 3})}, {"dot ", byte_list({9})}};

Bytes two_resource_file() { return encode_archive(two_resources); }

// Tables of `count` entries "r000", "r001" ... that all point at offset 0 of an empty data area.
Bytes archive_of_many(unsigned count) {
    ByteWriter writer;
    writer.u32(0);
    writer.u16(static_cast<std::uint16_t>(count));
    for (unsigned i = 0; i < count; ++i) {
        std::string digits = std::to_string(i % 1000);
        writer.text("r" + std::string(3 - digits.size(), '0') + digits);
    }
    for (unsigned i = 0; i < count; ++i)
        writer.u32(i);
    return writer.take();
}

Bytes archive_with_lying_count() {
    Bytes file = two_resource_file();
    put_u16(file, archive_count_at, 65535);
    return file;
}

Bytes archive_with_entry_past_end() {
    Bytes file = two_resource_file();
    put_u32(file, 6 + 8, 0xFFFFFFFF);
    return file;
}
} // namespace

TEST(ResourceArchive, EncodesExactBytes) {
    EXPECT_EQ(two_resource_file(), joined({byte_list({26, 0, 0, 0, 2, 0}), bytes_of("simddot "),
                                           byte_list({0, 0, 0, 0, 3, 0, 0, 0}), byte_list({1, 2, 3, 9})}));
}

TEST(ResourceArchive, WithoutResourcesIsSixBytes) { EXPECT_EQ(encode_archive({}), byte_list({6, 0, 0, 0, 0, 0})); }

TEST(ResourceArchive, IdsAreAlwaysFourCharacters) {
    const Bytes file = encode_archive({{"dot", {}}, {"longer", {}}});
    EXPECT_EQ(bytes_between(file, archive_ids_at, 8), bytes_of("dot long"));
}

TEST(ResourceArchive, FindsWhatItEncoded) {
    const ArchiveDirectory directory = read_archive_directory(two_resource_file());
    EXPECT_EQ(directory.count, 2);
    ASSERT_EQ(directory.entries.size(), 2U);
    EXPECT_EQ(directory.find("simd"), 22U);
    EXPECT_EQ(directory.find("dot "), 25U);
}

TEST(ResourceArchive, ComparesIdsExactly) {
    const ArchiveDirectory directory = read_archive_directory(two_resource_file());
    for (const char* id : {"SIMD", "sim", "dot", "dota", "", "simd "})
        EXPECT_FALSE(directory.find(id)) << id;
}

TEST(ResourceArchive, FindsTheFirstOfTwoEntriesWithOneId) {
    const Bytes file = encode_archive({{"same", byte_list({1})}, {"same", byte_list({2})}});
    EXPECT_EQ(read_archive_directory(file).find("same"), 22U);
    EXPECT_EQ(read_archive_directory(file).entries.size(), 2U);
}

TEST(ResourceArchive, ReadsAsManyEntriesAsTheCountCanSay) {
    const ArchiveDirectory directory = read_archive_directory(archive_of_many(65535));
    ASSERT_EQ(directory.entries.size(), 65535U);
    EXPECT_EQ(directory.entries.back().id, "r534");
    EXPECT_EQ(directory.entries.back().position, 6U + 8 * 65535 + 65534);
}

TEST(ResourceArchive, EntriesPastTheLimitStillCountForThePositions) {
    const ArchiveDirectory directory = read_archive_directory(archive_of_many(20), 16);
    EXPECT_EQ(directory.count, 20);
    ASSERT_EQ(directory.entries.size(), 16U);
    EXPECT_EQ(directory.entries[0].position, 6U + 8 * 20);
    EXPECT_FALSE(directory.find("r016"));
    EXPECT_EQ(directory.tables_end, 6U + 4 * 20 + 4 * 16);
}

TEST(ResourceArchive, TablesEndBehindTheOffsetsOrBehindACountOfNothing) {
    EXPECT_EQ(read_archive_directory(two_resource_file()).tables_end, 22U);
    EXPECT_EQ(read_archive_directory(encode_archive({})).tables_end, 6U);
    EXPECT_EQ(read_archive_directory({}).tables_end, 6U);
}

TEST(ResourceArchive, IgnoresTheStoredFileSize) {
    Bytes file = two_resource_file();
    put_u32(file, 0, 0xDEADBEEF);
    EXPECT_EQ(read_archive_directory(file).find("dot "), 25U);
}

TEST(ResourceArchive, LyingCountGivesOnlyEntriesThatTheFileHolds) {
    const ArchiveDirectory directory = read_archive_directory(archive_with_lying_count());
    EXPECT_EQ(directory.count, 65535);
    EXPECT_TRUE(directory.entries.empty());
}

TEST(ResourceArchive, EntryPastEndKeepsItsPosition) {
    EXPECT_EQ(read_archive_directory(archive_with_entry_past_end()).find("simd"), std::uint64_t{22} + 0xFFFFFFFF);
}

TEST(ResourceArchive, CutAtEveryByteHoldsTheEntriesThatAreWhole) {
    const Bytes file = two_resource_file();
    for (std::size_t length = 0; length <= file.size(); ++length) {
        const ArchiveDirectory directory = read_archive_directory(first_bytes(file, length));
        EXPECT_EQ(directory.count, length >= 6 ? 2 : 0) << length;
        EXPECT_EQ(directory.entries.size(), length >= 22 ? 2U : length >= 18 ? 1U : 0U) << length;
    }
}
