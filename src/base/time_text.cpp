#include "base/time_text.h"

namespace {

constexpr std::size_t longest = 64;

std::string text_of(const std::tm& time, const char* format) {
    char text[longest];
    return {text, std::strftime(text, sizeof text, format, &time)};
}

} // namespace

std::string utc_text(std::time_t when, const char* format) {
    std::tm time{};
    ::gmtime_r(&when, &time);
    return text_of(time, format);
}

std::string local_text(std::time_t when, const char* format) {
    std::tm time{};
    ::localtime_r(&when, &time);
    return text_of(time, format);
}
