// SPDX-License-Identifier: Apache-2.0
#include "tests/build_ticket/ticket_text.h"
#include "tests/layout_files/reading_cases.h"

#include <zantrel/layout/resource_dictionary.h>

using namespace TestSupport;

namespace {

std::string WrittenEditor(ParameterLayout const& layout) {
    return ContentOfElement(Flat(WriteText(MetaFile, layout)), "ProfileEditor");
}

} // namespace

TEST(MetaFileReader, MakesANodeOfEachParameterElement) {
    ReadingCase const rows[] = {
        // The type
        {"<A/><B> \n </B><C> 1.5</C>", "A:String B:String C:Double' 1.5'"},
        {"<A><B>1</B></A><C>1<B/></C>", "A{B:Double'1'} C:Double'1'{B:String}"},
        {"<A Type='Int'>7</A><B Type='Double' Precision='2'/><C Type='Distance'>0.1</C><D Type='Bool'>x</D>",
         "A:Int'7' B:Double C:Distance'0.1'mm D:Bool'x'", "dropped D passed "},
        {"<A Type='Int' Typ='Int' Max='1'/><B IsReadOnly='True' Key=''/>", "A:Int B:String",
         "unknown A unknown B passed "},
        {"<A Type='String'> x </A><B Type='OptionsFromProfiles' ProfileName='P'>x</B>",
         "A:String' x ' B:Profiles'x'(from=P)"},
        {"<A Type='FileAbsolute' ProfileName='P'>x</A><B Type='FileAttachment'>x</B>",
         "A:FileAbsolute'x' B:FileAttachment'x'"},
        {"<A Type='StandardOptions'>x</A>", "A:StandardOptions'x'"},
        {"<A Type=''>x</A><B Type='int'>x</B><C Type='Group'>x</C><D Type='TransformListContainer'><I/></D>",
         "A:String'x' B:String'x' C:String'x' D:String{I:String}", "dropped A dropped B dropped C dropped D"},
        {"<A Options=''>x</A><B Type='Int' Options='x'/>", "A:Options'x' B:Int", "passed "},
        {"<A Options=''><Options><Option>x</Option></Options></A>", "A:Options{Options{Option:Double'x'}}",
         "passed "},
        // Names
        {"<A/><A/><p:A/><Entry/><ResourceDictionary/>",
         "A:String A:String p:A:String Entry:String ResourceDictionary:String"},
        {"<A PropertyName='p' DisplayName='d'/>", "A:String(property=p shown=d)"},
        {"<ProfileEditor/><PartOptions><X/></PartOptions>", "ProfileEditor:String PartOptions{X:String}"},
        // Containers
        {"<L @L DisplayName='c'><I Type='Int' DisplayName='d'>5</I></L><A/>",
         "L:Int'5'[I](shown=d container=c) A:String"},
        {"<L ProfilesXMLName='x'><I><A/></I></L><A/>", "L<I>{A:String} A:String"},
        {"<L @L @P CategoriesName=''><I/></L><M Type='Int' @P CategoriesName=''><I/></M><O @P><I/></O>",
         "L:String[I] M:String<I> O:String<I>", "passed "},
        {"<L @L><L><A/></L></L><A/>", "L[L]{A:String} A:String"},
        {"<L @L><P @P><I/></P></L>", "P:String[I]<I>"},
        {"<P @P DisplayName='p'/><L @L/><A/><B/>", "L[A]<A>{B:String}"},
        // What makes no node in the editor does so elsewhere.
        {"<A><ParameterStructure/><AdditionalConfiguration/></A>",
         "A{ParameterStructure:String AdditionalConfiguration:String}"},
        {"<A><OverrideEntry><B/></OverrideEntry><InheritOverrides/></A>", "A{B:String}"},
    };
    ExpectOutlines(MetaFile, rows, "PartConfigurator", "PartConfigurator");
}

