// The remembered placement of a secondary window (message window, preview):
// read from and written to its settings section as x, y, w and h.
#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>

class CSettingsStore;
class QWidget;

class CWindowPlacement : public QObject {
public:
    // Watches the window's moves and resizes and stores each.
    CWindowPlacement(QWidget& window, const CSettingsStore& settings, const char* section, QSize defaultSize);

    // Moves and sizes the window to its stored place, or to `fallback` when none
    // is stored or the stored one lies off the screen. Not written back.
    void Apply(QWidget& window, QPoint fallback, QSize minimum = {});
    // Pulls a shown window wholly onto its screen once its frame is known.
    void KeepOnScreen(QWidget& window);
    // Writes the window's place.
    void Store(const QWidget& window) const;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& Window;
    const CSettingsStore& Settings;
    const char* Section;
    QSize DefaultSize;
    bool Applying = false;
    QRect Applied;  // where Apply put the window
};

// The rectangle moved, and made smaller where it must, to lie wholly inside
// the area.
QRect FitInside(const QRect& area, QRect r);

// The top-left corner that centres a frame of the size in the area (the
// screen's available geometry); a frame larger than the area keeps its top
// left corner inside it.
QPoint CentredTopLeft(const QRect& area, const QSize& frame);
