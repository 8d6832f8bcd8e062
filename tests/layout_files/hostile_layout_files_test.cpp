// SPDX-License-Identifier: Apache-2.0
#include "tests/layout_files/hostile_layout.h"
#include "tests/support/generated_layout.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

std::string Repeat(std::string const& text, std::size_t times) {
    std::string all;
    for (; times != 0; --times) {
        all += text;
    }
    return all;
}

/// A chain of groups in the part configurator, which both formats write.
LayoutNode& AddChain(ParameterLayout& layout, std::size_t nodes) {
    LayoutNode* node = layout.m_partConfigurator;
    for (; nodes != 0; --nodes) {
        node = node->AddNode(L"N");
    }
    return *node;
}

void ExpectFailedWrite(LayoutFormat const& format, ParameterLayout const& layout, wchar_t const* path) {
    TemporaryFolder const folder;
    Fill(folder / "file", "old");
    WriteReport report;
    EXPECT_FALSE(format.writeFile(layout, (folder / "file").wstring(), &report)) << format.name;
    EXPECT_FALSE(report.m_sentence.empty());
    EXPECT_EQ(report.m_path.substr(0, std::wstring(path).size()), path);
    EXPECT_EQ(ContentOf(folder / "file"), "old");
    EXPECT_EQ(folder.CountEntries(), 1);
    EXPECT_EQ(WriteText(format, layout), "");
}

} // namespace

TEST(HostileLayoutFile, OfAnyElementsAnywhereGivesALayoutThatWorks) {
    std::set<std::string> outlines;
    for (unsigned seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        std::string const document = HostileDocument([&](std::size_t below) { return random() % below; });
        for (LayoutFormat const& format : LayoutFormats) {
            EXPECT_EQ(FaultOf(format, document), "") << format.name << ": " << document;
            ParameterLayout layout;
            ReadText(format, layout, document);
            outlines.insert(OutlineOfChanges(layout));
        }
    }
    EXPECT_GT(outlines.size(), 500u) << "the documents should differ";
}

TEST(HostileLayoutFile, MayMakeATreeOf256LevelsAndNoMore) {
    struct Row {
        LayoutFormat const& format;
        char const* before;
        std::string start, end;
        char const* after;
        std::size_t times; ///< to the limit
    };
    // A container without content makes a level with the element behind it, which no end tag leaves.
    std::string const dangling = "<L Type='ListContainer'/><A/><M Type='ListContainer' /><A/>";
    std::string const danglingBoth = "<K ProfilesXMLName=''/><L Type='ListContainer'/><A/>"
                                     "<K Type='ListContainer'/><M ProfilesXMLName=''/><A/>";
    Row const rows[] = {
        {MetaFile, "<R><PartConfigurator>", "<A>", "</A>", "</PartConfigurator></R>", 255},
        {MetaFile, "<R>", "<A>1", "</A>", "</R>", 256},
        {MetaFile, "<R>", "<L Type='ListContainer'><A>", "</A></L>", "</R>", 256},
        {MetaFile, "<R><ProfileEditor>", "<L ProfilesXMLName=''><A>", "</A></L>", "</ProfileEditor></R>",
         255},
        {MetaFile, "<R>", dangling, "", "</R>", 128},
        {MetaFile, "<R><ProfileEditor><X>", danglingBoth, "", "</X></ProfileEditor></R>", 127},
        {MetaFile, "<R><JobConfigurator><PlatformConfigurator><PartOptions>", dangling, "",
         "</PartOptions></PlatformConfigurator></JobConfigurator></R>", 127},
        {PropertyTemplate, "<R>", "<PropertyNode Name='A'>", "</PropertyNode>", "</R>", 256},
        {PropertyTemplate, "<R><MachineParameters>",
         "<PropertyNode Name='A' Type='Complex' List='' ProfileList=''>", "</PropertyNode>",
         "</MachineParameters></R>", 255},
        {PropertyTemplate, "<R><Defaults>", "<PropertyNode Name='A' Type='Complex'>", "</PropertyNode>",
         "</Defaults></R>", 254},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.before + row.start);
        auto const document = [&](std::size_t times) {
            return row.before + Repeat(row.start, times) + Repeat(row.end, times) + row.after;
        };
        ParameterLayout layout, refused;
        EXPECT_TRUE(ReadText(row.format, layout, document(row.times)));
        EXPECT_EQ(Depth(layout), 256u);
        EXPECT_EQ(FaultOf(row.format, document(row.times)), "");
        ReadReport report;
        ASSERT_FALSE(ReadText(row.format, refused, document(row.times + 1), &report));
        EXPECT_EQ(report.m_entries.back().kind, ReadReport::Kind::RefusedDocument);
        EXPECT_EQ(refused.m_categoryOption.GetNode(), nullptr);
        EXPECT_EQ(FaultOf(row.format, document(row.times + 99)), "");
        EXPECT_EQ(FaultOf(row.format, document(row.end.empty() ? 100'000 : 1'100)), "");
    }
}

