// vqk/text/string_table.h
//
// The string tables: texts looked up by number (labels of options, value names,
// enumeration choices, message formats). Three tables exist, each loaded from its own
// CSV file the first time one of its texts is asked for:
//
//   table 0  "orv_string.csv"              the library's default table (shipped with it)
//   table 1  "orv_string_repair.csv"
//   table 2  "orv_strings_translator.csv"
//
//   vq::setStringTableFolder("/opt/app/strings");     // optional, before first use
//   const char* yes = vq::stringTableText(62407, 0);  // "True"
//   vq::CStr label(61720, false);                     // label text without its first line
//
// Each file is looked for, in this order, in the folder the application set with
// setStringTableFolder, in the folder named by the environment variable VQK_STRING_DIR,
// and beside the library itself; the first one that exists is read. A table whose file
// is found nowhere is empty.
//
// File layout (UTF-8, an optional byte order mark): one record per line,
//
//   <id>;<text>
//
// where id is a decimal integer and the separator a semicolon (a comma is accepted too).
// A text that starts with a double quote is quoted: it runs to the next lone double
// quote, a doubled quote inside stands for one, and it may span lines, so labels can
// carry their description after a line feed:
//
//   # a comment line
//   62407;"True"
//   61720;Hidden
//   70001;"Tolerance
//   The ""default"" tolerance of the model"
//
// An unquoted text runs to the end of its line. Blank lines and lines starting with '#'
// are ignored; a carriage return before a line end is dropped. A malformed record (no
// number, no separator, an unterminated quote, text after the closing quote) is skipped
// and never stops the rest of the file from loading. A later record with the same id
// replaces an earlier one.
//
// Loading happens under the runtime's named critical section (runtime_critical.h);
// lookups after loading take no lock. An unknown id yields an empty text, never null.
#pragma once

#include "vqk/config.h"

// The environment variable naming a folder of string tables.
#define VQK_STRING_DIR_ENV "VQK_STRING_DIR"

namespace vq {

// A string-table reference: the text number and the table it lives in.
struct SStrId {
    int id = 0;
    int table = 0;
};

enum : int { kStringTableCount = 3 };

// The UTF-8 text number `id` of table `table` (0 to 2; -1: the first table that has
// it). Returns an empty string (never null) for an unknown id or table. The text stays
// valid for the life of the process.
VQK_API const char* stringTableText(int id, int table = -1);
inline const char* stringTableText(const SStrId& s) { return stringTableText(s.id, s.table); }

// The file name of table `table`, or null outside 0 to 2.
VQK_API const char* stringTableFileName(int table);

// Sets the folder searched first for the table files (null or empty: none). Tables
// already loaded are read again on their next use; texts handed out before stay valid.
VQK_API void setStringTableFolder(const char* folder);

} // namespace vq
