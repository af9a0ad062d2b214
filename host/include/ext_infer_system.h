#pragma once

// Which system and processor the code is compiled for. A build may name the system itself (-DWIN_VERSION).

#if !defined(MAC_VERSION) && !defined(WIN_VERSION) && !defined(LINUX_VERSION)
#if defined(__APPLE__)
#define MAC_VERSION 1
#elif defined(_WIN32)
#define WIN_VERSION 1
#elif defined(__linux__)
#define LINUX_VERSION 1
#else
#error "The host runs on macOS, Windows and Linux only."
#endif
#endif

#if defined(_WIN64) || defined(__LP64__)
#define C74_X64
#else
#error "These headers describe the 64-bit host."
#endif

#if defined(__aarch64__) || defined(_M_ARM64)
#define C74_ARM
#else
#define C74_INTEL
#endif
