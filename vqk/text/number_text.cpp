#include "vqk/text/number_text.h"

#include "vqk/text/bounded.h"

#include <cfloat>
#include <cmath>
#include <cstring>

namespace vq {

bool sprintDec(char* buf, int size, double v, int decimals) {
    if (!buf || size <= 0)
        return false;
    if (sprintf(buf, size_t(size), "%.*f", decimals, v) < 0) {
        strncpy(buf, size_t(size), "#INF", size_t(-1));
        return false;
    }
    int i = int(std::strlen(buf)) - 1;
    while (i > 0 && buf[i] == '0')
        buf[i--] = 0;
    if (i >= 1 && buf[i] == '.')
        buf[i] = 0;
    return true;
}

int writeDoubleToString(char* buf, int size, double v, const char* realFmt, const char* intFmt) {
    if (!buf || size <= 0)
        return 0;
    buf[0] = 0;
    double integral = 0;
    double fraction = std::modf(v, &integral);
    if (std::fabs(fraction) <= DBL_EPSILON) {
        double magnitude = std::fabs(integral);
        int n;
        if (magnitude <= 2147483647.0)
            n = sprintf(buf, size_t(size), intFmt ? intFmt : "%i", int(integral));
        else if (magnitude <= 1e30)
            n = sprintf(buf, size_t(size), "%.0lf.", integral);
        else
            n = strcpy(buf, size_t(size), "999999999999999999999999.") == 0 ? 1 : -1;
        return n < 0 ? 0 : int(std::strlen(buf));
    }
    if (!realFmt || sprintf(buf, size_t(size), realFmt, v) < 0)
        return 0;
    int len = int(std::strlen(buf));
    char* exponent = std::strrchr(buf, 'E');
    int mantissaEnd = exponent ? int(exponent - buf) : len;
    int k = mantissaEnd;
    while (k > 1 && buf[k - 1] == '0')
        --k;
    if (k < mantissaEnd) {
        std::memmove(buf + k, buf + mantissaEnd, size_t(len - mantissaEnd) + 1);
        len -= mantissaEnd - k;
    }
    return len;
}

bool isStringNumber(const CTStr<char>& s, bool separators) {
    if (s.empty())
        return false;
    for (const char* p = s.str(); *p; ++p) {
        if (*p >= '0' && *p <= '9')
            continue;
        if (separators && (*p == ',' || *p == '.'))
            continue;
        return false;
    }
    return true;
}

} // namespace vq
