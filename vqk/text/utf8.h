// vqk/text/utf8.h
//
// The UTF-8 codec behind every narrow/wide conversion of the library. Its calling
// convention is that of the platform's code-page conversion: a source length of -1
// means "zero-terminated, terminator included"; an output size of 0 asks only for the
// number of elements needed; the result is the number of elements written (or needed),
// 0 on failure (an output block too small).
//
// Wide text is UTF-16 where wchar_t has 16 bits and UTF-32 where it has 32. Malformed
// UTF-8 decodes to U+FFFD, as the platform converter does with flags 0. On the way to
// UTF-8 a surrogate pair held in a 32-bit wchar_t is joined back into one character and
// a lone surrogate becomes U+FFFD.
//
//   int need = vq::utf8ToWide("caf\xC3\xA9", -1, nullptr, 0);   // 5, terminator included
//   std::vector<wchar_t> w(need);
//   vq::utf8ToWide("caf\xC3\xA9", -1, w.data(), need);
#pragma once

#include "vqk/config.h"

namespace vq {

VQK_API int utf8ToWide(const char* s, int len, wchar_t* out, int outSize);
VQK_API int wideToUtf8(const wchar_t* s, int len, char* out, int outSize);

} // namespace vq
