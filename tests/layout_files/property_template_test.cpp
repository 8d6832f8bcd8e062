// SPDX-License-Identifier: Apache-2.0
#include "layout_files/property_template_read.h"
#include "tests/layout_files/reading_cases.h"

#include <zantrel/layout/resource_dictionary.h>

using namespace TestSupport;

namespace {

/// What is written of a section, in single quotes and with "N" for a "PropertyNode".
std::string WriteSection(ParameterLayout const& layout, char const* section, bool profileListsOnly) {
    std::ostringstream out;
    EXPECT_TRUE(KlvrPropertyTemplate::WriteStream(layout, out, TemplateOptions(profileListsOnly)));
    return std::regex_replace(ContentOfElement(Flat(out.str()), section), std::regex("PropertyNode"), "N");
}

} // namespace

TEST(PropertyTemplateReader, MakesANodeOfEachPropertyNode) {
    ReadingCase const rows[] = {
        // Types
        {"<N Name='A' Type='Complex' Default='x'/><N Name='B' Type='integer' Default='1'/>", "A B:Int'1'",
         "unknown PropertyNode"},
        {"<N Name='A' Type='number' Default='x' Precision='2'/><N Name='B' Type='bool' Default='true'/>",
         "A:Double'x' B:Bool'true'", "dropped PropertyNode dropped PropertyNode passed "},
        {"<N Name='A' Type='string' Default=' x '/><N Name='B' Type='ProfileName' ProfileName='P'/>",
         "A:String' x ' B:Profiles(from=P)"},
        {"<N Name='A' Type='FileAbsolute' ProfileName='P'/><N Name='B' Type='StandardOptions'/><N Name='C'/>",
         "A:FileAbsolute(from=P) B:StandardOptions C:String"},
        {"<N Name='A' Type=''/><N Name='B' Type='complex' Default='x'/>", "A:String B:String'x'",
         "dropped PropertyNode dropped PropertyNode"},
        {"<N Name='A' Type='enum' Options='a;b' Default='a'/>", "A:String'a'",
         "dropped PropertyNode passed "},
        // Names and marks
        {"<N Name=''/><N Name='a b'/><N Name='A'/><N Name='A'><N Name='B'/></N>",
         ":String a b:String A:String A:String{B:String}"},
        {"<N Name='A' PropertyName='p' DisplayName='d' DisplayNameContainer='c'/><N Name='B' List=''/>",
         "A:String(property=p shown=d container=c) B:String[ListItem]"},
        {"<N Name='A' Type='Complex' ProfileList='false'/><N Name='B' List='x' ProfileList='x'/>",
         "A<Profile> B:String[ListItem]<ListItem>"},
        // Other elements are looked through, and a node without a name leaves the level with its end.
        {"text<X><N Name='A'><Y/><N Name='B'/></N></X><n Name='C'/><p:N Name='D'/>", "A:String{B:String}",
         "dropped X dropped Y dropped n dropped p:N"},
        {"<N Name='A'><N Type='bool'><N Name='B'/></N><N Name='C'/></N>", "A:String{B:String} C:String",
         "dropped PropertyNode"},
    };
    ExpectOutlines(PropertyTemplate, rows, "PartOverrides", "PartConfigurator");
}

