#include "vqk/diagnostics/log_workflow.h"
#include "vqk/files/file_path.h"
#include "vqk/platform/environment.h"
#include "vqk/platform/log_clock.h"
#include "vqk/platform/printf.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>

namespace vq {
namespace {

const char* const kIndentVar = "_ORV_LOGINDENT";
const char* const kPrefixVar = "_ORV_LOGPREFIX";
const char* const kTemplate = "workflow.~.xml";
// A bad inherited depth must not turn every record into a wall of tabs.
const int kMaxIndent = 256;

#if defined(__x86_64__) || defined(_M_X64)
const char* const kCpu = "x64";
#elif defined(__aarch64__) || defined(_M_ARM64)
const char* const kCpu = "arm64";
#else
const char* const kCpu = "x86";
#endif

struct SLogState {
    std::mutex lock;
    int minLevel = 0;
    bool indentKnown = false;
    int indent = 0;
    bool prefixKnown = false;
    std::string prefix;
    std::string file;
    bool wroteFirst = false;
};

// Never destroyed: tags held by static objects may close after the statics of this file.
SLogState& state() {
    static SLogState* s = new SLogState;
    return *s;
}

long long nowNs() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

std::string cleanPrefix(const char* text) {
    std::string out(text ? text : "");
    for (char& c : out) {
        unsigned char u = static_cast<unsigned char>(c);
        bool keep = (u >= '0' && u <= '9') || (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') ||
                    u == '-' || u == '_' || u == '.' || u >= 0x80;
        if (!keep)
            c = '_';
    }
    return out;
}

// Appends text as an attribute value: double quotes would end it early.
void appendValue(std::string& out, const char* text) {
    for (const char* p = text; p && *p; ++p)
        out += *p == '"' ? '\'' : *p;
}

std::string nameFrom(const std::string& folder, const char* tmpl, const std::string& prefix) {
    std::string name(tmpl ? tmpl : "");
    size_t at = name.find('~');
    if (at != std::string::npos) {
        if (!prefix.empty())
            name.replace(at, 1, prefix);
        else if (at + 1 < name.size() && name[at + 1] == '.')
            name.erase(at, 2);
        else if (at > 0 && name[at - 1] == '.')
            name.erase(at - 1, 2);
        else
            name.erase(at, 1);
    }
    return folder + name;
}

// Caller holds the lock.
void choosePrefix(SLogState& s, const char* text) {
    s.prefix = cleanPrefix(text);
    s.prefixKnown = true;
    s.file = nameFrom(platform::tempFolder(), kTemplate, s.prefix);
    platform::setEnv(kPrefixVar, s.prefix.c_str());
}

void loadPrefix(SLogState& s) {
    if (s.prefixKnown)
        return;
    std::string inherited;
    if (platform::getEnv(kPrefixVar, inherited)) {
        choosePrefix(s, inherited.c_str());
        return;
    }
    TFilePath<char> exe(platform::executablePath().c_str());
    choosePrefix(s, exe.file()[0] ? exe.file() : "vqk");
}

int& loadIndent(SLogState& s) {
    if (!s.indentKnown) {
        s.indentKnown = true;
        std::string v;
        if (platform::getEnv(kIndentVar, v) && !v.empty()) {
            char* end = nullptr;
            long n = std::strtol(v.c_str(), &end, 10);
            if (*end == 0 && n > 0)
                s.indent = n > kMaxIndent ? kMaxIndent : int(n);
        }
    }
    return s.indent;
}

void storeIndent(SLogState& s, int n) {
    s.indent = n < 0 ? 0 : (n > kMaxIndent ? kMaxIndent : n);
    s.indentKnown = true;
    char text[16];
    std::snprintf(text, sizeof text, "%d", s.indent);
    platform::setEnv(kIndentVar, text);
}

// The opening of a record: indentation, element, time, pid, and on the process's first
// record the processor and the executable.
std::string recordHead(SLogState& s, int depth, const char* element) {
    char when[32];
    platform::localTimeText(when, sizeof when, "%Y.%m.%d %H:%M:%S");
    std::string r(size_t(depth), '\t');
    r += '<';
    r += element;
    r += " t=\"";
    r += when;
    r += "\" pid=\"";
    r += std::to_string(platform::processId());
    r += '"';
    if (!s.wroteFirst) {
        s.wroteFirst = true;
        r += " cpu=\"";
        r += kCpu;
        r += "\" module=\"";
        appendValue(r, platform::executablePath().c_str());
        r += '"';
    }
    return r;
}

// One open-append-close cycle; caller holds the lock.
void appendRecord(SLogState& s, const std::string& record) {
    loadPrefix(s);
    std::FILE* f = std::fopen(s.file.c_str(), "a");
    if (!f)
        return;
    if (std::fseek(f, 0, SEEK_END) == 0 && std::ftell(f) >= CLogWorkflow::kRestartSize) {
        std::fclose(f);
        std::remove(s.file.c_str());
        f = std::fopen(s.file.c_str(), "a");
        if (!f)
            return;
    }
    std::fwrite(record.data(), 1, record.size(), f);
    std::fclose(f);
}

// A cut that falls inside a UTF-8 sequence drops the sequence's start too.
void cutAtCharacter(char* text, size_t n) {
    size_t start = n;
    while (start > 0 && (static_cast<unsigned char>(text[start - 1]) & 0xC0) == 0x80)
        --start;
    if (start == 0)
        return;
    unsigned char lead = static_cast<unsigned char>(text[start - 1]);
    size_t need = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (n - (start - 1) < need)
        text[start - 1] = 0;
}

} // namespace

void CLogWorkflow::msg(int level, const char* format, ...) {
    va_list args;
    va_start(args, format);
    vmsg(level, format, args);
    va_end(args);
}

void CLogWorkflow::vmsg(int level, const char* format, va_list args) {
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    if (level < s.minLevel)
        return;
    char text[kTextSize];
    text[0] = 0;
    if (format) {
        int n = std::vsnprintf(text, sizeof text, platform::CNativeFormat<char>(format).str(), args);
        if (n < 0)
            text[0] = 0;
        else if (n >= kTextSize)
            cutAtCharacter(text, kTextSize - 1);
    }
    std::string r = recordHead(s, loadIndent(s), "msg");
    r += " msg=\"";
    appendValue(r, text);
    r += "\"/>\n";
    appendRecord(s, r);
}

void CLogWorkflow::setMinLevel(int level) {
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    s.minLevel = level;
}

int CLogWorkflow::minLevel() {
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    return s.minLevel;
}

void CLogWorkflow::setPrefix(const char* prefix) {
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    choosePrefix(s, prefix);
}

CStr CLogWorkflow::prefix() {
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    loadPrefix(s);
    return CStr(s.prefix.c_str());
}

int CLogWorkflow::indent() {
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    return loadIndent(s);
}

void CLogWorkflow::genLogName(CStr& out, const char* tmpl) {
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    loadPrefix(s);
    out = nameFrom(platform::tempFolder(), tmpl, s.prefix).c_str();
}

CStr CLogWorkflow::fileName() {
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    loadPrefix(s);
    return CStr(s.file.c_str());
}

CLogWorkflow::CTag::CTag(int level, const char* name, const char* text) : m_name(name) {
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    if (level < s.minLevel)
        return;
    int depth = loadIndent(s);
    std::string r = recordHead(s, depth, "tag");
    r += " name=\"";
    appendValue(r, name);
    r += "\" text=\"";
    appendValue(r, text);
    r += "\">\n";
    appendRecord(s, r);
    storeIndent(s, depth + 1);
    m_open = true;
    m_startNs = nowNs();
}

CLogWorkflow::CTag::~CTag() {
    if (!m_open)
        return;
    double sec = double(nowNs() - m_startNs) / 1e9;
    SLogState& s = state();
    std::lock_guard<std::mutex> hold(s.lock);
    int depth = loadIndent(s);
    std::string r = recordHead(s, depth, "end");
    r += " name=\"";
    appendValue(r, m_name.str());
    char secText[32];
    std::snprintf(secText, sizeof secText, "%.3f", sec);
    r += "\" sec=\"";
    r += secText;
    r += "\"/>\n";
    int outer = depth > 0 ? depth - 1 : 0;
    r.append(size_t(outer), '\t');
    r += "</tag>\n";
    appendRecord(s, r);
    storeIndent(s, outer);
}

} // namespace vq
