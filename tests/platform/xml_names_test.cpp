// SPDX-License-Identifier: Apache-2.0
#include "platform/xml/names.h"

#include "platform/xml/utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

using namespace Zantrel::Xml;

namespace {

std::string InUtf8(char32_t code) {
    char bytes[4];
    return {bytes, EncodeUtf8(code, bytes)};
}

TEST(XmlNames, AreToldFromOtherTexts) {
    struct Case {
        std::string text;
        bool isName;
        bool isPortable;
    };
    for (auto const& [text, isName, isPortable] : {
             Case{"a", true, true},
             Case{"_", true, true},
             Case{":", true, true},
             Case{"a:b", true, true},
             Case{"Z9-._", true, true},
             Case{"\u00C0\u00B7\u0300", true, true},
             Case{"\u4E2D", true, true},
             Case{"a\U00010000", true, false},
             Case{"\u00F8\u017F", true, false},
             Case{"\u0300", false, false},
             Case{"\u0660", true, false},
             Case{"", false, false},
             Case{"-a", false, false},
             Case{".a", false, false},
             Case{"1", false, false},
             Case{"a b", false, false},
             Case{"a/", false, false},
             Case{"a\u00D7", false, false},
             Case{"a\uFFFF", false, false},
             Case{"a\xC3", false, false},
             Case{"a\xED\xA0\x80", false, false},
             Case{std::string("a\0", 2), false, false},
         }) {
        EXPECT_EQ(IsXmlName(text), isName) << text;
        EXPECT_EQ(IsPortableXmlName(text), isPortable) << text;
    }
}

TEST(XmlNames, OfTheFourthEditionAreNamesOfTheFifth) {
    for (char32_t code = 1; code < 0x110000; ++code) {
        if (code == 0xD800)
            code = 0xE000;
        std::string const character = InUtf8(code);
        EXPECT_TRUE(!IsPortableXmlName(character) || IsXmlName(character)) << std::uint32_t(code);
        EXPECT_TRUE(!IsPortableXmlName("a" + character) || IsXmlName("a" + character)) << std::uint32_t(code);
    }
}

TEST(XmlCharacters, EndWhereTheirRangesEnd) {
    constexpr char32_t allowed[] = {0x9,    0xA,    0xD,    0x20,    0x7F,    0x85,
                                    0xD7FF, 0xE000, 0xFFFD, 0x10000, 0x1FFFE, 0x10FFFF};
    constexpr char32_t others[] = {0x0, 0x8, 0xB, 0xC, 0xE, 0x1F, 0xD800, 0xDFFF, 0xFFFE, 0xFFFF, 0x110000};
    for (auto const code : allowed)
        EXPECT_TRUE(IsXmlCharacter(code)) << std::uint32_t(code);
    for (auto const code : others)
        EXPECT_FALSE(IsXmlCharacter(code)) << std::uint32_t(code);
}

} // namespace
