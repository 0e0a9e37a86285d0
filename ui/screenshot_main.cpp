// Opens the window on a fresh settings file, selects each tab in turn and
// saves pictures of it: glyphwright_screenshots OUTPUT_DIR SETTINGS_FILE [FILE.zgly]
// (with a ZGLY file, its preview window too, alone and on the screen)
#include <QApplication>
#include <QCursor>
#include <QLineEdit>
#include <QScreen>
#include <QDir>
#include <QElapsedTimer>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>

#include "ui/in_win_dlg.h"
#include "ui/main_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/path_combo.h"
#include "ui/preview_wnd.h"
#include "ui/message_box.h"
#include "ui/warning_wnd.h"

namespace {

// The X server applies moves and resizes a little later.
void Settle() {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 300) QApplication::processEvents(QEventLoop::AllEvents, 50);
}

void Save(QWidget* w, const QString& dir, const QString& name) {
    Settle();
    w->grab().save(dir + "/" + name + ".png");
}

// The whole screen as a user sees it: window frames, stacking, tips.
void SaveScreen(const QString& dir, const QString& name) {
    Settle();
    QGuiApplication::primaryScreen()->grabWindow(0).save(dir + "/" + name + ".png");
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 3) return 2;
    QString dir = argv[1];
    QDir().mkpath(dir);
    // The licence notice of the first start is saved too, then closed.
    SetMessageBoxRunner([&dir](QMessageBox& box) {
        box.show();
        Save(&box, dir, "notice");
        box.done(QMessageBox::Ok);
    });
    CMainDlg window(argv[2]);
    window.show();
    window.ShowOptions();
    Settle();
    const char* inputs[] = {"in-bmp", "in-zgly", "in-windows-font", "in-lc-font"};
    for (int i = 0; i < 4; ++i) {
        window.InputTabs->setCurrentIndex(i);
        Save(&window, dir, QString("main-") + inputs[i]);
    }
    window.InputTabs->setCurrentIndex(2);
    window.InWin->ShowOptionsButton->click();
    Save(&window, dir, "main-in-windows-font-options");
    window.InWin->HideOptionsButton->click();
    const char* outputs[] = {"out-bmp", "out-zgly"};
    for (int i = 0; i < 2; ++i) {
        window.OutputTabs->setCurrentIndex(i);
        Save(&window, dir, QString("main-") + outputs[i]);
    }
    // The full-path tip where the pointer rests on a path longer than its field.
    QLineEdit* edit = window.OutZarnic->FontField->Combo()->lineEdit();
    window.OutZarnic->FontField->SetText(
        "/home/user/projects/a-game/assets/fonts/title-screen/IPAGothic-24px-16-levels.zgly");
    window.activateWindow();
    Settle();
    QCursor::setPos(edit->mapToGlobal(QPoint(30, edit->height() / 2)));
    SaveScreen(dir, "screen-path-tip");
    QCursor::setPos(window.frameGeometry().bottomRight() + QPoint(40, 40));
    window.HideOptions();
    Save(&window, dir, "main-options-hidden");
    window.ShowOptions();
    window.AddWarning("Letter U+E000 is not in the font.");
    window.AppendError("Parameter Error:\n Input file(/tmp/missing.ZGLY) not exists");
    Save(window.Messages.get(), dir, "messages");
    // The message window in its place beside the main window; moved over it
    // and with the main window active, it stays above it.
    window.ShowMessages();
    SaveScreen(dir, "screen-messages");
    window.Messages->move(window.frameGeometry().center());
    window.activateWindow();
    window.raise();
    SaveScreen(dir, "screen-messages-over-main");
    if (argc > 3) {
        window.OutZarnic->FontField->SetText(argv[3]);
        window.OpenPreview();
        Save(window.Preview.get(), dir, "preview");
        SaveScreen(dir, "screen-preview");
    }
    return 0;
}
