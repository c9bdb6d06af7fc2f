// Files for which there is no memory.
#include "base/file_io.h"
#include "image/picture_file.h"
#include "image/tga.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"
#include "support/tga_words.h"

#include <filesystem>
#include <gtest/gtest.h>

// Where the tests run under the address sanitizer, its calloc answers as the system's does; its operator new cannot.
// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizer's own name
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }
// NOLINTEND(bugprone-reserved-identifier)

namespace {
#ifdef __SANITIZE_ADDRESS__
constexpr bool new_can_fail = false;
#else
constexpr bool new_can_fail = true;
#endif
#define SKIP_WHERE_NEW_CANNOT_FAIL()                                                                                   \
    if (!new_can_fail) GTEST_SKIP() << "NOT TESTED: the address sanitizer ends the program when operator new fails"

constexpr rlim_t little = rlim_t{64} << 20;
constexpr std::uintmax_t much = std::uintmax_t{200} << 20;

class ShortMemory : public testing::Test {
protected:
    TemporaryDirectory directory;
    const std::string path = directory / "file";

    // A hole of that size behind the content.
    void put_huge_file(const Bytes& content) {
        put_file(path, content);
        std::filesystem::resize_file(path, much);
    }
};

int targa_error_of(const std::string& path) {
    const auto image = TARGALOAD(path);
    const bool said = TARGAERRORMESSAGE == "Could not allocate a buffer to decompress image";
    return !image && said ? TARGAERROR : 0;
}
} // namespace

TEST_F(ShortMemory, PictureWithoutRoomIs204) {
    put_file(path, targa_header({.image_type = 10, .width = 8192, .height = 8192, .depth = 24}));
    EXPECT_EQ(run_with_memory_limit(little, [&] { return targa_error_of(path); }), targa_error::no_memory);
}

TEST_F(ShortMemory, PictureFileWithoutRoomIs204) {
    SKIP_WHERE_NEW_CANNOT_FAIL();
    put_huge_file(targa_header({.image_type = 10, .width = 1, .height = 1, .depth = 24}));
    EXPECT_EQ(run_with_memory_limit(little, [&] { return targa_error_of(path); }), targa_error::no_memory);
}

TEST_F(ShortMemory, OtherPictureFileWithoutRoomIsToldSo) {
    SKIP_WHERE_NEW_CANNOT_FAIL();
    put_huge_file({});
    const auto said = [&] { return !LoadRGBAFile(path) && picture_failure() == "Image load failed out of memory !"; };
    EXPECT_EQ(run_with_memory_limit(little / 2, [&] { return said() ? 1 : 0; }), 1);
}

TEST_F(ShortMemory, FileWithoutRoomIsNothing) {
    SKIP_WHERE_NEW_CANNOT_FAIL();
    put_huge_file({});
    EXPECT_EQ(run_with_memory_limit(little, [&] { return read_file(path, much) ? 1 : 0; }), 0);
}

TEST_F(ShortMemory, PictureThatCannotBeEncodedIs103AndTheOldFileStays) {
    SKIP_WHERE_NEW_CANNOT_FAIL();
    put_file(path, bytes_of("old"));
    const auto image = create_image(8192, 4096, 0x80112233);
    for (int y = 0; y < image->height(); ++y)
        for (int x = 0; x < image->width(); x += 2)
            image->set_pixel(x, y, 0x80000000);
    EXPECT_EQ(run_with_memory_limit(little, [&] { return TARGASAVE(path, image.get()), int{TARGAERROR}; }),
              targa_error::cannot_create);
    EXPECT_EQ(get_file(path), bytes_of("old"));
}
