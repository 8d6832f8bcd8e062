// SPDX-License-Identifier: Apache-2.0
#include "xml/names.h"

#include "text/utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>

using namespace Zantrel::Xml;

namespace {

std::string InUtf8(char32_t code) {
    char bytes[4];
    return {bytes, Zantrel::Text::EncodeUtf8(code, bytes)};
}

TEST(XmlNames, AreToldFromOtherTexts) {
    auto const expect = [](bool isName, bool isPortable, std::initializer_list<std::string> texts) {
        for (std::string const& text : texts) {
            EXPECT_EQ(IsXmlName(text), isName) << text;
            EXPECT_EQ(IsPortableXmlName(text), isPortable) << text;
        }
    };
    expect(true, true, {"a", "_", ":", "a:b", "Z9-._", "\u00C0\u00B7\u0300", "\u4E2D"});
    expect(true, false, {"a\U00010000", "\u00F8\u017F", "\u0660"});
    expect(false, false,
           {"", "-a", ".a", "1", "a b", "a/", "a\u00D7", "a\uFFFF", "a\xC3", "a\xED\xA0\x80", "\u0300",
            std::string("a\0", 2)});
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
