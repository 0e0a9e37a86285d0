#include "core/headless_pg_ctrl.h"

bool CHeadlessPgCtrl::IsCanceled() {
    PumpEvents();
    return CancelRequested;
}

void CHeadlessPgCtrl::SetStatus(const std::string& text) {
    Statuses.push_back(text);
    PumpEvents();
}

void CHeadlessPgCtrl::AddWarning(const std::string& text) { Warnings.push_back(text); }

void CHeadlessPgCtrl::StepProgress(int d) {
    const int divisor = ProgressDivisor();
    if ((ProgressPos() + d) / divisor != ProgressPos() / divisor) {
        ++VisibleSteps;
        if (CancelAt > 0 && VisibleSteps >= CancelAt) CancelRequested = true;
    }
    CSteppedPgCtrl::StepProgress(d);
}
