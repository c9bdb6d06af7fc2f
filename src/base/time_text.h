// Points in time as texts, by a format of strftime. A text longer than 63 bytes is empty.
#pragma once

#include <ctime>
#include <string>

std::string utc_text(std::time_t when, const char* format);
std::string local_text(std::time_t when, const char* format); // in the time zone of the person
