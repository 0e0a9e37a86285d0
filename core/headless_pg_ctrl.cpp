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

void CHeadlessPgCtrl::ShowProgress(int pos, int range) {
    (void)pos;
    (void)range;
    ++VisibleSteps;
    if (CancelAt > 0 && VisibleSteps >= CancelAt) CancelRequested = true;
}
