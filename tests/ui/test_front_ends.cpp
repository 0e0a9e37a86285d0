// The table of conversions every front end must give alike (tests/cross),
// run through the window's fields: each case the window can express writes
// the same bytes as glyphwright-cli, and a failing one shows the same message.
#include <QCheckBox>
#include <QPlainTextEdit>
#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <sstream>

#include "ui/in_bmp_dlg.h"
#include "ui/in_lc_dlg.h"
#include "ui/in_zarnic_dlg.h"
#include "ui/out_bmp_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/path_combo.h"
#include "ui/warning_wnd.h"
#include "window_fixture.h"

namespace fs = std::filesystem;

namespace {

// The table's cases the window has no fields for, with the reason.
const std::map<std::string, std::string> NotInTheWindow = {
    {"info-json", "the window has no info command"},
    {"bad-font", "the window's font list holds installed families only, never a font file by path"},
};

// The installed families of the table's font files.
const std::map<std::string, QString> Families = {{"DejaVuSans.ttf", "DejaVu Sans"}, {"ipag.ttf", "IPAGothic"}};

// The command line's encoding words and the window's list entries.
const std::map<std::string, QString> Encodings = {
    {"utf-8", "UTF-8"}, {"utf-16", "UTF-16"}, {"shift_jis", "Shift_JIS"}, {"cp1252", "CodePage 1252 (ISO 8859-1)"}};

struct CrossCase {
    std::string Name, Arguments, Output;
};

std::string Trim(const std::string& s) {
    const auto first = s.find_first_not_of(" \t"), last = s.find_last_not_of(" \t\r");
    return first == std::string::npos ? "" : s.substr(first, last - first + 1);
}

std::vector<CrossCase> ReadCases() {
    std::vector<CrossCase> cases;
    std::istringstream in(ReadFileText(GLYPHWRIGHT_CROSS_DIR "/cases.txt"));
    for (std::string line; std::getline(in, line);) {
        if (Trim(line).empty() || Trim(line)[0] == '#') continue;
        const auto bar1 = line.find('|'), bar2 = line.find('|', bar1 + 1);
        cases.push_back(
            {Trim(line.substr(0, bar1)), Trim(line.substr(bar1 + 1, bar2 - bar1 - 1)), Trim(line.substr(bar2 + 1))});
    }
    return cases;
}

int LevelIndex(const QString& levels) { return static_cast<int>(LevelItems().indexOf(levels)); }

// The list entry of a shipped order named as the command line takes it.
int OrderIndex(const CMainDlg& w, QComboBox* list, const QString& name) {
    for (const GlyphOrderInfo& info : w.GlyphOrders)
        if (QString::fromStdString(info.Path.stem().string()).compare(name, Qt::CaseInsensitive) == 0)
            return list->findData(QString::fromStdString(info.Path.string()));
    return -1;
}

}  // namespace

class FrontEndsTest : public WindowTest {
protected:
    // Sets the window's fields as a user would for the options of a convert
    // command line, from the command line's defaults; false (with a failure)
    // for an option the window has no field for.
    bool Express(CMainDlg& w, const std::vector<std::string>& args) {
        std::string face;
        int size = 0, levels = 0;
        using Setter = std::function<void(const QString&)>;
        const std::map<std::string, Setter> fields = {
            {"--from-font", [&](const QString& v) { w.InputTabs->setCurrentIndex(2), face = v.toStdString(); }},
            {"--size", [&](const QString& v) { size = v.toInt(); }},
            {"--levels", [&](const QString& v) { levels = LevelIndex(v); }},
            {"--from-bmp",
             [&](const QString& v) { w.InputTabs->setCurrentIndex(0), w.InBmp->BitmapField->SetText(v); }},
            {"--from-order",
             [&](const QString& v) { Choose(w.InBmp->OrderList, OrderIndex(w, w.InBmp->OrderList, v)); }},
            {"--colors", [&](const QString& v) { Choose(w.InBmp->ColorsList, LevelIndex(v)); }},
            {"--from-zgly",
             [&](const QString& v) { w.InputTabs->setCurrentIndex(1), w.InZarnic->FontField->SetText(v); }},
            {"--from-lc", [&](const QString& v) { w.InputTabs->setCurrentIndex(3), w.InLc->MainField->SetText(v); }},
            {"--chars-file", [&](const QString& v) { w.UseFilterCheck->click(), w.FilterField->SetText(v); }},
            {"--to-zgly",
             [&](const QString& v) { w.OutputTabs->setCurrentIndex(1), w.OutZarnic->FontField->SetText(v); }},
            {"--encoding",
             [&](const QString& v) {
                 Choose(w.OutZarnic->EncodingList, w.OutZarnic->EncodingList->findText(Encodings.at(v.toStdString())));
             }},
            {"--to-bmp",
             [&](const QString& v) { w.OutputTabs->setCurrentIndex(0), w.OutBmp->BitmapField->SetText(v); }},
            {"--to-order",
             [&](const QString& v) { Choose(w.OutBmp->OrderList, OrderIndex(w, w.OutBmp->OrderList, v)); }},
        };
        Choose(w.InBmp->ColorsList, 0);
        Choose(w.OutZarnic->EncodingList, 1);
        if (w.UseFilterCheck->isChecked()) w.UseFilterCheck->click();
        for (std::size_t i = 1; i < args.size(); i += 2) {
            const auto field = fields.find(args[i]);
            if (i + 1 == args.size() || field == fields.end() ||
                (args[i] == "--from-font" && !Families.count(args[i + 1]))) {
                ADD_FAILURE() << "no field for " << args[i] << (i + 1 < args.size() ? " " + args[i + 1] : "");
                return false;
            }
            field->second(QString::fromStdString(args[i + 1]));
        }
        if (!face.empty()) {
            ChooseFace(w, Families.at(face), size);
            Choose(w.InWin->LevelsList, levels);
        }
        return true;
    }
};

