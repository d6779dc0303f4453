// vqk/xml/xml_escape_run.h (private to the library)
//
// The escaping loop shared by escapeXmlStr and the writer's attribute values. A
// 256-entry class table tells for each byte whether it is copied, dropped or replaced
// by an entity; runs of bytes that are copied are found with the table and appended
// in one block, so ordinary text costs one table look-up per byte and one copy per run.
//
//   vq::TVector<char> v;
//   vq::appendXmlEscaped(v, s, n, vq::xmlAttrEscapes());
//
// Nothing here fails except by running out of memory while the array grows.
#pragma once

#include "vqk/text/vector.h"

#include <cstddef>

namespace vq {

// Class of a byte: 0 copied, 1 dropped, from 2 on the entity (see xmlEntityText).
struct SXmlEscapeTable {
    unsigned char cls[256];
};

// The attribute values' table: the apostrophe is copied.
const SXmlEscapeTable& xmlAttrEscapes();
// escapeXmlStr's table: the apostrophe becomes "&apos;" too.
const SXmlEscapeTable& xmlTextEscapes();

// Appends s[0..n) escaped by `table`.
void appendXmlEscaped(TVector<char>& out, const char* s, size_t n, const SXmlEscapeTable& table);

// The longest expansion of one byte ("&quot;").
constexpr size_t kXmlEscapeMaxGrowth = 6;

// Writes s[0..n) escaped by `table` to `out`, which has room for n times
// kXmlEscapeMaxGrowth bytes plus 2 (entities are stored 8 bytes at a time); returns
// the end of what was written.
char* escapeXmlInto(char* out, const char* s, size_t n, const SXmlEscapeTable& table);

} // namespace vq
