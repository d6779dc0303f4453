// vqk/text/string_csv.h
//
// The reader of the string CSV files behind the string tables (see
// vqk/text/string_table.h for the layout). It is separate from the loader so that any
// text, a file's bytes or a test's literal, can be parsed the same way.
//
//   std::unordered_map<int, std::string> texts;
//   int skipped = vq::parseStringCsv(bytes, size, texts);
//
// A malformed record is skipped (its first line only, so one stray quote cannot swallow
// the rest of the file) and counted; nothing is thrown for bad input.
#pragma once

#include "vqk/config.h"

#include <cstddef>
#include <string>
#include <unordered_map>

namespace vq {

// Adds the records of `text` (n bytes, need not be zero-terminated) to `out`; a later
// record with the same id replaces an earlier one. Returns the number of malformed
// records skipped.
VQK_API int parseStringCsv(const char* text, size_t n, std::unordered_map<int, std::string>& out);

} // namespace vq
