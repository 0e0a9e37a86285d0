#include "ui/message_box.h"

namespace {

MessageBoxRunner& Runner() {
    static MessageBoxRunner runner = [](QMessageBox& box) { box.exec(); };
    return runner;
}

}  // namespace

void SetMessageBoxRunner(MessageBoxRunner runner) { Runner() = std::move(runner); }

void ShowMessageBox(QWidget* owner, QMessageBox::Icon icon, const QString& caption, const QString& text) {
    QMessageBox box(icon, caption, text, QMessageBox::Ok, owner);
    if (!owner) box.setWindowModality(Qt::ApplicationModal);
    Runner()(box);
}
