#include "ui/window_placement.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "settings/settings_store.h"

CWindowPlacement::CWindowPlacement(QWidget& window, const CSettingsStore& settings, const char* section,
                                   QSize defaultSize)
    : Window(window), Settings(settings), Section(section), DefaultSize(defaultSize) {
    window.installEventFilter(this);
}

bool CWindowPlacement::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &Window && (event->type() == QEvent::Move || event->type() == QEvent::Resize)) Store(Window);
    return QObject::eventFilter(watched, event);
}

void CWindowPlacement::Apply(QWidget& window, QPoint fallback, QSize minimum) {
    int x = Settings.GetInt(Section, "x", -1), y = Settings.GetInt(Section, "y", -1);
    int w = Settings.GetInt(Section, "w", DefaultSize.width());
    int h = Settings.GetInt(Section, "h", DefaultSize.height());
    QRect screen = QGuiApplication::primaryScreen()->virtualGeometry();
    bool stored = !(x < 0 && y < 0) && x < screen.width() && y < screen.height();
    if (!stored) {
        x = fallback.x();
        y = fallback.y();
    }
    Applying = true;
    window.move(x, y);
    window.resize(std::max(w, minimum.width()), std::max(h, minimum.height()));
    Applying = false;
}

void CWindowPlacement::Store(const QWidget& window) const {
    if (Applying || !window.isVisible()) return;
    Settings.SetInt(Section, "x", window.pos().x());
    Settings.SetInt(Section, "y", window.pos().y());
    Settings.SetInt(Section, "w", window.width());
    Settings.SetInt(Section, "h", window.height());
}

QPoint CentredTopLeft(const QRect& area, const QSize& frame) {
    return QPoint(area.x() + std::max(0, (area.width() - frame.width()) / 2),
                  area.y() + std::max(0, (area.height() - frame.height()) / 2));
}