TEST_F(FrontEndsTest, EveryCaseTheWindowExpressesGivesTheCommandLinesBytesAndMessage) {
    const fs::path inputs = Dir / "inputs";
    const std::string cli = GLYPHWRIGHT_BIN_DIR "/glyphwright-cli";
    ASSERT_EQ(
        std::system(("bash '" GLYPHWRIGHT_CROSS_DIR "/prepare.sh' '" + inputs.string() + "' '" + cli + "'").c_str()),
        0);
    auto w = Open();
    // The table's relative paths go into the fields as they are, so that the
    // messages name the files alike.
    struct WorkingFolder {
        fs::path Before = fs::current_path();
        ~WorkingFolder() { fs::current_path(Before); }
    } back;
    fs::current_path(inputs);
    const std::vector<CrossCase> cases = ReadCases();
    std::set<std::string> ran, listed;
    for (const CrossCase& c : cases) {
        SCOPED_TRACE(c.Name + ": " + c.Arguments);
        if (NotInTheWindow.count(c.Name)) {
            listed.insert(c.Name);
            continue;
        }
        const std::string output = c.Output == "-" ? "out.zgly" : c.Output;
        const int status = std::system((cli + " " + c.Arguments + " >cli.out 2>cli.err </dev/null").c_str());
        const std::string byCli = ReadFileText(output);
        fs::remove(output);

        std::vector<std::string> args;
        std::istringstream words(c.Arguments);
        for (std::string word; words >> word;) args.push_back(word);
        ASSERT_EQ(args.at(0), "convert");
        if (!Express(*w, args)) continue;
        const QString statusText = Convert(*w);
        ran.insert(c.Name);
        if (c.Output != "-") {
            ASSERT_EQ(status, 0) << ReadFileText("cli.err");
            EXPECT_EQ(statusText, " Finish") << w->Messages->GetText();
            EXPECT_FALSE(byCli.empty());
            const std::string byWindow = ReadFileText(output);
            const auto at = std::mismatch(byWindow.begin(), byWindow.end(), byCli.begin(), byCli.end()).first;
            EXPECT_TRUE(byWindow == byCli)
                << "the window's " << output << " (" << byWindow.size() << " bytes) differs from byte "
                << at - byWindow.begin() << " of the command line's (" << byCli.size() << " bytes)";
        } else {
            EXPECT_NE(status, 0);
            EXPECT_EQ(statusText, " Convert Error");
            EXPECT_FALSE(fs::exists(output));
            // The message shown below its header line, and the command line's stderr.
            QString shown = w->Messages->Edit()->toPlainText();
            shown = shown.mid(shown.indexOf('\n') + 1);
            EXPECT_EQ(shown.toStdString() + "\n", ReadFileText("cli.err"));
        }
        fs::remove(output);
        w->ClearMessages();
    }
    // Every case runs or is listed, and the list names only cases of the table.
    EXPECT_EQ(ran.size() + listed.size(), cases.size());
    EXPECT_EQ(listed.size(), NotInTheWindow.size());
}
