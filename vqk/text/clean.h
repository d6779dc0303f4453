// vqk/text/clean.h
//
// Cleaners that make text safe as an XML label, a file name or plain ASCII. Each
// replaces the forbidden characters by '_' in place and never touches a character of
// 128 or above, so UTF-8 text keeps its letters.
//
//   char name[] = "a<b>:c";
//   vq::correctFileName(name);        // "a_b__c"
//   vq::CStr label("x.y");
//   vq::correctLabel(label, true);    // "x_y"
//
// Null pointers are ignored.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {

// Control characters 1 to 31 and " & ' / < > @ \ ; with dots also '.'. The string
// overloads first cut the string's size to its length plus the terminator.
VQK_API void correctLabel(char* text, bool dots);
VQK_API void correctLabel(wchar_t* text, bool dots);
VQK_API void correctLabel(CTStr<char>& text, bool dots);
VQK_API void correctLabel(CTStr<wchar_t>& text, bool dots);

// Control characters 0 to 31 and " ' * : < > ? | ; slashes stay, so whole paths may be
// cleaned. (A zero ends the text, so only the characters before it are seen.)
VQK_API void correctFileName(char* text);

// Every byte of 128 or above.
VQK_API void correctToASCII(char* text);

} // namespace vq
