// vqk/text/substring.h
//
// Searching, counting, replacing and splitting at substrings, for both widths.
//
//   vq::CStr s("a-b-c");
//   vq::numSubStr(s.str(), "-");                 // 2
//   vq::replaceSubStr(s, "-", "::");             // s == "a::b::c", returns 2
//   vq::TVectorC<vq::CStr> parts;
//   vq::splitStrByToken(parts, "a;;b", ";", false);   // "a", "", "b"
//   vq::CWStr q = vq::wrapQuote(L"x y");         // L"\"x y\""
//
// Null texts are empty texts; nothing here fails.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"
#include "vqk/text/vector.h"

namespace vq {

// Exactly tab, line feed, carriage return and space.
inline bool isSpace(char c) { return c == 9 || c == 10 || c == 13 || c == 32; }
inline bool isSpace(wchar_t c) { return c == 9 || c == 10 || c == 13 || c == 32; }

// Occurrences of pattern that do not overlap, found by repeated findSubStr, each search
// starting where the previous match ended; 0 when either text is null or empty.
VQK_API int numSubStr(const char* text, const char* pattern);
VQK_API int numSubStr(const wchar_t* text, const wchar_t* pattern);

// Rebuilds s left to right, putting `with` (null: nothing) for every match of `what`;
// matches do not overlap. Returns the number of replacements; an empty `what` changes
// nothing.
VQK_API int replaceSubStr(CTStr<char>& s, const char* what, const char* with);
VQK_API int replaceSubStr(CTStr<wchar_t>& s, const wchar_t* what, const wchar_t* with);

// Splits text at every occurrence of the whole token string into out (emptied first).
// Empty pieces, a trailing one included, are kept unless skipEmpty. An empty text gives
// no pieces; an empty token gives the whole text as one piece.
VQK_API void splitStrByToken(TVectorC<CTStr<char>>& out, const char* text, const char* token,
                             bool skipEmpty);
VQK_API void splitStrByToken(TVectorC<CTStr<wchar_t>>& out, const wchar_t* text,
                             const wchar_t* token, bool skipEmpty);

// A double quote, s, a double quote; nothing inside is escaped.
VQK_API CTStr<wchar_t> wrapQuote(const wchar_t* s);

} // namespace vq
