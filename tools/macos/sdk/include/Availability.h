// Since which system something is there. The fakes on Linux have all of it.
#pragma once

#if defined(__APPLE__)
#define AMPERLY_SINCE_MACOS(version) __attribute__((availability(macos, introduced = version)))
#define AMPERLY_SINCE_macos(version) availability(macos, introduced = version)
#define API_AVAILABLE(since) __attribute__((AMPERLY_SINCE_##since))
#define __MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
#define __MAC_OS_X_VERSION_MAX_ALLOWED 140000
#else
#define AMPERLY_SINCE_MACOS(version)
#define API_AVAILABLE(since)
#endif
