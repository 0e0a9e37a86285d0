#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"
#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/glyph_order_handler.h"
#include "xmlfiles/test_support.h"

namespace {

std::string Order(const std::string& body, const std::string& root = "<letter-order version=\"1.0\">") {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + root + body + "</letter-order>";
}

CGlyphOrder LoadOrder(const CTempDir& dir, const std::string& text) {
    CGlyphOrder order;
    LoadGlyphOrderFile(order, dir.Write("o.xlor", text));
    return order;
}

}  // namespace

TEST(GlyphOrderFile, ReadsCellsRowByRow) {
    CTempDir dir;
    CGlyphOrder o = LoadOrder(dir, Order("<head><title>Digits</title><comment>test</comment></head><body>"
                                         "<area width=\"4\"/><order>0123 4567<sp/><null/><code>0x3042</code>"
                                         "</order></body>"));
    EXPECT_TRUE(o.Loaded);
    EXPECT_EQ(o.Width, 4);
    EXPECT_EQ(o.Height, 3);
    EXPECT_EQ(o.GetCode(0, 0), u'0');
    EXPECT_EQ(o.GetCode(0, 2), 0x20);
    EXPECT_EQ(o.GetCode(1, 2), NoCode);
    EXPECT_EQ(o.GetCode(2, 2), 0x3042);
    EXPECT_EQ(o.GetCode(3, 2), NoCode);

    // Numbers in every base, the low 16 bits, and a second text piece as plain text.
    o = LoadOrder(dir, Order("<BODY><Order><code>65</code><code>010</code><code>0x1FFFF</code><code>x</code>"
                             "<code></code><code>0xFFFF</code>A B\n\t&#x10000;</Order></BODY>"));
    std::vector<uint16_t> want{0x41, 0x08, 0xFFFF, 0, 0xFFFF, 'A', 'B', 0xD800, 0xDC00};
    EXPECT_EQ(o.Codes, want);
    EXPECT_EQ(o.Width, 16);
    EXPECT_EQ(o.Height, 1);

    // Numbers are unsigned 32-bit: beyond that they saturate, a sign negates in 32 bits.
    o = LoadOrder(dir, Order("<body><order><code>0x100000041</code><code>4294967361</code><code>-1</code>"
                             "<code>-0x10041</code><code>- 5</code><code> +0x42z</code><code>0x43<!-- -->D E</code></order></body>"));
    EXPECT_EQ(o.Codes, (std::vector<uint16_t>{0xFFFF, 0xFFFF, 0xFFFF, 0xFFBF, 0, 0x42, 0x43, 'D', 'E'}));

    // A given height stands whatever the number of codes.
    o = LoadOrder(dir, Order("<body><area width=\"16\" height=\"8\"/><order>" + std::string(100, 'x') +
                             "</order></body>"));
    EXPECT_EQ(o.Height, 8);
    EXPECT_EQ(o.GetCode(15, 5), 'x');
    EXPECT_EQ(o.GetCode(3, 6), 'x');
    EXPECT_EQ(o.GetCode(4, 6), NoCode);

    // Parser warnings change nothing for an order.
    o = LoadOrder(dir, "<?xml version=\"1.0\"?><!DOCTYPE letter-order [<!ELEMENT letter-order ANY><!ELEMENT body ANY><!ELEMENT order ANY>"
                       "<!ATTLIST letter-order version CDATA #IMPLIED><!ATTLIST letter-order version CDATA #IMPLIED>]>"
                           "<letter-order version=\"1.0\"><body><order></order></body></letter-order>");
    EXPECT_EQ(o.Height, 0);
    EXPECT_TRUE(o.Loaded);
}

TEST(GlyphOrderFile, RefusesBadFilesWithTheirMessages) {
    CTempDir dir;
    auto err = [&](const std::string& text) { return ErrorOf([&] { LoadOrder(dir, text); }); };
    const char* const v11 = "<letter-order version=\"1.1\">";
    const struct { std::string Body, Root, Message; } cases[] = {
        {"<body><area width=\"0\"/></body>", "", "Invalid order width(=0)."},
        {"<body><area width=\"-3\"/></body>", "", "Invalid order width(=-3)."},
        {"<body><area height=\"0\"/><order>A</order></body>", "", "Invalid order height(=0)."},
        {"<order>A</order>", "", "<order> must be in <body>"},
        {"<body><null/></body>", "", "<null> must be in <order>"},
        {"<x><body/></x>", "", "<body> must be in <letter-order>"},
        {"<body/>", v11, "letter-order version mismatch(1.1: must be 1.0)"},
        {"<body/>", "<letter-order>", "letter-order version mismatch((null): must be 1.0)"},
        // The nesting error is raised at once; the mismatch would only count at the end.
        {"<order/>", "<letter-order version=\"2\">", "<order> must be in <body>"}};
    for (const auto& c : cases)
        EXPECT_EQ(err(c.Root.empty() ? Order(c.Body) : Order(c.Body, c.Root)), "XML Error:\n " + c.Message) << c.Body;
    std::string broken = err("<letter-order version=\"1.0\">\n<body></letter-order>");
    EXPECT_EQ(broken.rfind("XML Error:\n " + (dir / "o.xlor").string() + " : line 2 : column ", 0), 0u) << broken;
    EXPECT_NE(broken.find("\n\n "), std::string::npos);
    EXPECT_EQ(err(Order("<body><area width=\"abc\"/></body>")).rfind("XML Error:\n ", 0), 0u);
    EXPECT_EQ(err("").rfind("XML Error:\n ", 0), 0u);
    EXPECT_EQ(ErrorOf([&] { CheckGlyphOrderFile(dir / "missing.xlor"); }),
              "Parameter Error:\n File(" + (dir / "missing.xlor").string() + ") not exists.");
}

