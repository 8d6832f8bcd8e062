// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/machine_parameters_file.h>

#include "tests/support/dump.h"
#include "tests/support/generated_database.h"
#include "tests/support/machine_parameters.h"
#include "tests/support/small_parameter_file.h"

#include <gtest/gtest.h>

#include <regex>

using namespace TestSupport;

namespace {

bool Read(ParameterDatabase& database, std::string const& document, ReadReport* report) {
    TemporaryFolder const folder;
    Fill(folder / "file", document);
    return KlvrProperties::ReadFile(database, (folder / "file").wstring(), report);
}

/// What stands in the root, on one line, with "<N:T>...</>" for properties.
std::string Compact(std::string const& document) {
    std::string const head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<KlvrMachineParameters "
                             "xmlns=\"https://schemas.zantrel.example/build_processing/2016/04\"";
    EXPECT_EQ(document.substr(0, head.size()), head);
    std::string text = std::regex_replace(document.substr(head.size()), std::regex("\n *"), "");
    text = std::regex_replace(text, std::regex("<Property Name=\"([^\"]*)\" Type=\"([^\"]*)\""), "<$1:$2");
    return std::regex_replace(text, std::regex("</Property>"), "</>");
}

/// What Dump gives, without flags.
std::string Values(ParameterDatabase& database) {
    return std::regex_replace(Dump(database), std::regex("![rhandu]"), "");
}

/// Gives all entries the names under which they are read back.
void NameEntries(LayoutNode& node) {
    node.SetNodeName(node.m_isProfileList ? L"Profile" : L"Instance");
    for (LayoutNode* const child : node.m_children) {
        NameEntries(*child);
    }
}

} // namespace

TEST(MachineParametersFile, HoldsEveryValueAndNoFlags) {
    SmallLayout const layout;
    ParameterDatabase database(&layout);
    ASSERT_TRUE(ReadText(database, SmallFile));
    EXPECT_EQ(
        Compact(MachineParameters(database, false)),
        "><GenericParameters:Complex><I:integer>7</></><G:Complex><I:integer>-8</><D:number>1.5</>"
        "<L:Unsupported>0.002</><B:bool>True</><S:string> a\xC3\xA4&lt;b </><O:Unsupported>o</>"
        "<F:ProfileName>f</><P:Unsupported>/p</><A:Unsupported><Name>n.bin</Name><Data>AP8=</Data></>"
        "<X:StandardOptions>x</></><N:integer><Instance>1</Instance><Instance>2</Instance></>"
        "<AS:Unsupported><Instance><Name>m</Name><Data>AQID</Data></Instance></>"
        "<M:Complex><Instance><I:integer>3</><N:integer><Instance>4</Instance></></Instance></>"
        "<C:Complex ProfileList=\"\"><Default><I:integer>5</><N:integer/><C:Complex ProfileList=\"\">"
        "<Default><S:string>t</></Default></></Default><Profile Name=\"p &amp; q\"><I:integer>6</>"
        "<N:integer><Instance>9</Instance></><C:Complex ProfileList=\"\"><Default><S:string>s</></Default>"
        "<Profile Name=\"in\"><S:string/></Profile></></Profile></>"
        "<Z:Complex ProfileList=\"\"><Default><I:integer>1</></Default><Profile Name=\"b\"><I:integer>2</>"
        "</Profile></></KlvrMachineParameters>");
}

TEST(MachineParametersFile, HoldsTheNamesOfProfilesAloneUnlessToldOtherwise) {
    EXPECT_TRUE(KlvrProperties::WriteOptions().m_profileListsOnly);
    SmallLayout layout;
    layout.m_profileEditor->AppendNode(LayoutNode::MakeNode(L"T", Int)->SetProfile(true, L"Profile"));
    ParameterDatabase database(&layout);
    ASSERT_TRUE(ReadText(database, SmallFile));
    database.GetProfileEditor().Get(L"T").AddProfile(L"leaf", true).SetValue<std::int32_t>(5);
    EXPECT_EQ(Compact(MachineParameters(database, true)),
              "><C:Complex ProfileList=\"\"><Profile Name=\"p &amp; q\"><C:Complex ProfileList=\"\">"
              "<Profile Name=\"in\"/></></Profile></><Z:Complex ProfileList=\"\"><Profile Name=\"b\"/></>"
              "<T:integer ProfileList=\"\"><Profile Name=\"leaf\">5</Profile></></KlvrMachineParameters>");
    ParameterLayout plain;
    plain.m_profileEditor->AddNode(L"G")->AddNode(L"I", Int, std::int32_t(1));
    EXPECT_EQ(Compact(MachineParameters(ParameterDatabase(&plain), true)), "/>");
    EXPECT_EQ(Compact(MachineParameters(ParameterDatabase(nullptr), false)), "/>");
}

