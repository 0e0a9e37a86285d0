#include <gtest/gtest.h>

#include <set>

#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "xmlfiles/font_filter_handler.h"
#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/glyph_order_handler.h"
#include "xmlfiles/test_support.h"

namespace {

const std::string Root = "<letter-order version=\"1.0\">";

std::string Area(const std::string& attributes) { return Root + "<body><area " + attributes + "/></body></letter-order>"; }

std::vector<uint16_t> OrderCodes(const CTempDir& dir, const std::string& cells) {
    CGlyphOrder order;
    LoadGlyphOrderFile(order, dir.Write("o.xlor", Root + "<body><order>" + cells + "</order></body></letter-order>"));
    return order.Codes;
}

std::set<uint16_t> FilterLetters(const CTempDir& dir, const std::string& letters) {
    CFontFilter filter;
    LoadFontFilterFile(filter, dir.Write("f.xllt", "<letter-list version=\"1.0\"><body><letter>" + letters + "</letter></body></letter-list>"));
    std::set<uint16_t> set;
    for (const auto& [code, included] : filter.Letters)
        if (included) set.insert(code);
    return set;
}

// "XML Error:" with a parse error at the given place of the file.
std::string ParseError(const std::filesystem::path& path, int line, int column, const std::string& message) {
    return "XML Error:\n " + path.string() + " : line " + std::to_string(line) + " : column " + std::to_string(column) +
           "\n\n " + message + "\n";
}

}  // namespace

TEST(XmlNumbers, GridSizesAreWhole32BitNumbers) {
    CTempDir dir;
    const std::filesystem::path path = dir / "o.xlor";
    const std::string range = " is out of range (-2147483648 \xEF\xBD\x9E 2147483647)";
    // Column 35 is the "<area" tag of Area().
    const struct { std::string Attributes; int Width, Height; std::string Error; } cases[] = {
        {"width=\"2147483647\" height=\"2147483647\"", 2147483647, 2147483647, ""},
        {"width=\" \t+7\n\" height=\"0012\"", 7, 12, ""},
        {"width=\"2147483648\"", 0, 0, ParseError(path, 1, 35, "area width \"2147483648\"" + range)},
        {"width=\"4294967298\"", 0, 0, ParseError(path, 1, 35, "area width \"4294967298\"" + range)},
        {"width=\"99999999999999999999\"", 0, 0, ParseError(path, 1, 35, "area width \"99999999999999999999\"" + range)},
        {"width=\"-2147483648\"", 0, 0, "XML Error:\n Invalid order width(=-2147483648)."},
        {"width=\"-2147483649\"", 0, 0, ParseError(path, 1, 35, "area width \"-2147483649\"" + range)},
        {"width=\"1\" height=\"2147483648\"", 0, 0, ParseError(path, 1, 35, "area height \"2147483648\"" + range)},
        {"width=\"1\" height=\"-2147483648\"", 0, 0, "XML Error:\n Invalid order height(=-2147483648)."},
        {"width=\"1\" height=\"-2147483649\"", 0, 0, ParseError(path, 1, 35, "area height \"-2147483649\"" + range)},
        {"width=\"0x10\"", 0, 0, ParseError(path, 1, 35, "area width \"0x10\" is not a decimal number")},
        {"width=\"1 2\"", 0, 0, ParseError(path, 1, 35, "area width \"1 2\" is not a decimal number")},
        {"width=\"- 5\"", 0, 0, ParseError(path, 1, 35, "area width \"- 5\" is not a decimal number")},
        {"width=\"\"", 0, 0, ParseError(path, 1, 35, "area width \"\" is not a decimal number")},
        {"width=\"4\" height=\"+\"", 0, 0, ParseError(path, 1, 35, "area height \"+\" is not a decimal number")},
    };
    for (const auto& c : cases) {
        CGlyphOrder order;
        std::string error = ErrorOf([&] { LoadGlyphOrderFile(order, dir.Write("o.xlor", Area(c.Attributes))); });
        EXPECT_EQ(error, c.Error) << c.Attributes;
        if (!c.Error.empty()) continue;
        EXPECT_EQ(order.Width, c.Width) << c.Attributes;
        EXPECT_EQ(order.Height, c.Height) << c.Attributes;
    }
}

TEST(XmlNumbers, CodesAreRead32BitAndSaturateBeyond) {
    CTempDir dir;
    // The largest 32-bit number keeps its low 16 bits; the next ones saturate
    // instead of wrapping to small codes.
    EXPECT_EQ(OrderCodes(dir, "<code>4294967295</code><code>0xFFFF0041</code><code>4294967296</code>"
                              "<code>0x100000042</code><code>-4294967295</code><code>-4294967296</code>"),
              (std::vector<uint16_t>{0xFFFF, 0x41, 0xFFFF, 0xFFFF, 0x0001, 0xFFFF}));
    EXPECT_EQ(FilterLetters(dir, "<code>0xFFFF0041</code><code>0x100000042</code><code>-4294967295</code>"),
              (std::set<uint16_t>{0x0001, 0x20, 0x41, 0xFFFF}));
}

