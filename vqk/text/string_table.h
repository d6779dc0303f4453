// vqk/text/string_table.h
//
// The string tables: texts looked up by number (labels of options, value names,
// enumeration choices, message formats). Loaded lazily on first use.
// (Layout of the CSV files documented with the loader.)
#pragma once

#include "vqk/config.h"

namespace vq {

// A string-table reference: the text number and the table it lives in.
struct SStrId {
    int id = 0;
    int table = 0;
};

// The UTF-8 text number `id` of table `table` (-1: the first table that has it).
// Returns an empty string (never null) for an unknown id.
VQK_API const char* stringTableText(int id, int table = -1);
inline const char* stringTableText(const SStrId& s) { return stringTableText(s.id, s.table); }

} // namespace vq
