#include "ui/window_placement.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "settings/settings_store.h"

namespace {

// What the window manager's frame adds to the window. Before a window is
// first mapped its frame is not known yet; its owner's frame stands in.
QSize FrameExtra(const QWidget& window) {
    const QSize own = window.frameGeometry().size() - window.geometry().size();
    if (!own.isEmpty() || !window.parentWidget()) return own;
    const QWidget* owner = window.parentWidget()->window();
    return owner->frameGeometry().size() - owner->geometry().size();
}

}  // namespace

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
    // Whatever was stored or asked for, the whole window stays on the screen
    // it opens on, also when that screen is small.
    const QSize frame = FrameExtra(window);
    QScreen* on = QGuiApplication::screenAt(QPoint(x, y));
    if (!on) on = QGuiApplication::screenAt(fallback);
    if (!on) on = QGuiApplication::primaryScreen();
    const QRect fitted = FitInside(on->availableGeometry(), QRect(QPoint(x, y), QSize(std::max(w, minimum.width()),
                                                                                      std::max(h, minimum.height())) + frame));
    Applying = true;
    window.move(fitted.topLeft());
    window.resize(fitted.size() - frame);
    Applying = false;
    Applied = QRect(window.pos(), window.size());
}

void CWindowPlacement::KeepOnScreen(QWidget& window) {
    QScreen* on = window.screen();
    if (!on) return;
    const QRect frame(window.frameGeometry().topLeft(), window.size() + FrameExtra(window));
    const QRect fitted = FitInside(on->availableGeometry(), frame);
    if (fitted == frame) return;
    Applying = true;
    window.resize(fitted.size() - (frame.size() - window.size()));
    window.move(fitted.topLeft());
    Applying = false;
    Applied = QRect(window.pos(), window.size());
}

void CWindowPlacement::Store(const QWidget& window) const {
    // Only a place the user chose is remembered, not the one given here.
    if (Applying || !window.isVisible() || QRect(window.pos(), window.size()) == Applied) return;
    Settings.SetInt(Section, "x", window.pos().x());
    Settings.SetInt(Section, "y", window.pos().y());
    Settings.SetInt(Section, "w", window.width());
    Settings.SetInt(Section, "h", window.height());
}

QRect FitInside(const QRect& area, QRect r) {
    r.setWidth(std::min(r.width(), area.width()));
    r.setHeight(std::min(r.height(), area.height()));
    r.moveLeft(std::clamp(r.left(), area.left(), area.right() + 1 - r.width()));
    r.moveTop(std::clamp(r.top(), area.top(), area.bottom() + 1 - r.height()));
    return r;
}

QPoint CentredTopLeft(const QRect& area, const QSize& frame) {
    return QPoint(area.x() + std::max(0, (area.width() - frame.width()) / 2),
                  area.y() + std::max(0, (area.height() - frame.height()) / 2));
}