TEST(PropertyTemplateReader, HangsTheSectionsBelowTheNodesOfEveryLayout) {
    ReadingCase const rows[] = {
        {"", ""},
        {"<MachineParameters/><BuildTicket><Defaults/><PartOverrides/></BuildTicket>", ""},
        {"<MachineParameters><N Name='A'/></MachineParameters>"
         "<MachineParameters><N Name='B'/></MachineParameters>",
         "ProfileEditor{A:String B:String}"},
        {"<BuildTicket><Defaults><N Name='A'/></Defaults><PartOverrides><N Name='B'/></PartOverrides>"
         "</BuildTicket>",
         "PlatformConfigurator{PlatformOptions{A:String} PartOptions} PartConfigurator{B:String}"},
        {"<Defaults><N Name='A'/></Defaults><PartOverrides><N Name='B'/></PartOverrides>",
         "PlatformConfigurator{PlatformOptions{A:String} PartOptions} PartConfigurator{B:String}"},
        {"<N Name='A'><N Name='B'/><Defaults><N Name='C'/></Defaults></N><X><BuildTicket><N Name='D'/>"
         "</BuildTicket></X>",
         "A:String{B:String C:String} D:String", "dropped Defaults dropped X"},
        // A section is known at the root only, but its end leads there from anywhere.
        {"<MachineParameters><N Name='A'><Defaults><N Name='B'/></Defaults><N Name='C'/></N>"
         "</MachineParameters>",
         "ProfileEditor{A:String{B:String}} C:String", "dropped Defaults"},
        {"<N/><N/><N Name='A'><N><N Name='B'/></N><N Name='C'/></N><N Name='D'/>",
         "A:String{B:String} C:String D:String",
         "dropped PropertyNode dropped PropertyNode dropped PropertyNode"},
        {"<MachineParameters><N/><N Name='A'/><Defaults><N Name='B'/></Defaults></MachineParameters>",
         "PlatformConfigurator{PlatformOptions{B:String} PartOptions} A:String", "dropped PropertyNode"},
        // "Minor" is the version's node: nothing is a section in it, and an end tag leads to "Version".
        {"<Minor>5<Minor>6</Minor></Minor><X/><N Name='A'/>", ""},
        {"<N Name='A'><BuildTicket/><N Name='B'/></N>", "A:String B:String", "dropped BuildTicket"},
        {"<Minor/><MachineParameters><N Name='A'/></MachineParameters><N Name='B'/>", "B:String"},
        {"<Minor/><N Name='A'/><N Name='B'/><Defaults/><N Name='C'/>",
         "Version{Major:Int'1' Minor:Int'0' B:String} C:String", "dropped Defaults"},
        // The one profile list is offered as category.
        {"<MachineParameters><N Name='P' Type='Complex' ProfileList='' DisplayName='d'/></MachineParameters>",
         "ProfileEditor{P<Profile>(shown=d)} PlatformConfigurator{PlatformOptions{"
         "Category:Profiles(property=BuildProcessor.ProfileCategory shown=d from=P)} PartOptions}"},
    };
    ExpectOutlines(PropertyTemplate, rows);
}

TEST(PropertyTemplateReader, TakesPrecisionAndChoicesWithTheWholeLayout) {
    std::string const section = "<N Name='A' Type='number' Precision='7' Default='1'/><N Name='B' "
                                "Type='enum' Options='a;;b' Default='a'/>"
                                "<N Name='C' Type='enum' Options=''/>";
    ParameterLayout layout;
    ReadReport report;
    std::istringstream in(Document("<PartOverrides>" + section + "</PartOverrides>")),
        odd(Document("<N Name='A' Type='number' Precision='x' Default='1mm'/><N Name='B' Type='x'/>"));
    EXPECT_TRUE(KlvrPropertyTemplate::ReadWholeStream(layout, in, &report));
    EXPECT_EQ(WriteSection(layout, "PartOverrides", false), section);
    EXPECT_EQ(layout.m_partConfigurator->At(1).m_optionDisplayNames.size(), 3u);
    EXPECT_EQ(Reported(report), "");
    EXPECT_TRUE(KlvrPropertyTemplate::ReadWholeStream(layout, odd, &report));
    EXPECT_EQ(Reported(report), "dropped PropertyNode dropped PropertyNode dropped PropertyNode");
    EXPECT_EQ(layout.Back()->m_type, String);
    EXPECT_FALSE(KlvrPropertyTemplate::ReadWholeFile(layout, std::filesystem::path("no file")));
}

