// SPDX-License-Identifier: Apache-2.0
#include "tests/layout_files/layout_formats.h"

#include <zantrel/layout/resource_dictionary.h>

#include <gtest/gtest.h>

#include <regex>

using namespace TestSupport;

namespace {

struct ReadingCase {
    char const* content; ///< of the root; "N" stands for "PropertyNode"
    char const* outline;
};

std::string Document(std::string const& content) {
    return "<R xmlns:p='u'>" + std::regex_replace(content, std::regex("(</?)N\\b"), "$1PropertyNode") +
           "</R>";
}

std::string WriteSection(ParameterLayout const& layout, char const* section, bool profileListsOnly) {
    KlvrPropertyTemplate::WriteOptions options;
    options.m_profileListsOnly = profileListsOnly;
    std::ostringstream out;
    EXPECT_TRUE(KlvrPropertyTemplate::WriteStream(layout, out, options));
    return std::regex_replace(ContentIn(out.str(), section), std::regex("PropertyNode"), "N");
}

} // namespace

TEST(PropertyTemplateReader, MakesANodeOfEachPropertyNode) {
    ReadingCase const rows[] = {
        // Types
        {"<N Name='A' Type='Complex' Default='x'/>", "A"},
        {"<N Name='A' Type='integer' Default='1'/>", "A:Int'1'"},
        {"<N Name='A' Type='number' Default='x' Precision='2'/>", "A:Double'x'"},
        {"<N Name='A' Type='bool' Default='true'/>", "A:Bool'true'"},
        {"<N Name='A' Type='string' Default=' x '/>", "A:String' x '"},
        {"<N Name='A' Type='ProfileName' ProfileName='P'/>", "A:Profiles(from=P)"},
        {"<N Name='A' Type='FileAbsolute' ProfileName='P'/>", "A:FileAbsolute(from=P)"},
        {"<N Name='A' Type='StandardOptions'/>", "A:StandardOptions"},
        {"<N Name='A'/><N Name='B' Type=''/><N Name='C' Type='Int'/><N Name='D' Type='complex' Default='x'/>",
         "A:String B:String C:String D:String'x'"},
        {"<N Name='A' Type='enum' Options='a;b' Default='a'/>", "A:String'a'"},
        // Names and marks
        {"<N Name=''/><N Name='a b'/><N Name='A'/><N Name='A'><N Name='B'/></N>",
         ":String a b:String A:String A:String{B:String}"},
        {"<N Name='A' PropertyName='p' DisplayName='d' DisplayNameContainer='c'/>",
         "A:String(property=p shown=d container=c)"},
        {"<N Name='A' List=''/><N Name='B' Type='Complex' ProfileList='false'/>",
         "A:String[ListItem] B<Profile>"},
        {"<N Name='A' List='x' ProfileList='x'/>", "A:String[ListItem]<ListItem>"},
        // Other elements are looked through, and a node without a name leaves the level with its end.
        {"text<X><N Name='A'><Y/><N Name='B'/></N></X><n Name='C'/><p:N Name='D'/>", "A:String{B:String}"},
        {"<N Name='A'><N><N Name='B'/></N><N Name='C'/></N>", "A:String{B:String} C:String"},
    };
    for (ReadingCase const& row : rows) {
        ParameterLayout layout;
        std::string const section = std::string("<PartOverrides>") + row.content + "</PartOverrides>";
        EXPECT_TRUE(ReadText(PropertyTemplate, layout, Document(section)));
        EXPECT_EQ(Outline(*layout.m_partConfigurator), std::string("PartConfigurator{") + row.outline + '}')
            << row.content;
    }
}

