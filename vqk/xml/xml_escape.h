// vqk/xml/xml_escape.h
//
// Plain text to XML character entities and back, for code that builds attribute or
// text values itself (the writer's text elements and raw output are not escaped).
//
//   vq::CStr e;
//   vq::escapeXmlStr(e, "a<b & 'c'");       // "a&lt;b &amp; &apos;c&apos;"
//   vq::CStr p;
//   vq::unescapeXmlStr(p, e.str());          // "a<b & 'c'"
//
// Neither function fails: a null input gives an empty output. Control bytes that XML
// cannot hold (below 0x20 other than tab, line feed and carriage return) are dropped
// by escaping; unescaping knows the five named entities only and copies any other
// '&' as it is (numeric character references are not decoded).
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {

// Empties `out`, then appends `in` with '"', '&', '\'', '<' and '>' as entities. Bytes
// from 0x80 up are copied, so UTF-8 text stays UTF-8.
VQK_API void escapeXmlStr(CTStr<char>& out, const char* in);
// Empties `out`, then copies `in` with "&amp;", "&quot;", "&apos;", "&gt;" and "&lt;"
// (case-sensitive) replaced by their characters.
VQK_API void unescapeXmlStr(CTStr<char>& out, const char* in);

} // namespace vq
