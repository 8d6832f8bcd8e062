// SPDX-License-Identifier: Apache-2.0
#include "tests/support/generated_database.h"
#include "tests/support/schema_check.h"

#include <zantrel/editing/schema.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

using namespace TestSupport;
using Zantrel::Editing::WriteSchema;

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

constexpr wchar_t const* Choices[] = {L"first", L" a\n<&\"b", L"\x00E9"};
constexpr wchar_t const* Ruled[] = {L"", L"ab-\x0663", L"zz]^", L"\x00E9 $"};

/// Gives the nodes below a generated one rules that Fill keeps, names that stand twice, and places that no
/// cursor reaches.
void AddRules(LayoutNode& node, LayoutNode const* copied, Generator& random) {
    for (std::size_t i = node.Size(); i != 0; --i) {
        AddRules(node.At(i - 1), copied, random);
    }
    node.m_description = random.Chance(3) ? L"]]>\x0001 <" : L"";
    node.m_min = random.Chance(2) ? L"-5.25" : L"1e";
    node.m_max = random.Chance(2) ? L" +1e2" : L"";
    node.SetMultiplicityMin(node.m_multiplicity)->SetMultiplicityMax(random.Chance(2) ? 99 : 0);
    node.m_optionValues.clear();
    for (std::size_t i = 0; node.m_type == Options && i < std::size(Choices); ++i) {
        node.AddOption(Choices[i], L"");
    }
    if (node.m_type == String && random.Chance(2)) {
        node.m_regex = LR"(^(?:[a-z]{2}-?.|z+\]\^|\u00e9\s\$)$)";
        node.m_maxLength = random.Chance(2) ? 4 : 0;
    }
    if (random.Chance(12)) {
        node.SetNodeName(L"Default")->AppendNode(L"GenericParameters"); // which a filter leaves out
    }
    if (random.Chance(12)) {
        node.AddNode(*copied);
        node.AddNode(random.Chance(2) ? L"Twice" : L"Once", Int, std::int32_t{2});
        node.AddNode(L"Twice", Bool, true);
    }
}

/// Sets a value that AddRules allows.
void Set(ParameterNode leaf, Generator& random) {
    LayoutNode const& layout = *leaf.m_pNode;
    if (layout.m_type == Options) {
        leaf.SetValueFromText(Choices[random.Below(std::size(Choices))]);
    } else if (!layout.m_regex.empty()) {
        leaf.SetValueFromText(Ruled[random.Below(std::size(Ruled))]);
    } else if (leaf.FindValue<std::int32_t>() != nullptr) {
        leaf.SetValue(static_cast<std::int32_t>(random.Below(106)) - 5);
    } else if (leaf.FindValue<double>() != nullptr) {
        leaf.SetValue(random.Chance(3) ? -5.25 : random.Below(100000) / 1000.0);
    } else if (leaf.FindValue<KelAM::FileContent>() != nullptr) {
        leaf.SetValue(random.Value(KelAM::FileContent()));
    } else if (leaf.FindValue<bool>() == nullptr) {
        leaf.SetValueFromText(random.Text()); // also makes a value where none was
    }
}

/// Adds entries, of which some have one name, and sets flags and values.
void Fill(ParameterDatabase& database, Generator& random) {
    for (Walk walk(database.GetProfileEditor()); walk.Next();) {
        ParameterNode at = walk.Node();
        if (!at.IsValid()) {
            continue;
        }
        at.SetReadOnly(random.Chance(4));
        at.SetHidden(random.Chance(4));
        for (unsigned count = at.m_isContainer ? random.Below(3) : 0; count != 0; --count) {
            at.SetDisableAddRemove(random.Chance(2));
            if (walk.Kind() == PlaceKind::List) {
                at.AddListNode(random.Chance(2));
            } else {
                at.AddProfile(random.Chance(2) ? L"twin" : random.Text().c_str(), random.Chance(2))
                    .SetCanBeDeleted(random.Chance(2));
            }
        }
        if (walk.IsLeaf() && walk.Layout().m_type != Group) {
            Set(at, random);
        }
    }
}

} // namespace

TEST(Schema, TakesWhatIsWrittenOfValuesThatAreAllowed) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        Generator random(seed);
        auto const layout = random.MakeLayout();
        LayoutNode copied(L"Copied", Group, nullptr);
        copied.AddNode(L"Number", Double, 1.0);
        AddRules(*layout->m_profileEditor, &copied, random);
        ParameterDatabase database(layout.get());
        Documents documents;
        for (int round = 0; round < 2; ++round) {
            Fill(database, random);
            for (int filter = 0; filter < 4; ++filter) {
                ParameterDatabaseIOFiltering filtering;
                filtering.m_exportGeneralParameters = filter % 2 == 0;
                filtering.m_exportDefaultParameters = filter / 2 == 0;
                documents.push_back(Written(database, filtering));
            }
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