TEST(MetaFileReader, FindsTheNodesOfEveryLayoutWhereTheyStand) {
    ReadingCase const rows[] = {
        {"", ""},
        {"<ProfileEditor/><PartConfigurator/>", "ProfileEditor:String PartConfigurator:String"},
        {"<ProfileEditor><A/></ProfileEditor><ProfileEditor><B/></ProfileEditor>",
         "ProfileEditor{A:String B:String}"},
        {"<ProfileEditor><ParameterStructure><A/></ParameterStructure><AdditionalConfiguration>"
         "<InheritOverrides/><OverrideEntry/><B/></AdditionalConfiguration></ProfileEditor>",
         "ProfileEditor{A:String B:String}", "untaken AdditionalConfiguration"},
        {"<PlatformConfigurator><PartOptions><A/></PartOptions><PlatformOptions/><B/></PlatformConfigurator>",
         "PlatformConfigurator{PlatformOptions:String PartOptions{A:String} B:String}"},
        {"<JobConfigurator><A/></JobConfigurator><B/>", "JobConfigurator{A:String} B:String"},
        // The end of a section in it leads to the root, and so its own end tag finds it no more.
        {"<JobConfigurator><PartConfigurator><A/></PartConfigurator><B/></JobConfigurator><C/>",
         "PartConfigurator{A:String} JobConfigurator B:String C:String"},
        {"<JobConfigurator><PlatformConfigurator><PartOptions><A/></PartOptions></PlatformConfigurator>"
         "</JobConfigurator>",
         "PlatformConfigurator{PlatformOptions PartOptions{A:String}} JobConfigurator"},
        {"<JobConfigurator><ProfileEditor/></JobConfigurator>", "JobConfigurator{ProfileEditor:String}"},
        {"<PlatformOptions/><ParameterStructure/><AdditionalConfiguration/><p:ProfileEditor/>",
         "PlatformOptions:String ParameterStructure:String AdditionalConfiguration:String "
         "p:ProfileEditor:String"},
        {"<Entry><A/></Entry><OverrideEntry/><R><B/></R><C/>", "A:String R{B:String} C:String"},
        {"<ResourceDictionary><Entry Key='k'><Translation Language='l'>t</Translation></Entry>"
         "</ResourceDictionary><B/>",
         "Translation:Double't' B:String",
         "dropped ResourceDictionary dropped Translation unknown Translation"},
        // "Version" is no anchor, but the node "Minor" in it is.
        {"<Version><Major Type='Int'>2</Major></Version>", "Version{Major:Int'2'}"},
        {"<Minor>5<A>6</A></Minor><B/>", "Version{Major:Int'1' Minor:Int'0' B:String}"},
        // A container without an item waits, here for an element of another section.
        {"<ProfileEditor><L @L/></ProfileEditor><PartConfigurator><A/><B/></PartConfigurator><C/>",
         "ProfileEditor:String PartConfigurator{L[A]{B:String}} C:String"},
        // Such a node is left by the end of its section only.
        {"<ProfileEditor><L @L/><A/></ProfileEditor><JobConfigurator><L @L/><A/></JobConfigurator><B/>",
         "ProfileEditor{L[A]} JobConfigurator{L[A]} B:String"},
        {"<PlatformConfigurator><PlatformOptions><L @L/><A/></PlatformOptions><PartOptions>"
         "<L @L/><A/></PartOptions><B/><L @L/><A/></PlatformConfigurator><C/>",
         "PlatformConfigurator{PlatformOptions{L[A]} PartOptions{L[A]} B:String L[A]} C:String"},
        {"<ProfileEditor><L CategoriesName='x'><I DisplayName='d'><A/></I></L></ProfileEditor>",
         "ProfileEditor{L<I>*(shown=d){A:String}} PlatformConfigurator{PlatformOptions{"
         "Category:Profiles(property=BuildProcessor.ProfileCategory shown=d from=L)} PartOptions}"},
    };
    ExpectOutlines(MetaFile, rows);
}

TEST(MetaFileReader, FillsTheDictionaryOfTheLayout) {
    ResourceDictionary dictionary;
    ParameterLayout layout;
    layout.SetResourceDictionary(&dictionary);
    ReadReport report;
    EXPECT_TRUE(
        ReadText(MetaFile, layout,
                 Document("<ResourceDictionary><Translation Language='l'>before</Translation>"
                          "<Entry Key='k'><Translation Language='l'>old</Translation></Entry>"
                          "<Entry Key='k'><X><Translation Language='m'> \xC3\xA4 </Translation></X>"
                          "<Translation>none</Translation><Translation Language='l'>new</Translation>"
                          "<Translation Language='e'/></Entry><Translation Language='n'>after</Translation>"
                          "<Entry><Translation Language='o'>keyless</Translation></Entry>"
                          "</ResourceDictionary><A/>"),
                 &report));
    EXPECT_EQ(Dump(dictionary), "{{l='before' o='keyless'} k{e='' l='new' m=' \xC3\xA4 ' n='after'}}");
    EXPECT_EQ(OutlineOfChanges(layout), "A:String");
    EXPECT_EQ(Reported(report), "untaken X dropped Translation dropped Entry");
}

TEST(MetaFileReader, CallsAFileValidThatFillsTheProfileEditor) {
    std::pair<char const*, bool> const rows[] = {
        {"<A Min='1'/>", true},
        {"<AdditionalConfiguration><A/></AdditionalConfiguration>", true},
        {"<ParameterStructure/>", false},
        {"<L Type='ListContainer'/>", false},
        {"</ProfileEditor><A/><ProfileEditor>", false},
        {"<ProfileEditor>", false},
        {"<A/><B>", false},
    };
    TemporaryFolder const folder;
    std::filesystem::path const path = folder / "file";
    ReadReport report;
    EXPECT_FALSE(IsValidFile(path, &report));
    EXPECT_EQ(report.m_entries.at(0).kind, ReadReport::Kind::CannotRead);
    ParameterLayout layout;
    EXPECT_FALSE(ReadFile(layout, path));
    for (auto const& [document, isValid] : rows) {
        Fill(path, std::string("<R><ProfileEditor>") + document + "</ProfileEditor></R>");
        ReadReport check;
        EXPECT_EQ(IsValidFile(path.wstring(), &check), isValid) << document;
        EXPECT_TRUE(document != rows[0].first || check.m_entries.empty()) << "nothing is lost of it";
    }
}

