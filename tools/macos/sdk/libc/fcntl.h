/* Shim: musl's, without what macOS lacks. */
#pragma once
#include_next <fcntl.h>

#include "lacking.h"
#ifdef __cplusplus
extern "C" {
#endif
int posix_fadvise(int, off_t, off_t, int) AMPERLY_NOT_ON_MACOS;
int posix_fallocate(int, off_t, off_t) AMPERLY_NOT_ON_MACOS;
#ifdef __cplusplus
}
#endif
