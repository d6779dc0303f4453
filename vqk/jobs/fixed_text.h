// vqk/jobs/fixed_text.h (private to the job host)
//
// Text into fixed buffers for the job host's failure path, which must not allocate:
// formatting that fails instead of cutting (the record is then dropped), appending
// that follows the runtime's bounded concatenation (a result that does not fit empties
// the destination), and a copy that cuts.
//
//   char rec[2048];
//   if (vq::jobs::formatFixed(rec, sizeof rec, "<error line=\"%i\"/>", 12) >= 0) ...
//
// Every function terminates its destination when the size is at least 1.
#pragma once

#include <cstdarg>
#include <cstddef>

namespace vq {
namespace jobs {

// The characters written, or -1 (destination emptied) when the text does not fit.
int formatFixed(char* buf, size_t size, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 3, 4)))
#endif
    ;
// Appends `text`; false, with the destination emptied, when the result does not fit.
bool appendFixed(char* buf, size_t size, const char* text);
// Formats as much of the text as fits.
void vformatCut(char* buf, size_t size, const char* format, va_list args);
// Copies as much of `text` as fits.
void copyCut(char* buf, size_t size, const char* text);

} // namespace jobs
} // namespace vq
