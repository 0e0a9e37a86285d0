// Opens the window on a fresh settings file, selects each tab in turn and
// saves pictures of it: glyphwright_screenshots OUTPUT_DIR SETTINGS_FILE [FILE.zgly]
// (with a ZGLY file, its preview window too)
#include <QApplication>
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
    window.HideOptions();
    Save(&window, dir, "main-options-hidden");
    window.ShowOptions();
    window.AddWarning("Letter U+E000 is not in the font.");
    window.AppendError("Parameter Error:\n Input file(/tmp/missing.ZGLY) not exists");
    Save(window.Messages.get(), dir, "messages");
    if (argc > 3) {
        window.OutZarnic->FontField->SetText(argv[3]);
        window.OpenPreview();
        Save(window.Preview.get(), dir, "preview");
    }
    return 0;
}