TEST(PropertyTemplateReader, BeginsAtTheRootAgainWhereADocumentBrokeOff) {
    ParameterLayout layout;
    ParameterLayoutIOPropertyTemplateRead reader(layout);
    std::istringstream broken("<R><MachineParameters><X/>"), whole(Document("<N Name='A'/>"));
    EXPECT_FALSE(KelAM::SaxUtilities::ReadStream(broken, reader));
    EXPECT_TRUE(KelAM::SaxUtilities::ReadStream(whole, reader));
    EXPECT_EQ(layout.Back()->m_name, L"A");
}

TEST(PropertyTemplateReader, CallsNoFileValid) {
    TemporaryFolder const folder;
    std::filesystem::path const path = folder / "file";
    ReadReport report;
    EXPECT_FALSE(KlvrPropertyTemplate::IsValidFile(path, &report));
    EXPECT_EQ(report.m_entries.at(0).kind, ReadReport::Kind::CannotRead);
    for (char const* document : {"<KlvrPropertyTemplate/>", "<KlvrPropertyTemplate ></KlvrPropertyTemplate >",
                                 "<R><KlvrPropertyTemplate/></R>", "<KlvrPropertyTemplate"}) {
        Fill(path, document);
        EXPECT_FALSE(KlvrPropertyTemplate::IsValidFile(path)) << document;
    }
    ASSERT_TRUE(KlvrPropertyTemplate::WriteFile(ParameterLayout(), path, {}));
    ParameterLayout layout;
    EXPECT_FALSE(KlvrPropertyTemplate::IsValidFile(path.wstring(), &report));
    EXPECT_EQ(report.m_entries.size(), 1u) << "nothing was wrong with the file";
    EXPECT_TRUE(KlvrPropertyTemplate::ReadFile(layout, path));
    report.m_limits.m_bytes = 1;
    EXPECT_FALSE(KlvrPropertyTemplate::IsValidFile(path.wstring(), &report));
    EXPECT_EQ(report.m_entries.back().kind, ReadReport::Kind::RefusedDocument);
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
              "<N Name='P' Type='Complex' ProfileList=''>"
              "<N Name='Q' Type='string' ProfileList='' Default='q'/></N>");
    EXPECT_EQ(WriteSection(layout, "MachineParameters", false),
              "<N Name='P' Type='Complex' ProfileList=''><N Name='A' Type='integer' Default='1'/>"
              "<N Name='G' Type='Complex'><N Name='H' Type='Complex' ProfileList=''/></N>"
              "<N Name='Q' Type='string' ProfileList='' Default='q'/></N>"
              "<N Name='G' Type='Complex'><N Name='R' Type='Complex' ProfileList=''/></N>"
              "<N Name='L' Type='Complex' List=''/>");
    for (bool const profileListsOnly : {false, true}) {
        EXPECT_EQ(WriteSection(layout, "BuildTicket", profileListsOnly),
                  "<Defaults><N Name='B' Type='bool' Default='True'/>"
                  "<N Name='C' Type='integer' Default='3'/></Defaults><PartOverrides>"
                  "<N Name='G' Type='Complex'><N Name='D' Type='string'/></N></PartOverrides>");
    }
    layout.m_partConfigurator = &list; // where a node stands counts, not in which section it is written
    EXPECT_EQ(WriteSection(layout, "PartOverrides", true),
              "<N Name='Q' Type='string' ProfileList='' Default='q'/>");
    EXPECT_TRUE(KlvrPropertyTemplate::WriteOptions().m_profileListsOnly);

    ParameterLayout bare; // a section has one default, and that of the platform comes first
    bare.m_partOptions->SetDefaultValue(2);
    EXPECT_NE(WriteText(PropertyTemplate, bare).find("<Defaults Default=\"2\"/>"), std::string::npos);
    bare.m_platformOptions->SetDefaultValue(1);
    EXPECT_NE(WriteText(PropertyTemplate, bare).find("<Defaults Default=\"1\"/>"), std::string::npos);
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
              "<N Name='A' Type='Complex' DisplayName='Text' DisplayNameContainer='foreign'/>"
              "<N Name='B' Type='Complex' DisplayName='unknown' DisplayNameContainer='Text'/>"
              "<N Name='C' Type='Complex' DisplayName='' PropertyName='known'/>");
}
