// The full-path tip of a path field: the whole text laid exactly over the
// field's own, in its font, while the pointer rests on the field. It lets the
// pointer through, so appearing under the pointer does not end it; it goes
// when the pointer leaves the field, on a click, a key or the wheel.
#pragma once

#include <QLabel>
#include <QTimer>

class QLineEdit;

class CPathTip : public QLabel {
public:
    // parent: the field's edit too, which then owns the tip.
    CPathTip(QLineEdit* edit, QWidget* parent);

    // Shows the field's text over it (hides the tip for an empty text).
    void ShowOverText();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Where the field draws the first character's top-left, in its own
    // coordinates.
    QPoint TextOrigin() const;
    bool PointerOverField() const;

    QLineEdit* Edit;
    // Leave events can go missing around a window that appears under the
    // pointer; the pointer is looked at as well while the tip is up.
    QTimer PointerWatch;
};
