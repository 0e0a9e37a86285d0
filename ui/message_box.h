// Every message box of the window goes through one runner, so that tests can
// see and close the boxes instead of being blocked by them.
#pragma once

#include <QMessageBox>
#include <functional>

using MessageBoxRunner = std::function<void(QMessageBox&)>;

// The default runner shows the box modally until the user closes it.
void SetMessageBoxRunner(MessageBoxRunner runner);
void ShowMessageBox(QWidget* owner, QMessageBox::Icon icon, const QString& caption, const QString& text);
