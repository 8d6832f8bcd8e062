// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

/// That nothing is written, since of what stands at `path`, and that the file and its folder are as they
/// were.
template <class Write> void ExpectFailedWrite(Write const& write, std::wstring const& path) {
    TemporaryFolder const folder;
    Fill(folder / "file", "old");
    WriteReport report;
    EXPECT_FALSE(write((folder / "file").wstring(), &report)) << StringConversion::NativeToUtf8(path);
    EXPECT_EQ(report.m_path.substr(0, path.size()), path);
    EXPECT_FALSE(report.m_sentence.empty());
    EXPECT_EQ(ContentOf(folder / "file"), "old");
    EXPECT_EQ(folder.CountEntries(), 1);
}

template <class T> auto WriterOf(DocumentIo<T> const& io, T const& object) {
    return [&](std::wstring const& path, WriteReport* report) { return io.writeFile(object, path, report); };
}

/// Where none is expected any will do.
bool IsOneOf(std::error_code const& error, std::errc expected) {
    return expected == std::errc() ? bool(error) : error == expected;
}

class FailedFileOf : public testing::TestWithParam<Format> {
protected:
    std::unique_ptr<Subject> const m_subject = GetParam().make();
    TemporaryFolder const m_folder;
};

std::string NameOf(testing::TestParamInfo<Format> const& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, FailedFileOf, testing::ValuesIn(WrittenFormats()), NameOf);

} // namespace

TEST_P(FailedFileOf, WhatXmlCannotCarryLeavesTheOldFile) {
    for (std::wstring const& text :
         {std::wstring(L"a\xFFFF"), std::wstring(L"cut \xD83D"), std::wstring(3, L'\0')}) {
        m_subject->SetText(text);
        auto const write = [&](std::wstring const& path, WriteReport* report) {
            return m_subject->WriteFile(path, report);
        };
        ExpectFailedWrite(write, GetParam().textPath);
        EXPECT_EQ(WriteText(*m_subject), "");
    }
}

TEST_P(FailedFileOf, IsNoticedWhereNoneCanBe) {
    struct Unflushed : std::stringbuf {
        int sync() override { return -1; }
    } unflushed;
    std::ostream out(&unflushed);
    std::istringstream in(GetParam().example);
    in.setstate(std::ios::failbit);
    std::pair<std::wstring, std::errc> const rows[] = {
        {L"", std::errc::invalid_argument},
        {(m_folder / "a/b").wstring(), std::errc::no_such_file_or_directory},
        {(m_folder / "").wstring(), std::errc()}, // systems differ in what they say of a folder
    };
    for (auto const& [path, error] : rows) {
        ReadReport read;
        WriteReport written, streamed;
        EXPECT_FALSE(m_subject->ReadFile(path, &read) || m_subject->Read(in));
        EXPECT_EQ(read.m_entries.at(0).kind, ReadReport::Kind::CannotRead);
        EXPECT_TRUE(IsOneOf(read.m_entries.at(0).error, error));
        EXPECT_FALSE(m_subject->WriteFile(path, &written) || m_subject->Write(out, &streamed));
        EXPECT_FALSE(written.m_sentence.empty() || streamed.m_sentence.empty());
        EXPECT_TRUE(IsOneOf(written.m_error, error));
        EXPECT_FALSE(streamed.m_error);
    }
    EXPECT_EQ(m_folder.CountEntries(), 0);
    EXPECT_EQ(WriteText(*m_subject), WriteText(*m_subject->Fresh()));
}

TEST(FailedParameterFile, OfATextAnywhereSaysWhere) {
    using Change = void (*)(ParameterNode);
    SmallLayout const layout;
    for (auto const& [path, change] : {
             std::pair<wchar_t const*, Change>(
                 L"Root/G/X",
                 [](ParameterNode editor) { editor.Get(L"G").Get(L"X").SetValueFromText(L"\xFFFE"); }),
             {L"Root/Z/Both", [](ParameterNode editor) { editor.Get(L"Z").AddProfile(L"cut \xD83D", true); }},
             {L"Root/AS/Item/Name",
              [](ParameterNode editor) {
                  editor.Get(L"AS").AddListNode(true).SetValue(KelAM::FileContent(L"\x1F", {}));
              }},
         }) {
        ParameterDatabase database(&layout);
        change(database.GetProfileEditor());
        ExpectFailedWrite(WriterOf(GenericParameters, database), path);
    }
    ParameterDatabase const unnamed(nullptr);
    ExpectFailedWrite(WriterOf(GenericParameters, unnamed), L"");
}

