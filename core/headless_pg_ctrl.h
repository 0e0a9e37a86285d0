// A progress interface without a display: it records what a run reports and
// can be told to cancel. Used by tests and as the base of the command line's.
#pragma once

#include <string>
#include <vector>

#include "core/pg_ctrl.h"

class CHeadlessPgCtrl : public CSteppedPgCtrl {
public:
    bool IsCanceled() override;
    void SetStatus(const std::string& text) override;
    void AddWarning(const std::string& text) override;
    void StepProgress(int d) override;

    // Asks for cancellation at the n-th visible progress step from now (1 = next);
    // 0 never.
    void CancelAtVisibleStep(int n) { CancelAt = n; VisibleSteps = 0; }
    void RequestCancel() { CancelRequested = true; }
    void ClearCancel() { CancelRequested = false; CancelAt = 0; }

    std::vector<std::string> Statuses;
    std::vector<std::string> Warnings;
    // Steps that moved the visible bar (resets and range changes do not count).
    int VisibleSteps = 0;

protected:
    void ShowProgress(int, int) override {}
    void PumpEvents() override {}

private:
    bool CancelRequested = false;
    int CancelAt = 0;
};
