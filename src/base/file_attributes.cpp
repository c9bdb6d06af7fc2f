#include "base/file_attributes.h"

#include <cstring>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace {

// What the user's mask leaves of the usual mode.
mode_t mode_of_new_files() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// Whether the file got this owner; where only the superuser may give that, it has the group at least.
bool give_owner(int descriptor, const struct stat& old) {
    if (::fchown(descriptor, old.st_uid, old.st_gid) == 0) return true;
    [[maybe_unused]] const int group_given = ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid);
    struct stat now {};
    return ::fstat(descriptor, &now) == 0 && now.st_uid == old.st_uid;
}

void copy_extended_attribute(const std::string& from, int to, const char* name) {
    const ssize_t length = ::getxattr(from.c_str(), name, nullptr, 0);
    if (length < 0) return;
    std::vector<char> value(static_cast<std::size_t>(length));
    if (::getxattr(from.c_str(), name, value.data(), value.size()) != length) return;
    [[maybe_unused]] const int set = ::fsetxattr(to, name, value.data(), value.size(), 0);
}

void copy_extended_attributes(const std::string& from, int to) {
    const ssize_t length = ::listxattr(from.c_str(), nullptr, 0);
    if (length <= 0) return;
    std::vector<char> names(static_cast<std::size_t>(length) + 1); // each ends with a zero, and so does the last
    const ssize_t listed = ::listxattr(from.c_str(), names.data(), names.size() - 1);
    for (ssize_t at = 0; at < listed; at += static_cast<ssize_t>(std::strlen(&names[static_cast<std::size_t>(at)])) + 1)
        copy_extended_attribute(from, to, &names[static_cast<std::size_t>(at)]);
}

} // namespace

// A system that refuses them still holds the bytes. The right to act as the owner does not pass to another one.
void take_attributes_of(const std::string& earlier, int descriptor, Readers of_a_new_file) {
    struct stat old {};
    if (::stat(earlier.c_str(), &old) != 0) {
        ::fchmod(descriptor, of_a_new_file == Readers::owner ? 0600 : mode_of_new_files());
        return;
    }
    const bool same_owner = give_owner(descriptor, old);
    copy_extended_attributes(earlier, descriptor);
    ::fchmod(descriptor, old.st_mode & (same_owner ? 07777 : 01777));
}
