// vqk/text/codepage.h
//
// Code-page conversion as the library's interfaces name it: code page 65001 is UTF-8,
// code page 0 the "ANSI" code page of the platform seam. Calling convention of
// vqk/text/utf8.h: 0 is returned when the output block is too small.
//
//   wchar_t w[8];
//   int n = vq::multiByteToWide(vq::kCodePageAnsi, "caf\xE9", -1, w, 8);  // 5, L"caf\u00e9"
//   int need = vq::wideToMultiByte(vq::kCodePageUtf8, w, -1, nullptr, 0); // 6
#pragma once

#include "vqk/platform/codepage.h"
#include "vqk/text/utf8.h"

namespace vq {

enum : unsigned { kCodePageAnsi = 0, kCodePageUtf8 = 65001 };

inline int multiByteToWide(unsigned codePage, const char* s, int len, wchar_t* out, int outSize) {
    return codePage == kCodePageUtf8 ? utf8ToWide(s, len, out, outSize)
                                     : platform::ansiToWide(s, len, out, outSize);
}

inline int wideToMultiByte(unsigned codePage, const wchar_t* s, int len, char* out, int outSize) {
    return codePage == kCodePageUtf8 ? wideToUtf8(s, len, out, outSize)
                                     : platform::wideToAnsi(s, len, out, outSize);
}

} // namespace vq