TEST(LayoutFile, AddsToTheLayoutAndRenamesItsRoot) {
    for (LayoutFormat const& format : LayoutFormats) {
        ParameterLayout layout;
        EXPECT_TRUE(ReadText(format, layout, "<q:S xmlns:q='u'/>"));
        EXPECT_EQ(layout.m_name, L"S");
        for (std::size_t const size : {5u, 6u}) {
            EXPECT_TRUE(
                ReadText(format, layout, "<q:T xmlns:q='u'><PropertyNode Name='PropertyNode'/></q:T>"));
            EXPECT_EQ(layout.Size(), size) << format.name;
            EXPECT_EQ(layout.GetNode(L"PropertyNode"), layout.Back());
            EXPECT_EQ(layout.m_profileEditor.GetNode(), layout.GetNode(L"ProfileEditor"));
        }
        EXPECT_EQ(layout.m_name, L"T");
    }
}

TEST(HostileLayoutFile, NeverLeavesTheLayoutAtTheTop) {
    for (LayoutFormat const& format : LayoutFormats) {
        LayoutNode above(L"Above", Group, nullptr);
        auto* const layout = new ParameterLayout;
        above.AppendNode(layout);
        ParameterLayout copy(*layout); // its handles, and so its sections, stand in the tree of the source
        for (ParameterLayout* const target : {layout, &copy}) {
            EXPECT_TRUE(
                ReadText(format, *target,
                         "<R><PropertyNode/><PropertyNode Name='A'/><Entry/><Entry/><R/><MachineParameters>"
                         "<PropertyNode/><PropertyNode/><PropertyNode/><PropertyNode Name='B'/>"
                         "</MachineParameters></R>"));
        }
        EXPECT_EQ(above.Size(), 1u);
        EXPECT_GT(copy.Size(), 4u);
    }
}

TEST(HostileLayoutFile, MayEndAtAnyByte) {
    std::string const document =
        "<R><ProfileEditor><L CategoriesName='c'><I Type='Int' DisplayName='d'>5</I></L><A/></ProfileEditor>"
        "<ResourceDictionary><Entry Key='k'><Translation "
        "Language='l'>t</Translation></Entry></ResourceDictionary>"
        "<MachineParameters><PropertyNode Name='A' ProfileList=''><PropertyNode/></PropertyNode>"
        "</MachineParameters><Minor/><PropertyNode Name='&lt;'/></R>";
    for (LayoutFormat const& format : LayoutFormats) {
        ParameterLayout whole;
        EXPECT_TRUE(ReadText(format, whole, document));
        EXPECT_NE(whole.m_categoryOption.GetNode(), nullptr);
        for (std::size_t size = 0; size < document.size(); ++size) {
            ParameterLayout layout;
            EXPECT_FALSE(ReadText(format, layout, document.substr(0, size))) << size;
            EXPECT_EQ(layout.m_categoryOption.GetNode(), nullptr);
            EXPECT_EQ(FaultOf(format, document.substr(0, size)), "") << size;
        }
    }
}

