// SPDX-License-Identifier: Apache-2.0
#include "tests/editing/generated.h"
#include "tests/support/schema_check.h"

#include <zantrel/editing/schema.h>
#include <zantrel/editing/validation.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <sstream>

using namespace TestSupport;
using namespace Zantrel;
using namespace Zantrel::Editing;
using EditingTests::Generated;

namespace {

/// A schema in a file, for xmllint.
class SchemaFile {
public:
    explicit SchemaFile(ParameterLayout const& layout) {
        WriteReport report;
        EXPECT_TRUE(WriteSchema(layout, m_folder / "schema.xsd", &report)) << report.Format();
    }
    Documents VerdictsOn(Documents const& documents) const {
        return TestSupport::VerdictsOn(documents, (m_folder / "schema.xsd").string());
    }
    std::string Content() const { return ContentOf(m_folder / "schema.xsd"); }

private:
    TemporaryFolder m_folder;
};

std::string Written(ParameterDatabase const& database, ParameterDatabaseIOFiltering const& filtering = {}) {
    std::ostringstream out;
    EXPECT_TRUE(WriteStream(database, out, filtering));
    return out.str();
}

/// Makes of the values those that the layout allows.
void Mend(ParameterDatabase& database) {
    for (PlaceWalk walk(database); walk.Next();) {
        Place const& place = walk.GetPlace();
        bool const isText = place.GetCursor().FindValue<std::wstring>() != nullptr;
        for (Finding const& finding : place.IsLeaf() ? Validate(place) : std::vector<Finding>()) {
            bool const isOfSchema =
                finding.kind != FindingKind::NotUnique && finding.kind != FindingKind::NoSuchProfile;
            if (isOfSchema && finding.severity == Severity::Error) {
                SetText(place, isText ? L"" : L"4");
            }
        }
    }
}

/// Lets lists be as long as Fill makes them.
void Loosen(LayoutNode& node) {
    node.SetMultiplicityMin(std::min(node.m_multiplicityMin, node.m_multiplicity));
    node.SetMultiplicityMax(node.m_multiplicityMax != 0 ? 99 : 0);
    for (std::size_t i = 0; i < node.Size(); ++i) {
        Loosen(node.At(i));
    }
}

/// What a schema has other words for, or none.
void AddHardNodes(LayoutNode& editor, LayoutNode const& copied, Generated& generated) {
    LayoutNode& group = *editor.AddNode(generated.OneIn(2) ? L"GenericParameters" : L"\x65E5.-");
    group.SetDescription(L"]]>\x0001 <")->AddNode(copied);
    group.AddNode(L"In", String, L"ab-\x0663")->m_regex = LR"(^(?:[a-z]{2}-?.|z+\]\^|\u00e9\s\$)$)";
    group.AddNode(L"Mode", Options, L" a\n<&\"b")->AddOption(L" a\n<&\"b", L"")->AddOption(L"\x00E9", L"");
    group.AddNode(L"Count", Int, std::int32_t{4})->m_max = L" +1e2";
    group.AddNode(L"Default")->SetProfile(true, L"Default");
}

} // namespace

TEST(Schema, TakesWhatIsWrittenOfValuesThatAreAllowed) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        Generated generated(seed);
        auto const layout = generated.MakeLayout();
        LayoutNode copied(L"Copied", Group, nullptr);
        copied.AddNode(L"Number", Double, 1.0);
        Loosen(*layout->m_profileEditor);
        AddHardNodes(*layout->m_profileEditor, copied, generated);
        ParameterDatabase database(layout.get());
        Documents documents;
        for (int round = 0; round < 4; ++round) {
            generated.Fill(database, 3);
            ParameterDatabaseIOFiltering filtering;
            filtering.m_exportGeneralParameters = round % 2 == 0;
            filtering.m_exportDefaultParameters = round / 2 == 0;
            Mend(database);
            documents.push_back(Written(database, filtering));
        }
        SchemaFile const schema(*layout);
        Documents const verdicts = schema.VerdictsOn(documents);
        for (std::size_t i = 0; i < documents.size(); ++i) {
            ASSERT_EQ(verdicts[i], "validates") << seed << schema.Content() << documents[i];
        }
    }
}

