/* Shim: musl's, without what macOS lacks. */
#pragma once
#include_next <sys/socket.h>

#include "../lacking.h"
#undef SOCK_CLOEXEC
#undef SOCK_NONBLOCK
#ifdef __cplusplus
extern "C" {
#endif
int accept4(int, struct sockaddr*, socklen_t*, int) AMPERLY_NOT_ON_MACOS;
#ifdef __cplusplus
}
#endif
