#include <gtest/gtest.h>

#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/font_filter_handler.h"
#include "xmlfiles/glyph_order_handler.h"
#include "xmlfiles/test_support.h"

namespace {

// A valid document whose DTD declares the given entities and whose order (or
// letter list) holds the reference &x;.
std::string Doc(const std::string& root, const std::string& entities) {
    std::string list = root == "letter-order" ? "order" : "letter";
    return "<?xml version=\"1.0\"?><!DOCTYPE " + root + " [<!ELEMENT " + root + " ANY><!ATTLIST " + root +
           " version CDATA #IMPLIED><!ELEMENT body ANY><!ELEMENT " + list + " ANY>" + entities + "]><" + root +
           " version=\"1.0\"><body><" + list + ">&x;</" + list + "></body></" + root + ">";
}

std::string Bomb() {
    std::string e = "<!ENTITY a0 \"aaaaaaaaaa\">";
    for (int i = 1; i <= 8; ++i) {
        e += "<!ENTITY a" + std::to_string(i) + " \"";
        for (int k = 0; k < 10; ++k) e += "&a" + std::to_string(i - 1) + ";";
        e += "\">";
    }
    return e + "<!ENTITY x \"&a8;\">";
}

bool IsXmlError(const std::string& message) { return message.rfind("XML Error:\n", 0) == 0; }

}  // namespace

// A document is read on its own: an external DTD or entity is never opened
// (a device would hang the load, a remote file would be fetched), and an
// entity that expands exponentially is refused instead of eating memory.
TEST(HostileXml, RefusesOutsideReferencesAndEntityBombs) {
    CTempDir dir;
    auto load = [&](const std::string& text) {
        return ErrorOf([&] {
            CGlyphOrder order;
            LoadGlyphOrderFile(order, dir.Write("o.xlor", text));
        });
    };
    // The frame itself reads a declared internal entity.
    CGlyphOrder plain;
    LoadGlyphOrderFile(plain, dir.Write("ok.xlor", Doc("letter-order", "<!ENTITY x \"QZ\">")));
    EXPECT_EQ(plain.GetCode(1, 0), u'Z');

    std::string secret = dir.Write("secret.txt", "QZ").string();
    std::string external = load(Doc("letter-order", "<!ENTITY x SYSTEM \"" + secret + "\">"));
    EXPECT_TRUE(IsXmlError(external)) << external;
    EXPECT_NE(external.find("secret.txt"), std::string::npos) << external;

    std::string exploded = load(Doc("letter-order", Bomb()));
    EXPECT_TRUE(IsXmlError(exploded)) << exploded;

    // The filter loader shares the frame.
    std::string filter = ErrorOf([&] {
        CFontFilter f;
        LoadFontFilterFile(f, dir.Write("f.xllt", Doc("letter-list", Bomb())));
    });
    EXPECT_TRUE(IsXmlError(filter)) << filter;
}
