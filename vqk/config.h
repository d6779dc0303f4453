// vqk/config.h
//
// The export macro and the few fixed-width types that every public header of the
// library uses. Classes and functions marked VQK_API form the library's interface;
// everything else is built with hidden visibility and is private to libvqk.
#pragma once

#include <cstdint>

#if defined(_WIN32)
#if defined(VQK_BUILDING)
#define VQK_API __declspec(dllexport)
#else
#define VQK_API __declspec(dllimport)
#endif
#else
#define VQK_API __attribute__((visibility("default")))
#endif

namespace vq {
using int64 = long long;
using uint64 = unsigned long long;
} // namespace vq