// A code's number is the first piece of its text: everything up to the next
// markup, line breaks and references included; later pieces are plain text.
TEST(XmlPieces, TextBetweenMarkupIsOnePiece) {
    CTempDir dir;
    const struct { std::string Cells; std::vector<uint16_t> Codes; } cases[] = {
        {"<code>0x41\n0x42</code>", {0x41}},
        {"<code>\n  66\n</code>", {0x42}},
        {"<code>&#x36;7</code>", {67}},
        {"<code>0x4&amp;3</code>", {0x4}},
        {"<code><![CDATA[0x43]]>D</code>", {0x43, 'D'}},
        {"<code>0x4<!-- -->5</code>", {0x4, '5'}},
        {"<code>0x4<?pi x?>6</code>", {0x4, '6'}},
        {"A<x>B</x>\r\nC<code>0x44</code>", {'A', 'B', 'C', 0x44}},
    };
    for (const auto& c : cases) EXPECT_EQ(OrderCodes(dir, c.Cells), c.Codes) << c.Cells;
    EXPECT_EQ(FilterLetters(dir, "<code>0x41\n0x42</code><code><![CDATA[0x43]]></code>"),
              (std::set<uint16_t>{0x20, 0x41, 0x43}));
}

TEST(XmlFrame, ErrorsNameTheFileLineColumnAndCause) {
    CTempDir dir;
    const std::filesystem::path path = dir / "o.xlor";
    const struct { std::string Text, Error; } cases[] = {
        {Root + "<body>", ParseError(path, 1, 35, "the file ends before </body>")},
        {Root + "\n<body>\n  </letter-order>", ParseError(path, 3, 5, "mismatched tag: expected </body>")},
        {"", ParseError(path, 1, 1, "no element found")},
        {Root + "<body><area width=\"1\" width=\"2\"/></body></letter-order>",
         ParseError(path, 1, 51, "duplicate attribute")},
        {"<?xml version=\"1.0\" encoding=\"EBCDIC-x\"?>" + Root, ParseError(path, 1, 31, "unknown encoding")},
        {"<?xml version=\"1.0\"?>\n<!DOCTYPE letter-order SYSTEM \"x.dtd\">" + Root,
         ParseError(path, 2, 38, "the external DTD \"x.dtd\" is not read (a definition file must be complete in itself)")},
        {"<!DOCTYPE letter-order [<!ENTITY % p SYSTEM \"p.ent\"> %p;]>" + Root,
         ParseError(path, 1, 54,
                    "the external entity \"p.ent\" is not read (a definition file must be complete in itself)")},
    };
    for (const auto& c : cases) {
        CGlyphOrder order;
        EXPECT_EQ(ErrorOf([&] { LoadGlyphOrderFile(order, dir.Write("o.xlor", c.Text)); }), c.Error) << c.Text;
    }

    // Files that cannot be read, in each reader's own shape.
    const std::filesystem::path missing = dir / "none.xlor";
    const std::string cannotOpen = "unable to open the file '" + missing.string() + "': No such file or directory";
    GlyphOrderInfo info;
    CGlyphOrder order;
    CFontFilter filter;
    EXPECT_EQ(ErrorOf([&] { LoadGlyphOrderInfo(info, missing); }), "XML Error: " + cannotOpen + "\n");
    EXPECT_EQ(ErrorOf([&] { LoadGlyphOrderFile(order, missing); }), "XML Error:\n " + cannotOpen);
    EXPECT_EQ(ErrorOf([&] { LoadFontFilterFile(filter, dir.Dir); }),
              "XML Error:\n unable to read the file '" + dir.Dir.string() + "': Is a directory");
}

// A filter fails on a parser warning; one drawn before the root element ends
// the load there, before the content could raise anything else.
TEST(XmlFrame, WarningInThePrologEndsAFilterLoad) {
    CTempDir dir;
    const std::string dtd = "<!DOCTYPE x [<!ATTLIST x v CDATA #IMPLIED>\n<!ATTLIST x v CDATA #IMPLIED>]>";
    const std::filesystem::path filterPath = dir / "f.xllt";
    CFontFilter filter;
    CGlyphOrder order;
    EXPECT_EQ(ErrorOf([&] { LoadFontFilterFile(filter, dir.Write("f.xllt", dtd + "<letter-list version=\"1.0\"><code/></letter-list>")); }),
              ParseError(filterPath, 2, 21, "attribute 'v' has already been declared for element 'x'"));
    // An order ignores the warning and meets the nesting error.
    EXPECT_EQ(ErrorOf([&] { LoadGlyphOrderFile(order, dir.Write("o.xlor", dtd + Root + "<order/></letter-order>")); }),
              "XML Error:\n <order> must be in <body>");
}

TEST(XmlFrame, ReadsShiftJisAndWindows1252Files) {
    CTempDir dir;
    // あ, ソ (a trail byte that is '\' in ASCII), half-width ｱ, then A.
    CGlyphOrder order;
    LoadGlyphOrderFile(order, dir.Write("sjis.xlor", "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?>" + Root +
                                          "<body><order>\x82\xA0\x83\x5C\xB1" "A</order></body></letter-order>"));
    EXPECT_EQ(order.Codes, (std::vector<uint16_t>{0x3042, 0x30BD, 0xFF71, 'A'}));
    GlyphOrderInfo info;
    LoadGlyphOrderInfo(info, dir.Write("cp.xlor", "<?xml version=\"1.0\" encoding=\"windows-1252\"?>" + Root +
                                                      "<head><title>\x80\xE9</title></head></letter-order>"));
    EXPECT_EQ(info.Title, "\xE2\x82\xAC\xC3\xA9");
    // A lead byte without a valid trail byte is not well-formed.
    EXPECT_EQ(ErrorOf([&] {
                  LoadGlyphOrderFile(order, dir.Write("bad.xlor", "<?xml version=\"1.0\" encoding=\"cp932\"?>" + Root +
                                                               "<body><order>\x82\x20</order></body></letter-order>"));
              }),
              ParseError(dir / "bad.xlor", 1, 80, "not well-formed (invalid token)"));
}
