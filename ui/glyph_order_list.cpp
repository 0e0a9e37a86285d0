#include "ui/glyph_order_list.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QSignalBlocker>

#include "core/general_exception.h"

namespace fs = std::filesystem;

void FillOrderList(QComboBox* list, const GlyphOrderList& orders, const std::string& storedName) {
    QSignalBlocker block(list);
    list->clear();
    list->view()->setMinimumWidth(300);
    for (const GlyphOrderInfo& info : orders) {
        QString shown = info.Title.empty() ? "[" + CDlg::ToQ(info.FileName) + "]" : CDlg::ToQ(info.Title);
        list->addItem(shown, QString::fromStdString(info.Path.string()));
    }
    int select = list->count() > 0 ? 0 : -1;
    std::string stem = fs::path(storedName).stem().string();
    for (const GlyphOrderInfo& info : orders) {
        if (info.Path.stem().string() != stem) continue;
        for (int i = 0; i < list->count(); ++i) {
            if (list->itemText(i).compare(CDlg::ToQ(info.Title), Qt::CaseInsensitive) == 0) {
                select = i;
                break;
            }
        }
        break;
    }
    list->setCurrentIndex(select);
}

std::string OrderFileNameForChoice(QComboBox* list, const GlyphOrderList& orders) {
    QString text = list->currentText();
    for (const GlyphOrderInfo& info : orders)
        if (CDlg::ToQ(info.Title) == text) return info.Path.filename().string();
    return {};
}

fs::path ChosenOrderPath(QComboBox* list) {
    if (list->currentIndex() < 0) throw CGeneralException("Parameter Error:\n Order file is not selected.");
    return fs::path(list->currentData().toString().toStdString());
}
