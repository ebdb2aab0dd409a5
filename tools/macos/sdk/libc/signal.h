/* Shim: musl's, without what macOS lacks. */
#pragma once
#include_next <signal.h>

#include "lacking.h"
#ifdef __cplusplus
extern "C" {
#endif
int sigtimedwait(const sigset_t*, siginfo_t*, const struct timespec*) AMPERLY_NOT_ON_MACOS;
int sigwaitinfo(const sigset_t*, siginfo_t*) AMPERLY_NOT_ON_MACOS;
#ifdef __cplusplus
}
#endif