TEST(PropertyTemplateReader, HangsTheSectionsBelowTheNodesOfEveryLayout) {
    ReadingCase const rows[] = {
        {"", ""},
        {"<MachineParameters/><BuildTicket><Defaults/><PartOverrides/></BuildTicket>", ""},
        {"<MachineParameters><N Name='A'/></MachineParameters><MachineParameters><N "
         "Name='B'/></MachineParameters>",
         "ProfileEditor{A:String B:String}"},
        {"<BuildTicket><Defaults><N Name='A'/></Defaults><PartOverrides><N "
         "Name='B'/></PartOverrides></BuildTicket>",
         "PlatformConfigurator{PlatformOptions{A:String} PartOptions} PartConfigurator{B:String}"},
        {"<Defaults><N Name='A'/></Defaults><PartOverrides><N Name='B'/></PartOverrides>",
         "PlatformConfigurator{PlatformOptions{A:String} PartOptions} PartConfigurator{B:String}"},
        {"<N Name='A'><N Name='B'/><Defaults><N Name='C'/></Defaults></N><X><BuildTicket><N Name='D'/>"
         "</BuildTicket></X>",
         "A:String{B:String C:String} D:String"},
        // A section is known at the root only, but its end leads there from anywhere.
        {"<MachineParameters><N Name='A'><Defaults><N Name='B'/></Defaults><N "
         "Name='C'/></N></MachineParameters>",
         "ProfileEditor{A:String{B:String}} C:String"},
        {"<N/><N/><N Name='A'><N><N Name='B'/></N><N Name='C'/></N><N Name='D'/>",
         "A:String{B:String} C:String D:String"},
        {"<MachineParameters><N/><N/><N Name='A'/><Defaults><N Name='B'/></Defaults></MachineParameters>",
         "PlatformConfigurator{PlatformOptions{B:String} PartOptions} A:String"},
        // "Minor" is the version's node: nothing is a section in it, and an end tag leads to "Version".
        {"<Minor>5<Minor>6</Minor></Minor><X/><N Name='A'/>", ""},
        {"<N Name='A'><BuildTicket/><N Name='B'/></N>", "A:String B:String"},
        {"<Minor/><MachineParameters><N Name='A'/></MachineParameters><N Name='B'/>", "B:String"},
        {"<Minor/><N Name='A'/><N Name='B'/><Defaults/><N Name='C'/>",
         "Version{Major:Int'1' Minor:Int'0' B:String} C:String"},
        // The one profile list is offered as category.
        {"<MachineParameters><N Name='P' Type='Complex' ProfileList='' DisplayName='d'/></MachineParameters>",
         "ProfileEditor{P<Profile>(shown=d)} PlatformConfigurator{PlatformOptions{"
         "Category:Profiles(property=BuildProcessor.ProfileCategory shown=d from=P)} PartOptions}"},
    };
    for (ReadingCase const& row : rows) {
        ParameterLayout layout, streamed;
        EXPECT_TRUE(ReadText(PropertyTemplate, layout, Document(row.content)));
        EXPECT_EQ(OutlineOfChanges(layout), row.outline) << row.content;
        std::istringstream in("passed over" + Document(row.content));
        in.ignore(11);
        EXPECT_TRUE(KlvrPropertyTemplate::ReadStream(streamed, in));
        EXPECT_EQ(Outline(streamed), Outline(layout));
    }
}

TEST(PropertyTemplateReader, ReportsWhatItCannotTake) {
    ParameterLayout layout;
    ReadReport report;
    EXPECT_TRUE(ReadText(PropertyTemplate, layout,
                         Document("<N Type='bool'/>\n<N Name='A' Type='enum'/><N Name='B'/><X/>"), &report));
    ASSERT_EQ(report.m_entries.size(), 2u);
    EXPECT_EQ(report.m_entries[0].kind, ReadReport::Kind::DroppedValue);
    EXPECT_EQ(report.m_entries[1].kind, ReadReport::Kind::DroppedValue);
    EXPECT_EQ(report.m_entries[1].line, 2u);
}

TEST(PropertyTemplateReader, CallsNoFileValid) {
    TemporaryFolder const folder;
    std::wstring const path = (folder / "file").wstring();
    ReadReport report;
    EXPECT_FALSE(KlvrPropertyTemplate::IsValidFile(path, &report));
    EXPECT_EQ(report.m_entries.at(0).kind, ReadReport::Kind::CannotRead);
    for (char const* document : {"<KlvrPropertyTemplate/>", "<KlvrPropertyTemplate ></KlvrPropertyTemplate >",
                                 "<R><KlvrPropertyTemplate/></R>", "<KlvrPropertyTemplate"}) {
        Fill(folder / "file", document);
        EXPECT_FALSE(KlvrPropertyTemplate::IsValidFile(path)) << document;
    }
    ASSERT_TRUE(KlvrPropertyTemplate::WriteFile(ParameterLayout(), path, {}));
    ParameterLayout layout;
    EXPECT_FALSE(KlvrPropertyTemplate::IsValidFile(path, &report));
    EXPECT_EQ(report.m_entries.size(), 1u) << "nothing was wrong with the file";
    EXPECT_TRUE(KlvrPropertyTemplate::ReadFile(layout, path));
}

