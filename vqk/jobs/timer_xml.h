// vqk/jobs/timer_xml.h
//
// CTimerXml times a scope and, when it ends, writes the result as one element on an
// XML writer:
//
//   { vq::CTimerXml t(vq::xout, "mesh"); mesh(); }   // <time algo="mesh" sec="0.25"/>
//
// "algo" is left out when the name is empty; "sec" is printed "%g". With a null writer
// nothing is written. The clock counts wall-clock milliseconds (on Windows the
// runtime's clock() counts the same), not the processor time of all threads.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {

class CXmlOut;

class VQK_API CTimerXml {
public:
    CTimerXml(CXmlOut& out, const char* algo);
    CTimerXml(CXmlOut* out, const char* algo);
    ~CTimerXml();
    CTimerXml(const CTimerXml&) = delete;
    CTimerXml& operator=(const CTimerXml&) = delete;

private:
    CXmlOut* m_out;
    uint64 m_startMs;
    CTStr<char> m_algo;
};

} // namespace vq
