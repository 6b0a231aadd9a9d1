#include <gtest/gtest.h>
#include <string>

#include "DocumentType.h"

namespace {

/// As 16-bit text with a byte order mark.
std::string Wide(std::string_view text) {
    std::string wide = "\xFF\xFE";
    for (const char c : text) {
        wide += c;
        wide += '\0';
    }
    return wide;
}

TEST(DocumentType, IsFoundWhereverAParserWouldFindIt) {
    const std::string_view with[] = {
        "<!DOCTYPE a><a/>",
        "\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!-- a -- > b --><?p?><!DOCTYPE a [<!ENTITY b 'c'>]><a/>",
        "<!-->--><!DOCTYPE a><a/>",
        "<!doctype a>",  // no parser takes it, and so it may be refused
        "<!",
    };
    for (const std::string_view text : with) {
        EXPECT_TRUE(HasDocumentType(text)) << text;
        EXPECT_TRUE(HasDocumentType(Wide(text))) << text;
    }
}

TEST(DocumentType, IsNotMistakenForWhatOnlyLooksLikeIt) {
    const std::string_view without[] = {
        "",
        "<",
        "<?xml",
        "<!-- <!DOCTYPE a>",
        "<!-- <!DOCTYPE a> --><a/>",
        "<?p <!DOCTYPE a> ?><a/>",
        "<a><!DOCTYPE a></a>",
        "<a b='&lt;!DOCTYPE a>'/>",
        "no markup, and a zero\0 within",
    };
    for (const std::string_view text : without) {
        EXPECT_FALSE(HasDocumentType(text)) << text;
        EXPECT_FALSE(HasDocumentType(Wide(text))) << text;
    }
}

}  // namespace
