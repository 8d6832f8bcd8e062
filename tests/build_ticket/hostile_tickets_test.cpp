// SPDX-License-Identifier: Apache-2.0
#include "tests/build_ticket/ticket_text.h"
#include "tests/layout_files/hostile_layout.h"
#include "tests/support/failing_allocator.h"

#include <gmock/gmock.h>

using namespace TestSupport;

namespace {

char const* const SmallTicket =
    "<R><Info><Source Id='s'/></Info><Defaults><Property Name='a' Type='integer'>5</Property></Defaults>"
    "<PartOverrides><Instance uuid='p' type='object'><Property Name='b' Type='ComplexArray'><Property>"
    "<Property Name='c' Type='FileContent'><Name>n</Name><Data>AP8=</Data></Property></Property></Property>"
    "</Instance></PartOverrides><ObjectProperties><Instance uuid='o'><Component uuid='d'><Property Name='e' "
    "Type='Complex' Deleted='1'/></Component></Instance></ObjectProperties></R>";

/// A well-formed document of the words of tickets, where they belong and anywhere else.
std::string HostileTicket(unsigned seed) {
    static std::vector<std::string_view> const tags = Split(
        "Property|Property|Property|Component|Property|Instance|PartOverrides|ObjectProperties|Defaults|"
        "Info|Source|Name|Data|X");
    static std::vector<std::string_view> const attributes = Split("Name|Type|uuid|type|Id|Deleted");
    static std::vector<std::string_view> const types =
        Split("Complex|Complex2|ComplexArray|number|integer|string|bool|FileContent|SubProperties|Unknown");
    static std::vector<std::string_view> const words =
        Split("a|b|ObjectType|PartName||Platform|PartInstance|UniquePart|True|7|AP8=|object|&lt;&#x1F600;|"
              "01234567-89ab-cdef-0123-456789abcdef|{01234567-89AB-CDEF-0123-456789abcdef}|"
              "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx");
    std::mt19937 random(seed);
    auto const choose = [&](std::size_t below) { return random() % below; };
    auto const any = [&](auto const& texts) { return texts[choose(texts.size())]; };
    std::string document;
    std::vector<std::string_view> open;
    auto const openElement = [&](std::string_view tag) {
        document.append("<").append(tag);
        for (std::string_view const name : attributes) {
            if (choose(6) != 0) {
                document.append(" ").append(name).append("='").append(any(name == "Type" ? types : words));
                document += '\'';
            }
        }
        document += '>';
        open.push_back(tag);
    };
    openElement("R");
    for (std::size_t steps = choose(250); steps != 0; --steps) {
        std::size_t const step = choose(16);
        if (step < 8) {
            openElement(any(tags));
        } else if (step == 8 && choose(20) == 0) {
            for (std::size_t count = choose(600); count != 0; --count) {
                openElement(tags[count % 5]);
            }
        } else if (step < 10) {
            document += any(words);
        } else if (open.size() > 1) {
            document.append("</").append(open.back()).append(">");
            open.pop_back();
        }
    }
    for (; !open.empty(); open.pop_back()) {
        document.append("</").append(open.back()).append(">");
    }
    return document;
}

} // namespace

TEST(HostileTicket, OfAnyElementsAnywhereGivesATicketThatWorks) {
    ParameterLayout layout;
    layout.m_partConfigurator->SetPropName(L"a");
    std::set<std::string> dumps;
    for (unsigned seed = 0; seed < 200; ++seed) {
        BuildTicket ticket(&layout), once(nullptr), twice(nullptr);
        ReadReport report;
        std::string const document = HostileTicket(seed);
        bool const isRead = Load(ticket, document, &report); // or nested too deep
        EXPECT_EQ(isRead, report.m_entries.empty() ||
                              report.m_entries.back().kind > ReadReport::Kind::RefusedDocument);
        dumps.insert(Dump(ticket));
        // Spellings of one GUID may meet with the first saving; then nothing more changes.
        EXPECT_TRUE(Load(once, Saved(ticket, 2)) && Load(twice, Saved(once, 2))) << document;
        EXPECT_EQ(Dump(twice), Dump(once, Form::Saved)) << document;
        once.ConvertFromInternalBuildTicket(ticket.GetPartOverrides());
        ticket.ConvertFromInternalBuildTicket(ticket.GetObjectProperties());
        ticket.CleanUp();
        EXPECT_TRUE(Load(once, Saved(ticket)) && Load(twice, Saved(once))) << document;
    }
    EXPECT_GT(dumps.size(), 100u) << "the documents should differ";
}

TEST(HostileTicket, MayEndAtAnyByte) {
    std::vector<std::string> dumps{""};
    std::string const document = SmallTicket;
    for (std::size_t size = 0; size < document.size(); ++size) {
        BuildTicket ticket(nullptr);
        EXPECT_FALSE(Load(ticket, document.substr(0, size))) << size;
        if (Dump(ticket) != dumps.back()) {
            dumps.push_back(Dump(ticket));
        }
    }
    std::string const part = "from's' defaults{a=5} item p 3{", file = part + "b[{c='n':00FF}]} object o";
    EXPECT_THAT(dumps, testing::ElementsAre("", "from's'", "from's' defaults{a=5}", part + '}', part + "b[]}",
                                            part + "b[{}]}", part + "b[{c='':}]}", part + "b[{c='n':}]}",
                                            part + "b[{c='n':00FF}]}", file + "{}", file + "{d:{e~{}}}"));
}

