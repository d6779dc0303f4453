// vqk/jobs/job_host.h
//
// The process-wide registry of a tool's jobs: plain job functions by name (run from the
// command line as "tool name args"), XML job functions by name (run when a job file's
// root element has that name) and regression-test factories by name. Registration
// usually happens from static initialisers, which is why the functions return an int:
//
//   static bool listJob(int argc, char* const* argv, vq::SJobStat& stat);
//   static int regList = vq::registerJob("list", listJob);
//
// Names are not copied: they must outlive the registry (string literals do). A name
// may be registered twice; lookups of plain and XML jobs take the newest, test lookups
// the oldest. CJob::main empties the plain and XML registries when it ends; tests stay.
// Nothing here fails: registering only appends, a lookup that finds nothing gives null.
#pragma once

#include "vqk/config.h"
#include "vqk/files/out_file.h"
#include "vqk/jobs/job_stat.h"
#include "vqk/jobs/regression_test.h"
#include "vqk/text/vector.h"

namespace vq {

class CXmlIn;

using FJob = bool (*)(int argc, char* const* argv, SJobStat& stat);
using FJobXml = bool (*)(CXmlIn& in, const char* file, SJobStat& stat);

struct STestDescriptor {
    const char* name;
    FTestFactory factory;
};

class VQK_API CJobHost {
public:
    // The process's registry, created on first use.
    static CJobHost& host();
    // A registry of one's own (tests of the registry itself); release it with destroy().
    static CJobHost* create();
    void destroy();

    void addJob(const char* name, FJob fn);
    void addJobXml(const char* name, FJobXml fn);
    void addtest(const char* name, FTestFactory factory);

    // Newest registration of `name` (exact, case-sensitive), or null.
    FJob findJob(const char* name) const;
    FJobXml findJobXml(const char* name) const;
    // Oldest registration of `name` (exact, case-sensitive), or null.
    const STestDescriptor* findTest(const char* name) const;

    // Forgets every plain and XML job; tests stay registered.
    void clearJobs();

    int jobCount() const { return int(m_jobNames.size()); }
    int jobXmlCount() const { return int(m_xmlNames.size()); }
    int testCount() const { return int(m_tests.size()); }
    const char* jobName(int i) const { return m_jobNames[i]; }
    const char* jobXmlName(int i) const { return m_xmlNames[i]; }

    // Where pause prompts go: the standard output.
    COutFile& console() { return m_console; }
    // The totals of every CJob::main run of the process.
    SJobStat& totals() { return m_totals; }
    const SJobStat& totals() const { return m_totals; }
    // Set when a //o option was seen (also when it was switched off).
    bool outRedirected() const { return m_outRedirected; }
    void setOutRedirected(bool on) { m_outRedirected = on; }

private:
    CJobHost();
    ~CJobHost() = default;
    CJobHost(const CJobHost&) = delete;
    CJobHost& operator=(const CJobHost&) = delete;

    TVector<const char*> m_jobNames;
    TVector<FJob> m_jobs;
    TVector<const char*> m_xmlNames;
    TVector<FJobXml> m_xmlJobs;
    COutFile m_console;
    SJobStat m_totals;
    bool m_outRedirected = false;
    TVector<STestDescriptor> m_tests;
};

// Register with CJobHost::host(); each returns 0.
VQK_API int registerJob(const char* name, FJob fn);
VQK_API int registerJobXml(const char* name, FJobXml fn);
VQK_API int registerTest(const char* name, FTestFactory factory);

} // namespace vq
