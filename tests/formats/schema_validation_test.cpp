// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"
#include "tests/support/machine_parameters.h"
#include "tests/support/schema_check.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

std::string const MachineSchema = XmlSchema("build_processing_2016_04.xsd");
std::string const TicketSchema = XmlSchema("build_processing_2017_02.xsd");
std::string const MetaSchema = RelaxNgSchema("layout_meta_file.rng");

/// What is written to a file, whose root refers to its namespace.
std::string FileOf(Subject const& subject) {
    TemporaryFolder const folder;
    EXPECT_TRUE(subject.WriteFile((folder / "file").wstring()));
    return ContentOf(folder / "file");
}

std::string FileOf(LayoutFormat const& format, ParameterLayout const& layout) {
    TemporaryFolder const folder;
    EXPECT_TRUE(format.writeFile(layout, (folder / "file").wstring(), nullptr));
    return ContentOf(folder / "file");
}

/// With one node of each kind that mistakes are made about.
void FillSmallLayout(ParameterLayout& layout) {
    LayoutNode& editor = *layout.m_profileEditor;
    LayoutNode* const heads = editor.AddNode(L"Heads")->SetList(true, L"Laser", L"");
    LayoutNode* const on = heads->AddNode(L"On", Bool, false)->SetCanBeTransformed(true);
    LayoutNode* const power = editor.AddNode(L"Power", Double, 1.0);
    editor.AddNode(L"Profiles")->SetProfile(true, L"Profile");
    wchar_t const* const names[] = {L"Group",   L"Int",    L"Double", L"Distance",   L"Bool",    L"String",
                                    L"Options", L"Choice", L"File",   L"Attachment", L"Material"};
    for (std::int32_t type = Group; type <= StandardOptions; ++type) {
        SetEverything(*editor.AddNode(names[type], static_cast<eTypeLayoutNode>(type), L""), *on, *power);
    }
}

} // namespace

TEST(Schema, TakesWhatIsWritten) {
    for (auto const& [name, schema] : {std::pair("MachineParameters", MachineSchema),
                                       {"MetaFile", MetaSchema},
                                       {"PropertyTemplate", MachineSchema}}) {
        Format const& format = FormatCalled(name);
        Documents documents = {FileOf(*format.make())};
        for (unsigned seed = 1; seed <= 20; ++seed) {
            auto const generated = format.make()->Generated(seed), back = generated->Fresh();
            documents.push_back(FileOf(*generated));
            EXPECT_TRUE(ReadText(*back, documents.back()));
            documents.push_back(FileOf(*back));
        }
        ExpectAllValid(documents, schema);
    }
}

TEST(Schema, TakesWhatIsWrittenOfTheSampleAndOfProfileListsAlone) {
    Documents machine, meta;
    for (int const level : {0, 1, 2}) {
        Sample::ParameterLayout layout(level);
        layout.AddCategoryNodeIfNeeded();
        Sample::ParameterDatabase database(&layout);
        database.PopulateDefault();
        for (bool const profileListsOnly : {false, true}) {
            machine.push_back(MachineParameters(database, profileListsOnly));
            KlvrPropertyTemplate::WriteOptions options;
            options.m_profileListsOnly = profileListsOnly;
            std::ostringstream out;
            EXPECT_TRUE(KlvrPropertyTemplate::WriteStream(layout, out, options));
            machine.push_back(out.str());
        }
        meta.push_back(FileOf(MetaFile, layout));
    }
    ExpectAllValid(machine, MachineSchema);
    ExpectAllValid(meta, MetaSchema);
}

