// SPDX-License-Identifier: Apache-2.0
#include "tests/support/dump.h"
#include "tests/support/sax_test_support.h"
#include "tests/support/small_parameter_file.h"

#include <gtest/gtest.h>

#include <set>

using namespace TestSupport;

namespace {

bool ReadPieces(ParameterDatabase& database, std::string const& document, std::size_t piece,
                ReadReport* report = nullptr) {
    PieceBuffer buffer(document, piece);
    std::istream in(&buffer);
    std::unique_ptr<ISAXPersist> const handler(_CreateSaxHandlerForReading(database));
    return KelAM::SaxUtilities::ReadStream(in, *handler, report);
}

/// A document in UTF-16 with a byte order mark, of characters that take one unit.
std::string Utf16(std::wstring const& document, bool bigEndian) {
    std::string bytes;
    for (wchar_t const unit : L'\xFEFF' + document) {
        char const high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

std::string Repeat(std::string const& text, std::size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    for (; times != 0; --times) {
        all += text;
    }
    return all;
}

} // namespace

TEST(HostileFile, MayEndOrBeDamagedAtAnyByte) {
    SmallLayout const layout;
    std::string const document = SmallFile;
    std::set<std::string> outcomes;
    auto const check = [&](std::string const& damaged, bool canBeRead) {
        ParameterDatabase database(&layout);
        ReadReport report;
        bool const isRead = ReadText(database, damaged, &report);
        EXPECT_TRUE(canBeRead || !isRead) << damaged;
        EXPECT_EQ(isRead, report.m_entries.empty() ||
                              report.m_entries.back().kind != ReadReport::Kind::DocumentError);
        database.GetProfileEditor().Get(L"GenericParameters").SetHidden(false); // hidden they aren't written
        std::string const written = WriteText(database);
        if (outcomes.insert(written).second) {
            ParameterDatabase back(&layout);
            ASSERT_TRUE(ReadText(back, written)) << damaged;
            EXPECT_EQ(WriteText(back), written) << damaged;
        }
    };
    for (std::size_t at = 0; at < document.size(); ++at) {
        check(document.substr(0, at), false);
        for (char const byte : {'\0', '\xFF', '<', '&', '\''}) {
            std::string damaged = document;
            damaged[at] = byte;
            check(damaged, byte == '\'' || damaged == document);
        }
    }
    EXPECT_GT(outcomes.size(), 50u);
}

TEST(HostileFile, MayComeInAnyEncodingAndAnyPieces) {
    SmallLayout const layout;
    ParameterDatabase expected(&layout);
    ASSERT_TRUE(ReadText(expected, SmallFile));
    std::wstring const wide = StringConversion::Utf8ToNative(SmallFile);
    std::wstring const declared = L"<?xml version='1.0' encoding='utf-16'?>" + wide;
    for (std::string const& document :
         {std::string(SmallFile), std::string("\xEF\xBB\xBF") + SmallFile, Utf16(wide, false),
          Utf16(wide, true), Utf16(declared, false), Utf16(declared, true)}) {
        for (std::size_t const piece : {1u, 3u, 1000u}) {
            ParameterDatabase database(&layout);
            EXPECT_TRUE(ReadPieces(database, document, piece));
            EXPECT_EQ(Dump(database), Dump(expected));
        }
    }
    ParameterDatabase database(&layout);
    EXPECT_FALSE(ReadText(database, Utf16(wide, false).substr(2))) << "no byte order mark";
    EXPECT_FALSE(ReadText(database, Utf16(wide, false) + 'x')) << "half a unit";
    EXPECT_FALSE(ReadText(database, Utf16(L"<G><S>\xD800</S></G>", true)));
}

TEST(HostileFile, MayNestAMillionLevels) {
    SmallLayout const layout;
    for (char const* tag : {"x", "I", "G", "GenericParameters", "C"}) {
        ParameterDatabase database(&layout);
        ReadReport report;
        std::string const start = std::string("<") + tag + '>', end = std::string("</") + tag + '>';
        EXPECT_FALSE(ReadText(database, Repeat(start, 1000000), &report));
        EXPECT_EQ(report.m_entries.back().kind, ReadReport::Kind::DocumentError);
        EXPECT_EQ(report.m_entries.back().column, 1024 * start.size() + 1);
        EXPECT_FALSE(ReadText(database, Repeat(start, 1025) + Repeat(end, 1025)));
        EXPECT_TRUE(ReadText(database, Repeat(start, 1024) + Repeat(end, 1024)));
        EXPECT_FALSE(WriteText(database).empty());
    }
}

TEST(HostileFile, MayHoldTwentyMegabytesInOneToken) {
    SmallLayout const layout;
    struct Row {
        std::string before, repeated, after;
        std::size_t held; ///< how much of the database then holds text or bytes, for a thousand repetitions
    };
    Row const rows[] = {
        {"<Root><G><S>", "AAAA", "</S></G></Root>", 4000},
        {"<Root><G><S>", "&#9;", "</S></G></Root>", 1000},
        {"<Root><Z><Both Name='", "AAAA", "'/></Z></Root>", 4000},
        {"<Root><G><A><Data>", "AAAA", "</Data></A></G></Root>", 3000},
        {"<Root><G><S><!--", "AAAA", "--></S></G></Root>", 0},
        {"<Root><", "AAAA", "/></Root>", 0},
    };
    for (auto const& [thousands, piece] : {std::pair(5000u, 5000u), {250u, 3u}}) {
        for (Row const& row : rows) {
            ParameterDatabase database(&layout);
            EXPECT_TRUE(
                ReadPieces(database, row.before + Repeat(row.repeated, thousands * 1000) + row.after, piece));
            ParameterNode const editor = database.GetProfileEditor();
            std::vector<std::wstring> names;
            editor.Get(L"Z").GetProfiles(names);
            EXPECT_EQ(editor.Get(L"G").Get(L"S").GetValue<std::wstring>().size() +
                          editor.Get(L"G").Get(L"A").GetValue<KelAM::FileContent>().m_data.size() +
                          (names.empty() ? 0 : names.front().size()),
                      thousands * row.held);
        }
    }
}

TEST(HostileFile, MayHaveTensOfThousandsOfSiblings) {
    SmallLayout const layout;
    constexpr int Count = 50'000;
    std::string profiles, items, attributes;
    for (int number = Count; number != 0; --number) { // against the order of the store
        profiles += "<Both Name='" + std::to_string(number) + "'/>";
        attributes += " a" + std::to_string(number) + "=''";
        items += "<Item>" + std::to_string(number) + "</Item>";
    }
    ParameterDatabase database(&layout), back(&layout);
    EXPECT_TRUE(ReadText(database, "<Root><Z>" + profiles + "</Z><N" + attributes + ">" + items + "</N>" +
                                       Repeat("<U/>", Count) + Repeat("<C/><M><Item/></M>", Count) +
                                       "</Root>"));
    std::string const written = WriteText(database);
    EXPECT_TRUE(ReadText(back, written));
    EXPECT_TRUE(WriteText(back) == written);
    EXPECT_EQ(back.GetProfileEditor().Get(L"N").GetSize(), static_cast<unsigned long long>(Count));
    EXPECT_TRUE(back.GetProfileEditor().Get(L"Z").GetProfile(L"4711").IsValid());
}
