// SPDX-License-Identifier: Apache-2.0
#include "tests/support/characters.h"
#include "text/base64.h"
#include "text/guid.h"
#include "text/sentences.h"
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

TEST(TextConversion, BringsEveryCodePointBackBehindTextOfAnyLength) {
    for (char32_t code = 0; code <= 0x10FFFF; code = code == 0xD7FF ? 0xE000 : code + 1) {
        std::wstring const text = std::wstring(code % 37, L'x') + Character(code) + L"y";
        std::string utf8;
        ASSERT_TRUE(AppendUtf8(text, utf8) && EqualsUtf8(text, utf8)) << std::uint32_t(code);
        ASSERT_EQ(StringConversion::Utf8ToNative(utf8), text) << std::uint32_t(code);
    }
    EXPECT_EQ(StringConversion::NativeToUtf8(L"\x7F\x80\x7FF\x800\xFFFF" + Character(0x10000)),
              "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80");
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
        EXPECT_FALSE(EqualsUtf8(row.text, row.before + std::string("b")) ||
                     EqualsUtf8(row.text + L"b", row.kept));
    }
    EXPECT_FALSE(EqualsUtf8(L"\x00E4", "\xC3\xA5") ||
                 EqualsUtf8(L"\x00E4", "\xE4")); // the last one is Latin-1
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
    EXPECT_EQ(Compare(Character(0x1F600) + L"x", L"\xD83D\xDE00x"), 0); // both spellings of a pair are one
    EXPECT_LT(Compare(Character(0x1F600), L"\xD83D\xDE01"), 0);
    EXPECT_GT(Compare(Character(0x1F600), L"\xD83D"), 0);
}

std::optional<std::vector<std::byte>> InPieces(std::string_view text) {
    Base64Decoder decoder;
    for (; !text.empty(); text.remove_prefix(1)) {
        decoder.Add(text.substr(0, 1));
    }
    return decoder.Finish();
}

TEST(BytePieces, BecomeWhatWasAppended) {
    BytePieces pieces;
    EXPECT_TRUE(pieces.Join().empty());
    std::vector<std::byte> whole(2 * BytePieces::PieceSize + 1);
    whole.front() = whole[BytePieces::PieceSize] = whole.back() = std::byte(1);
    pieces.Append(std::span(whole).first(3));
    pieces.Append(std::span(whole).subspan(3));
    EXPECT_TRUE(pieces.Join() == whole);
    EXPECT_TRUE(pieces.Join().empty());
}

TEST(Base64, FollowsTheTestVectorsBothWays) {
    using Row = std::pair<char const*, char const*>;
    for (auto const& [plain, text] :
         {Row{"", ""}, Row{"f", "Zg=="}, Row{"fo", "Zm8="}, Row{"foo", "Zm9v"}, Row{"foob", "Zm9vYg=="},
          Row{"fooba", "Zm9vYmE="}, Row{"foobar", "Zm9vYmFy"}, Row{"\xFF\xEF\xBE", "/+++"}}) {
        EXPECT_EQ(EncodeBase64(Bytes(plain)), text);
        EXPECT_EQ(DecodeBase64(text), Bytes(plain));
        EXPECT_EQ(InPieces(text), Bytes(plain));
    }
    EXPECT_EQ(DecodeBase64(" Zm\r\n9v\tYg = = \n"), Bytes("foob"));
    for (char const* text : {"Z", "Zg", "Zg=", "Zm9", "Zg===", "A===", "=Zg=", "Zg==Zg==", "Zh==", "Zm9=",
                             "Z-8=", "====", "Zg==\xC2\xA0"}) {
        EXPECT_FALSE(DecodeBase64(text)) << text;
        EXPECT_FALSE(InPieces(text)) << text;
    }
}

TEST(Guid, IsToldByItsDigitsAndLooksLikeOneByItsPunctuation) {
    std::wstring const guid = L"01234567-89ab-cdef-ABCD-EF0123456789",
                       shape = L"{2345678-----------------789012345}}";
    EXPECT_EQ(FindGuid(guid), guid);
    EXPECT_EQ(FindGuid(L"{" + guid + L"}"), guid);
    EXPECT_TRUE(HasGuidShape(guid) && HasGuidShape(L"{" + guid + L"}") && HasGuidShape(shape));
    for (std::wstring const& text : {std::wstring(), shape, guid + L"0", L"{" + guid, L"{" + guid + L"0",
                                     L"{{" + guid + L"}}", std::wstring(36, L'0')}) {
        EXPECT_EQ(FindGuid(text), L"");
        EXPECT_EQ(HasGuidShape(text), text == shape);
    }
    for (wchar_t const unit : {L'/', L':', L'@', L'G', L'`', L'g', L'-'}) {
        EXPECT_EQ(FindGuid(unit + guid.substr(1)), L"") << static_cast<int>(unit);
    }
}

TEST(Guid, ThatIsMadeIsRandomAndOfVersionFour) {
    std::set<std::wstring> seen;
    for (int count = 0; count < 1000; ++count) {
        std::wstring const uuid = KelSDK::CreateUUID_t();
        EXPECT_TRUE(seen.insert(uuid).second);
        EXPECT_EQ(FindGuid(uuid), uuid);
        EXPECT_EQ(uuid.find_first_of(L"ABCDEF"), uuid.npos);
        EXPECT_EQ(uuid.at(14), L'4');
        EXPECT_NE(std::wstring_view(L"89ab").find(uuid.at(19)), std::wstring_view::npos);
    }
}

TEST(Sentences, TakeTheirPartsInAnyOrderAndShortenTexts) {
    EXPECT_EQ(Fill("{1}, {0}{1}", {"{1}", "b"}), "b, {1}b");
    EXPECT_EQ(Fill(L"", {}), L"");
    std::string const longest(80, 'x');
    EXPECT_EQ(Shorten(longest), longest);
    EXPECT_EQ(Shorten(longest.substr(1) + "\u00E9"), longest.substr(1) + "...");
    EXPECT_EQ(Shorten(std::string(100, '\x80')), "...");
}
