// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"
#include "tests/support/schema_check.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

char const* const MachineSchema = "build_processing_2016_04.xsd";
char const* const TicketSchema = "build_processing_2017_02.xsd";
char const* const MetaSchema = "layout_meta_file.rng";

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
    for (WrittenForm const& form : WrittenForms) {
        Documents documents = {WriteText(*form.make())};
        for (unsigned seed = 1; seed <= 20; ++seed) {
            auto const generated = form.make()->Generated(seed), back = generated->Fresh();
            documents.push_back(WriteText(*generated));
            EXPECT_TRUE(ReadText(*back, documents.back()));
            documents.push_back(WriteText(*back));
        }
        if (form.schema != nullptr) {
            ExpectAllValid(documents, form.schema);
        }
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
    for (auto const& [document, schema] :
         {std::pair(ofLayout, MachineSchema), {first, MachineSchema}, {second, TicketSchema}}) {
        ExpectAllValid({document}, schema);
        EXPECT_NE(document.find(schema + std::string("\"")), std::string::npos);
    }
}

TEST(Schema, RefusesAllMistakesButThese) {
    ParameterLayout layout;
    FillSmallLayout(layout);
    BuildTicket ticket(nullptr);
    EXPECT_TRUE(Load(ticket, ExampleOf("ticket")));
    auto const machine = FormatCalled("MachineParameters").make();
    EXPECT_TRUE(ReadText(*machine, ExampleOf("machine_parameters")));
    std::pair<std::string, char const*> const documents[] = {
        {WriteText(*machine), MachineSchema},      {WriteText(PropertyTemplate, layout), MachineSchema},
        {WriteText(MetaFile, layout), MetaSchema}, {Saved(ticket, 1), MachineSchema},
        {Saved(ticket, 2), TicketSchema},
    };
    std::string taken;
    for (auto const& [document, schema] : documents) {
        ExpectAllValid({document}, schema);
        taken += "# " + std::string(schema) + '\n' + TakenMistakes(document, schema);
    }
    EXPECT_EQ(taken, ContentOf(ZANTREL_TESTS "/formats/mistakes_taken_by_schemas.txt"));
}
