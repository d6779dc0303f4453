// vqk/text/date_text.h
//
// Date and time stamps of the current local time.
//
//   vq::CStr day;
//   vq::getDateStr(day, false);             // "22.11.2026"
//   char stamp[32];
//   vq::getDateTimeQIF(stamp, sizeof stamp); // "2026-11-22T07:45:12"
//   vq::_localtime(stamp, sizeof stamp);     // "Sun Nov 22 07:45:12 2026\n"
//
// Each returns false when the local time cannot be obtained or the text does not fit
// (the buffer is then empty).
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {

// "%m.%d.%Y" when monthFirst, else "%d.%m.%Y".
VQK_API bool getDateStr(CTStr<char>& out, bool monthFirst);
// "%Y-%m-%dT%X".
VQK_API bool getDateTimeQIF(char* buf, int size);
// The runtime's asctime form, 25 characters and a line feed; size must be at least 26.
VQK_API bool _localtime(char* buf, int size);

} // namespace vq