TEST(HostileTicket, MayBeNestedAsDeepAsADocument) {
    std::pair<std::string, std::string> const elements[] = {
        {"<Property Name='a' Type='Complex'>", "</Property>"},
        {"<Component uuid='a'>", "</Component>"},
        {"<Property Name='a' Type='ComplexArray'><Property>", "</Property></Property>"}};
    for (auto const& [start, end] : elements) {
        std::size_t const most = end == elements[2].second ? 511 : 1'022;
        std::string starts = "<R><Defaults>", ends = "</Defaults></R>";
        for (std::size_t times = 1; times <= most + 1; ++times) {
            starts += start;
            ends = end + ends;
            if (times >= most) {
                BuildTicket ticket(nullptr), back(nullptr);
                EXPECT_EQ(Load(ticket, starts + ends), times == most);
                EXPECT_TRUE(Load(back, Saved(ticket)));
                EXPECT_EQ(Dump(back), Dump(ticket));
            }
        }
    }
}

TEST(FailedTicketWrite, IsWhatBagsNestedWithoutEndGive) {
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
        WriteReport report;
        EXPECT_EQ(Saved(ticket, 0, &report), "");
        EXPECT_FALSE(report.m_sentence.empty());
        for (; !bags.empty(); bags.pop_back()) { // from within, since bags end their content by recursion
            bags.back()->RemoveProperty(L"a", false);
        }
    }
}

TEST(FailedTicketWrite, LeavesTheOldFile) {
    TemporaryFolder const folder;
    Fill(folder / "file", "old");
    for (int place = 0; place < 4; ++place) {
        BuildTicket ticket(nullptr);
        std::wstring const bad = L"\xFFFF";
        auto& store = *ticket.GetPartOverrides().GetProperties(
            KelAM::ExternalPropertyID(place == 0 ? bad : L"a"), true);
        store.AddProperty(place == 1 ? bad : L"a",
                          new HostProperty<std::wstring>(place == 2 ? bad : L"a", place == 3 ? bad : L"a"));
        WriteReport report;
        EXPECT_FALSE(SaveBuildTicket((folder / "file").wstring(), ticket, {}, &report));
        EXPECT_EQ(report.m_path,
                  L"KlvrBuildTicket/PartOverrides/Instance" + std::wstring(place == 0 ? L"" : L"/Property"));
        EXPECT_FALSE(report.m_sentence.empty());
        EXPECT_EQ(ContentOf(folder / "file"), "old");
        EXPECT_EQ(folder.CountEntries(), 1);
        EXPECT_EQ(Saved(ticket), "");
    }
}

TEST(TicketFile, IsFoundByItsPath) {
    TemporaryFolder const folder;
    BuildTicket ticket(nullptr), back(nullptr);
    Load(ticket, SmallTicket);
    EXPECT_TRUE(SaveBuildTicket((folder / "file").wstring(), ticket, {}));
    EXPECT_TRUE(LoadBuildTicket((folder / "file").wstring(), back));
    EXPECT_EQ(Dump(back), Dump(ticket, Form::Saved));
    WriteReport written;
    ReadReport read;
    EXPECT_FALSE(SaveBuildTicket((folder / "none/file").wstring(), ticket, {}, &written));
    EXPECT_FALSE(LoadBuildTicket((folder / "none").wstring(), back, &read));
    EXPECT_EQ(read.m_entries.at(0).kind, ReadReport::Kind::CannotRead);
    EXPECT_FALSE(written.m_sentence.empty() || read.m_entries[0].sentence.empty());
    std::istringstream failed(SmallTicket);
    failed.setstate(std::ios::failbit);
    EXPECT_FALSE(LoadBuildTicket(failed, back));
    EXPECT_EQ(Dump(back), Dump(ticket, Form::Saved));
}

TEST(FailedAllocationOfATicket, LeaksNothingAndLeavesOneThatCanBeUsed) {
    BuildTicket whole(nullptr);
    Load(whole, SmallTicket);
    for (auto const times : {AllocationFailure::Times::Once, AllocationFailure::Times::FromThenOn}) {
        EXPECT_GT(FailEachAllocation(
                      [&] {
                          BuildTicket ticket(whole);
                          ReadReport report;
                          Load(ticket, SmallTicket, &report);
                          ticket.ConvertFromInternalBuildTicket(whole.GetPartOverrides());
                          ticket.CleanUp();
                          Saved(ticket);
                      },
                      times),
                  50u);
        auto ticket = std::make_unique<BuildTicket>(nullptr);
        auto const check = [&](std::size_t, bool completed) {
            BuildTicket back(nullptr);
            EXPECT_TRUE(Load(back, Saved(*ticket)) && Load(*ticket, SmallTicket));
            EXPECT_TRUE(!completed || Dump(back) == Dump(whole, Form::Saved));
            ticket = std::make_unique<BuildTicket>(nullptr);
        };
        EXPECT_GT(FailEachAllocation([&] { Load(*ticket, SmallTicket); }, check, times), 50u);
    }
}
