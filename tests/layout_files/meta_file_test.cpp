// SPDX-License-Identifier: Apache-2.0
#include "tests/layout_files/layout_formats.h"

#include <zantrel/layout/resource_dictionary.h>

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

struct ReadingCase {
    char const* content;
    char const* outline;
};

std::string InRoot(std::string const& content) { return "<R xmlns:p='u'>" + content + "</R>"; }

/// What WriteFile makes of the profile editor's children.
std::string WrittenEditor(ParameterLayout const& layout) {
    return ContentIn(WriteText(MetaFile, layout), "ProfileEditor");
}

} // namespace

TEST(MetaFileReader, MakesANodeOfEachParameterElement) {
    ReadingCase const rows[] = {
        // The type
        {"<A/>", "A:String"},
        {"<A> \n </A>", "A:String"},
        {"<A> 1.5</A>", "A:Double' 1.5'"},
        {"<A><B>1</B></A><C/>", "A{B:Double'1'} C:String"},
        {"<A>1<B/></A>", "A:Double'1'{B:String}"},
        {"<A Type='Int'>7</A>", "A:Int'7'"},
        {"<A Type='Double' Precision='2'/>", "A:Double"},
        {"<A Type='Distance'>0.1</A>", "A:Distance'0.1'mm"},
        {"<A Type='Bool'>x</A>", "A:Bool'x'"},
        {"<A Type='String'> x </A>", "A:String' x '"},
        {"<A Type='OptionsFromProfiles' ProfileName='P'>x</A>", "A:Profiles'x'(from=P)"},
        {"<A Type='FileAbsolute' ProfileName='P'>x</A>", "A:FileAbsolute'x'"},
        {"<A Type='FileAttachment'>x</A>", "A:FileAttachment'x'"},
        {"<A Type='StandardOptions'>x</A>", "A:StandardOptions'x'"},
        {"<A Type=''>x</A><B Type='int'>x</B><C Type='Group'>x</C>", "A:String'x' B:String'x' C:String'x'"},
        {"<A Type='TransformListContainer'><I Type='Int'/></A>", "A:String{I:Int}"},
        {"<A Options=''>x</A><B Type='Int' Options='x'/>", "A:Options'x' B:Int"},
        {"<A Options=''><Options><Option>x</Option></Options></A>", "A:Options{Options{Option:Double'x'}}"},
        // Names
        {"<A/><A/>", "A:String A:String"},
        {"<p:A/>", "p:A:String"},
        {"<A PropertyName='p' DisplayName='d'/>", "A:String(property=p shown=d)"},
        {"<ProfileEditor/><PlatformOptions><X/></PlatformOptions><B/>",
         "ProfileEditor:String PlatformOptions{X:String} B:String"},
        {"<Entry/><ResourceDictionary/>", "Entry:String ResourceDictionary:String"},
        // Containers
        {"<L Type='ListContainer' DisplayName='c'><I Type='Int' DisplayName='d'>5</I></L><A/>",
         "L:Int'5'[I](shown=d container=c) A:String"},
        {"<L ProfilesXMLName='x'><I><A/></I></L><A/>", "L<I>{A:String} A:String"},
        {"<L Type='ListContainer' ProfilesXMLName='' CategoriesName=''><I/></L>", "L:String[I]"},
        {"<L Type='Int' ProfilesXMLName='' CategoriesName=''><I/></L><M ProfilesXMLName=''><I/></M>",
         "L:String<I> M:String<I>"},
        {"<L Type='ListContainer'><L><A/></L></L><A/>", "L[L]{A:String} A:String"},
        {"<L Type='ListContainer'><P ProfilesXMLName=''><I/></P></L>", "P:String[I]<I>"},
        {"<P ProfilesXMLName='' DisplayName='p'/><L Type='ListContainer'/><A/><B/>", "L[A]<A>{B:String}"},
        // What makes no node
        {"<ParameterStructure><A/></ParameterStructure><B/>", "A:String B:String"},
        {"<AdditionalConfiguration><InheritOverrides/><OverrideEntry/><A/></AdditionalConfiguration>",
         "A:String"},
        {"<A><ParameterStructure/><AdditionalConfiguration/></A>",
         "A{ParameterStructure:String AdditionalConfiguration:String}"},
        {"<A><OverrideEntry><B/></OverrideEntry><InheritOverrides/></A>", "A{B:String}"},
    };
    for (ReadingCase const& row : rows) {
        ParameterLayout layout;
        EXPECT_TRUE(ReadText(MetaFile, layout,
                             InRoot(std::string("<ProfileEditor>") + row.content + "</ProfileEditor>")));
        EXPECT_EQ(Outline(*layout.m_profileEditor), std::string("ProfileEditor{") + row.outline + '}')
            << row.content;
    }
}

