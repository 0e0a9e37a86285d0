// The remembered placement of a secondary window (message window, preview):
// read from and written to its settings section as x, y, w and h.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

class CSettingsStore;
class QWidget;

class CWindowPlacement {
public:
    CWindowPlacement(const CSettingsStore& settings, const char* section, QSize defaultSize)
        : Settings(settings), Section(section), DefaultSize(defaultSize) {}

    // Moves and sizes the window to its stored place, or to `fallback` when none
    // is stored or the stored one lies off the screen. Not written back.
    void Apply(QWidget& window, QPoint fallback, QSize minimum = {});
    // Pulls a shown window wholly onto its screen once its frame is known.
    void KeepOnScreen(QWidget& window);
    // Writes the window's place; called from its move and resize events.
    void Store(const QWidget& window) const;

private:
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