TEST(FailedParameterFile, OfANameThatIsNoXmlName) {
    for (wchar_t const* name :
         {L"", L"1", L"a b", L"-a", L"a\n", L"<", L"a\xD83D", L"a\x2028", L"\xD7", L"\U00020000"}) {
        for (int place = 0; place < 4; ++place) {
            ParameterLayout layout;
            layout.m_name = place == 0 ? name : L"Root";
            LayoutNode& group = *layout.m_profileEditor->AddNode(place == 1 ? name : L"G");
            group.AddNode(L"P")->SetProfile(true, place == 2 ? name : L"Profile");
            group.AddNode(L"N", Int, 1)->SetList(true, place == 3 ? name : L"Item", L"")->SetMultiplicity(1);
            ParameterDatabase database(&layout);
            database.GetProfileEditor().Get(&group).Get(L"P").AddProfile(L"p", true);
            ExpectFailedWrite(WriterOf(GenericParameters, database), place == 0 ? L"" : L"Root");
            if (place != 0 || *name == L'1') {
                ExpectFailedWrite(WriterOf(MetaFile, layout), place == 0 ? L"" : L"Root/ProfileEditor");
            }
            EXPECT_EQ(WriteText(PropertyTemplate, layout).empty(),
                      place == 1 && name == std::wstring_view(L"a\xD83D"))
                << "stands in attributes";
        }
    }
}

TEST(FailedLayoutFile, OfATreeTooDeepToBeReadAgain) {
    for (std::size_t const nodes : {255u, 256u, 1'023u, 100'000u}) {
        ParameterLayout layout;
        LayoutNode* node = layout.m_partConfigurator;
        for (std::size_t level = 0; level < nodes; ++level) {
            node = node->AddNode(L"N");
        }
        for (LayoutFormat const& format : LayoutFormats) {
            ParameterLayout back;
            if (nodes > 255) {
                ExpectFailedWrite(WriterOf(format, layout), L"");
            } else {
                EXPECT_TRUE(ReadText(format, back, WriteText(format, layout)));
            }
        }
    }
}

TEST(FailedLayoutFile, OfATagWithAPrefix) {
    for (int place = 0; place < 3; ++place) {
        ParameterLayout layout;
        layout.m_name = place == 0 ? L"p:a" : L"Root";
        LayoutNode& group = *layout.m_profileEditor->AddNode(place == 1 ? L"p:a" : L"G");
        group.SetProfile(true, place == 2 ? L"p:a" : L"Profile");
        for (auto const* const format : {&MetaFile, &WholeMetaFile}) {
            ExpectFailedWrite(WriterOf(*format, layout), place == 0 ? L"p:a" : L"Root/ProfileEditor");
        }
        EXPECT_NE(WriteText(PropertyTemplate, layout), "") << "stands in attributes";
    }
}

TEST(FailedTicketFile, OfATextAnywhereSaysWhere) {
    std::wstring const good = L"a", bad = L"\xFFFF";
    for (int place = 0; place < 4; ++place) {
        BuildTicket ticket(nullptr);
        auto& store = *ticket.GetPartOverrides().GetProperties(
            KelAM::ExternalPropertyID(place == 0 ? bad : good), true);
        store.AddProperty(place == 1 ? bad : good,
                          new HostProperty<std::wstring>(place == 2 ? bad : good, place == 3 ? bad : good));
        ExpectFailedWrite(WriterOf(TicketFile<2>, ticket),
                          place == 0   ? L"KlvrBuildTicket/PartOverrides/Instance"
                          : place == 1 ? L"KlvrBuildTicket/PartOverrides/Instance \"a\"/Property"
                                       : L"KlvrBuildTicket/PartOverrides/Instance \"a\"/Property \"a\"");
    }
}

TEST(FailedTicketFile, OfBagsNestedWithoutEnd) {
    using Bag = PersistentProperties;
    Bag* (*const nestings[])(Bag&) = {
        [](Bag& bag) { return bag.GetValuePointer<Bag>(L"a", true); },
        [](Bag& bag) { return static_cast<Bag*>(bag.GetValuePointer<KelAM::SubProperties>(L"a", true)); },
        [](Bag& bag) { return &bag.GetValuePointer<IndexedProperties<Bag>>(L"a", true)->AddProperty(); }};
    for (auto const nest : nestings) {
        BuildTicket ticket(nullptr);
        std::vector<Bag*> bags{&ticket.GetDefaults()};
        while (bags.size() < 100'000) {
            bags.push_back(nest(*bags.back()));
        }
        ExpectFailedWrite(WriterOf(TicketFile<2>, ticket), L"");
        for (; !bags.empty(); bags.pop_back()) { // from within, since bags end their content by recursion
            bags.back()->RemoveProperty(L"a", false);
        }
    }
}
