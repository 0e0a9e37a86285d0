// Opens the real main window on a settings file of its own and answers every
// message box as it appears; whole-file text helpers.
#pragma once

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <memory>

#include "ui/in_win_dlg.h"
#include "ui/main_dlg.h"
#include "ui/message_box.h"
#include "xmlfiles/test_support.h"

inline std::string ReadFileText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

inline void WriteFileText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

inline QString P(const std::filesystem::path& p) { return QString::fromStdString(p.string()); }

class WindowTest : public testing::Test {
protected:
    void SetUp() override {
        SetMessageBoxRunner([this](QMessageBox& box) {
            Boxes.push_back(box.windowTitle() + "|" + box.text());
            QTimer::singleShot(0, &box, [&box] { box.done(QMessageBox::Ok); });
            box.exec();
        });
    }
    void TearDown() override { SetMessageBoxRunner([](QMessageBox& box) { box.exec(); }); }

    std::filesystem::path SettingsPath() const { return Dir / "glyphwright.ini"; }

    std::unique_ptr<CMainDlg> Open() {
        auto w = std::make_unique<CMainDlg>(SettingsPath());
        w->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(w.get()));
        return w;
    }

    // Presses Convert; the whole run happens inside the click.
    static QString Convert(CMainDlg& w) {
        QTest::mouseClick(w.ConvertButton, Qt::LeftButton);
        return w.StatusText->text();
    }

    static void Choose(QComboBox* combo, int index) {
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    }

    static void ChooseFace(CMainDlg& w, const QString& face, int size) {
        int index = w.InWin->NameList->findText(face);
        ASSERT_GE(index, 0) << face.toStdString();
        Choose(w.InWin->NameList, index);
        w.InWin->SizeCombo->setEditText(QString::number(size));
    }

    CTempDir Dir;
    QStringList Boxes;
};
