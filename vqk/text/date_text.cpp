#include "vqk/text/date_text.h"

#include "vqk/platform/bounded.h"

#include <ctime>

namespace vq {
namespace {

bool now(std::tm& t) {
    long long secs = (long long)std::time(nullptr);
    return platform::_localtime64_s(&t, &secs) == 0;
}

bool stamp(char* buf, size_t size, const char* fmt) {
    if (!buf || size == 0)
        return false;
    buf[0] = 0;
    std::tm t{};
    if (!now(t))
        return false;
    if (std::strftime(buf, size, fmt, &t) == 0) {
        buf[0] = 0;
        return false;
    }
    return true;
}

} // namespace

bool getDateStr(CTStr<char>& out, bool monthFirst) {
    out.reset();
    char buf[64];
    if (!stamp(buf, sizeof buf, monthFirst ? "%m.%d.%Y" : "%d.%m.%Y"))
        return false;
    out = buf;
    return true;
}

bool getDateTimeQIF(char* buf, int size) {
    return size > 0 && stamp(buf, size_t(size), "%Y-%m-%dT%X");
}

bool _localtime(char* buf, int size) {
    if (!buf || size <= 0)
        return false;
    buf[0] = 0;
    std::tm t{};
    if (!now(t))
        return false;
    return platform::asctime_s(buf, size_t(size), &t) == 0;
}

} // namespace vq
