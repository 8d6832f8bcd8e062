// SPDX-License-Identifier: Apache-2.0
#include "tests/support/generated_layout.h"
#include "tests/support/sax_test_support.h"
#include "tests/support/schema_check.h"

#include <zantrel/layout_files/meta_file.h>
#include <zantrel/layout_files/property_template.h>
#include <zantrel/sample/sample_layout.h>
#include <zantrel/sax/xml_namespaces.h>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

using namespace TestSupport;

namespace {

std::string const TemplateSchema = XmlSchema("build_processing_2016_04.xsd");
std::string const MetaFileSchema = RelaxNgSchema("layout_meta_file.rng");

std::string Template(ParameterLayout const& layout, bool profileListsOnly) {
    KlvrPropertyTemplate::WriteOptions options;
    options.m_profileListsOnly = profileListsOnly;
    std::ostringstream document;
    EXPECT_TRUE(KlvrPropertyTemplate::WriteStream(layout, document, options));
    return document.str();
}

std::string MetaFile(ParameterLayout const& layout, ParameterLayout* readBack = nullptr) {
    TemporaryFolder const folder;
    auto const path = folder / "layout.xml";
    EXPECT_TRUE(WriteFile(layout, path.wstring()));
    EXPECT_TRUE(readBack == nullptr || ReadFile(*readBack, path.wstring()));
    return ContentOf(path);
}

void ForEachLayout(std::function<void(ParameterLayout const&)> const& visit) {
    visit(ParameterLayout());
    for (int const level : {0, 1, 2}) {
        Sample::ParameterLayout layout(level);
        layout.AddCategoryNodeIfNeeded();
        visit(layout);
    }
    for (unsigned seed = 1; seed <= 30; ++seed) {
        visit(*GeneratedLayout(seed, 100));
    }
}

/// With one node of each kind that mistakes are made about.
void FillSmallLayout(ParameterLayout& layout) {
    LayoutNode* const editor = layout.m_profileEditor;
    LayoutNode* const power = editor->AddNode(L"Power", Double, 1.0);
    editor->AddNode(L"Kind", Options, L"a")->AddOption(L"a", L"A")->AddOption(L"b", L"B");
    LayoutNode* const heads =
        editor->AddNode(L"Heads")->SetList(true, L"Laser", L"")->SetCanBeTransformed(true);
    LayoutNode* const on = heads->AddNode(L"On", Bool, false)->SetIdentifier(L"Id");
    power->AddVisibilitySource(on, true);
    editor->AddNode(L"Profiles")->SetProfile(true, L"Profile");
    editor->AddNode(L"Choice", OptionsFromProfiles, L"x")->SetProfileName(L"Profiles");
    editor->AddNode(L"Title", String, L"x")->SetPropName(L"Title");
    editor->AddNode(L"File", FileAbsolute, L"x");
    editor->AddNode(L"Material", StandardOptions, L"x");
}

} // namespace

TEST(SchemaOfTemplates, TakesWhatIsWritten) {
    Documents documents;
    ForEachLayout([&](ParameterLayout const& layout) {
        documents.push_back(Template(layout, true));
        documents.push_back(Template(layout, false));
    });
    ExpectAllValid(documents, TemplateSchema);
}

TEST(SchemaOfTemplates, TakesADocumentThatRefersToIt) {
    XML_namespaces::m_local_schema_file_build_processors_2016_04 =
        StringConversion::Utf8ToNative(ZANTREL_SCHEMAS "/build_processing_2016_04.xsd");
    std::string const document = Template(ParameterLayout(), false);
    XML_namespaces::m_local_schema_file_build_processors_2016_04.clear();
    EXPECT_NE(document.find("/build_processing_2016_04.xsd\""), std::string::npos);
    ExpectAllValid({document}, TemplateSchema);
}

