// A file path field: an editable combo box with its history, a "Select File"
// button, the full path shown in a tip laid over the text, and a drop target
// for files from the desktop.
#pragma once

#include <QComboBox>
#include <QObject>
#include <QPalette>
#include <QStyle>
#include <QString>
#include <memory>
#include <string>

#include "ui/path_history.h"

class QPushButton;
class CSettingsStore;
class CPathTip;

// The combo box of a path field. Remembers the text shown before the user
// picks an entry, because Qt replaces the text before reporting the choice.
class CPathComboBox : public QComboBox {
public:
    explicit CPathComboBox(QWidget* parent);
    QString TextBeforeChoice;

protected:
    void showPopup() override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

struct PathFieldKind {
    std::string Section;
    QString Filter;            // "Description (*.ext);;all files (*.*)"
    QString DefaultExtension;  // without the dot
    bool OpenMode;             // open an existing file, or save one
};

// Glyph grids are read and written as BMP or PNG.
inline constexpr char GridPictureFilter[] = "Bitmap Image (*.bmp);;PNG Image (*.png);;all files (*.*)";

class CPathCombo : public QObject {
public:
    CPathCombo(const CSettingsStore& settings, PathFieldKind kind, QWidget* parent);

    // Loads the history and the stored text into the widgets.
    void Initialise();
    std::string GetText() const;
    void SetText(const QString& text);
    // Puts the current text at the head of the history and saves it.
    void Commit();

    void SetDropHighlight(bool on);
    bool DropHighlighted() const { return DropHighlight; }
    // The dropped file becomes the text.
    void Drop(const QString& file);
    void Browse();

    CPathComboBox* Combo() const { return ComboBox; }
    QPushButton* Button() const { return SelectButton; }
    const CPathHistory& History() const { return Entries; }
    const PathFieldKind& Kind() const { return FieldKind; }
    CPathTip* Tip() const { return PathTip; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnChosen(int index);
    void OnTextChanged(const QString& text);
    void RebuildList();

    QWidget* Parent;
    const CSettingsStore& Settings;
    PathFieldKind FieldKind;
    CPathHistory Entries;
    CPathComboBox* ComboBox;
    QPushButton* SelectButton;
    // The application's style with the quick wake-up of the path tip.
    std::unique_ptr<QStyle> TipStyle;
    CPathTip* PathTip;
    QPalette NormalPalette;
    bool DropHighlight = false;
    bool Rebuilding = false;
};
