// One conversion run from a reader to a writer, and what it needs of the
// front end that starts it (the desktop window or the command line).
#pragma once

#include <memory>
#include <string>

#include "core/font_io.h"

class CFontFilter;
class CPgCtrl;

class CConversionFrontEnd {
public:
    virtual ~CConversionFrontEnd() = default;

    // Clears the cancel request and marks the run active.
    virtual void BeginRun() = 0;
    // Disables the panels and main controls; Convert becomes Cancel.
    virtual void LockControls() = 0;
    // Undoes LockControls.
    virtual void UnlockControls() = 0;
    // Marks the run inactive.
    virtual void EndRun() = 0;

    virtual bool UseFilter() = 0;
    // The filter field's text as it stands.
    virtual std::string FilterPathText() = 0;
    // Commits the filter field's text to its history and returns it.
    virtual std::string CommitFilterPath() = 0;
    // Fills the run's filter once "Use Filter" is on, usually from the
    // committed filter path (an .xllt file, or a .txt file of characters).
    virtual void LoadFilter(CFontFilter& filter) = 0;

    // The current input panel's reader and output panel's writer; either may
    // throw its panel's parameter messages.
    virtual std::unique_ptr<CFontReader> CreateReader() = 0;
    virtual std::unique_ptr<CFontWriter> CreateWriter() = 0;
    virtual void CommitInputHistory() = 0;
    virtual void CommitOutputHistory() = 0;

    // The message window.
    virtual void ClearMessages() = 0;
    virtual void AppendError(const std::string& text) = 0;
    virtual void ShowMessages() = 0;
    virtual bool MessagesShown() = 0;
    virtual bool MessagesHaveText() = 0;
    virtual void CloseMessages() = 0;
    // Places a shown message window directly after the main window.
    virtual void RaiseMessages() {}
};

enum class ConversionOutcome { Finished, Failed, Canceled };

// Runs one conversion to its end; every outcome is reported through pgCtrl and
// the front end's message window. The returned outcome is for front ends that
// need it (the command line's exit status).
ConversionOutcome RunConversion(CConversionFrontEnd& frontEnd, CPgCtrl& pgCtrl);