TEST(SchemaOfTemplates, RefusesEachMistake) {
    ParameterLayout layout;
    FillSmallLayout(layout);
    std::vector<Mistake> const mistakes = {
        {"another namespace", {{"2016/04'", "2016/05'"}}},
        {"an unknown type word", {{"'bool'", "'Bool'"}}},
        {"a node without a name", {{" Name='On'", ""}}},
        {"an empty name", {{"'On'", "''"}}},
        {"an unknown attribute", {{"Default=", "default="}}},
        {"an attribute of a section", {{"<Defaults", "<Defaults Name='x'"}}},
        {"an unknown element", {{"<Defaults/>", "<Defaults><Property Name='x'/></Defaults>"}}},
        {"a node beside the sections", {{"<BuildTicket>", "<BuildTicket><PropertyNode Name='x'/>"}}},
        {"text in a section", {{"<Defaults/>", "<Defaults>x</Defaults>"}}},
        {"a mark with a value", {{" List=''", " List='false'"}}},
        {"a second mark with a value", {{"ProfileList=''", "ProfileList='True'"}}},
        {"a precision that is no integer", {{"Precision='4'", "Precision='4.5'"}}},
        {"an empty property name", {{"PropertyName='Title'", "PropertyName=''"}}},
        {"an empty profile name", {{"ProfileName='Profiles'", "ProfileName=''"}}},
        {"a section that is missing", {{"<Defaults/>", ""}}},
        {"a section twice", {{"<Defaults/>", "<Defaults/><Defaults/>"}}},
        {"sections in the wrong order",
         {{"<PartOverrides/>", ""}, {"<Defaults/>", "<PartOverrides/><Defaults/>"}}},
        {"the ticket first",
         {{"<MachineParameters>",
           "<BuildTicket><Defaults/><PartOverrides/></BuildTicket><MachineParameters>"},
          {"</MachineParameters>\n  <BuildTicket>\n    <Defaults/>\n    <PartOverrides/>\n  </BuildTicket>",
           "</MachineParameters>"}}},
    };
    ExpectAllRefused(Template(layout, false), mistakes, TemplateSchema);
}

TEST(SchemaOfMetaFiles, TakesWhatIsWritten) {
    Documents documents;
    ForEachLayout([&](ParameterLayout const& layout) { documents.push_back(MetaFile(layout)); });
    ExpectAllValid(documents, MetaFileSchema);
}

TEST(SchemaOfMetaFiles, TakesWhatIsWrittenOfALayoutThatWasRead) {
    Documents documents;
    ForEachLayout([&](ParameterLayout const& layout) {
        ParameterLayout readBack;
        MetaFile(layout, &readBack);
        documents.push_back(MetaFile(readBack));
    });
    ExpectAllValid(documents, MetaFileSchema);
}

TEST(SchemaOfMetaFiles, RefusesEachMistake) {
    ParameterLayout layout;
    FillSmallLayout(layout);
    std::vector<Mistake> const mistakes = {
        {"another namespace", {{"profiles_meta'", "profiles'"}}},
        {"an unknown type word", {{"'Double'", "'Real'"}}},
        {"a number without a precision", {{" Precision='4'", ""}}},
        {"a precision that is no integer", {{"Precision='4'", "Precision='four'"}}},
        {"a precision where there are no digits", {{"Type='Bool'", "Type='Bool' Precision='4'"}}},
        {"a text's attribute on a number", {{"Type='Double'", "Type='Double' Regex='x'"}}},
        {"a file's attribute on a text", {{"Type='String' P", "Type='String' FileFilter='x' P"}}},
        {"a distance without a precision", {{"Type='String' P", "Type='Distance' P"}}},
        {"a choice without the name of the profiles", {{" ProfileName='Profiles'", ""}}},
        {"an unknown attribute", {{"<Laser>", "<Laser Colour='red'>"}}},
        {"an image without a stretch", {{"<Laser>", "<Laser DescriptionImage='x'>"}}},
        {"one identifier only", {{" EditabilityIdentifier='Id'", ""}}},
        {"a condition without a value", {{" VisibleValue='True'", ""}}},
        {"a condition without a source", {{" VisibilitySource='Id'", ""}}},
        {"a transform list that does not say whether", {{" PerformTransform='False'", ""}}},
        {"a plain list with a transform", {{"TransformListContainer", "ListContainer"}}},
        {"a list that does not say whether it grows", {{" CanUserAddRemove='True'", ""}}},
        {"a list that does not say what can be removed", {{" RemovingType='RemoveAny'", ""}}},
        {"a fixed list that says it", {{"CanUserAddRemove='True'", "CanUserAddRemove='False'"}}},
        {"an unknown way to remove", {{"RemoveAny", "RemoveFirst"}}},
        {"a list's attribute on a profile list", {{"<Profiles", "<Profiles CanUserSort='True'"}}},
        {"both kinds of profile list", {{"<Profiles", "<Profiles CategoriesName='Profile'"}}},
        {"a container without an item", {{"<Profile/>", ""}}},
        {"a container with two items", {{"<Profile/>", "<Profile/><Profile/>"}}},
        {"a container with a container in it",
         {{"<Profile/>", "<Profile ProfilesXMLName='x'><x/></Profile>"}}},
        {"text beside nodes", {{"<Laser>", "<Laser>text"}}},
        {"nodes in another namespace", {{"<Profile/>", "<Profile xmlns='x'/>"}}},
        {"an unknown element among options", {{"<Option DisplayName='A'>a</Option>", "<Choice>a</Choice>"}}},
        {"options of another type", {{"<Kind Type='String'", "<Kind Type='Int'"}}},
        {"options before the default value", {{">a<Options>", "><Options>"}, {"</Options>", "</Options>a"}}},
        {"a version that is no number", {{">1</Major>", ">one</Major>"}}},
        {"a part of the version that is missing", {{"<Minor Type='Int'>0</Minor>", ""}}},
        {"no version", {{"<Version>", "<!--"}, {"</Version>", "-->"}}},
        {"no parameters of the machine", {{"<ProfileEditor>", "<!--"}, {"</ProfileEditor>", "-->"}}},
        {"no options of a platform",
         {{"<PlatformConfigurator>", "<!--"}, {"</PlatformConfigurator>", "-->"}}},
        {"no overrides of a part", {{"<PartConfigurator/>", ""}}},
        {"no options of a part", {{"<PartOptions/>", ""}}},
        {"a section of another type", {{"<PartOptions", "<PartOptions Type='Int'"}}},
        {"a section twice", {{"<PartConfigurator/>", "<PartConfigurator/><PartConfigurator/>"}}},
        {"sections in the wrong order",
         {{"<PartConfigurator/>", ""},
          {"<PlatformConfigurator>", "<PartConfigurator/><PlatformConfigurator>"}}},
        {"options in the wrong order",
         {{"<PartOptions/>", ""}, {"<PlatformOptions/>", "<PartOptions/><PlatformOptions/>"}}},
    };
    ExpectAllRefused(MetaFile(layout), mistakes, MetaFileSchema);
}

