#include "vqk/options/du_time.h"

#include "vqk/text/bounded.h"

#include <ctime>

namespace du {

CTime::CTime(const vq::SStrId& id, const vq::int64& time) : CBase(id, false, 0), m_value(time) {}

vq::CTStr<char> CTime::string() {
    std::tm local;
    char buf[256];
    if (vq::_localtime(&local, &m_value) != 0 || !std::strftime(buf, sizeof buf, "%c", &local))
        return "-";
    return buf;
}

} // namespace du
