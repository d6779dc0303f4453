// vqk/jobs/job_info.h
//
// CJobInfo collects the records of one running job. Collectors form a stack through a
// chain head, normally the global vq::sum: constructing one pushes it, destroying it
// writes its text as the job's `info` element on vq::xout (when there is any text)
// and pops it, so records always reach the innermost running job.
//
//   {
//       vq::CJobInfo info(&vq::sum);        // vq::sum == &info now
//       vq::sum->info("<warning .../>");    // "\n" then the record
//   }                                        // <info> written, vq::sum restored
//
// Collectors must be destroyed in the reverse order of their construction. The two
// flags are process-wide settings of the job host: s_batch (never wait for a key;
// set by //b) and s_xml (set by //x, read only by applications).
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {

class VQK_API CJobInfo : public CTStr<char> {
public:
    explicit CJobInfo(CJobInfo** head);
    ~CJobInfo() override;
    CJobInfo(const CJobInfo&) = delete;
    CJobInfo& operator=(const CJobInfo&) = delete;

    // Appends a line break and then `text`.
    void info(const char* text);

    // The collector that was the head before this one.
    CJobInfo* previous() const { return m_prev; }

    static bool s_batch;
    static bool s_xml;

private:
    CJobInfo** m_head;
    CJobInfo* m_prev;
};

// The innermost running job's collector; null while no job runs.
VQK_API extern CJobInfo* sum;

} // namespace vq
