#include "vqk/text/color.h"

#include <cctype>
#include <cerrno>
#include <cstdlib>

namespace vq {

CTStr<char> CColor::text() const {
    CTStr<char> s;
    s.cformat("%i %i %i", r, g, b);
    return s;
}

bool CColor::parse(const char* text) {
    if (!text)
        return false;
    int c[3];
    const char* p = text;
    for (int& v : c) {
        while (std::isspace((unsigned char)*p))
            ++p;
        if (!std::isdigit((unsigned char)*p))
            return false; // signs and empty fields included
        char* end;
        errno = 0;
        long n = std::strtol(p, &end, 10);
        if (errno || n > 255)
            return false;
        v = int(n);
        p = end;
    }
    while (std::isspace((unsigned char)*p))
        ++p;
    if (*p)
        return false;
    r = (unsigned char)c[0];
    g = (unsigned char)c[1];
    b = (unsigned char)c[2];
    return true;
}

} // namespace vq