TEST(MetaFileWriter, WritesANewLayoutAsOneDocument) {
    std::string const document =
        "<SomeRootname xmlns='https://schemas.zantrel.example/build_processing/profiles_meta'>"
        "<Version><Major Type='Int'>1</Major><Minor Type='Int'>0</Minor></Version><ProfileEditor/>"
        "<PlatformConfigurator><PlatformOptions/><PartOptions/></PlatformConfigurator><PartConfigurator/>"
        "</SomeRootname>";
    TemporaryFolder const folder;
    EXPECT_TRUE(WriteFile(ParameterLayout(), folder / "file"));
    EXPECT_EQ(Flat(ContentOf(folder / "file")), document);
    EXPECT_EQ(Flat(WriteText(MetaFile, ParameterLayout())), document);
}

TEST(MetaFileWriter, WritesAContainerAsTwoElements) {
    struct Row {
        void (*change)(LayoutNode&);
        bool isFull;
        std::string outer, inner;
        char const* outline;
    };
    std::string const conditions = " VisibilitySource='s1;s2' VisibleValue='True;v;'"
                                   " EditabilitySource='s2;s1' EditableValue='e;False'";
    std::string const named = " DisplayName='cn' Description='cd' Visible='False'";
    std::string const limits = " Multiplicity='2' MultiplicityLimit='9' MultiplicityLimitMessage='mx'"
                               " MultiplicityMinLimit='1' MultiplicityMinLimitMessage='mi'";
    std::string const growing = " CanUserAddRemove='True' CanUserSort='True'" + limits + " RemovingType=";
    std::string const item = "<Item Type='Int'/>";
    std::string const fullItem = "<Item Type='Int' VisibilityRequest='vr' DisplayName='in' Postfix='po'";
    Row const rows[] = {
        {[](LayoutNode& node) { node.SetList(true, L"Item", L""); }, false,
         " Type='ListContainer' CanUserAddRemove='True' CanUserSort='False' RemovingType='RemoveAny'", item,
         "N:Int[Item]"},
        {[](LayoutNode& node) { node.SetList(true, L"Item", L"")->SetUserCanAddRemove(false); }, false,
         " Type='ListContainer' CanUserAddRemove='False' CanUserSort='False'", item, "N:Int[Item]"},
        {[](LayoutNode& node) { node.SetProfile(true, L"Item"); }, false, " ProfilesXMLName='Item'", item,
         "N:Int<Item>"},
        {[](LayoutNode& node) { node.SetIsCategoryList(true); }, false, " CategoriesName='ListItem'",
         "<ListItem Type='Int'/>", "N:Int<ListItem>*"},
        {[](LayoutNode& node) { node.SetIsList(true)->SetUserCanRemoveAnyElement(false); }, true,
         named + " Type='ListContainer'" + conditions + growing + "'RemoveOnlyLast'", fullItem,
         "N:Int'd&'[Item](property=pn shown=in container=cn)"},
        {[](LayoutNode& node) { node.SetIsList(true)->SetCanBeTransformed(true)->SetIsProfileList(true); },
         true,
         named + " Type='TransformListContainer' PerformTransform='True' ProfilesXMLName='Item'" +
             conditions + growing + "'RemoveAny'",
         fullItem, "N:Int'd&'<Item>(property=pn shown=in container=cn)"},
        {[](LayoutNode& node) { node.SetCategoryList(true, L"Item"); }, true,
         named + " CategoriesName='Item'", fullItem, "N:Int'd&'<Item>*(property=pn shown=in container=cn)"},
    };
    for (Row const& row : rows) {
        ParameterLayout layout, back;
        LayoutNode& node = *layout.m_profileEditor->AddNode(L"N", Int, L"");
        if (row.isFull) {
            SetEverything(node, *layout.m_platformOptions, *layout.m_partOptions);
        }
        row.change(node);
        EXPECT_EQ(WrittenEditor(layout).find("<N" + row.outer + ">" + row.inner), 0u)
            << WrittenEditor(layout);
        ASSERT_TRUE(ReadText(MetaFile, back, WriteText(MetaFile, layout)));
        EXPECT_EQ(Outline(back.m_profileEditor->At(0)), row.outline);
    }
}

TEST(MetaFileWriter, LeavesOutTheCategoryOptionAndTheTextOfAGroup) {
    ParameterLayout layout;
    layout.m_profileEditor->AddNode(L"C")->SetCategoryList(true, L"Category")->AddNode(L"A", Group, L"a");
    layout.m_profileEditor->Back()->SetDefaultValue<std::wstring>(L"lost");
    layout.m_platformOptions->AddNode(L"O", Int, 1)->SetImageDescription(L"image", L"");
    layout.AddCategoryNodeIfNeeded();
    EXPECT_EQ(WrittenEditor(layout), "<C CategoriesName='Category'><Category><A>a</A></Category></C>");
    EXPECT_EQ(ContentOfElement(Flat(WriteText(MetaFile, layout)), "PlatformOptions"), "<O Type='Int'>1</O>");
}
