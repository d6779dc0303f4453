#include "vqk/jobs/progress_console.h"

#include "vqk/platform/clock.h"
#include "vqk/platform/terminal.h"

#include <cstdio>

namespace vq {

namespace {

const int kBarWidth = 20;

// Characters (not bytes) of UTF-8 text.
int charCount(const char* s, int bytes) {
    int n = 0;
    for (int i = 0; i < bytes; ++i)
        n += (static_cast<unsigned char>(s[i]) & 0xC0) != 0x80;
    return n;
}

void appendDuration(CTStr<char>& line, double seconds) {
    long long s = seconds > 0 ? (long long)(seconds + 0.5) : 0;
    char buf[32];
    if (s >= 3600)
        std::snprintf(buf, sizeof buf, "%lld:%02lld:%02lld", s / 3600, s / 60 % 60, s % 60);
    else
        std::snprintf(buf, sizeof buf, "%lld:%02lld", s / 60, s % 60);
    line += buf;
}

void writeErr(const char* s, int n) {
    std::fwrite(s, 1, size_t(n), stderr);
}

} // namespace

CTStr<char> CProgressConsole::formatLine(int percent, const char* text, double elapsed, int columns) {
    if (percent < 0)
        percent = 0;
    if (percent > 100)
        percent = 100;
    CTStr<char> line;
    char head[16];
    std::snprintf(head, sizeof head, "%3d%% [", percent);
    line += head;
    const int filled = percent * kBarWidth / 100;
    for (int i = 0; i < kBarWidth; ++i)
        line += i < filled ? "#" : " ";
    line += "] ";
    appendDuration(line, elapsed);
    if (percent > 0) {
        line += ", ";
        appendDuration(line, elapsed * (100 - percent) / percent);
        line += " left";
    }
    if (text && *text) {
        line += "  ";
        line += text;
    }
    // One column short of the width: a full line would wrap on some terminals.
    const int room = columns - 1;
    int chars = 0;
    for (int i = 0; line[i]; ++i) {
        const bool starts = (static_cast<unsigned char>(line[i]) & 0xC0) != 0x80;
        if (starts && ++chars > room) {
            line.reset(line.str(), 0, i);
            break;
        }
    }
    return line;
}

CProgressConsole::~CProgressConsole() { clearLine(); }

void CProgressConsole::showWindow(bool visible) {
    if (visible) {
        m_startMs = platform::clockMs();
        m_drawnMs = 0;
        return;
    }
    clearLine();
}

void CProgressConsole::show(int percent, const char* text) {
    const uint64 now = platform::clockMs();
    if (m_drawnMs != 0 && now - m_drawnMs < uint64(m_redrawMs))
        return;
    if (!platform::stderrIsTerminal())
        return;
    m_drawnMs = now ? now : 1;
    CTStr<char> line = formatLine(percent, text, (now - m_startMs) / 1000.0, platform::stderrColumns());
    const int length = charCount(line.str(), line.length());
    // Spaces over what is left of a longer previous line, then back to the start so
    // that anything else written to the terminal begins at the left edge.
    for (int i = length; i < m_drawnLength; ++i)
        line += " ";
    writeErr("\r", 1);
    writeErr(line.str(), line.length());
    writeErr("\r", 1);
    std::fflush(stderr);
    m_drawnLength = length;
}

void CProgressConsole::clearLine() {
    if (m_drawnLength == 0)
        return;
    if (platform::stderrIsTerminal()) {
        CTStr<char> blank(m_drawnLength, ' ');
        writeErr("\r", 1);
        writeErr(blank.str(), blank.length());
        writeErr("\r", 1);
        std::fflush(stderr);
    }
    m_drawnLength = 0;
}

CProgressConsole* installConsoleProgress() {
    static CProgressConsole console;
    setProgressHost(&console);
    return &console;
}

} // namespace vq
