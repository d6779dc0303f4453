#include "vqk/jobs/job_host.h"

#include <cstdio>
#include <cstring>

namespace vq {

namespace {

bool sameName(const char* a, const char* b) { return a && b && std::strcmp(a, b) == 0; }

} // namespace

CJobHost::CJobHost() : m_console(stdout) {}

CJobHost& CJobHost::host() {
    // Never destroyed: static initialisers of other libraries may register into it,
    // and static destructors may still look jobs up.
    static CJobHost* instance = new CJobHost;
    return *instance;
}

CJobHost* CJobHost::create() { return new CJobHost; }

void CJobHost::destroy() { delete this; }

void CJobHost::addJob(const char* name, FJob fn) {
    m_jobNames.push_back(name);
    m_jobs.push_back(fn);
}

void CJobHost::addJobXml(const char* name, FJobXml fn) {
    m_xmlNames.push_back(name);
    m_xmlJobs.push_back(fn);
}

void CJobHost::addtest(const char* name, FTestFactory factory) { m_tests.push_back({name, factory}); }

FJob CJobHost::findJob(const char* name) const {
    for (int i = int(m_jobNames.size()) - 1; i >= 0; --i)
        if (sameName(m_jobNames[i], name))
            return m_jobs[i];
    return nullptr;
}

FJobXml CJobHost::findJobXml(const char* name) const {
    for (int i = int(m_xmlNames.size()) - 1; i >= 0; --i)
        if (sameName(m_xmlNames[i], name))
            return m_xmlJobs[i];
    return nullptr;
}

const STestDescriptor* CJobHost::findTest(const char* name) const {
    for (const STestDescriptor& t : m_tests)
        if (sameName(t.name, name))
            return &t;
    return nullptr;
}

void CJobHost::clearJobs() {
    m_jobNames.clear();
    m_jobs.clear();
    m_xmlNames.clear();
    m_xmlJobs.clear();
}

int registerJob(const char* name, FJob fn) {
    CJobHost::host().addJob(name, fn);
    return 0;
}

int registerJobXml(const char* name, FJobXml fn) {
    CJobHost::host().addJobXml(name, fn);
    return 0;
}

int registerTest(const char* name, FTestFactory factory) {
    CJobHost::host().addtest(name, factory);
    return 0;
}

} // namespace vq