TEST(Schema, TakesTickets) {
    ParameterLayout const layout;
    std::vector<BuildTicket> tickets(6, BuildTicket(&layout));
    tickets[1] = BuildTicket(nullptr);
    tickets[2].GetDefaults().CreateValue<bool>(L"deleted", true)->SetDeleted(true);
    tickets[3].GetPartOverrides().GetProperties(KelAM::ExternalPropertyID(), true);
    tickets[4].GetDefaults().AddProperty(L"a host's own", new HostProperty<std::wstring>(L"PositionMatrix"));
    EXPECT_TRUE(Load(tickets[5], TicketExample));
    for (unsigned seed = 0; seed < 30; ++seed) {
        FillTicket(tickets.emplace_back(nullptr), seed, seed, 40);
    }
    for (std::int32_t const version : {1, 2}) {
        Documents documents;
        for (BuildTicket const& ticket : tickets) {
            documents.push_back(Saved(ticket, version));
        }
        ExpectAllValid(documents, version == 1 ? MachineSchema : TicketSchema);
    }
}

TEST(Schema, IsReferredToWhereItIsInstalled) {
    namespace Paths = XML_namespaces;
    std::wstring const folder = StringConversion::Utf8ToNative(ZANTREL_SCHEMAS "/");
    Paths::m_local_schema_file_build_processors_2016_04 = folder + L"build_processing_2016_04.xsd";
    Paths::m_local_schema_file_build_processors_2017_02 = folder + L"build_processing_2017_02.xsd";
    std::string const ofLayout = WriteText(PropertyTemplate, ParameterLayout());
    std::string const first = Saved(BuildTicket(nullptr), 1), second = Saved(BuildTicket(nullptr), 2);
    Paths::m_local_schema_file_build_processors_2016_04.clear();
    Paths::m_local_schema_file_build_processors_2017_02.clear();
    ExpectAllValid({ofLayout, first}, MachineSchema);
    ExpectAllValid({second}, TicketSchema);
    for (std::string const& document : {ofLayout, first}) {
        EXPECT_NE(document.find("/build_processing_2016_04.xsd\""), std::string::npos);
    }
    EXPECT_NE(second.find("/build_processing_2017_02.xsd\""), std::string::npos);
}

