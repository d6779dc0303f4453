// vqk/jobs/progress.h
//
// Progress ranges: local objects that an operation creates to say how far it is. Each
// range covers, as its frame, the part of the overall 0 to 100 that its parent's next
// unit covers (the outermost covers all of it), so nested operations report without
// knowing about each other:
//
//   vq::CProgress files(n, "Reading");            // frame 0..100, units of 100/n
//   for (...) {
//       vq::CProgress parts(3, "parts");          // spans one unit of `files`
//       parts.progress(1); parts.progress(1); parts.progress(1);
//       files.progress(1);                        // a child leaves its parent in place
//   }
//
// Kinds (local range, then how the overall position follows from the local one x):
//   CProgress         0..max   evenly: start + x * (end - start) / max
//   CProgressMid      0..2     two halves of uneven share; m = 1.6 gives the first
//                              unit 80 % of the frame
//   CProgressScale    0..n     n weighted units
//   CProgressAp       as CProgress, and a plain callback `int (*)(double)` for code
//                     that only takes a function pointer
//
// A range is pushed on the installed host when made (unless made disabled or with no
// host) and popped when destroyed. Without a host, or disabled, every call only moves
// its own position. Texts given by number come from the string tables (string_table.h).
#pragma once

#include "vqk/config.h"
#include "vqk/jobs/progress_host.h"
#include "vqk/text/str.h"
#include "vqk/text/vector.h"

#include <utility>

namespace vq {

class VQK_API CProgressBase {
public:
    virtual ~CProgressBase();
    // Sets a new local maximum for a running range.
    virtual void resize(double max);
    // The overall position (0 to 100) of the local position.
    virtual double pos() const = 0;
    // The overall width of the next local unit.
    virtual double step() const = 0;
    // Starts the range: local maximum, text, and whether it joins the host's stack.
    // The kinds' constructors call it.
    virtual void push(double max, const char* text, bool enable);

    CProgressBase(const CProgressBase&) = delete;
    CProgressBase& operator=(const CProgressBase&) = delete;

    void progress(double amount) {
        m_local += amount;
        if (m_host)
            m_host->progress();
    }
    void progress(const char* text, double amount);
    void set(double local);
    // Replaces this level's text; shows the new text when the host is enabled.
    void resetText(const char* text);
    // false leaves the host's stack (the parent reports again); true joins it again
    // with the host's current frame.
    void enable(bool enabled);
    bool isTerminated() const;
    bool progressIsTerminated(double amount) {
        progress(amount);
        return isTerminated();
    }
    void pop();
    void hide();

    CProgressHost* host() const { return m_host; }
    const char* text() const { return m_text.str(); }
    double posLocal() const { return m_local; }
    std::pair<double, double> frame() const { return {m_start, m_end}; }
    double posMax() const { return m_max; }
    double posEnd() const { return m_end; }

protected:
    CProgressBase() = default;

private:
    friend class CProgressHost;

    CProgressHost* m_host = nullptr;
    CTStr<char> m_text;
    double m_local = 0;

protected:
    double m_start = 0;
    double m_end = 100;
    // The step size of CProgress, the midpoint share of CProgressMid.
    double m_value = 0;
    double m_max = 0;
};

class VQK_API CProgress : public CProgressBase {
public:
    CProgress(double max, const char* text = nullptr, bool enable = true);
    CProgress(double max, int textId, bool enable = true);
    void resize(double max) override;
    double pos() const override { return m_start + posLocal() * m_value; }
    double step() const override { return m_value; }
};

class VQK_API CProgressMid : public CProgressBase {
public:
    // mid: the share (0 to 2) of the frame that the first unit covers, times 2.
    CProgressMid(double mid, const char* text = nullptr, bool enable = true);
    CProgressMid(double mid, int textId, bool enable = true);
    void resize(double mid) override;
    double pos() const override { return posAt(posLocal()); }
    double step() const override { return posAt(posLocal() + 1) - pos(); }

private:
    double posAt(double x) const;
};

class VQK_API CProgressScale : public CProgressBase {
public:
    // One unit per weight, each taking its weight's share of the frame. Negative
    // weights count as 0; when none is positive the units are even.
    CProgressScale(const double* weights, int count, const char* text = nullptr, bool enable = true);
    CProgressScale(const double* weights, int count, int textId, bool enable = true);
    double pos() const override { return posAt(posLocal()); }
    double step() const override { return posAt(posLocal() + 1) - pos(); }

private:
    void setWeights(const double* weights, int count);
    double posAt(double x) const;

    TVector<double> m_cumulative; // n + 1 positions, the first 0
    double m_total = 0;
};

class VQK_API CProgressAp : public CProgress {
public:
    CProgressAp(double max, const char* text = nullptr, bool enable = true);
    ~CProgressAp() override;
    using FCallBack = int (*)(double);
    // Advances the innermost living CProgressAp by the amount; returns 1 when the host
    // says the work is terminated, else 0 (also when none is alive).
    static int callBack(double amount);
    static FCallBack ap() { return &callBack; }

private:
    CProgressAp* m_outer = nullptr;
};

inline void CProgressHost::progress() {
    if (m_stack.empty())
        return;
    const double p = m_stack.back()->pos();
    const int q = int(p);
    if (q != m_lastPercent)
        report(p, q);
}

} // namespace vq
