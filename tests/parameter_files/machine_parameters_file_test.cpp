// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"
#include "tests/parameter_files/reading_test.h"
#include "tests/support/machine_parameters.h"
#include "tests/support/sax_test_support.h"

using namespace TestSupport;

namespace {

bool Read(ParameterDatabase& database, std::string const& document, ReadReport* report) {
    std::istringstream in(WithProperties(document));
    return KlvrProperties::ReadStream(database, in, report);
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

} // namespace

TEST(MachineParametersFile, HoldsEveryValueAndNoFlags) {
    SmallLayout const layout;
    ParameterDatabase database(&layout);
    ASSERT_TRUE(ReadText(database, SmallFile));
    EXPECT_EQ(
        Compact(WriteText(MachineParameterFile<false>, database)),
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
    EXPECT_EQ(Compact(WriteText(MachineParameterFile<true>, database)),
              "><C:Complex ProfileList=\"\"><Profile Name=\"p &amp; q\"><C:Complex ProfileList=\"\">"
              "<Profile Name=\"in\"/></></Profile></><Z:Complex ProfileList=\"\"><Profile Name=\"b\"/></>"
              "<T:integer ProfileList=\"\"><Profile Name=\"leaf\">5</Profile></></KlvrMachineParameters>");
    ParameterLayout plain;
    plain.m_profileEditor->AddNode(L"G")->AddNode(L"I", Int, std::int32_t(1));
    EXPECT_EQ(Compact(WriteText(MachineParameterFile<true>, ParameterDatabase(&plain))), "/>");
    EXPECT_EQ(Compact(WriteText(MachineParameterFile<false>, ParameterDatabase(nullptr))), "/>");
}

TEST(MachineParametersFile, IsReadByTheNamesOfItsProperties) {
    CheckReading(
        Read,
        {
            {"<R>[G:[I:5][D:-INF][L:2][B:1][S: a ][X:x]]</R>",
             "G/I=5 G/D=-INF G/L=2 G/B=True G/S=' a ' G/X='x'"},
            {"<R x=''><Property Name='G' Type='bool' ProfileList='' ReadOnly='true' "
             "Hidden='true'>[I:5]</Property></R>",
             "G/I=5", "unknown@1:1:R unknown@1:9:R/Property \"G\" unknown@1:9:R/Property \"G\""},
            {"<R>[G:[I:5][I:x][I:6][D:y][A:<Name>n</Name>[I:7]<Data>AQ==</Data>]]</R>", "G/I=6 G/A='n':01",
             "text@1:54:R/Property \"G\"/Property \"I\" text@1:116:R/Property \"G\"/Property \"D\" "
             "untaken@1:180:R/Property \"G\"/Property \"A\"/Property \"I\""},
            {"<R><Property>[G:[I:5]]</Property>[U:[V:]<W>[G:[B:1]]</W>]</R>", "G/I=5 G/B=True",
             "dropped@1:4:R/Property dropped@1:86:R/Property \"U\" dropped@1:105:R/Property \"U\"/Property "
             "\"V\" untaken@1:135:R/Property \"U\"/W"},
            {"<R><property Name='G'/><p:Property xmlns:p='u' Name='G'>[G:[I:5]]</p:Property></R>", "G/I=5",
             "untaken@1:4:R/property \"G\" untaken@1:24:R/p:Property \"G\""},
            {"<R>[N:<Item>1</Item>][N:<Item>2</Item><Instance>3</Instance><Default/>]</R>", "N[=0; =2]",
             "untaken@1:81:R/Property \"N\"/Instance untaken@1:103:R/Property \"N\"/Default"},
            {"<R>[Z:<Both Name='a'>[I:2]</Both><Profile Name='b'/><Default>[I:3]</Default>]</R>",
             "Z<{I=3}; 'a'{I=2}>", "untaken@1:76:R/Property \"Z\"/Profile \"b\""},
            {"<R>[C:<Profile Name='a' ReadOnly='true' CanBeDeleted='true'/><Profile/>[I:9]]</R>",
             "C<{I=1 N[=0;] C<{S='s'};>}; ''{I=1 N[=0;] C<{S='s'};>} 'a'{I=1 N[=0;] C<{S='s'};>}>",
             "unknown@1:23:R/Property \"C\"/Profile \"a\" unknown@1:23:R/Property \"C\"/Profile \"a\" "
             "dropped@1:88:R/Property \"C\"/Property \"I\""},
            {"<R>[M:<Item>[I:2][N:<Item>4</Item>]</Item>]</R>", "M[{I=1 N[=0;]}; {I=2 N[=0; =4]}]"},
            {"[G:[I:5]]", "G/I=5"}, // a root that is itself a property
            {"<Property>[G:[I:5]]</Property>", "G/I=5", "dropped@1:1:Property"},
        });
}

TEST(MachineParametersFile, IsTheSameAsAFileOnAnyPathAndAsAStream) {
    SmallLayout const layout;
    TemporaryFolder const folder;
    std::filesystem::path const path = folder / "file";
    ParameterDatabase database(&layout), byText(&layout), byPath(&layout);
    ASSERT_TRUE(ReadText(database, SmallFile));
    EXPECT_TRUE(KlvrProperties::WriteFile(database, path.wstring(), {}));
    std::string const written = ContentOf(path);
    EXPECT_EQ(written, WriteText(MachineParameterFile<true>, database));
    EXPECT_TRUE(KlvrProperties::WriteFile(database, path, {}) && ContentOf(path) == written);
    EXPECT_TRUE(KlvrProperties::ReadFile(byText, path.wstring()) && KlvrProperties::ReadFile(byPath, path));
    EXPECT_TRUE(byText.IsEqual(byPath));
    EXPECT_EQ(byText.GetProfileEditor().Get(L"C").GetSize(), 1u);
}
