#include "vqk/text/scan.h"

#include "vqk/platform/bounded.h"
#include "vqk/text/format.h"

#include <cstdarg>
#include <string>

namespace vq {
namespace {

int wideScan(const wchar_t* s, const wchar_t* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    int n = platform::vswscanf_s(s, fmt, args);
    va_end(args);
    return n;
}

} // namespace

int sScanf(const char* s, const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    int n = platform::vsscanf_s(s, fmt, args);
    va_end(args);
    return n;
}

uint64 strToID1(const char* s) {
    if (!s)
        return 0;
    unsigned long long v = 0;
    if (sScanf(s, formatScanfID1(), &v) != 1)
        return 0;
    return v;
}

double strToD1(const wchar_t* s) {
    if (!s)
        return 0;
    double v = 0;
    if (wideScan(s, L"%lf", &v) != 1)
        return 0;
    return v;
}

const char* nextFmt(const char*& p, bool& isText, bool& hasStar) {
    thread_local std::string piece;
    if (!p || !*p)
        return nullptr;
    isText = false;
    hasStar = false;
    piece.clear();
    do {
        char c = *p++;
        if (c == 'C' || c == 'S' || c == 'c' || c == 's')
            isText = true;
        else if (c == '*')
            hasStar = true;
        piece += c;
    } while (*p && *p != '%');
    return piece.c_str();
}

} // namespace vq
