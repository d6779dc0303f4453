// vqk/jobs/progress_console.h
//
// A progress host for console tools: one line on standard error, redrawn in place,
//
//    42% [########            ] 0:12, 0:16 left  Tests (3/7) - data/a.xml > reading
//
// with the percent, a bar, the time since the run started and an estimate of the time
// left, then the joined texts of the running levels, cut to the terminal's width. The
// line is cleared when the run ends (its last range is popped).
//
//   int main(int argc, char** argv) {
//       vq::installConsoleProgress();     // once, before the work starts
//       ...
//
// Nothing at all is written when standard error is not a terminal (a log file, a pipe,
// CI), which is checked at every redraw, so redirecting standard error later (the job
// host's //e) silences the bar. Redrawing is limited in time as well as by the
// whole-percent rule: at most one redraw per redrawMs (100 ms unless set), so a percent
// reached sooner appears with the next redraw. The host never asks the work to stop.
// Lines written to the same terminal by other code are printed over the bar, which is
// drawn again at the next change; tools that show the bar send their output elsewhere.
#pragma once

#include "vqk/config.h"
#include "vqk/jobs/progress_host.h"

namespace vq {

class VQK_API CProgressConsole : public CProgressHost {
public:
    explicit CProgressConsole(int redrawMs = 100) : m_redrawMs(redrawMs) {}
    ~CProgressConsole() override;

    void showWindow(bool visible) override;
    void show(int percent, const char* text) override;
    bool isTerminated() override { return false; }

    // The line for a state, `columns` wide at most (without the leading carriage
    // return), as show draws it.
    static CTStr<char> formatLine(int percent, const char* text, double elapsedSeconds, int columns);

private:
    void clearLine();

    int m_redrawMs;
    uint64 m_startMs = 0;
    uint64 m_drawnMs = 0;
    int m_drawnLength = 0; // characters on the terminal now, 0 when clear
};

// Installs a process-wide CProgressConsole as the progress host (the same one on every
// call) and returns it.
VQK_API CProgressConsole* installConsoleProgress();

} // namespace vq
