// vqk/jobs/progress_host.h
//
// The process's progress host: the one object that turns the position of the innermost
// running progress range (progress.h) into whole percents and passes them, with the
// text of the running levels, to a user interface. An application derives from
// CProgressHost, implements its three pure operations and installs it once:
//
//   class CMyBar : public vq::CProgressHost {
//       void showWindow(bool visible) override { ... }
//       void show(int percent, const char* text) override { ... }
//       bool isTerminated() override { return userPressedCancel; }
//   };
//   CMyBar bar;
//   vq::setProgressHost(&bar);
//
// What the interface is told:
//   showWindow(true)   the first progress range started (the stack was empty), or the
//                      application called onActivate() while work is running;
//   showWindow(false)  the last range ended, or the application called hide();
//   show(p, text)      a new whole percent p, 1 to 100, never smaller than one shown
//                      before in the same run, and never the same twice in a row from
//                      progress(); also the current percent again when the text changes
//                      (updateText) or the window is re-activated.
// A run starts when the first range is pushed on an empty stack; the percents start
// again from 0 then. The shown text joins the texts of the levels that have one,
// outermost first, with " > " between them ("Tests (2/5) - a.xml > reading").
//
// The host is for the main thread; parallel loops report through CProgressParallel.
// Destroying a host detaches every range still running on it (they go on silently) and
// uninstalls it when it is the installed one. With no host installed every progress
// call does nothing.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"
#include "vqk/text/vector.h"

#include <utility>

namespace vq {

class CProgressBase;

class VQK_API CProgressHost {
public:
    CProgressHost();
    virtual ~CProgressHost();
    CProgressHost(const CProgressHost&) = delete;
    CProgressHost& operator=(const CProgressHost&) = delete;

    // The interface's window (or line) should appear (true) or disappear (false).
    virtual void showWindow(bool visible) = 0;
    virtual void show(int percent, const char* text) = 0;
    // True when the user asked to stop the work.
    virtual bool isTerminated() = 0;

    // Called by the ranges themselves: push puts a range on top (its text is shown at
    // once when showText is true), pop takes it off wherever it is.
    void push(CProgressBase& progress, bool showText);
    void pop(const CProgressBase* progress);

    // Reports the innermost range's position. Inline (defined in progress.h) because
    // it is called on every step of a loop: a step that reaches no new whole percent
    // costs one virtual call and a comparison.
    inline void progress();
    // Reports after a level's text changed: the new text goes out with a new percent,
    // or on its own (updateText) when no new percent came.
    void progressText();
    // Sets the innermost range's local position and reports.
    void set(double local);
    // The overall span of the innermost range's next unit, (0, 100) with no range.
    std::pair<double, double> frame() const;
    // Composes the text of the stack; shows it with the current percent when the host
    // is enabled and a percent has been reached. True when show was called.
    bool updateText();
    void hide();
    // The application's window came back: show the window and the last state again.
    void onActivate();
    void resetPos() { m_lastPercent = m_highestPercent = 0; }
    void enable(bool enabled) { m_enabled = enabled; }
    bool isEnabled() const { return m_enabled; }

    int depth() const { return int(m_stack.size()); }
    CProgressBase* innermost() const { return m_stack.empty() ? nullptr : m_stack[m_stack.size() - 1]; }
    int highestPercent() const { return m_highestPercent; }
    // The percent last passed to show in this run, -1 before the first.
    int shownPercent() const { return m_shownPercent; }
    const char* text() const { return m_text.str(); }

private:
    void report(double pos, int percent);
    void composeText();

    TVector<CProgressBase*> m_stack;
    bool m_enabled = true;
    int m_lastPercent = 0;
    int m_highestPercent = 0;
    int m_shownPercent = -1;
    CTStr<char> m_text;
};

// Installs the process's host (null: none). The host must outlive its use.
VQK_API void setProgressHost(CProgressHost* host);
VQK_API CProgressHost* progressHost();

// Disables the installed host for a scope (enable false) and restores its flag after;
// the highest percent still advances meanwhile, so nothing older is shown on return.
// Acts only on the master thread of a parallel region (thread number 0, and so outside
// any region); elsewhere it does nothing.
class VQK_API CProgressMode {
public:
    explicit CProgressMode(bool enable);
    ~CProgressMode();
    CProgressMode(const CProgressMode&) = delete;
    CProgressMode& operator=(const CProgressMode&) = delete;

private:
    CProgressHost* m_host = nullptr;
    bool m_saved = true;
};

// True on the thread that may talk to the host: thread number 0 at every level of
// nested parallel regions, which is any thread outside them.
VQK_API bool isMasterThread();

} // namespace vq

// The ranges, and the host's inline report that needs them.
#include "vqk/jobs/progress.h"