TEST(PropertyTemplateWriter, WritesANewLayoutAsOneDocument) {
    std::string const document =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<KlvrPropertyTemplate xmlns=\"https://schemas.zantrel.example/build_processing/2016/04\">\n"
        "  <MachineParameters/>\n"
        "  <BuildTicket>\n"
        "    <Defaults/>\n"
        "    <PartOverrides/>\n"
        "  </BuildTicket>\n"
        "</KlvrPropertyTemplate>\n";
    TemporaryFolder const folder;
    std::wstring const path = (folder / "file").wstring();
    EXPECT_TRUE(KlvrPropertyTemplate::WriteFile(ParameterLayout(), path, {}));
    EXPECT_EQ(ContentOf(folder / "file"), document);
    EXPECT_EQ(WriteText(PropertyTemplate, ParameterLayout()), document);
    std::ostream nowhere(nullptr);
    EXPECT_FALSE(KlvrPropertyTemplate::WriteStream(ParameterLayout(), nowhere, {}));
}

TEST(PropertyTemplateWriter, WritesItsPartOfANodeAndTheReaderMostOfThat) {
    struct Row {
        eTypeLayoutNode type;
        char const* word;
        char const* more; ///< attributes of a node that has everything
        char const* bare; ///< and of one with nothing set
        char const* outline;
    };
    Row const rows[] = {
        {Group, "Complex", "", "", "N"},
        {Int, "integer", "", "", "N:Int'd&'"},
        {Double, "number", " Precision=\"-2\"", " Precision=\"4\"", "N:Double'd&'"},
        {Distance, "number", " Precision=\"-2\"", " Precision=\"4\"", "N:Double'd&'"},
        {Bool, "bool", "", "", "N:Bool'd&'"},
        {String, "string", "", "", "N:String'd&'"},
        {Options, "enum", " Options=\"o1;o;2;o3\"", " Options=\"\"", "N:String'd&'"},
        {OptionsFromProfiles, "ProfileName", "", "", "N:Profiles'd&'"},
        {FileAbsolute, "FileAbsolute", "", "", "N:FileAbsolute'd&'"},
        {FileAttachment, "string", "", "", "N:String'd&'"},
        {StandardOptions, "StandardOptions", "", "", "N:StandardOptions'd&'"},
    };
    for (Row const& row : rows) {
        ParameterLayout layout, back;
        layout.m_partOptions->AppendNode(LayoutNode::MakeNode(L"B", row.type));
        layout.m_partOptions->AppendNode(LayoutNode::MakeNode(L"N", row.type));
        LayoutNode& node = *layout.m_partOptions->Back();
        SetEverything(node, *layout.m_platformOptions, *layout.m_profileEditor);
        node.SetIsList(true)->SetIsProfileList(true);
        std::string const type = std::string(" Type=\"") + row.word + '"';
        EXPECT_EQ(WriteSection(layout, "Defaults", true),
                  "<N Name=\"B\"" + type + row.bare + "/><N Name=\"N\"" + type + row.more +
                      " ProfileList=\"\" List=\"\" DisplayName=\"dn\" DisplayNameContainer=\"cn\""
                      " PropertyName=\"pn\" ProfileName=\"pl\" Default=\"d&amp;\"/>");
        ASSERT_TRUE(ReadText(PropertyTemplate, back, WriteText(PropertyTemplate, layout)));
        EXPECT_EQ(Outline(back.m_platformOptions->At(1)),
                  std::string(row.outline) +
                      "[ListItem]<ListItem>(property=pn shown=dn container=cn from=pl)");
    }
}

