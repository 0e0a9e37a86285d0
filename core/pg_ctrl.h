// The progress, status, cancel and warning interface that every reader, writer
// and loader reports to, and the one global pointer to its implementation.
#pragma once

#include <string>

class CPgCtrl {
public:
    virtual ~CPgCtrl() = default;
    // Processes pending events, then answers whether the user asked to cancel.
    virtual bool IsCanceled() = 0;
    // Shows the one-line status; processes pending events. Never cancels.
    virtual void SetStatus(const std::string& text) = 0;
    // Position 0 (and redraw step 1).
    virtual void ResetProgress() = 0;
    // Range 0 ... n; does not move the position.
    virtual void SetProgressRange(int n) = 0;
    // Advances by d; whenever the visible bar moves, processes events and
    // throws the cancellation (int 0) if the user asked for it.
    virtual void StepProgress(int d) = 0;
    // Records one warning line; never fails.
    virtual void AddWarning(const std::string& text) = 0;
};

// The progress interface of whatever runs now; never null. Where nothing
// set it (a tool, a test), it is a silent one that never cancels.
extern CPgCtrl* g_pPgCtrl;

// Points g_pPgCtrl at a progress interface for its lifetime and puts the
// previous one back, also when an exception passes.
class CPgCtrlScope {
public:
    explicit CPgCtrlScope(CPgCtrl& pg) : Saved(g_pPgCtrl) { g_pPgCtrl = &pg; }
    ~CPgCtrlScope() { g_pPgCtrl = Saved; }
    CPgCtrlScope(const CPgCtrlScope&) = delete;
    CPgCtrlScope& operator=(const CPgCtrlScope&) = delete;

private:
    CPgCtrl* Saved;
};

// The redraw divisor shared by every front end: the bar is redrawn, events
// processed and the cancel request looked at only when the position crosses a
// divisor boundary, at most about 200 times per range.
class CSteppedPgCtrl : public CPgCtrl {
public:
    void ResetProgress() override;
    void SetProgressRange(int n) override;
    void StepProgress(int d) override;

    int ProgressPos() const { return Pos; }
    int ProgressRange() const { return Range; }
    int ProgressDivisor() const { return Divisor; }

protected:
    // Moves the visible bar.
    virtual void ShowProgress(int pos, int range) = 0;
    // Dispatches pending user-interface events without waiting.
    virtual void PumpEvents() = 0;

private:
    int Pos = 0;
    int Range = 100;
    int Divisor = 1;
};

// The divisor for a range of n: halve n while it exceeds 200.
int ProgressDivisorFor(int n);