TEST(Schema, RefusesMistakesAndTakesWhatAReaderTakes) {
    ParameterLayout layout;
    layout.SetName(L"Machine");
    LayoutNode& editor = *layout.m_profileEditor;
    LayoutNode* const group = editor.AddNode(L"GenericParameters")->AddNode(L"Laser");
    group->AddNode(L"Power", Distance, 200.0)->SetRange(0.5, 300.0);
    group->AddNode(L"Count", Int, std::int32_t{2})->SetRange(-1.5, 7.5);
    group->AddNode(L"On", Bool, true);
    group->AddNode(L"Mode", Options, L"Fast")->AddOption(L"Fast", L"")->AddOption(L"Slow", L"");
    group->AddNode(L"Code", String, L"ab1")->m_regex = L"[a-z]+\\d";
    group->AddNode(L"Label", String, L"abc")->m_maxLength = 4;
    group->AddNode(L"Sign", String, L"]")->m_regex = L"\\W(\\d?){2}";
    group->AddNode(L"Lens", FileAttachment, L"");
    group->AddNode(L"Optional", Double, 1.0)->m_writeToParameterFile = false;
    LayoutNode* const list = editor.AddNode(L"Points")->SetList(true, L"Point", L"")->SetMultiplicity(2);
    list->SetMultiplicityMin(1)->SetMultiplicityMax(3)->AddNode(L"X", Double, 0.0);
    editor.AddNode(L"Materials")->SetProfile(true, L"Material")->AddNode(L"Speed", Double, 5.0);
    ParameterDatabase database(&layout);
    database.GetProfileEditor().Get(L"Materials").AddProfile(L"Steel", true);
    std::string const document = Written(database);

    struct Row {
        char const *from, *to;
        bool isTaken;
    } const rows[] = {
        {"<Machine", "<Machine ", true},
        {"Machine>", "Machina>", false},
        {"Power>", "Powr>", false},
        {"<Power>200<", "<Power>0.49<", false},
        {"<Power>200<", "<Power>300.01<", false},
        {"<Power>200<", "<Power> 3e2 <", true},
        {"<Power>200<", "<Power>200 W<", false},
        {"<Power>200<", "<Power>200,5<", false},
        {"<Power>200<", "<Power><", false},
        {"<Power>", "<Power ReadOnly='1' Hidden='True'>", true},
        {"<Power>", "<Power ReadOnly='yes'>", false},
        {"<Power>", "<Power DisableAddRemove='true'>", false},
        {"<Power>200</Power>", "", false},
        {"<Power>200</Power>", "<Power>200</Power><Power>200</Power>", false},
        {"<Optional>1</Optional>", "", true},
        {"<Count>2<", "<Count>2.0<", false},
        {"<Count>2<", "<Count>8<", false},
        {"<Count>2<", "<Count>7<", true},
        {"<Count>2<", "<Count>-2<", false},
        {"<On>True<", "<On>0<", true},
        {"<On>True<", "<On>yes<", false},
        {">Fast<", ">Slow<", true},
        {">Fast<", ">fast<", false},
        {">ab1<", ">ab<", false},
        {">ab1<", ">xab12<", false},
        {">ab1<", "><", true},
        {">]<", ">12<", false},
        {">abc<", ">abcd<", true},
        {">abc<", ">abcde<", false},
        {"<Data/>", "<Data>AAE=</Data>", true},
        {"<Data/>", "<Data>AAE</Data>", false},
        {"<Data/>", "<Date/>", false},
        {"<Laser>", "<Laser>text", false},
        {"<Points>", "<Points DisableAddRemove='true'>", true},
        {"<Points>", "<Points><Point><X>1</X></Point>", true},
        {"<Points>", "<Points><Point><X>1</X></Point><Point><X>1</X></Point>", false},
        {"Point>", "Punkt>", false},
        {"<Materials>", "<Materials><Materiel Name='Iron'/>", false},
        {" Name=\"Steel\"", "", false},
        {"CanBeDeleted=", "Deletable=", false},
        {"</Default>", "</Default><Default/>", false},
        {"<Default", "<Material Name='Steel'/><Default", true},
        {"<Speed>5</Speed>", "", true},
        {"<Materials>", "<Materials><Speed>5</Speed>", false},
    };
    Documents documents{document};
    for (Row const& row : rows) {
        std::string& changed = documents.emplace_back(document);
        std::string const from = row.from;
        ASSERT_NE(changed.find(from), std::string::npos) << from << document;
        bool const isName = from.back() == '>' && from.front() != '<'; // of start and end
        for (std::size_t at = changed.find(from); at != std::string::npos;
             at = isName ? changed.find(from, at + 1) : std::string::npos) {
            changed.replace(at, from.size(), row.to);
        }
    }
    Documents const verdicts = SchemaFile(layout).VerdictsOn(documents);
    EXPECT_EQ(verdicts[0], "validates") << SchemaFile(layout).Content();
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(verdicts[i + 1], rows[i].isTaken ? "validates" : "fails to validate")
            << rows[i].from << " -> " << rows[i].to;
    }
}

TEST(Schema, IsNotMadeForALayoutWithoutFiles) {
    ParameterLayout layout;
    for (wchar_t const* name : {L"", L"1", L"a:b", L"a b"}) {
        layout.SetName(name);
        std::ostringstream out;
        WriteReport report;
        EXPECT_FALSE(WriteSchema(layout, out, &report)) << name;
        EXPECT_NE(report.m_sentence.find(L"no name of an element"), std::wstring::npos);
        EXPECT_EQ(out.str(), "");
    }
}