TEST(PropertyTemplateWriter, WritesTheSectionsInOrderAndOfTheProfilesTheListsAlone) {
    ParameterLayout layout;
    LayoutNode& list = *layout.m_profileEditor->AddNode(L"P")->SetProfile(true, L"x");
    list.SetDefaultValue<std::wstring>(L"lost")->AddNode(L"A", Int, 1);
    list.AddNode(L"G")->AddNode(L"H")->SetProfile(true, L"x");
    list.AddNode(L"Q", String, L"q")->SetProfile(true, L"x");
    layout.m_profileEditor->AddNode(L"G", Group, L"lost")->AddNode(L"R")->SetProfile(true, L"x");
    layout.m_profileEditor->AddNode(L"L")->SetList(true, L"x", L"");
    layout.m_partOptions->AddNode(L"C", Int, 3);
    layout.m_platformOptions->AddNode(L"B", Bool, true);
    layout.m_partConfigurator->AddNode(L"G", Group, L"g")->AddNode(L"D", String, L"");
    layout.AddNode(L"Z", Int, 1);
    EXPECT_EQ(WriteSection(layout, "MachineParameters", true),
              "<N Name=\"P\" Type=\"Complex\" ProfileList=\"\">"
              "<N Name=\"Q\" Type=\"string\" ProfileList=\"\" Default=\"q\"/></N>");
    EXPECT_EQ(WriteSection(layout, "MachineParameters", false),
              "<N Name=\"P\" Type=\"Complex\" ProfileList=\"\"><N Name=\"A\" Type=\"integer\" Default=\"1\"/>"
              "<N Name=\"G\" Type=\"Complex\"><N Name=\"H\" Type=\"Complex\" ProfileList=\"\"/></N>"
              "<N Name=\"Q\" Type=\"string\" ProfileList=\"\" Default=\"q\"/></N>"
              "<N Name=\"G\" Type=\"Complex\"><N Name=\"R\" Type=\"Complex\" ProfileList=\"\"/></N>"
              "<N Name=\"L\" Type=\"Complex\" List=\"\"/>");
    for (bool const profileListsOnly : {false, true}) {
        EXPECT_EQ(WriteSection(layout, "BuildTicket", profileListsOnly),
                  "<Defaults><N Name=\"B\" Type=\"bool\" Default=\"True\"/>"
                  "<N Name=\"C\" Type=\"integer\" Default=\"3\"/></Defaults><PartOverrides>"
                  "<N Name=\"G\" Type=\"Complex\"><N Name=\"D\" Type=\"string\"/></N></PartOverrides>");
    }
    EXPECT_TRUE(KlvrPropertyTemplate::WriteOptions().m_profileListsOnly);
}

TEST(PropertyTemplateWriter, TranslatesDisplayNamesIntoTheOneLanguage) {
    ResourceDictionary dictionary;
    dictionary.AddTranslation(L"known", L"en-US", L"Text");
    dictionary.AddTranslation(L"known", L"de", L"Wort");
    dictionary.AddTranslation(L"foreign", L"de", L"Wort");
    dictionary.AddTranslation(L"blank", L"en-US", L"");
    dictionary.AddTranslation(L"", L"en-US", L"never");
    ParameterLayout layout;
    layout.m_partConfigurator->AddNode(L"A")->SetDisplayName(L"known")->SetContainerDisplayName(L"foreign");
    layout.m_partConfigurator->AddNode(L"B")->SetDisplayName(L"unknown")->SetContainerDisplayName(L"known");
    layout.m_partConfigurator->AddNode(L"C")->SetDisplayName(L"blank")->SetPropName(L"known");
    EXPECT_NE(WriteText(PropertyTemplate, layout).find("\"known\" DisplayNameContainer=\"foreign\""),
              std::string::npos);
    layout.SetResourceDictionary(&dictionary);
    EXPECT_EQ(WriteSection(layout, "PartOverrides", true),
              "<N Name=\"A\" Type=\"Complex\" DisplayName=\"Text\" DisplayNameContainer=\"foreign\"/>"
              "<N Name=\"B\" Type=\"Complex\" DisplayName=\"unknown\" DisplayNameContainer=\"Text\"/>"
              "<N Name=\"C\" Type=\"Complex\" DisplayName=\"\" PropertyName=\"known\"/>");
}
