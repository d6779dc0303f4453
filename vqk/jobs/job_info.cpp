#include "vqk/jobs/job_info.h"

#include "vqk/xml/xml_out.h"

namespace vq {

CJobInfo* sum = nullptr;
bool CJobInfo::s_batch = false;
bool CJobInfo::s_xml = false;

CJobInfo::CJobInfo(CJobInfo** head) : m_head(head), m_prev(head ? *head : nullptr) {
    if (m_head)
        *m_head = this;
}

CJobInfo::~CJobInfo() {
    if (!empty()) {
        // The records are markup already: written raw they become child elements.
        CXmlOutElem elem(xout, "info");
        xout("%s", str());
    }
    if (m_head)
        *m_head = m_prev;
}

void CJobInfo::info(const char* text) {
    append("\n");
    append(text);
}

} // namespace vq
