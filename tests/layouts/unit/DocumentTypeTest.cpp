#include <gtest/gtest.h>
#include <string>

#include "DocumentType.h"

namespace {

TEST(DocumentType, IsFoundWhereAParserWouldFindItAndNowhereElse) {
    const std::pair<std::string_view, bool> files[] = {
        {"<!DOCTYPE a><a/>", true},
        {"\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!-- a -- > b --><?p?><!DOCTYPE a [<!ENTITY b 'c'>]><a/>",
         true},
        {"<!-->--><!DOCTYPE a><a/>", true},
        {"<!", true},
        {"", false},
        {"<", false},
        {"<?xml", false},
        {"<!-- <!DOCTYPE a>", false},
        {"<!-- <!DOCTYPE a> --><a/>", false},
        {"<?p <!DOCTYPE a> ?><a/>", false},
        {"<a><!DOCTYPE a></a>", false},
        {"<a b='&lt;!DOCTYPE a>'/>", false},
    };
    for (const auto& [text, found] : files) {
        std::string wide = "\xFF\xFE";
        for (const char c : text) wide.append({c, '\0'});
        EXPECT_EQ(HasDocumentType(text), found) << text;
        EXPECT_EQ(HasDocumentType(wide), found) << text;
    }
}

}  // namespace
