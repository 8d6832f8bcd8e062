// SPDX-License-Identifier: Apache-2.0
#include "fuzz/target.h"
#include "tests/formats/formats.h"
#include "tests/support/characters.h"
#include "tests/support/failing_allocator.h"

#include <gtest/gtest.h>

#include <random>

using namespace TestSupport;

namespace {

std::string NameOf(testing::TestParamInfo<Format> const& info) { return info.param.name; }

class HostileDocumentOf : public testing::TestWithParam<Format> {
protected:
    Format const& m_format = GetParam();
};

INSTANTIATE_TEST_SUITE_P(, HostileDocumentOf, testing::ValuesIn(Formats()), NameOf);

std::string NameOfTarget(testing::TestParamInfo<Fuzz::Target> const& info) { return info.param.name; }

class DamagedDocumentOf : public testing::TestWithParam<Fuzz::Target> {
protected:
    Fuzz::Target const& m_target = GetParam();
};

INSTANTIATE_TEST_SUITE_P(, DamagedDocumentOf, testing::ValuesIn(Fuzz::DocumentTargets()), NameOfTarget);

} // namespace

TEST_P(HostileDocumentOf, AnyElementsAnywhereGivesWhatWorks) {
    std::set<std::string> outlines;
    for (unsigned seed = 0; seed < 100; ++seed) {
        std::mt19937 random(seed);
        std::string const document =
            HostileDocument(m_format.example, [&](std::size_t below) { return random() % below; });
        EXPECT_EQ(FaultOf(m_format, document), "") << document;
        auto const subject = m_format.make();
        ReadText(*subject, document);
        outlines.insert(WriteText(*subject));
    }
    EXPECT_GT(outlines.size(), m_format.example.size() < 200 ? 3u : 50u) << "the documents should differ";
}

TEST_P(HostileDocumentOf, OneMistakeGivesWhatWorks) {
    EXPECT_EQ(FaultOf(m_format, m_format.example), "");
    for (Mistake const& mistake : MistakesIn(m_format.example)) {
        EXPECT_EQ(FaultOf(m_format, mistake.In(m_format.example)), "")
            << mistake.where << ' ' << mistake.what;
    }
}

