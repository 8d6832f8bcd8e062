// SPDX-License-Identifier: Apache-2.0
#include "xml/names.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

using namespace Zantrel::Xml;
using namespace std::string_literals;

namespace {

TEST(XmlNames, ThatEveryReaderTakesAreToldFromOtherTexts) {
    for (std::string const text :
         {"a", "_", ":", "a:b", "Z9-._", "a_name_longer_than_a_block", "\u00C0\u00B7\u0300", "a\u4E2D"}) {
        EXPECT_TRUE(IsPortableXmlName(text)) << text;
    }
    for (std::string const& text : {""s, "-a"s, ".a"s, "1"s, "a b"s, "a/"s, "a_name_longer_than_a_block/"s,
                                    "a\U00010000"s, "\u00F8\u017F"s, "\u0660"s, "a\u00D7"s, "a\uFFFF"s,
                                    "a\xC3"s, "a\xED\xA0\x80"s, "\u0300"s, "a\0"s}) {
        EXPECT_FALSE(IsPortableXmlName(text)) << text;
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
