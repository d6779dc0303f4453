#include "vqk/diagnostics/assert.h"

#include "vqk/diagnostics/assert_log.h"
#include "vqk/platform/debugger.h"
#include "vqk/platform/log_clock.h"

#include <atomic>
#include <cstdio>
#include <mutex>
#include <string>

namespace vq {
namespace {

struct SAssertState {
    std::atomic<int> mode{eAssertOff};
    std::atomic<int> minLevel{3};
    std::atomic<int> maxRecords{1000};
    std::atomic<int> nAssert{0};
    // Records written or suppressed; guarded by `write` with the file it counts.
    int nRecord = 0;
    std::mutex write;
};

SAssertState& state() {
    static SAssertState* s = new SAssertState;
    return *s;
}

// The record's attribute values end at a double quote, so quotes become blanks.
std::string unquoted(const char* text) {
    std::string out(text ? text : "");
    for (char& c : out)
        if (c == '"')
            c = ' ';
    return out;
}

} // namespace

void CAssert::setMaxLogRecords(int n) { state().maxRecords = n; }
void CAssert::setMinLevel(int level) { state().minLevel = level; }
void CAssert::setMode(EAssertMode mode) { state().mode = int(mode); }
EAssertMode CAssert::getMode() { return EAssertMode(state().mode.load()); }
void CAssert::setLogName(const char* name) { assert_log::setName(name); }
CStr CAssert::logName() { return CStr(assert_log::name().c_str()); }
bool CAssert::isFirstOut() { return assert_log::isFirstOut(); }
void CAssert::setFirstOut(bool firstOut) { assert_log::setFirstOut(firstOut); }
int CAssert::nAssert() { return state().nAssert; }

void CAssert::ass(const char* file, int line, const char* func, const char* expr,
                  const char* msg, int level) {
    SAssertState& s = state();
    if (level < s.minLevel)
        return;
    const int id = ++s.nAssert;
    const int mode = s.mode;
    if (mode == eAssertOff)
        return;
    if (mode == eAssertBreak) {
        platform::trapToDebugger();
        return;
    }
    const int max = s.maxRecords;
    std::unique_lock<std::mutex> hold(s.write);
    if (max >= 0 && s.nRecord > max)
        return;
    std::FILE* f = assert_log::open();
    if (!f)
        return;
    if (max >= 0 && s.nRecord >= max) {
        if (s.nRecord == max)
            std::fputs("<too_many_asserts/>\n", f);
        ++s.nRecord;
        std::fclose(f);
        hold.unlock();
        if (level == 5)
            dumpCallStack();
        return;
    }
    char when[16];
    platform::localTimeText(when, sizeof when, "%H:%M:%S");
    const std::string e = unquoted(expr);
    if (msg)
        std::fprintf(f,
                     "<assert time=\"%s\" file=\"%s\" line=\"%i\" func=\"%s\" expr=\"%s\" msg=\"%s\" "
                     "level=\"%i\" id=\"%i\"/>\n",
                     when, file ? file : "", line, func ? func : "", e.c_str(), unquoted(msg).c_str(),
                     level, id);
    else
        std::fprintf(f,
                     "<assert time=\"%s\" file=\"%s\" line=\"%i\" func=\"%s\" expr=\"%s\" level=\"%i\" "
                     "id=\"%i\"/>\n",
                     when, file ? file : "", line, func ? func : "", e.c_str(), level, id);
    ++s.nRecord;
    assert_log::close(f);
    hold.unlock();
    if (level == 5)
        dumpCallStack();
}

void CAssert::logStr(const char* text) {
    if (state().mode != eAssertLog)
        return;
    std::FILE* f = assert_log::open();
    if (!f)
        return;
    std::fputs(text ? text : "", f);
    assert_log::close(f);
}

void CAssert::logModelName(const char* name) {
    if (state().mode != eAssertLog)
        return;
    char record[1024];
    std::snprintf(record, sizeof record, "<model name=\"%s\"/>\n", name ? name : "");
    logStr(record);
}

} // namespace vq