TEST(GlyphOrderFile, HeadReaderReadsTitleAndComment) {
    CTempDir dir;
    GlyphOrderInfo info;
    LoadGlyphOrderInfo(info, dir.Write("Head.xlor", Order("<HEAD><Title> a<b>x</b>c </Title><comment>c1\nc2</comment>"
                                                          "</HEAD><body><order>AB</order></body>")));
    EXPECT_EQ(info.Title, " axc ");
    EXPECT_EQ(info.Comment, "c1\nc2");
    EXPECT_EQ(info.FileName, "Head.xlor");
    EXPECT_EQ(info.Path, dir / "Head.xlor");

    // Any root name is accepted by the head reader, without a version check.
    GlyphOrderInfo other;
    LoadGlyphOrderInfo(other, dir.Write("L.xlor", "<letter-list><head><title>T</title></head></letter-list>"));
    EXPECT_EQ(other.Title, "T");

    auto err = [&](const std::string& text) {
        GlyphOrderInfo i;
        return ErrorOf([&] { LoadGlyphOrderInfo(i, dir.Write("e.xlor", text)); });
    };
    EXPECT_EQ(err(Order("<body/>", "<letter-order version=\"1.1\">")),
              "XML Error:\n letter-order version mismatch(1.1: must be 1.0)\n");
    EXPECT_EQ(err(Order("<title>x</title>")), "<title> must be in <head>");
    EXPECT_EQ(err(Order("<body><head/></body>")), "<head> must be in <letter-order>");
    EXPECT_EQ(err(Order("<head><x><comment/></x></head>")), "<comment> must be in <head>");
    // The library's own exception: no line break after the category, one at the end.
    GlyphOrderInfo none;
    std::string missing = ErrorOf([&] { LoadGlyphOrderInfo(none, dir / "none.xlor"); });
    EXPECT_EQ(missing.rfind("XML Error: ", 0), 0u) << missing;
    EXPECT_EQ(missing.back(), '\n');
}

TEST(GlyphOrderFile, SearchListsLoadableOrdersAndWarnsAboutOthers) {
    CTempDir dir;
    dir.Write("good.xlor", Order("<head><title>Good</title></head>"));
    dir.Write("UPPER.XLOR", Order(""));
    dir.Write("bad.xlor", Order("", "<letter-order version=\"1.1\">"));
    dir.Write("x.xlor.bak", Order(""));
    // A name found in an earlier directory hides the later one.
    std::filesystem::create_directories(dir / "later");
    dir.Write("later/good.xlor", Order("<head><title>Hidden</title></head>"));
    dir.Write("later/more.xlor", Order("<head><title>More</title></head>"));
    CHeadlessPgCtrl pg;
    std::vector<GlyphOrderInfo> list;
    {
        CPgCtrlScope scope(pg);
        FindGlyphOrderFilesIn(list, {dir.Dir, dir / "missing", dir / "later"});
    }
    std::vector<std::string> titles;
    for (const auto& i : list) titles.push_back(i.FileName + ":" + i.Title);
    EXPECT_EQ(titles, (std::vector<std::string>{"UPPER.XLOR:", "good.xlor:Good", "more.xlor:More"}));
    ASSERT_EQ(pg.Warnings.size(), 1u);
    EXPECT_EQ(pg.Warnings[0], "XML Error:\n letter-order version mismatch(1.1: must be 1.0)\n");
}

// Their cells are checked whole in test_shipped_files.cpp; here, that the
// search beside the program finds each with its title and comment.
TEST(GlyphOrderFile, ShippedOrdersAreFound) {
    std::vector<GlyphOrderInfo> list;
    FindGlyphOrderFiles(list);
    for (const char* name : {"ASCII.xlor", "Latin1.xlor", "CP1252.xlor", "Kana.xlor", "JIS-X-0208.xlor"}) {
        auto it = std::find_if(list.begin(), list.end(), [&](const GlyphOrderInfo& i) { return i.FileName == name; });
        ASSERT_NE(it, list.end()) << name;
        EXPECT_FALSE(it->Title.empty());
        EXPECT_FALSE(it->Comment.empty());
    }
}
