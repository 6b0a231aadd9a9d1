#include <gtest/gtest.h>
#include <string>

#include "DocumentType.h"

namespace {

std::string Wide(const std::u16string& text, bool highFirst) {
    std::string bytes;
    for (const char16_t c : u"\uFEFF" + text)
        for (const int shift : {highFirst ? 8 : 0, highFirst ? 0 : 8}) bytes += static_cast<char>(c >> shift);
    return bytes;
}

TEST(DocumentType, IsFoundWhereAParserWouldFindItAndNowhereElse) {
    const auto expect = [](std::string_view text, bool found) {
        EXPECT_EQ(HasDocumentType(text), found) << text;
        for (const bool highFirst : {false, true}) {
            const std::string wide = Wide({text.begin(), text.end()}, highFirst);
            EXPECT_EQ(HasDocumentType(wide), found) << text;
            EXPECT_EQ(HasDocumentType(wide.substr(2)), found) << text << ", without a mark";
        }
    };
    for (const char* with :
         {"<!DOCTYPE a><a/>", "<!-->--><!DOCTYPE a><a/>", "<!",
          "\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!-- a -- > b --><?p?><!DOCTYPE a [<!ENTITY b 'c'>]><a/>"})
        expect(with, true);
    for (const char* without : {"", "<", "<?xml", "<!-- <!DOCTYPE a>", "<!-- <!DOCTYPE a> --><a/>",
                                "<?p <!DOCTYPE a> ?><a/>", "<a><!DOCTYPE a></a>"})
        expect(without, false);
    for (const bool highFirst : {false, true})
        EXPECT_TRUE(HasDocumentType(Wide(u"<!--\u2D2D\u3C3E\u2D2D\u3E3Ca--><!DOCTYPE a>", highFirst)))
            << "letters whose bytes look like the end of a comment";
}

}  // namespace
