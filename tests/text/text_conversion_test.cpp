// SPDX-License-Identifier: Apache-2.0
#include "tests/support/characters.h"
#include "text/base64.h"
#include "text/unicode.h"
#include "text/utf16_order.h"

#include <zantrel/io/uuid.h>
#include <zantrel/text/string_conversion.h>

#include <gtest/gtest.h>

#include <set>

using namespace Zantrel::Text;
using TestSupport::Character;

namespace {

std::vector<std::byte> Bytes(std::string_view text) {
    auto const* const first = reinterpret_cast<std::byte const*>(text.data());
    return {first, first + text.size()};
}

} // namespace

TEST(TextConversion, EncodesTheBordersOfEachLength) {
    using Row = std::pair<char32_t, char const*>;
    for (auto const& [code, utf8] :
         {Row{0x1, "\x01"}, Row{0x7F, "\x7F"}, Row{0x80, "\xC2\x80"}, Row{0x7FF, "\xDF\xBF"},
          Row{0x800, "\xE0\xA0\x80"}, Row{0xD7FF, "\xED\x9F\xBF"}, Row{0xE000, "\xEE\x80\x80"},
          Row{0xFFFF, "\xEF\xBF\xBF"}, Row{0x10000, "\xF0\x90\x80\x80"}, Row{0x10FFFF, "\xF4\x8F\xBF\xBF"}}) {
        EXPECT_EQ(StringConversion::NativeToUtf8(Character(code)), utf8);
    }
}

TEST(TextConversion, BringsEveryCodePointBackBehindTextOfAnyLength) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        if (code == 0xD800) {
            code = 0xE000;
        }
        std::wstring const text = std::wstring(code % 37, L'x') + Character(code) + L"y";
        std::string utf8;
        ASSERT_TRUE(AppendUtf8(text, utf8) && EqualsUtf8(text, utf8)) << std::uint32_t(code);
        ASSERT_EQ(StringConversion::Utf8ToNative(utf8), text) << std::uint32_t(code);
    }
}

TEST(TextConversion, StopsAtWhatIsNoCodePointUnlessToldToKeepIt) {
    struct Row {
        std::wstring text;
        char const *before, *kept;
    };
    Row const rows[] = {
        {L"a\xD83D\xDE00", "a\xF0\x9F\x98\x80", "a\xF0\x9F\x98\x80"}, // a pair is joined, whatever wchar_t is
        {L"a\xD800", "a", "a\xED\xA0\x80"},
        {L"\xDC00z", "", "\xED\xB0\x80z"},
        {L"\xDBFF\xDBFF\xDFFF", "", "\xED\xAF\xBF\xF4\x8F\xBF\xBF"}};
    for (Row const& row : rows) {
        bool const isText = std::string_view(row.before) == row.kept;
        std::string utf8;
        EXPECT_EQ(AppendUtf8(row.text, utf8), isText);
        EXPECT_EQ(utf8, row.before);
        EXPECT_EQ(StringConversion::NativeToUtf8(row.text), row.kept);
        EXPECT_EQ(EqualsUtf8(row.text, row.kept), isText);
    }
}

TEST(TextConversion, ReplacesEachIllFormedByte) {
    using Row = std::pair<char const*, wchar_t const*>;
    for (auto const& [utf8, text] :
         {Row{"a\x80z", L"a\xFFFDz"}, Row{"\xC3", L"\xFFFD"}, Row{"\xE2\x82z", L"\xFFFD\xFFFDz"},
          Row{"\xC0\xAF", L"\xFFFD\xFFFD"}, Row{"\xED\xA0\x80", L"\xFFFD\xFFFD\xFFFD"},
          Row{"\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"},
          Row{"0123456789abcdef\xFF", L"0123456789abcdef\xFFFD"}}) {
        EXPECT_EQ(StringConversion::Utf8ToNative(utf8), text);
    }
}

TEST(TextConversion, TellsDifferentTextsApartWithoutConvertingThem) {
    std::pair<wchar_t const*, char const*> const rows[] = {
        {L"ab", "a"}, {L"a", "ab"}, {L"\x00E4", "\xC3\xA5"}, {L"\x00E4", "\xE4"}}; // the last one is Latin-1
    for (auto const& [text, utf8] : rows) {
        EXPECT_FALSE(EqualsUtf8(text, utf8)) << utf8;
    }
}

TEST(TextOrder, GoesByUtf16CodeUnit) {
    std::vector<std::wstring> const ordered({L"", L"A", L"AB", L"B", L"a", L"\x00E4", L"\xD7FF",
                                             Character(0x10000), Character(0x10000) + L"!",
                                             Character(0x10FFFF), L"\xE000", L"\xFFFD"});
    for (std::size_t left = 0; left < ordered.size(); ++left) {
        for (std::size_t right = 0; right < ordered.size(); ++right) {
            int const result = Compare(ordered[left], ordered[right]);
            EXPECT_EQ((result > 0) - (result < 0), (left > right) - (left < right)) << left << ' ' << right;
        }
    }
}

TEST(TextOrder, TakesBothSpellingsOfAPairForOne) {
    EXPECT_EQ(Compare(Character(0x1F600) + L"x", L"\xD83D\xDE00x"), 0);
    EXPECT_LT(Compare(Character(0x1F600), L"\xD83D\xDE01"), 0);
    EXPECT_GT(Compare(Character(0x1F600), L"\xD83D"), 0);
}

TEST(Base64, FollowsTheTestVectorsBothWays) {
    using Row = std::pair<char const*, char const*>;
    for (auto const& [plain, text] :
         {Row{"", ""}, Row{"f", "Zg=="}, Row{"fo", "Zm8="}, Row{"foo", "Zm9v"}, Row{"foob", "Zm9vYg=="},
          Row{"fooba", "Zm9vYmE="}, Row{"foobar", "Zm9vYmFy"}, Row{"\xFF\xEF\xBE", "/+++"}}) {
        EXPECT_EQ(EncodeBase64(Bytes(plain)), text);
        EXPECT_EQ(DecodeBase64(text), Bytes(plain));
    }
}

TEST(Base64, PassesOverWhiteSpaceOnly) {
    EXPECT_EQ(DecodeBase64(" Zm\r\n9v\tYg = = \n"), Bytes("foob"));
    for (char const* text : {"Z", "Zg", "Zg=", "Zm9", "Zg===", "A===", "=Zg=", "Zg==Zg==", "Zh==", "Zm9=",
                             "Z-8=", "====", "Zg==\xC2\xA0"}) {
        EXPECT_FALSE(DecodeBase64(text)) << text;
    }
}

TEST(Uuid, IsRandomAndOfVersionFour) {
    std::set<std::wstring> seen;
    for (int count = 0; count < 1000; ++count) {
        std::wstring const uuid = KelSDK::CreateUUID_t();
        EXPECT_TRUE(seen.insert(uuid).second);
        std::wstring form = uuid;
        for (wchar_t& place : form) {
            place = std::wstring_view(L"0123456789abcdef").find(place) < 16 ? L'x' : place;
        }
        EXPECT_EQ(form, L"xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx");
        EXPECT_EQ(uuid.at(14), L'4');
        EXPECT_NE(std::wstring_view(L"89ab").find(uuid.at(19)), std::wstring_view::npos);
    }
}
