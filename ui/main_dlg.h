// The one window of the program: input tabs, filter row, output tabs,
// progress, status and Convert. It is also the progress interface and the
// front end of the conversions it runs, on the window's own thread, pumping
// events from the progress calls so that Cancel can be pressed.
#pragma once

#include <array>
#include <filesystem>
#include <memory>

#include <QElapsedTimer>

#include "core/conversion.h"
#include "core/pg_ctrl.h"
#include "ui/panel_dlg.h"
#include "settings/settings_store.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTabWidget;
class QToolButton;
class CWarningWnd;
class CPreviewWnd;
class CInBmpDlg;
class CInZarnicDlg;
class CInWinDlg;
class CInLcDlg;
class COutBmpDlg;
class COutZarnicDlg;

class CMainDlg : public CDlg, public CSteppedPgCtrl, public CConversionFrontEnd {
public:
    explicit CMainDlg(std::filesystem::path settingsPath);
    ~CMainDlg() override;

    // CPgCtrl
    bool IsCanceled() override;
    void SetStatus(const std::string& text) override;
    void AddWarning(const std::string& text) override;

    // CConversionFrontEnd
    void BeginRun() override;
    void LockControls() override;
    void UnlockControls() override;
    void EndRun() override;
    bool UseFilter() override;
    std::string FilterPathText() override;
    std::string CommitFilterPath() override;
    void LoadFilter(CFontFilter& filter) override;
    std::unique_ptr<CFontReader> CreateReader() override;
    std::unique_ptr<CFontWriter> CreateWriter() override;
    void CommitInputHistory() override;
    void CommitOutputHistory() override;
    void ClearMessages() override;
    void AppendError(const std::string& text) override;
    void ShowMessages() override;
    bool MessagesShown() override;
    bool MessagesHaveText() override;
    void CloseMessages() override;
    void RaiseMessages() override;

    // Drops on the filter row go to the filter field.
    void OnDragEnter(const QPoint& global) override;
    void OnDragLeave() override;
    void OnDrop(const QString& file) override;

    void OnConvertClicked();
    void HideOptions();
    void ShowOptions();
    void OnUseFilterClicked();
    bool Converting() const { return IsConverting; }
    // Preview is possible when the ZGLY output field names an existing file.
    void UpdatePreviewButton();
    void OpenPreview();

    CSettingsStore Settings;
    GlyphOrderList GlyphOrders;
    // The window is the progress interface of everything while it lives.
    CPgCtrlScope PgScope{*this};
    std::unique_ptr<CWarningWnd> Messages;
    std::unique_ptr<CPreviewWnd> Preview;

    QGroupBox* InputBox;
    QTabWidget* InputTabs;
    QGroupBox* FilterBox;
    QCheckBox* UseFilterCheck;
    CPathCombo* FilterField;
    QGroupBox* OutputBox;
    QTabWidget* OutputTabs;
    QToolButton* ShowOptionsButton;
    QToolButton* HideOptionsButton;
    QProgressBar* Progress;
    QElapsedTimer BarMoved;  // when the bar was last moved
    QLabel* StatusText;
    QPushButton* ConvertButton;
    QPushButton* PreviewButton;
    QCheckBox* OpenPreviewCheck;

    CInBmpDlg* InBmp;
    CInZarnicDlg* InZarnic;
    CInWinDlg* InWin;
    CInLcDlg* InLc;
    COutBmpDlg* OutBmp;
    COutZarnicDlg* OutZarnic;
    std::array<CInDlg*, 4> InputPanels;
    std::array<COutDlg*, 2> OutputPanels;
    CInDlg* CurrentInput = nullptr;
    COutDlg* CurrentOutput = nullptr;

protected:
    void ShowProgress(int pos, int range) override;
    void PumpEvents() override;

    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildLayout();
    // Returns the height the option areas take.
    int SetOutputOptionsVisible(bool visible);
    void ApplyPendingLayouts();
    void SelectInput();
    void SelectOutput();
    // The panel (or the window, for the filter row) under a point of the window.
    CDlg* DropTargetAt(const QPoint& pos);

    bool CancelRequested = false;
    bool IsConverting = false;
    int OptionHeight = 0;
    bool Shown = false;
    CDlg* DropTarget = nullptr;
};
