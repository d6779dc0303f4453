#include "vqk/diagnostics/assert.h"

#include "vqk/diagnostics/assert_log.h"
#include "vqk/files/file_path.h"
#include "vqk/platform/crash.h"
#include "vqk/platform/environment.h"
#include "vqk/text/fixed_text.h"
#include "vqk/xml/xml_out.h"

#include <cstdio>

namespace vq {
namespace {

using CRecordText = CFixedText<4096>;

const char* const kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November", "December"};

// Where dumps go when writeMiniDump is given no folder; set before any crash, read by it.
char g_dumpFolder[4096];

void ensureSeparator(CRecordText& t) {
    const char* s = t.str();
    const size_t n = t.size();
    if (n > 0 && s[n - 1] != '/' && s[n - 1] != '\\')
        t.add(pathDelimiter());
}

void rememberDumpFolder(const char* folder) {
    CRecordText t;
    if (folder && *folder)
        t.add(folder);
    else
        t.add(platform::tempFolder().c_str());
    ensureSeparator(t);
    if (t.size() + 1 < sizeof g_dumpFolder)
        for (size_t i = 0; i <= t.size(); ++i)
            g_dumpFolder[i] = t.str()[i];
}

// Lines of the crash record in the assertion log, written as they happen.
class CCrashLog {
public:
    CCrashLog() {
        const char* name = assert_log::resolvedName();
        m_file = platform::crashFileOpen(name, assert_log::isFirstOutUnlocked());
    }
    ~CCrashLog() { platform::crashFileClose(m_file); }
    void line(CRecordText& t) {
        t.add("\n");
        if (m_file != -1)
            platform::crashFileWrite(m_file, t.str(), t.size());
        t.clear();
    }

private:
    intptr_t m_file = -1;
};

void onCrash(SExceptionPointers* info) {
    // The job_log written so far matters most: it goes out before anything else.
    platform::flushIfFree(xout.stream());
    platform::flushIfFree(stdout);
    CAssert::writeMiniDump(info, nullptr);
}

} // namespace

long CAssert::writeMiniDump(SExceptionPointers* info, const char* path) {
    CCrashLog log;
    CRecordText t;
    t.add("<writeMiniDump>");
    log.line(t);
    t.add("vqk Version: ").add(VQK_VERSION_TEXT);
    log.line(t);
    long rc = 0;
    const platform::EDumpSupport support = platform::dumpSupport();
    if (support != platform::eDumpReady) {
        t.add(support == platform::eDumpMissing ? "DBGHELP.DLL not found" : "DBGHELP.DLL too old");
        log.line(t);
        rc = support;
    } else {
        CRecordText file;
        if (path && *path) {
            file.add(path);
            ensureSeparator(file);
        } else {
            if (!g_dumpFolder[0])
                rememberDumpFolder(nullptr);
            file.add(g_dumpFolder);
        }
        platform::SCrashTime now;
        platform::crashLocalTime(now);
        file.dec(now.day, 2).add("_").add(kMonths[(now.month + 11) % 12]).add("_");
        file.dec(now.hour, 2).add("_").dec(now.minute, 2).add(".dmp");
        t.add("write mini dump: ").add(file.str());
        log.line(t);
        intptr_t dump = platform::crashFileOpen(file.str(), true);
        if (dump == -1) {
            rc = platform::crashLastError();
            t.add("Failed to create dump file '").add(file.str()).add("' (error ").dec(rc).add(")");
        } else {
            rc = platform::writeCrashDump(dump, info);
            platform::crashFileClose(dump);
            if (rc != 0)
                t.add("Failed to save dump file to '").add(file.str()).add("' (error ").dec(rc).add(")");
            else
                t.add("Save dump file to '").add(file.str()).add("'");
        }
        log.line(t);
    }
    t.add("</writeMiniDump>");
    log.line(t);
    return rc;
}

bool CAssert::installCrashHandler(const char* dumpFolder) {
    rememberDumpFolder(dumpFolder);
    assert_log::resolve();
    return platform::installCrashHandler(onCrash);
}

int logException(unsigned, SExceptionPointers* info, const char* path) {
    CAssert::writeMiniDump(info, path);
    return 1;
}

} // namespace vq