TEST(MetaFileReader, FindsTheNodesOfEveryLayoutWhereTheyStand) {
    ReadingCase const rows[] = {
        {"", ""},
        {"<ProfileEditor/><PartConfigurator/>", "ProfileEditor:String PartConfigurator:String"},
        {"<ProfileEditor><A/></ProfileEditor><ProfileEditor><B/></ProfileEditor>",
         "ProfileEditor{A:String B:String}"},
        {"<PlatformConfigurator><PartOptions><A/></PartOptions><PlatformOptions/><B/></PlatformConfigurator>",
         "PlatformConfigurator{PlatformOptions:String PartOptions{A:String} B:String}"},
        {"<JobConfigurator/>", "JobConfigurator:String"},
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
        {"<R><A/></R><B/>", "R{A:String} B:String"},
        {"<Entry><A/></Entry><OverrideEntry/>", "A:String"},
        {"<ResourceDictionary><Entry Key='k'><Translation Language='l'>t</Translation></Entry>"
         "</ResourceDictionary><B/>",
         "Translation:Double't' B:String"},
        // "Version" is no anchor, but the node "Minor" in it is.
        {"<Version><Major Type='Int'>2</Major></Version>", "Version{Major:Int'2'}"},
        {"<Minor>5<A>6</A></Minor><B/>", "Version{Major:Int'1' Minor:Int'0' B:String}"},
        // A container without an item waits, here for an element of another section.
        {"<ProfileEditor><L "
         "Type='ListContainer'/></ProfileEditor><PartConfigurator><A/><B/></PartConfigurator>"
         "<C/>",
         "ProfileEditor:String PartConfigurator{L[A]{B:String}} C:String"},
        // Such a node is left by the end of its section only.
        {"<ProfileEditor><L Type='ListContainer'/><A/></ProfileEditor><JobConfigurator><L "
         "Type='ListContainer'/>"
         "<A/></JobConfigurator><B/>",
         "ProfileEditor{L[A]} JobConfigurator{L[A]} B:String"},
        {"<PlatformConfigurator><PlatformOptions><L Type='ListContainer'/><A/></PlatformOptions><PartOptions>"
         "<L Type='ListContainer'/><A/></PartOptions><B/><L "
         "Type='ListContainer'/><A/></PlatformConfigurator><C/>",
         "PlatformConfigurator{PlatformOptions{L[A]} PartOptions{L[A]} B:String L[A]} C:String"},
        {"<ProfileEditor><L CategoriesName='x'><I DisplayName='d'><A/></I></L></ProfileEditor>",
         "ProfileEditor{L<I>*(shown=d){A:String}} PlatformConfigurator{PlatformOptions{"
         "Category:Profiles(property=BuildProcessor.ProfileCategory shown=d from=L)} PartOptions}"},
    };
    for (ReadingCase const& row : rows) {
        ParameterLayout layout;
        EXPECT_TRUE(ReadText(MetaFile, layout, InRoot(row.content)));
        EXPECT_EQ(OutlineOfChanges(layout), row.outline) << row.content;
    }
}

