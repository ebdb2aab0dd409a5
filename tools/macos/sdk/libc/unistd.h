/* Shim: musl's, without what macOS lacks. */
#pragma once
#include_next <unistd.h>

#include "lacking.h"
#ifdef __cplusplus
extern "C" {
#endif
int pipe2(int[2], int) AMPERLY_NOT_ON_MACOS;
int dup3(int, int, int) AMPERLY_NOT_ON_MACOS;
int fdatasync(int) AMPERLY_NOT_ON_MACOS;
#ifdef __cplusplus
}
#endif
