#include <gtest/gtest.h>

#include "core/font_filter.h"
#include "xmlfiles/font_filter_handler.h"
#include "xmlfiles/test_support.h"

namespace {

std::string List(const std::string& body, const std::string& root = "<letter-list version=\"1.0\">") {
    return root + body + "</letter-list>";
}

}  // namespace

TEST(FilterFile, ReadsLettersCodesAndTheSpace) {
    CTempDir dir;
    CFontFilter f;
    LoadFontFilterFile(f, dir.Write("f.xllt", List("<head><title>ignored XYZ</title></head><body><letter>ABC abc\n\t</letter>"
                                    "<Letter><CODE>0x3042</CODE><code> 66</code><x>D</x><code>0x45<!-- -->F</code><code/></Letter></body>")));
    EXPECT_FALSE(f.PassAll);
    std::map<uint16_t, bool> want{{' ', true}, {'A', true}, {'B', true}, {'C', true}, {'D', true},
                                  {'E', true}, {'F', true}, {'a', true}, {'b', true}, {'c', true}, {0x3042, true}};
    EXPECT_EQ(f.Letters, want);
    EXPECT_TRUE(f.IsExcluded('X'));
    EXPECT_FALSE(f.IsExcluded(' '));
}

TEST(FilterFile, RefusesBadFilesWithTheirMessages) {
    CTempDir dir;
    auto err = [&](const std::string& text) {
        CFontFilter f;
        return ErrorOf([&] { LoadFontFilterFile(f, dir.Write("f.xllt", text)); });
    };
    EXPECT_EQ(err(List("<body><code>1</code></body>")), "XML Error:\n <code> must be in <letter>");
    EXPECT_EQ(err(List("<body><sp/></body>")), "XML Error:\n <sp> must be in <letter>");
    EXPECT_EQ(err(List("<letter>A</letter>")), "XML Error:\n <letter> must be in <body>");
    EXPECT_EQ(err(List("<x><body/></x>")), "XML Error:\n <body> must be in <letter-list>");
    EXPECT_EQ(err(List("<body/>", "<letter-list version=\"0.9\">")),
              "XML Error:\n letter-list version mismatch(0.9: must be 1.0)");
    EXPECT_EQ(err("<letter-list version=\"1.0\"><body>"),
              "XML Error:\n " + (dir / "f.xllt").string() + " : line 1 : column 34\n\n the file ends before </body>\n");
}
