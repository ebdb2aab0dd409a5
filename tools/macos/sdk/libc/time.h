/* Shim: musl's, without what macOS lacks. */
#pragma once
#include_next <time.h>

#include "lacking.h"
#ifdef __cplusplus
extern "C" {
#endif
int clock_nanosleep(clockid_t, int, const struct timespec*, struct timespec*) AMPERLY_NOT_ON_MACOS;
#ifdef __cplusplus
}
#endif