TEST(Schema, RefusesAllMistakesButThese) {
    ParameterLayout layout;
    FillSmallLayout(layout);
    BuildTicket ticket(nullptr);
    EXPECT_TRUE(Load(ticket, TicketExample));
    auto const machine = FormatCalled("MachineParameters").make();
    EXPECT_TRUE(ReadText(*machine, MachineExample));
    struct Row {
        std::string document, schema;
        char const* taken;
    };
    Row const rows[] = {
        {FileOf(*machine), MachineSchema,
         "=: all but @Type @xmlns\n"
         "=0: @Name\n"
         "=x: @Name\n"
         "borrowed: @ProfileList 27/39 @xmlns Default 22/43 Instance 24/43 Profile 22/43 Property 34/43\n"
         "empty: all but\n"
         "missing: all but @Name @Type @xmlns Data Name\n"
         "text: all but Data KlvrMachineParameters\n"
         "twice: all but Data Default Name\n"},
        {WriteText(PropertyTemplate, layout), MachineSchema,
         "=: all but @Name @Precision @ProfileName @PropertyName @Type @xmlns\n"
         "=0: all but @List @ProfileList @Type @xmlns\n"
         "=x: all but @List @Precision @ProfileList @Type @xmlns\n"
         "borrowed: @Default 2/7 @DisplayName 4/9 @DisplayNameContainer 4/9 @List 14/19 @Options 14/19 "
         "@Precision 12/17 @ProfileList 14/19 @ProfileName 4/9 @PropertyName 4/9 @xmlns PropertyNode 18/20\n"
         "missing: all but @Name @xmlns BuildTicket Defaults MachineParameters PartOverrides\n"
         "other flag: all but\n"
         "twice: PropertyNode\n"},
        {FileOf(MetaFile, layout), MetaSchema,
         "=: @EditableValue @ProfileName @VisibleValue\n"
         "=0: all but @AllowNull @CanUserAddRemove @CanUserSort @DisableForParents @DisableForSubParts "
         "@EnableMultiLine @Expanded @HideParameterName @IsReadOnly @MaxLength @RemovingType "
         "@ShowOnlyPartsSelectedInTessra @Type @ValueUnique @Visible @xmlns\n"
         "=x: all but @AllowNull @CanUserAddRemove @CanUserSort @DisableForParents @DisableForSubParts "
         "@EnableMultiLine @Expanded @HideParameterName @IsReadOnly @MaxLength @Precision @RemovingType "
         "@ShowOnlyPartsSelectedInTessra @Type @ValueUnique @Visible @xmlns\n"
         "borrowed: @AllowNull 13/19 @Description 15/19 @DisableForParents 13/19 @DisableForSubParts 13/19 "
         "@DisplayName 17/18 @DisplayNameSharedSizeGroup 13/19 @Expanded 13/19 @HideParameterName 13/19 "
         "@IsReadOnly 13/19 @LicenseForEditorPaneVisibility 13/19 @Max 13/19 @Min 13/19 @Postfix 13/19 "
         "@PostfixSharedSizeGroup 13/19 @Prefix 13/19 @ProfileEditingPolicy 13/19 @ProfilesXMLName 1/29 "
         "@PropertyName 13/19 @ShowOnlyPartsSelectedInTessra 13/19 @Type 3/15 @ValueUnique 13/19 "
         "@VisibilityRequest 13/19 @Visible 15/19 @xmlns Attachment 6/30 Bool 6/30 Choice 6/30 Distance 6/30 "
         "Double 6/30 File 6/30 Group 6/30 Heads 6/30 Int 6/30 Laser 6/30 Major 6/30 Material 6/30 Minor "
         "6/30 On 6/30 Option 7/30 Options 6/30 PartConfigurator 6/30 PartOptions 6/30 PlatformConfigurator "
         "6/30 PlatformOptions 6/30 Power 6/30 Profile 6/30 ProfileEditor 6/30 Profiles 6/30 SomeRootname "
         "6/30 String 6/30 Version 6/30\n"
         "empty: all but Major Minor\n"
         "missing: all but @CanUserAddRemove @CanUserSort @DescriptionImage @DescriptionImageStretch "
         "@EditabilityIdentifier @EditabilitySource @EditableValue @Precision @ProfileName @RemovingType "
         "@Type 11/15 @VisibilityIdentifier @VisibilitySource @VisibleValue @xmlns Laser Major Minor "
         "PartConfigurator PartOptions PlatformConfigurator PlatformOptions Profile ProfileEditor Version\n"
         "misspelt: Attachment Bool Choice Distance Double File Group Heads Int Laser Material On Options "
         "1/2 Power Profile Profiles SomeRootname String\n"
         "moved: all but Minor PartConfigurator PartOptions PlatformConfigurator ProfileEditor\n"
         "other flag: @CanUserSort\n"
         "text: Attachment Bool Choice Distance Double File Group Int Material On Option Options 1/2 Power "
         "Profile String\n"
         "twice: all but Laser Major Options 1/2 PartConfigurator PlatformConfigurator PlatformOptions "
         "Profile ProfileEditor Version\n"},
        {Saved(ticket, 1), MachineSchema,
         "=: @Name @uuid 2/3\n"
         "=0: @Name @Type @uuid 2/3\n"
         "=x: @Name @Type @uuid 2/3\n"
         "borrowed: @Name 1/10 @type 2/16 @xmlns Instance 2/17 Property 11/17\n"
         "empty: all but\n"
         "missing: all but @Name 6/7 @Type @uuid @xmlns Data Name\n"
         "text: Name Property\n"
         "twice: Component Instance Property\n"},
        {Saved(ticket, 2), TicketSchema,
         "=: @Name @uuid 2/3\n"
         "=0: @Id @Name @Type @uuid 2/3\n"
         "=x: @Id @Name @Type @uuid 2/3\n"
         "borrowed: @Name 1/12 @type 2/18 @xmlns Instance 2/19 Property 11/19\n"
         "empty: all but\n"
         "missing: all but @Name 6/7 @PropertyTemplate @Type @uuid @xmlns Data Info Name Source\n"
         "text: Name Property\n"
         "twice: Component Instance Property\n"},
    };
    for (Row const& row : rows) {
        ExpectAllValid({row.document}, row.schema);
        EXPECT_EQ(TakenMistakes(row.document, row.schema), row.taken) << row.document.substr(0, 6000);
    }
}
