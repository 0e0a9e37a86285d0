#include "ui/path_tip.h"

#include <QCursor>
#include <QEvent>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolTip>

namespace {

// QLineEdit's own space between its text rectangle and the first character.
constexpr int EditTextIndent = 2;
constexpr int PointerWatchInterval = 200;

}  // namespace

CPathTip::CPathTip(QLineEdit* edit, QWidget* parent) : QLabel(parent), Edit(edit) {
    setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                   Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText);
    setPalette(QToolTip::palette());
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(1);
    setMargin(1);
    edit->installEventFilter(this);
    PointerWatch.setInterval(PointerWatchInterval);
    connect(&PointerWatch, &QTimer::timeout, this, [this] {
        if (!isVisible()) PointerWatch.stop();
        else if (!PointerOverField()) hide();
    });
}

QPoint CPathTip::TextOrigin() const {
    QStyleOptionFrame option;
    option.initFrom(Edit);
    option.lineWidth = Edit->hasFrame() ? Edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, Edit) : 0;
    QRect r = Edit->style()->subElementRect(QStyle::SE_LineEditContents, &option, Edit);
    r = r.marginsRemoved(Edit->textMargins());
    const int fontHeight = QFontMetrics(Edit->font()).height();
    return QPoint(r.x() + EditTextIndent, r.y() + (r.height() - fontHeight + 1) / 2);
}

void CPathTip::ShowOverText() {
    const QString text = Edit->text();
    if (text.isEmpty()) {
        hide();
        return;
    }
    setFont(Edit->font());
    setText(text);
    adjustSize();
    // The label draws its text at its contents rectangle plus the margin.
    const QPoint ownOrigin = contentsRect().topLeft() + QPoint(margin(), margin());
    move(Edit->mapToGlobal(TextOrigin()) - ownOrigin);
    show();
    raise();
    PointerWatch.start();
}

bool CPathTip::PointerOverField() const { return Edit->rect().contains(Edit->mapFromGlobal(QCursor::pos())); }

bool CPathTip::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Edit && isVisible()) {
        switch (event->type()) {
        case QEvent::Leave:
            // The tip appearing under the pointer is no leaving.
            if (!PointerOverField()) hide();
            break;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::Wheel:
        case QEvent::FocusOut:
        case QEvent::Hide:
        case QEvent::WindowDeactivate:
            hide();
            break;
        default: break;
        }
    }
    return QLabel::eventFilter(watched, event);
}
