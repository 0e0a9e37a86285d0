// The desktop window's entry point.
#include <QApplication>

#include "ui/main_dlg.h"
#include "ui/settings_store.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    CMainDlg window(ResolveSettingsPath(QCoreApplication::applicationFilePath().toStdString()));
    window.show();
    return app.exec();
}
