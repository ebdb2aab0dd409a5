/* Marks what musl has and the C library of macOS has not: using it fails here as it does there. */
#pragma once
#define AMPERLY_NOT_ON_MACOS __attribute__((unavailable("macOS has no such function")))
