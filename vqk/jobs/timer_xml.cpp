#include "vqk/jobs/timer_xml.h"

#include "vqk/platform/clock.h"
#include "vqk/xml/xml_out.h"
#include "vqk/xml/xml_out_elem.h"

namespace vq {

CTimerXml::CTimerXml(CXmlOut& out, const char* algo) : CTimerXml(&out, algo) {}

CTimerXml::CTimerXml(CXmlOut* out, const char* algo)
    : m_out(out), m_startMs(platform::clockMs()), m_algo(algo) {}

CTimerXml::~CTimerXml() {
    if (!m_out)
        return;
    const double seconds = double(platform::clockMs() - m_startMs) / 1000.0;
    CXmlOutElem time(*m_out, "time");
    if (!m_algo.empty())
        m_out->attrStr("algo", m_algo.str());
    m_out->attr("sec", "%g", seconds);
}

} // namespace vq
