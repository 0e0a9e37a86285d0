// The input and output panels shown by the main window's tabs.
#pragma once

#include <memory>
#include <vector>

#include "core/font_io.h"
#include "ui/dlg.h"
#include "xmlfiles/glyph_order_files.h"

class CSettingsStore;
class CPathCombo;

using GlyphOrderList = std::vector<GlyphOrderInfo>;

class CPanelDlg : public CDlg {
public:
    CPanelDlg(const CSettingsStore& settings, QWidget* parent) : CDlg(parent), Settings(settings) {}
    // Commits the histories of the panel's path fields after a successful run.
    virtual void CommitHistory() = 0;

protected:
    // Drags over a panel with one path field go to that field.
    void RouteDragTo(CPathCombo* field);

    const CSettingsStore& Settings;
    CPathCombo* DragField = nullptr;

public:
    void OnDragEnter(const QPoint& global) override;
    void OnDragOver(const QPoint& global) override;
    void OnDragLeave() override;
    void OnDrop(const QString& file) override;
};

class CInDlg : public CPanelDlg {
public:
    using CPanelDlg::CPanelDlg;
    // A new reader built from the panel's fields; throws its parameter messages.
    virtual std::unique_ptr<CFontReader> CreateReader() = 0;
};

class COutDlg : public CPanelDlg {
public:
    using CPanelDlg::CPanelDlg;
    virtual std::unique_ptr<CFontWriter> CreateWriter() = 0;
    // Shows or hides the controls below the file rows (the option area).
    virtual void SetOptionsVisible(bool visible) = 0;
};

// "2", "4", "8", "16" levels stand for 1 to 4 bits per pixel.
QStringList LevelItems();
// The list index of a bits-per-pixel value, -1 outside 1..4.
inline int LevelIndexForBpp(int bpp) { return bpp >= 1 && bpp <= 4 ? bpp - 1 : -1; }
// The bits per pixel of a list index; no selection counts as the first entry.
inline int BppForLevelIndex(int index) { return index >= 0 ? index + 1 : 1; }
