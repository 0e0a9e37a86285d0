#include "core/pg_ctrl.h"

namespace {

class CSilentPgCtrl : public CPgCtrl {
public:
    bool IsCanceled() override { return false; }
    void SetStatus(const std::string&) override {}
    void ResetProgress() override {}
    void SetProgressRange(int) override {}
    void StepProgress(int) override {}
    void AddWarning(const std::string&) override {}
};

CSilentPgCtrl g_Silent;

}  // namespace

CPgCtrl* g_pPgCtrl = &g_Silent;

int ProgressDivisorFor(int n) {
    int divisor = 1;
    while (n > 200) {
        n /= 2;
        divisor *= 2;
    }
    return divisor;
}

void CSteppedPgCtrl::ResetProgress() {
    ShowProgress(0, Range);
    PumpEvents();
    Pos = 0;
    Divisor = 1;
}

void CSteppedPgCtrl::SetProgressRange(int n) {
    Divisor = 1;
    Range = n;
    ShowProgress(Pos, Range);
    Divisor = ProgressDivisorFor(n);
    PumpEvents();
}

void CSteppedPgCtrl::StepProgress(int d) {
    int old = Pos;
    Pos = old + d;
    if (Pos / Divisor == old / Divisor) return;
    ShowProgress(Pos, Range);
    if (IsCanceled()) throw 0;
    PumpEvents();
}