TEST_P(DamagedDocumentOf, AnyBytesInPiecesOfAnySizeGiveTheSameAndWhatWorks) {
    std::set<std::string> outcomes;
    auto const check = [&](std::string const& damaged, bool canBeTaken,
                           std::initializer_list<std::size_t> sizes) {
        auto const outcomeInPieces = [&](std::size_t size) {
            PieceBuffer buffer(damaged, size);
            std::istream in(&buffer);
            return m_target.outcomeOf(in);
        };
        std::string const outcome = outcomeInPieces(4'096);
        EXPECT_FALSE(outcome.starts_with("taken") && !canBeTaken) << damaged;
        for (std::size_t const size : sizes) {
            EXPECT_EQ(outcomeInPieces(size), outcome) << damaged;
        }
        if (outcomes.insert(outcome.substr(0, outcome.find("\n\n"))).second) {
            EXPECT_EQ(m_target.faultOf(damaged, Fuzz::ShareOf(damaged)), "") << damaged;
        }
    };
    std::string const& example = m_target.example;
    for (std::size_t at = 0; at < example.size(); ++at) {
        check(example.substr(0, at), false, {1, 3, 7});
        constexpr char bytes[] = {'\0', '\xFF', '<', '&', '\''};
        for (std::size_t turn = 0; turn < std::size(bytes); ++turn) {
            std::string damaged = example;
            damaged[at] = bytes[turn];
            bool const canBeTaken = bytes[turn] == '\'' || damaged == example;
            // Of pieces one size at each place: a document is read in some tenths of a millisecond.
            constexpr std::size_t sizes[] = {1, 3, 7};
            turn == at % std::size(bytes) ? check(damaged, canBeTaken, {sizes[at % std::size(sizes)]})
                                          : check(damaged, canBeTaken, {});
        }
    }
    EXPECT_GT(outcomes.size(), 1u); // no more where a check finds all that is well-formed valid
}

TEST_P(HostileDocumentOf, AHundredThousandLevelsAreRefusedAtTheirPlace) {
    std::set<std::string_view> tags;
    for (Element const& element : ElementsOf(m_format.example)) {
        if (!tags.insert(element.name).second) {
            continue;
        }
        std::string const start = std::string(element.tag) + '>',
                          end = "</" + std::string(element.name) + '>';
        ReadReport report;
        EXPECT_FALSE(ReadText(*m_format.make(), Repeat(start, 100'000), &report));
        ReadReport::Entry const& last = report.m_entries.back();
        bool const isTooDeep = last.kind == ReadReport::Kind::DocumentError;
        EXPECT_TRUE(isTooDeep || last.kind == ReadReport::Kind::RefusedDocument);
        EXPECT_TRUE(!isTooDeep || last.column == 1'024 * start.size() + 1) << start;
        std::string const document = Repeat(start, 1'024) + Repeat(end, 1'024);
        EXPECT_EQ(FaultOf(m_format, document), "") << start;
        EXPECT_EQ(ReadText(*m_format.make(), document), isTooDeep) << start;
    }
}

TEST(HostileDocument, HoldsTextsOfAnyLengthAndAllCharacters) {
    for (Format const& format : WrittenFormats()) {
        for (std::wstring const& text : {std::wstring(200'000, L'A'), std::wstring(200'000, L'\t'),
                                         std::wstring(200'000, L'&'), AllCharacters()}) {
            auto const subject = format.make(), back = subject->Fresh();
            subject->SetText(text);
            EXPECT_TRUE(ReadText(*back, WriteText(*subject)));
            std::string const document = WriteText(*subject), again = WriteText(*back);
            EXPECT_TRUE(Kept(again) == Kept(document)) << format.name;
        }
    }
}

TEST(HostileDocument, HasTensOfThousandsOfSiblings) {
    struct Row {
        char const* format;
        char const *before, *repeated, *after; ///< "#" is another number each time
        std::size_t each;                      ///< characters written for each repetition
        std::size_t memory = 64;               ///< bytes for each byte of the document, at the most
    };
    Row const rows[] = {
        {"GenericParameters", "<R><Z>", "<Both Name='#'/>", "</Z></R>", 8},
        {"GenericParameters", "<R><N>", "<Item>#</Item>", "</N></R>", 3},
        {"GenericParameters", "<R>", "<U/><C/><M><Item/></M>", "</R>", 0},
        {"MachineParameters", "<R><Property Name='Z'>", "<Profile Name='#'/>", "</Property></R>", 8},
        {"MachineParameters", "<R><Property Name='N'>", "<Instance>#</Instance>", "</Property></R>", 3},
        {"MetaFile", "<R><ProfileEditor>", "<A/>", "</ProfileEditor></R>", 2, 400},
        {"MetaFile", "<R><ProfileEditor>", "<L# ProfilesXMLName=''><A><B/></A></L#>", "</ProfileEditor></R>",
         4, 80},
        {"MetaFile", "<R>", "<JobConfigurator/><ProfileEditor/><A#/>", "</R>", 2, 80},
        {"MetaFile", "<R><ResourceDictionary>", "<Entry Key='#'><Translation Language='#'/></Entry>",
         "</ResourceDictionary></R>", 0},
        {"PropertyTemplate", "<R><MachineParameters>", "<PropertyNode Name='#' ProfileList=''/>",
         "</MachineParameters></R>", 2},
        {"PropertyTemplate", "<R>", "<PropertyNode/><PropertyNode Name='A'/><X/>", "</R>", 0},
        {"PropertyTemplate", "<R><Defaults>", "<PropertyNode Name='A' Type='ProfileName' ProfileName='#'/>",
         "</Defaults></R>", 2},
        {"Ticket", "<R><Defaults>", "<Property Name='#' Type='integer'>#</Property>", "</Defaults></R>", 4},
        {"Ticket", "<R><ObjectProperties>", "<Instance uuid='#'/>", "</ObjectProperties></R>", 8},
        {"Filter", "<R", " a#=''", "/>", 0},
    };
    constexpr std::size_t Count = 10'000;
    for (Row const& row : rows) {
        std::string document = row.before;
        for (std::size_t number = Count; number != 0; --number) { // against the order of what holds them
            for (char const character : std::string_view(row.repeated)) {
                document += character == '#' ? std::to_string(number) : std::string(1, character);
            }
        }
        document += row.after;
        auto const subject = FormatCalled(row.format).make(), back = subject->Fresh();
        ReadReport report;
        MemoryPeak const peak;
        EXPECT_TRUE(ReadText(*subject, document, &report)) << row.repeated;
        EXPECT_LE(peak.Bytes(), row.memory * document.size()) << row.repeated;
        EXPECT_TRUE(ReadText(*back, WriteText(*subject))) << row.repeated;
        EXPECT_EQ(subject->Use(), "") << row.repeated;
        EXPECT_GE(WriteText(*subject).size(), row.each * Count) << row.repeated;
    }
}