TEST(MachineParametersFile, IsReadByTheNamesOfItsProperties) {
    struct Row {
        char const* document; ///< "[N:" stands for "<Property Name='N'>" and "]" for its end
        char const* changes;
        std::size_t passedOver = 0; ///< entries of the report
        bool isRead = true;
    };
    for (Row const& row : std::initializer_list<Row>{
             {"<R>[G:[I:5][D:-INF][L:2][B:1][S: a ][X:x]]</R>",
              "G/I=5 G/D=-INF G/L=2 G/B=True G/S=' a ' G/X='x'"},
             {"<R><Property Name='G' Type='bool' ProfileList='' ReadOnly='true' "
              "Hidden='true'>[I:5]</Property></R>",
              "G/I=5"},
             {"<R>[G:[I:5][I:x][I:6][D:y][A:<Name>n</Name>[I:7]<Data>AQ==</Data>]]</R>", "G/I=6 G/A='n':01",
              3},
             {"<R><Property>[G:[I:5]]</Property>[U:[V:]<W>[G:[B:1]]</W>]</R>", "G/I=5 G/B=True", 4},
             {"<R><property Name='G'/><p:Property xmlns:p='u' Name='G'>[G:[I:5]]</p:Property></R>", "G/I=5",
              2},
             {"<R>[N:<Item>1</Item>][N:<Item>2</Item><Instance>3</Instance><Default/>]</R>", "N[=0; =2]", 2},
             {"<R>[Z:<Both Name='a'>[I:2]</Both><Profile Name='b'/><Default>[I:3]</Default>]</R>",
              "Z<{I=3}; 'a'{I=2}>", 1},
             {"<R>[C:<Profile Name='a' ReadOnly='true' CanBeDeleted='true'/><Profile/>[I:9]]</R>",
              "C<{I=1 N[=0;] C<{S='s'};>}; ''{I=1 N[=0;] C<{S='s'};>} 'a'{I=1 N[=0;] C<{S='s'};>}>", 1},
             {"<R>[M:<Item>[I:2][N:<Item>4</Item>]</Item>]</R>", "M[{I=1 N[=0;]}; {I=2 N[=0; =4]}]"},
             {"[G:[I:5]]", "G/I=5"}, // a root that is itself a property
             {"[U:[G:[I:5]]]", "G/I=5"},
             {"<Property>[G:[I:5]]</Property>", "G/I=5", 1},
             {"<R>[N:<Item>1</Item><Item>2", "N[=0; =1]", 1, false},
             {"", "", 1, false},
         }) {
        SCOPED_TRACE(row.document);
        SmallLayout const layout;
        ParameterDatabase database(&layout);
        ReadReport report;
        std::string const document = std::regex_replace(
            std::regex_replace(row.document, std::regex("\\[(\\w):"), "<Property Name='$1'>"),
            std::regex("\\]"), "</Property>");
        EXPECT_EQ(Read(database, document, &report), row.isRead);
        EXPECT_EQ(DumpChanges(database), row.changes);
        EXPECT_EQ(report.m_entries.size(), row.passedOver);
    }
}

TEST(MachineParametersFile, BringsEveryValueBackWhereEntriesHaveTheNamesThatAreWritten) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Generator generator(seed);
        std::unique_ptr<ParameterLayout> const layout = generator.MakeLayout();
        NameEntries(*layout->m_profileEditor);
        ParameterDatabase written(layout.get()), back(layout.get());
        generator.FillContent(written.GetProfileEditor());
        std::string const document = MachineParameters(written, false);
        ReadReport report;
        ASSERT_TRUE(Read(back, document, &report));
        EXPECT_TRUE(report.m_entries.empty());
        ASSERT_EQ(Values(back), Values(written));
        ASSERT_EQ(MachineParameters(back, false), document);
    }
}

TEST(MachineParametersFile, IsReplacedWholeOrNotAtAll) {
    SmallLayout const layout;
    TemporaryFolder const folder;
    Fill(folder / "file", "old");
    ParameterDatabase database(&layout);
    database.GetProfileEditor().Get(L"C").AddProfile(L"\xFFFF", true);
    WriteReport report;
    EXPECT_FALSE(KlvrProperties::WriteFile(database, (folder / "file").wstring(), {}, &report));
    EXPECT_EQ(report.m_path, L"KlvrMachineParameters/Property/Profile");
    EXPECT_EQ(ContentOf(folder / "file"), "old");
    EXPECT_EQ(folder.CountEntries(), 1);
    EXPECT_FALSE(KlvrProperties::WriteFile(ParameterDatabase(&layout), (folder / "no/file").wstring(), {}));
    EXPECT_FALSE(KlvrProperties::ReadFile(database, (folder / "none").wstring()));
}