TEST(MetaFileReader, FillsTheDictionaryOfTheLayout) {
    ResourceDictionary dictionary;
    ParameterLayout layout;
    layout.SetResourceDictionary(&dictionary);
    ReadReport report;
    EXPECT_TRUE(
        ReadText(MetaFile, layout,
                 InRoot("<ResourceDictionary><Translation Language='l'>before</Translation>"
                        "<Entry Key='k'><Translation Language='l'>old</Translation></Entry>"
                        "<Entry Key='k'><X><Translation Language='m'> \xC3\xA4 </Translation></X>"
                        "<Translation>none</Translation><Translation Language='l'>new</Translation>"
                        "<Translation Language='e'/></Entry><Translation Language='n'>after</Translation>"
                        "<Entry><Translation Language='o'>keyless</Translation></Entry>"
                        "</ResourceDictionary><A/>"),
                 &report));
    struct Row {
        wchar_t const *key, *language, *text;
    };
    for (Row const& row : {Row{L"", L"l", L"before"}, Row{L"", L"o", L"keyless"}, Row{L"k", L"l", L"new"},
                           Row{L"k", L"m", L" \xE4 "}, Row{L"k", L"n", L"after"}, Row{L"k", L"e", L""}}) {
        std::wstring const* const text = dictionary.GetTranslation(row.key, row.language);
        ASSERT_NE(text, nullptr) << row.text;
        EXPECT_EQ(*text, row.text);
    }
    EXPECT_EQ(dictionary.GetTranslation(L"k", L"o"), nullptr);
    EXPECT_EQ(OutlineOfChanges(layout), "A:String");
    EXPECT_EQ(report.m_entries.size(), 3u) << "X, a translation without a language, an entry without a key";
}

TEST(MetaFileReader, CallsAFileValidThatFillsTheProfileEditor) {
    struct Row {
        char const* document;
        bool isValid;
    };
    Row const rows[] = {
        {"<R><ProfileEditor><A/></ProfileEditor></R>", true},
        {"<ProfileEditor><ProfileEditor><A/></ProfileEditor></ProfileEditor>", true},
        {"<R><ProfileEditor><AdditionalConfiguration><A/></AdditionalConfiguration></ProfileEditor></R>",
         true},
        {"<R><ProfileEditor><ParameterStructure/></ProfileEditor><A/></R>", false},
        {"<R><ProfileEditor><L Type='ListContainer'/></ProfileEditor></R>", false},
        {"<R/>", false},
        {"<R><ProfileEditor><A/></ProfileEditor>", false},
        {"", false},
    };
    TemporaryFolder const folder;
    std::wstring const path = (folder / "file").wstring();
    ReadReport report;
    EXPECT_FALSE(IsValidFile(path, &report));
    EXPECT_EQ(report.m_entries.at(0).kind, ReadReport::Kind::CannotRead);
    ParameterLayout layout;
    EXPECT_FALSE(ReadFile(layout, path));
    for (Row const& row : rows) {
        Fill(folder / "file", row.document);
        EXPECT_EQ(IsValidFile(path), row.isValid) << row.document;
    }
}