TEST(SchemaOfMetaFiles, RefusesEachAttributeInAnotherForm) {
    ParameterLayout layout;
    FillSmallLayout(layout);
    std::vector<Mistake> mistakes = {
        {"Type", {{"'OptionsFromProfiles'", "'Options'"}}},
        {"PerformTransform", {{"PerformTransform='False'", "PerformTransform='false'"}}},
        {"CanUserSort", {{"CanUserSort='False'", "CanUserSort='false'"}}},
        {"ProfilesXMLName", {{"ProfilesXMLName='Profile'", "ProfilesXMLName=''"}}},
        {"CategoriesName", {{"ProfilesXMLName='Profile'", "CategoriesName=''"}}},
        {"DisplayName of an option", {{"DisplayName='A'", "DisplayName=''"}}},
        {"DescriptionImage", {{"<Laser", "<Laser DescriptionImage='' DescriptionImageStretch='x'"}}},
        {"DescriptionImageStretch", {{"<Laser", "<Laser DescriptionImage='x' DescriptionImageStretch=''"}}},
        {"VisibilityIdentifier", {{"VisibilityIdentifier='Id'", "VisibilityIdentifier=''"}}},
        {"EditabilityIdentifier", {{"EditabilityIdentifier='Id'", "EditabilityIdentifier=''"}}},
        {"VisibilitySource", {{"VisibilitySource='Id'", "VisibilitySource=''"}}},
        {"EditabilitySource", {{"<Laser", "<Laser EditabilitySource='' EditableValue=''"}}},
    };
    auto const addEach = [&](std::string const& tag, std::string const& form, std::string const& attributes) {
        std::istringstream words(attributes);
        for (std::string word; words >> word;) {
            mistakes.push_back({word, {{tag, tag + ' ' + word + "='" + form + '\''}}});
        }
    };
    addEach("<Laser", "",
            "VisibilityRequest DisplayName Postfix Prefix Description Max Min PropertyName "
            "DisplayNameSharedSizeGroup"
            " PostfixSharedSizeGroup LicenseForEditorPaneVisibility ProfileEditingPolicy");
    addEach("<Laser", "False", "Expanded HideParameterName IsReadOnly AllowNull ValueUnique");
    addEach("<Laser", "True", "Visible DisableForParents DisableForSubParts ShowOnlyPartsSelectedInTessra");
    addEach("<Title Type='String'", "", "ProcessorRequest Regex RegexUserFriendly");
    addEach("<Title Type='String'", "0", "EnableMultiLine MaxLength");
    addEach("<Choice", "", "ProcessorRequest TriggerPropertyName");
    addEach("<File", "", "FileFilter");
    addEach("<Material", "", "OptionsByDriverRequest");
    addEach("<Heads", "", "DisplayName Description MultiplicityLimitMessage MultiplicityMinLimitMessage");
    addEach("<Heads", "0", "Visible Multiplicity MultiplicityLimit MultiplicityMinLimit");
    ExpectAllRefused(MetaFile(layout), mistakes, MetaFileSchema);
}
