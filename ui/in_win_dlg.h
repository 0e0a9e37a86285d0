// Input panel: an installed font rendered at a chosen size and grey levels.
#pragma once

#include <QStyledItemDelegate>
#include <string>

#include "ui/face_list.h"
#include "ui/panel_dlg.h"

class QCheckBox;
class QComboBox;
class QFrame;
class QLineEdit;
class QToolButton;

// Draws each face list item in its own face, with a scalable/bitmap icon.
class CFaceItemDelegate : public QStyledItemDelegate {
public:
    CFaceItemDelegate(const CFaceList& faces, QObject* parent) : QStyledItemDelegate(parent), Faces(faces) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const CFaceList& Faces;
};

class CInWinDlg : public CInDlg {
public:
    CInWinDlg(const CSettingsStore& settings, QWidget* parent);
    std::unique_ptr<CFontReader> CreateReader() override;
    void CommitHistory() override {}

    void SetOptionsVisible(bool visible);
    // The enable rules that depend on the face, the levels and the width mode.
    void ApplyEnableRules();

    QComboBox* NameList;
    QComboBox* SizeCombo;
    QComboBox* LevelsList;
    QCheckBox* SoftAA;
    QCheckBox* UseWinSize;
    QComboBox* WidthList;
    QLineEdit* FixedEdit;
    QToolButton* ShowOptionsButton;
    QToolButton* HideOptionsButton;

    std::string CurrentName;
    int CurrentSize = 16;

private:
    void FillSizes();
    void OnNameChosen();

    CFaceList Faces;
    std::vector<QWidget*> OptionWidgets;
};
