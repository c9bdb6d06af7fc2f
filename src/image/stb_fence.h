// The memory that stb's reader may hold at once, in bytes; for who calls it only. Its blocks begin as zeros.
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

extern size_t fenced_memory_limit;

#ifdef __cplusplus
}
#endif
