// vqk/jobs/regression_test.h
//
// CTest is a regression test that a job file can run by naming it: the test registers
// a factory under an element name, and when a job file's root element has that name
// the job host creates the test from the reader (positioned on that element), runs it
// and adds its summary to the job's statistics.
//
//   class CCountTest : public vq::CTest {
//   public:
//       CCountTest(vq::CXmlIn& in, const char* file) { ... read the element ... }
//       bool run() override { summary().newJob(); ...; return summary().isOk(); }
//   };
//   static vq::CTest* makeCount(vq::CXmlIn& in, const char* file) {
//       return new CCountTest(in, file);
//   }
//   static int reg = vq::registerTest("count_test", makeCount);
//
// A factory reports a setup it cannot use by throwing a character string (it ends up
// as the job's failure) or by returning null (counted as one failure by the host).
// Tests are deleted by the host with `delete`.
#pragma once

#include "vqk/config.h"
#include "vqk/jobs/job_stat.h"

namespace vq {

class CXmlIn;

class VQK_API CTest {
public:
    CTest() = default;
    virtual ~CTest();
    CTest(const CTest&) = delete;
    CTest& operator=(const CTest&) = delete;

    // Runs the test; its failures are counted in summary() (usually through logFail
    // and its family with summary() as the statistics). Returns whether it passed.
    virtual bool run() = 0;

    SJobStat& summary() { return m_summary; }
    const SJobStat& summary() const { return m_summary; }

private:
    SJobStat m_summary;
};

using FTestFactory = CTest* (*)(CXmlIn& in, const char* file);

} // namespace vq
