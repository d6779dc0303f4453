#include "vqk/diagnostics/assert_log.h"

#include "vqk/diagnostics/log_workflow.h"
#include "vqk/platform/environment.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>

namespace vq {
namespace assert_log {
namespace {

const char* const kNameVar = "_ORV_ASSERTS";
const char* const kFirstOutVar = "_ORV_ASSERTS_FIRST_OUT";

struct SLogFile {
    std::mutex lock;
    std::string name;
    std::atomic<bool> firstOut{true};
};

char g_resolved[4096];

// Never destroyed: assertions may fail in destructors of other statics.
SLogFile& file() {
    static SLogFile* f = new SLogFile;
    return *f;
}

// Tells the workflow log and the environment, so that later child processes inherit it.
void putEnv(const char* name, const char* value) {
    std::string assignment = std::string(name) + "=" + value;
    CLogWorkflow::msg(3, "putenv(): '%s'", assignment.c_str());
    platform::setEnv(name, value);
}

// Caller holds the lock.
bool firstOutLocked(SLogFile& f) {
    if (f.firstOut) {
        std::string v;
        if (platform::getEnv(kFirstOutVar, v) && !v.empty())
            f.firstOut = false;
    }
    return f.firstOut;
}

void endFirstOutLocked(SLogFile& f) {
    if (!f.firstOut)
        return;
    putEnv(kFirstOutVar, "0");
    f.firstOut = false;
}

std::string chooseName(SLogFile& f) {
    if (!f.name.empty())
        return f.name;
    std::string v;
    if (platform::getEnv(kNameVar, v) && !v.empty())
        return v;
    return platform::tempFolder() + "asserts.log";
}

// Remembers the result for a crash handler (a name too long for it is not kept).
std::string nameLocked(SLogFile& f) {
    std::string n = chooseName(f);
    if (n.size() < sizeof g_resolved && std::strcmp(g_resolved, n.c_str()) != 0)
        std::memcpy(g_resolved, n.c_str(), n.size() + 1);
    return n;
}

} // namespace

std::string name() {
    SLogFile& f = file();
    std::lock_guard<std::mutex> hold(f.lock);
    return nameLocked(f);
}

void setName(const char* name) {
    SLogFile& f = file();
    {
        std::lock_guard<std::mutex> hold(f.lock);
        f.name = name ? name : "";
        nameLocked(f);
    }
    putEnv(kNameVar, name ? name : "");
}

bool isFirstOut() {
    SLogFile& f = file();
    std::lock_guard<std::mutex> hold(f.lock);
    return firstOutLocked(f);
}

void setFirstOut(bool firstOut) {
    SLogFile& f = file();
    std::lock_guard<std::mutex> hold(f.lock);
    if (!firstOut)
        endFirstOutLocked(f);
    f.firstOut = firstOut;
}

std::FILE* open() {
    SLogFile& f = file();
    std::lock_guard<std::mutex> hold(f.lock);
    return std::fopen(nameLocked(f).c_str(), firstOutLocked(f) ? "w" : "a");
}

void close(std::FILE* stream) {
    if (!stream)
        return;
    SLogFile& f = file();
    {
        std::lock_guard<std::mutex> hold(f.lock);
        endFirstOutLocked(f);
    }
    std::fclose(stream);
}

void resolve() { name(); }

const char* resolvedName() { return g_resolved; }

bool isFirstOutUnlocked() {
    if (!file().firstOut)
        return false;
    const char* v = std::getenv(kFirstOutVar);
    return !v || !*v;
}

} // namespace assert_log
} // namespace vq
