#include "ui/dlg.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>

void CDlg::FillCombo(QComboBox* combo, const QStringList& items, int select) {
    QSignalBlocker block(combo);
    combo->clear();
    combo->addItems(items);
    combo->setCurrentIndex(select);
}

int CDlg::IntFromText(const QString& text) {
    QString t = text.trimmed();
    int i = 0;
    bool negative = false;
    if (i < t.size() && (t[i] == u'-' || t[i] == u'+')) negative = t[i++] == u'-';
    long long n = 0;
    for (; i < t.size() && t[i] >= u'0' && t[i] <= u'9'; ++i) {
        n = n * 10 + (t[i].unicode() - u'0');
        if (n > 0x7FFFFFFF) n = 0x7FFFFFFF;
    }
    return static_cast<int>(negative ? -n : n);
}

QLabel* MakeBuddyLabel(QWidget* parent, const QString& text, QWidget* buddy) {
    QLabel* label = MakeChild<QLabel>(parent, text);
    label->setBuddy(buddy);
    return label;
}
