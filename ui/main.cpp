// The desktop window's entry point.
#include <QApplication>

#include "ui/main_dlg.h"
#include "settings/settings_store.h"
#include "ui/termination_watch.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    CMainDlg window(ResolveSettingsPath(QCoreApplication::applicationFilePath().toStdString()));
    window.show();
    int status = 0;
    {
        CTerminationWatch watch(window);
        status = app.exec();
    }
    CTerminationWatch::EndLikeTheSignal();
    return status;
}
