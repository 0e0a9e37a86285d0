// The base of every window and panel, and the small helpers they share.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <string>

class QComboBox;
#include <QLabel>

// Child widgets are owned by their Qt parent, which deletes them with itself.
template <class T, class... Args>
T* MakeChild(QWidget* parent, Args&&... args) {
    return new T(std::forward<Args>(args)..., parent);
}

class CDlg : public QWidget {
public:
    explicit CDlg(QWidget* parent = nullptr, Qt::WindowFlags flags = {}) : QWidget(parent, flags) {}

    // Files dragged over the window, routed here by the main window by area.
    // Points are in global coordinates.
    virtual void OnDragEnter(const QPoint& global) { (void)global; }
    virtual void OnDragOver(const QPoint& global) { (void)global; }
    virtual void OnDragLeave() {}
    virtual void OnDrop(const QString& file) { (void)file; }

    // Replaces the items and selects one (-1: none).
    static void FillCombo(QComboBox* combo, const QStringList& items, int select);
    // Decimal with an optional sign; 0 when the text is not a number.
    static int IntFromText(const QString& text);

    static QString ToQ(const std::string& s) { return QString::fromStdString(s); }
    static std::string FromQ(const QString& s) { return s.toStdString(); }
};

// A label whose mnemonic moves the focus to its buddy.
QLabel* MakeBuddyLabel(QWidget* parent, const QString& text, QWidget* buddy);