TEST(HostileLayoutFile, MayHaveTensOfThousandsOfSiblings) {
    struct Row {
        LayoutFormat const& format;
        char const *before, *repeated, *after;
        std::size_t nodes; ///< for each repetition
    };
    Row const rows[] = {
        {MetaFile, "<R><ProfileEditor>", "<A/>", "</ProfileEditor></R>", 1},
        {MetaFile, "<R><ProfileEditor>", "<L# ProfilesXMLName=''><A><B/></A></L#>", "</ProfileEditor></R>",
         2},
        {MetaFile, "<R>", "<JobConfigurator/><ProfileEditor/><p:A#/>", "</R>", 2},
        {MetaFile, "<R><ResourceDictionary>", "<Entry Key='#'><Translation Language='#'/></Entry>",
         "</ResourceDictionary></R>", 0},
        {PropertyTemplate, "<R><MachineParameters>", "<PropertyNode Name='#' ProfileList=''/>",
         "</MachineParameters></R>", 1},
        {PropertyTemplate, "<R>", "<PropertyNode/><PropertyNode Name='A'/><X/>", "</R>", 1},
        {PropertyTemplate, "<R><Defaults>", "<PropertyNode Name='A' Type='ProfileName' ProfileName='#'/>",
         "</Defaults></R>", 1},
    };
    constexpr std::size_t Count = 20'000;
    for (Row const& row : rows) {
        std::string document = row.before;
        for (std::size_t number = Count; number != 0; --number) { // against the order of the index
            for (char const character : std::string(row.repeated)) {
                document += character == '#' ? std::to_string(number) : std::string(1, character);
            }
        }
        document += row.after;
        ResourceDictionary dictionary;
        ParameterLayout layout;
        layout.SetResourceDictionary(&dictionary);
        EXPECT_TRUE(ReadText(row.format, layout, document));
        EXPECT_GE(Outline(layout).size(), row.nodes * 2 * Count) << row.repeated;
        ParameterLayout const copy(layout);
        EXPECT_EQ(WriteText(PropertyTemplate, copy), WriteText(PropertyTemplate, layout));
        WriteText(MetaFile, layout);
        ParameterDatabase const database(&layout);
        WriteText(database);
    }
}

TEST(FailedLayoutWrite, LeavesTheOldFile) {
    ParameterLayout badName, badText, badRoot;
    AddChain(badName, 2).AddNode(L"a b");
    AddChain(badText, 2).AddNode(L"S", String, std::wstring(L"x\xD800"));
    badRoot.m_name = L"1";
    ExpectFailedWrite(MetaFile, badName, L"SomeRootname/PartConfigurator/N/N");
    ExpectFailedWrite(MetaFile, badText, L"SomeRootname/PartConfigurator/N/N/S");
    ExpectFailedWrite(MetaFile, badRoot, L"");
    ExpectFailedWrite(
        PropertyTemplate, badText,
        L"KlvrPropertyTemplate/BuildTicket/PartOverrides/PropertyNode/PropertyNode/PropertyNode");
    for (ParameterLayout const* layout : {&badName, &badRoot}) {
        EXPECT_NE(WriteText(PropertyTemplate, *layout), "") << "names stand in attributes or nowhere";
    }
}

TEST(FailedLayoutWrite, OfATreeTooDeepToBeReadAgainLeavesTheOldFile) {
    for (std::size_t const nodes : {1'020u, 1'021u, 1'022u, 1'023u, 100'000u}) {
        ParameterLayout layout, back;
        AddChain(layout, nodes);
        for (LayoutFormat const& format : LayoutFormats) {
            std::size_t const most = format.readFile == MetaFile.readFile ? 1'022 : 1'021;
            if (nodes > most) {
                ExpectFailedWrite(format, layout, L"");
            } else {
                ReadReport report;
                EXPECT_FALSE(ReadText(format, back, WriteText(format, layout), &report));
                EXPECT_EQ(report.m_entries.back().kind, ReadReport::Kind::RefusedDocument) << "well-formed";
            }
        }
    }
}

TEST(LayoutRoundTrip, OfAGeneratedLayoutKeepsWhatTheFormatHolds) {
    for (unsigned seed = 0; seed < 30; ++seed) {
        auto const layout = GeneratedLayout(seed, 60);
        ParameterLayout second, third;
        // An element "Options" becomes nodes, whose parent loses its default with the next writing.
        std::string const first = WriteText(MetaFile, *layout);
        ASSERT_TRUE(ReadText(MetaFile, second, first)) << first;
        std::string const written = WriteText(MetaFile, second);
        ASSERT_TRUE(ReadText(MetaFile, third, written));
        EXPECT_EQ(ContentIn(WriteText(MetaFile, third), "ProfileEditor"),
                  ContentIn(written, "ProfileEditor"));
    }
}
