// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"

#include <gtest/gtest.h>

using namespace TestSupport;

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
        {WholeMetaFile, "<R><JobConfigurator><PartConfigurator>", "<L Type='ListContainer'><A>", "</A></L>",
         "</PartConfigurator></JobConfigurator></R>", 255},
        {WholeMetaFile, "<R><Version><Major Type='String'><InheritOverrides>", "<Options Visible='True'>",
         "</Options>", "</InheritOverrides></Major></Version></R>", 254},
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
        EXPECT_EQ(FaultOf(FormatCalled(row.format.name), document(row.times)), "");
        ReadReport report;
        ASSERT_FALSE(ReadText(row.format, refused, document(row.times + 1), &report));
        EXPECT_EQ(report.m_entries.back().kind, ReadReport::Kind::RefusedDocument);
        EXPECT_EQ(refused.m_categoryOption.GetNode(), nullptr);
        EXPECT_EQ(FaultOf(FormatCalled(row.format.name), document(row.times + 99)), "");
        EXPECT_EQ(FaultOf(FormatCalled(row.format.name), document(row.end.empty() ? 100'000 : 1'100)), "");
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
