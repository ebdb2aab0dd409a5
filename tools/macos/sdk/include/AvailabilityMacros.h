// Versions of the system by name, as the toolkit's headers ask for them.
#pragma once

#define MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
#define MAC_OS_X_VERSION_MAX_ALLOWED 140000
#define MAC_OS_X_VERSION_10_0 1000
#define MAC_OS_X_VERSION_10_15 101500
