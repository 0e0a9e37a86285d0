#include "ui/panel_dlg.h"

#include "ui/path_combo.h"

void CPanelDlg::RouteDragTo(CPathCombo* field) { DragField = field; }

void CPanelDlg::OnDragEnter(const QPoint&) {
    if (DragField) DragField->SetDropHighlight(true);
}

void CPanelDlg::OnDragOver(const QPoint&) {
    if (DragField) DragField->SetDropHighlight(true);
}

void CPanelDlg::OnDragLeave() {
    if (DragField) DragField->SetDropHighlight(false);
}

void CPanelDlg::OnDrop(const QString& file) {
    if (DragField) DragField->Drop(file);
}

QStringList LevelItems() { return {"2", "4", "8", "16"}; }
