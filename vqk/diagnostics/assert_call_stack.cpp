#include "vqk/diagnostics/assert.h"

#include "vqk/diagnostics/assert_log.h"
#include "vqk/platform/call_stack.h"

#include <cstdio>
#include <string>

namespace vq {
namespace {

const int kMaxFrames = 62;

// A name holding "]]>" would end the CDATA block early.
void appendCdataSafe(std::string& out, const char* text) {
    for (const char* p = text; *p; ++p) {
        out += *p;
        if (p[0] == ']' && p[1] == ']' && p[2] == '>')
            out += ' ';
    }
}

} // namespace

void CAssert::dumpCallStack() {
    void* frames[kMaxFrames];
    // This function is not part of the story.
    const int n = platform::captureStack(frames, kMaxFrames, 1);
    std::string text = "<callStack>\n  <![CDATA[\n";
    char line[2048];
    for (int i = 0; i < n; ++i) {
        platform::describeFrame(frames[i], false, line, sizeof line);
        text += "    #" + std::to_string(i) + ' ';
        appendCdataSafe(text, line);
        text += '\n';
    }
    text += "  ]]>\n</callStack>\n";
    std::FILE* f = assert_log::open();
    if (!f)
        return;
    std::fwrite(text.data(), 1, text.size(), f);
    assert_log::close(f);
}

void CAssert::dumpCallStack(int) {
    logStr("<crash/>\n");
    dumpCallStack();
}

} // namespace vq
