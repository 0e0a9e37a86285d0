// The preview window: a sample text drawn with a ZGLY file exactly as a game
// draws it, redrawn as the text, zoom or guides change. Its text, zoom,
// guides and placement are remembered in the settings file.
#pragma once

#include <filesystem>
#include <memory>

#include "ui/dlg.h"
#include "ui/window_placement.h"

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QScrollArea;
class QSpinBox;
class CFontBlockSet;
class CSettingsStore;
class CTextRenderer;

class CPreviewWnd : public CDlg {
public:
    CPreviewWnd(const CSettingsStore& settings, QWidget* owner);
    ~CPreviewWnd() override;

    // Loads the file (again) and shows the window at its remembered place, or
    // beside the main window. A file that cannot be loaded shows its message.
    void Open(const std::filesystem::path& file, QWidget* mainWindow);
    void Redraw();
    // The message shown instead of a picture, empty while a picture is shown.
    QString ErrorText() const;

    QLabel* FileLabel;
    QPlainTextEdit* SampleEdit;
    QSpinBox* ZoomSpin;
    QCheckBox* GuidesCheck;
    QScrollArea* PictureArea;
    QLabel* Picture;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ShowError(const std::string& text);

    const CSettingsStore& Settings;
    std::unique_ptr<CFontBlockSet> Blocks;
    std::unique_ptr<CTextRenderer> Renderer;
    CWindowPlacement Placement;
    bool Restoring = false;
};
