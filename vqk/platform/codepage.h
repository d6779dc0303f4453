// vqk/platform/codepage.h
//
// The "ANSI" code page (code page 0): the system code page on Windows; elsewhere a
// single-byte code page named by the environment variable VQK_ACP (an iconv name),
// WINDOWS-1252 when unset or unknown. Calling convention as in vqk/text/utf8.h: a
// source length of -1 means zero-terminated with the terminator included, an output
// size of 0 asks for the size needed, 0 is returned on failure. Characters the code
// page cannot hold become '?'.
//
//   char out[8];
//   vq::platform::wideToAnsi(L"\u20ac5", -1, out, 8);   // "\x80" "5" with WINDOWS-1252
#pragma once

#include "vqk/config.h"

namespace vq {
namespace platform {

VQK_API int ansiToWide(const char* s, int len, wchar_t* out, int outSize);
VQK_API int wideToAnsi(const wchar_t* s, int len, char* out, int outSize);

} // namespace platform
} // namespace vq