TEST(MetaFileWriter, WritesANewLayoutAsOneDocument) {
    TemporaryFolder const folder;
    EXPECT_TRUE(WriteFile(ParameterLayout(), (folder / "file").wstring()));
    EXPECT_EQ(ContentOf(folder / "file"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<SomeRootname xmlns=\"https://schemas.zantrel.example/build_processing/profiles_meta\">\n"
              "  <Version>\n"
              "    <Major Type=\"Int\">1</Major>\n"
              "    <Minor Type=\"Int\">0</Minor>\n"
              "  </Version>\n"
              "  <ProfileEditor/>\n"
              "  <PlatformConfigurator>\n"
              "    <PlatformOptions/>\n"
              "    <PartOptions/>\n"
              "  </PlatformConfigurator>\n"
              "  <PartConfigurator/>\n"
              "</SomeRootname>\n");
}

TEST(MetaFileWriter, WritesAllOfANodeAndTheReaderTakesItsPart) {
    std::string const common =
        R"( VisibilityRequest="vr" DisplayName="dn" Postfix="po" Prefix="pr" Description="&lt;&quot;de")"
        R"( Expanded="True" HideParameterName="True" IsReadOnly="True" Visible="False" AllowNull="True" Max="9")"
        R"( Min="1" ValueUnique="True" PropertyName="pn" DisplayNameSharedSizeGroup="dg")"
        R"( PostfixSharedSizeGroup="pg" DescriptionImage="im" DescriptionImageStretch="Fill")"
        R"( LicenseForEditorPaneVisibility="l1;l2" VisibilityIdentifier="id" EditabilityIdentifier="id")"
        R"( DisableForParents="true" DisableForSubParts="true" ProfileEditingPolicy="pp")"
        R"( ShowOnlyPartsSelectedInTessra="False" VisibilitySource="s1;s2" VisibleValue="True;v;")"
        R"( EditabilitySource="s2;s1" EditableValue="e;False")";
    std::string const ofText = R"( EnableMultiLine="True" Regex="re" RegexUserFriendly="ru")"
                               R"( MaxLength="18446744073709551615")";
    std::string const options =
        R"(<Options><Option DisplayName="O&amp;">o1</Option><Option>o;2</Option><Option>o3</Option></Options>)";
    struct Row {
        eTypeLayoutNode type;
        std::string before, after, content;
        char const* bare;    ///< the attributes of such a node with nothing set
        char const* outline; ///< what comes back
    };
    Row const rows[] = {
        {Group, "", "", "", "", ":Double'd&'"},
        {Int, R"( Type="Int")", "", "", R"( Type="Int")", ":Int'd&'"},
        {Double, R"( Type="Double" Precision="-2")", "", "", R"( Type="Double" Precision="4")",
         ":Double'd&'"},
        {Distance, R"( Type="Distance" Precision="-2")", "", "",
         R"( Type="Distance" Precision="4" Postfix="mm")", ":Distance'd&'mm"},
        {Bool, R"( Type="Bool")", "", "", R"( Type="Bool")", ":Bool'd&'"},
        {String, R"( ProcessorRequest="rq" Type="String")", ofText, "", R"( Type="String")", ":String'd&'"},
        {Options, R"( Type="String")", "", options, R"( Type="String")", ":String'd&'"},
        {OptionsFromProfiles,
         R"( Type="OptionsFromProfiles" ProfileName="pl" ProcessorRequest="rq" TriggerPropertyName="tr")", "",
         "", R"( Type="OptionsFromProfiles" ProfileName="")", ":Profiles'd&'"},
        {FileAbsolute, R"( Type="FileAbsolute" FileFilter="*.x")", "", "", R"( Type="FileAbsolute")",
         ":FileAbsolute'd&'"},
        {FileAttachment, R"( Type="FileAttachment")", "", "", R"( Type="FileAttachment")",
         ":FileAttachment'd&'"},
        {StandardOptions, R"( Type="StandardOptions" OptionsByDriverRequest="rq")", "", "",
         R"( Type="StandardOptions")", ":StandardOptions'd&'"},
        {static_cast<eTypeLayoutNode>(11), "", "", "", "", ":Double'd&'"},
    };
    for (Row const& row : rows) {
        ParameterLayout layout, back;
        layout.m_profileEditor->AppendNode(LayoutNode::MakeNode(L"Bare", row.type));
        layout.m_profileEditor->AppendNode(LayoutNode::MakeNode(L"Full", row.type));
        SetEverything(*layout.m_profileEditor->Back(), *layout.m_platformOptions, *layout.m_partOptions);
        std::string const bareEnd = row.type == Options ? "><Options/></Bare>" : "/>";
        EXPECT_EQ(WrittenEditor(layout), "<Bare" + std::string(row.bare) + bareEnd + "<Full" + row.before +
                                             common + row.after + ">d&amp;" + row.content + "</Full>");
        ASSERT_TRUE(ReadText(MetaFile, back, WriteText(MetaFile, layout)));
        std::string const names =
            row.type == OptionsFromProfiles ? "(property=pn shown=dn from=pl)" : "(property=pn shown=dn)";
        std::string const inOptions =
            row.type == Options
                ? "{Options{Option:Double'o1'(shown=O&) Option:Double'o;2' Option:Double'o3'}}"
                : "";
        EXPECT_EQ(Outline(back.m_profileEditor->At(1)),
                  "Full" + std::string(row.outline) + names + inOptions);
        std::string const written = WrittenEditor(back);
        for (char const* lost :
             {"vr", "po\"", "de", "True", "False", "true", "im", "id", "s1", "re\"", "rq"}) {
            EXPECT_EQ(written.find(lost), written.npos) << written;
        }
    }
}

TEST(MetaFileWriter, WritesAContainerAsTwoElements) {
    struct Row {
        void (*change)(LayoutNode&);
        bool isFull;
        std::string outer, inner;
        char const* outline;
    };
    std::string const conditions = R"( VisibilitySource="s1;s2" VisibleValue="True;v;")"
                                   R"( EditabilitySource="s2;s1" EditableValue="e;False")";
    std::string const named = R"( DisplayName="cn" Description="cd" Visible="False")";
    std::string const limits = R"( Multiplicity="2" MultiplicityLimit="9" MultiplicityLimitMessage="mx")"
                               R"( MultiplicityMinLimit="1" MultiplicityMinLimitMessage="mi")";
    std::string const fullInner = R"(<Item Type="Int" VisibilityRequest="vr" DisplayName="in" Postfix="po")";
    Row const rows[] = {
        {[](LayoutNode& node) { node.SetList(true, L"Item", L""); }, false,
         R"( Type="ListContainer" CanUserAddRemove="True" CanUserSort="False" RemovingType="RemoveAny")",
         R"(<Item Type="Int"/>)", "N:Int[Item]"},
        {[](LayoutNode& node) { node.SetList(true, L"Item", L"")->SetUserCanAddRemove(false); }, false,
         R"( Type="ListContainer" CanUserAddRemove="False" CanUserSort="False")", R"(<Item Type="Int"/>)",
         "N:Int[Item]"},
        {[](LayoutNode& node) { node.SetProfile(true, L"Item"); }, false, R"( ProfilesXMLName="Item")",
         R"(<Item Type="Int"/>)", "N:Int<Item>"},
        {[](LayoutNode& node) { node.SetIsCategoryList(true); }, false, R"( CategoriesName="ListItem")",
         R"(<ListItem Type="Int"/>)", "N:Int<ListItem>*"},
        {[](LayoutNode& node) { node.SetIsList(true)->SetUserCanRemoveAnyElement(false); }, true,
         named + R"( Type="ListContainer")" + conditions + R"( CanUserAddRemove="True" CanUserSort="True")" +
             limits + R"( RemovingType="RemoveOnlyLast")",
         fullInner, "N:Int'd&'[Item](property=pn shown=in container=cn)"},
        {[](LayoutNode& node) { node.SetIsList(true)->SetCanBeTransformed(true)->SetIsProfileList(true); },
         true,
         named + R"( Type="TransformListContainer" PerformTransform="True" ProfilesXMLName="Item")" +
             conditions + R"( CanUserAddRemove="True" CanUserSort="True")" + limits +
             R"( RemovingType="RemoveAny")",
         fullInner, "N:Int'd&'<Item>(property=pn shown=in container=cn)"},
        {[](LayoutNode& node) { node.SetCategoryList(true, L"Item"); }, true,
         named + R"( CategoriesName="Item")", fullInner,
         "N:Int'd&'<Item>*(property=pn shown=in container=cn)"},
    };
    for (Row const& row : rows) {
        ParameterLayout layout, back;
        LayoutNode& node = *layout.m_profileEditor->AddNode(L"N", Int, L"");
        if (row.isFull) {
            SetEverything(node, *layout.m_platformOptions, *layout.m_partOptions);
        }
        row.change(node);
        std::string const start = "<N" + row.outer + ">" + row.inner;
        EXPECT_EQ(WrittenEditor(layout).substr(0, start.size()), start);
        ASSERT_TRUE(ReadText(MetaFile, back, WriteText(MetaFile, layout)));
        EXPECT_EQ(Outline(back.m_profileEditor->At(0)), row.outline);
    }
}

TEST(MetaFileWriter, LeavesOutTheCategoryOptionAndTheTextOfAGroup) {
    ParameterLayout layout;
    layout.m_profileEditor->AddNode(L"C")->SetCategoryList(true, L"Category")->AddNode(L"A", Group, L"a");
    layout.m_profileEditor->Back()->SetDefaultValue<std::wstring>(L"lost");
    layout.m_platformOptions->AddNode(L"O", Int, 1);
    layout.m_partConfigurator->AddNode(L"I", Int, 1)->SetImageDescription(L"image", L"");
    layout.AddCategoryNodeIfNeeded();
    EXPECT_EQ(WrittenEditor(layout), "<C CategoriesName=\"Category\"><Category><A>a</A></Category></C>");
    std::string const document = WriteText(MetaFile, layout);
    EXPECT_EQ(ContentIn(document, "PlatformOptions"), "<O Type=\"Int\">1</O>");
    EXPECT_EQ(ContentIn(document, "PartConfigurator"), "<I Type=\"Int\">1</I>");
}
