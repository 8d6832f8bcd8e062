// SPDX-License-Identifier: Apache-2.0
#include "tests/support/dump.h"
#include "tests/support/sax_test_support.h"
#include "tests/support/small_parameter_file.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

/// The places of a report, as in "text@1:10:Root/G/I".
std::string Places(ReadReport const& report) {
    char const* const kinds[] = {"file", "document", "refused", "untaken", "text", "attribute", "dropped"};
    std::string text;
    for (ReadReport::Entry const& entry : report.m_entries) {
        text += (text.empty() ? "" : " ") + std::string(kinds[static_cast<std::size_t>(entry.kind)]) + '@' +
                std::to_string(entry.line) + ':' + std::to_string(entry.column) + ':' +
                StringConversion::NativeToUtf8(entry.path);
        EXPECT_EQ(entry.sentence.back(), L'.');
    }
    return text;
}

struct Case {
    char const* inRoot; ///< what stands in "<Root>...</Root>", or a whole document from its "<?xml" on
    char const* changes;
    char const* report = "";
};

void Check(Case const& row) {
    std::string const text = row.inRoot;
    std::string const document = text.substr(0, 5) == "<?xml" ? text : "<Root>" + text + "</Root>";
    SCOPED_TRACE(document);
    SmallLayout const layout;
    ParameterDatabase database(&layout);
    ParameterDatabase silent(&layout);
    ReadReport report;
    bool const isRead = ReadText(database, document, &report);
    EXPECT_EQ(isRead, std::string(row.report).find("document@") == std::string::npos);
    EXPECT_EQ(DumpChanges(database), row.changes);
    EXPECT_EQ(Places(report), row.report);
    EXPECT_EQ(ReadText(silent, document), isRead);
    EXPECT_EQ(Dump(silent), Dump(database)) << "the report changed what is read";
    ParameterDatabase again(&layout);
    EXPECT_TRUE(ReadText(again, WriteText(database)));
}

/// The elements of a document on one line, with "~" for CanBeDeleted="false".
std::string Compact(std::string const& document) {
    std::string const flag = " CanBeDeleted=\"false\"";
    std::istringstream lines(document);
    std::string text, line;
    std::getline(lines, line); // the declaration
    while (std::getline(lines, line)) {
        std::size_t const at = line.find(flag);
        text += (at < line.size() ? line.replace(at, flag.size(), "~") : line).substr(line.find('<'));
    }
    return text;
}

} // namespace

TEST(GenericParameterFile, ReadsValuesAsTheirTypesSay) {
    for (Case const& row : std::initializer_list<Case>{
             {"<G><I> +5 </I><D>-INF</D><L>nan</L><B> 1 </B></G>", "G/I=5 G/D=-INF G/L=NaN G/B=True"},
             {"<G><S> a&#13;&#10;b\r\n</S><P>\t</P></G>", "G/S=' a\r\nb\n' G/P='\t'"},
             {"<G><S>a<!-- c -->b<?p i?>c<![CDATA[<&]]></S><I>1<!-- -->2</I></G>", "G/I=12 G/S='abc<&'"},
             {"<G><I>5.5</I><D>1,5</D>\n<B>yes</B><I/><I>2147483648</I></G>", "",
              "text@1:10:Root/G/I text@1:20:Root/G/D text@2:1:Root/G/B text@2:11:Root/G/I "
              "text@2:15:Root/G/I"},
             {"<G><I>1</I><I>2</I></G>", "G/I=2"},
             {"<G><I>5<D>2</D></I></G>", "G/I=5 G/D=2"},
             {"<G><X/></G>", ""},
             {"<G><X> </X><X/></G>", "G/X=''"},
             {"<G><A><Data>AQ==</Data><Name>n</Name><S>s</S></A><S>t</S></G>", "G/S='t' G/A='n':01",
              "untaken@1:44:Root/G/A/S"},
             {"<G><A>a<Name>n</Name><Data>AQ</Data></A></G>",
              "G/A='n':", "dropped@1:10:Root/G/A dropped@1:28:Root/G/A/Data"},
             {"5<G>6<I>7</I></G><C>x</C><C><Default>y</Default></C>", "G/I=7",
              "dropped@1:8:Root/G dropped@1:24:Root/C dropped@1:35:Root/C/Default"},
         }) {
        Check(row);
    }
}

TEST(GenericParameterFile, ReadsElementsByTheirNamesInTheLayout) {
    for (Case const& row : std::initializer_list<Case>{
             {"<?xml version='1.0'?><Other xmlns='u'><N><Item>5</Item></N></Other>", "N[=0; =5]"},
             {"<?xml version='1.0'?><N><Item>5</Item></N>", "N[=0; =5]"},
             {"<?xml version='1.0'?><G><I>5</I></G>", "G/I=5"},
             {"<n><Item>1</Item></n><p:N xmlns:p='u'/>", "",
              "untaken@1:7:Root/n untaken@1:10:Root/n/Item "
              "untaken@1:28:Root/p:N"},
             {"<U>x<V><N><Item>5</Item></N></V></U>", "N[=0; =5]",
              "untaken@1:7:Root/U untaken@1:11:Root/U/V"},
             {"<N><Item>1</Item></N><N><Item>2</Item></N>", "N[=0; =2]"},
             {"<Z><Both Name='a'/></Z>", "Z<{I=1}; 'a'{I=1}>"},
             {"<C><Profile Name='a'/></C><C><Profile><N/></Profile></C>",
              "C<{I=1 N[=0;] C<{S='s'};>}; ''{I=1 N[=0;] C<{S='s'};>}>"},
             {"<Z><Both Name='b'><I>2</I></Both><Both Name='a'/><Default><I>3</I></Default></Z>",
              "Z<{I=3}; 'a'{I=1} 'b'{I=2}>"},
             // Both a list and a profile list: emptied as a list is, and the first of a name is the one that
             // is found.
             {"<Z><Both Name='a'><I>2</I></Both></Z><Z><Both Name='a'/></Z>", "Z<{I=1}; 'a'{I=2} 'a'{I=2}>"},
             {"<M><Row/><Item><I>2</I></Item><I>5</I></M>", "M[{I=1 N[=0;]}; {I=2 N[=0;]}]",
              "untaken@1:10:Root/M/Row untaken@1:37:Root/M/I"},
         }) {
        Check(row);
    }
}

TEST(GenericParameterFile, GivesNewEntriesTheDefaultsOfTheLayout) {
    SmallLayout const layout;
    ParameterDatabase database(&layout);
    database.GetProfileEditor().Get(L"N").GetDefault().SetValue<std::int32_t>(9);
    EXPECT_TRUE(
        ReadText(database, "<R><N><Item/></N><Z><Default><I>9</I></Default><Both Name='a'/></Z></R>"));
    EXPECT_EQ(DumpChanges(database), "N[=9; =0] Z<{I=9}; 'a'{I=1}>");
}

TEST(GenericParameterFile, ReadsTheFlagsThatANodeCanHave) {
    for (Case const& row : std::initializer_list<Case>{
             {"<G ReadOnly='true' Hidden='1'/><N Hidden='True' DisableAddRemove='true'/>",
              "G!r!h N!h!a[=0;]"},
             {"<G ReadOnly='true'/><G ReadOnly=' false '/><G ReadOnly='no'/>", "", "attribute@1:50:Root/G"},
             {"<G DisableAddRemove='true' ReadOnly='true'><I DisableAddRemove='false'/></G>", "G!r",
              "dropped@1:7:Root/G dropped@1:50:Root/G/I text@1:50:Root/G/I"},
             {"<Z ReadOnly='true'><Both Name='a' ReadOnly='true' Hidden='true' NameReadOnly='true' "
              "CanBeDeleted='true' UserDefaultProfile='true' DisableAddRemove='true'/></Z>",
              "Z!r<{I=1}; 'a'!r!n!d!u{I=1}>"},
             {"<Z><Default ReadOnly='true' NameReadOnly='true'/></Z>", ""},
             {"<N><Item ReadOnly='true' Hidden='true' DisableAddRemove='true'>3</Item></N>", "N[=0; !r!h=3]"},
         }) {
        Check(row);
    }
}

TEST(GenericParameterFile, PassesOverWhatHasNoPlaceInTheDatabase) {
    for (Case const& row : std::initializer_list<Case>{
             // Entries without their wrappers: children of the list's node that the list itself doesn't hold.
             {"<C><I ReadOnly='true'>5</I></C>", "", "dropped@1:10:Root/C/I dropped@1:10:Root/C/I"},
             {"<C><N>x<Item>1<I>2</I></Item></N></C>", "",
              "dropped@1:10:Root/C/N dropped@1:14:Root/C/N/Item untaken@1:21:Root/C/N/Item/I"},
             {"<C><C DisableAddRemove='true'><Profile "
              "Name='p'><S>1</S></Profile><Default><S>2</S></Default></C></C>",
              "",
              "dropped@1:10:Root/C/C dropped@1:37:Root/C/C/Profile dropped@1:55:Root/C/C/Profile/S "
              "dropped@1:82:Root/C/C/Default/S"},
             // Profiles that are taken for a child of their list.
             {"<C><Profile Name='I'/><I>9</I></C>",
              "C<{I=1 N[=0;] C<{S='s'};>}; 'I'{I=1 N[=0;] C<{S='s'};>}>", "dropped@1:29:Root/C/I"},
             {"<C><Profile Name='N'/><N><Item>9</Item></N></C>",
              "C<{I=1 N[=0;] C<{S='s'};>}; 'N'{I=1 N[=0;] C<{S='s'};>}>"},
             {"<C><Profile Name='C'/><C><Default/></C></C>", "C<{I=1 N[=0;] C<{S='s'};>}; 'C'{I- N- C-}>",
              ""},
             {"<C><Profile Name='ReadOnly'><I>2</I></Profile></C>",
              "C<{I=1 N[=0;] C<{S='s'};>}; 'ReadOnly'{I=2 N[=0;] C<{S='s'};>}>"},
             {"<Z><I>5</I></Z>", "", "dropped@1:10:Root/Z/I"}, // a list, too, but not looked up as one
             {"<Z><Both Name='::DefaultProfile::'><I>2</I></Both></Z>", ""},
             // Documents that end too early, and what had arrived.
             {"<?xml version='1.0'?><Root><N><Item>1</Item><Item>2</N></Root>", "N[=0; =1]",
              "document@1:52:Root/N/Item"},
             {"<?xml version='1.0'?><!DOCTYPE Root><Root><N/></Root>", "", "document@1:22:"},
             {"<?xml version='1.0' encoding='latin1'?><Root/>", "", "document@1:31:"},
             {"<?xml version='1.0'?>", "", "document@1:22:"},
         }) {
        Check(row);
    }
}

TEST(GenericParameterFile, IsWrittenInTheOrderOfTheLayout) {
    SmallLayout const layout;
    ParameterDatabase database(&layout);
    ASSERT_TRUE(ReadText(database, SmallFile));
    TemporaryFolder const folder;
    std::wstring const path = (folder / "file").wstring();
    ASSERT_TRUE(WriteFile(database, path, L""));
    EXPECT_EQ(ContentOf(folder / "file"), WriteText(database));
    EXPECT_EQ(
        Compact(WriteText(database)),
        R"(<Root><G ReadOnly="true"><I>-8</I><D>1.5</D><L>0.002</L><B>True</B><S Hidden="true"> aä&lt;b </S>)"
        "<O>o</O><F>f</F><P>/p</P><A><Name>n.bin</Name><Data>AP8=</Data></A><X>x</X></G>"
        R"(<N ReadOnly="true"><Item>1</Item><Item Hidden="true">2</Item></N>)"
        "<AS><Item><Name>m</Name><Data>AQID</Data></Item></AS>"
        R"(<M><Item ReadOnly="true"><I>3</I><N><Item>4</Item></N></Item></M>)"
        R"(<C DisableAddRemove="true"><Default~><I>5</I><N/><C><Default~><S>t</S></Default></C></Default>)"
        R"(<Profile Name="p &amp; q" NameReadOnly="true"~ UserDefaultProfile="true"><I>6</I>)"
        R"(<N><Item>9</Item></N><C><Default~><S>s</S></Default><Profile Name="in"~><S/></Profile></C></Profile>)"
        R"(</C><Z><Default~><I>1</I></Default><Both Name="b"~><I>2</I></Both></Z></Root>)");
}

TEST(GenericParameters, AreHiddenWhenTheFileHasNoneAtItsTop) {
    SmallLayout const layout;
    TemporaryFolder const folder;
    struct Row {
        char const* document;
        char const* changes;
        bool isRead = true;
    };
    for (Row const& row : {Row{"<Root/>", "GenericParameters!h"},
                           {"<Root><GenericParameters/></Root>", ""},
                           {"<Root><GenericParameters Hidden='true'/></Root>", "GenericParameters!h"},
                           {"<Root><U><GenericParameters/></U></Root>", ""},
                           {"<Root><G><GenericParameters/></G></Root>", "GenericParameters!h"},
                           {"<GenericParameters><I>5</I></GenericParameters>", "GenericParameters/I=5"},
                           {"<Root>", "", false}}) {
        Fill(folder / "file", row.document);
        ParameterDatabase database(&layout);
        EXPECT_EQ(ReadFile(database, (folder / "file").wstring()), row.isRead) << row.document;
        EXPECT_EQ(DumpChanges(database), row.changes) << row.document;
    }
    ParameterDatabase database(&layout);
    EXPECT_TRUE(ReadText(database, "<Root><GenericParameters Hidden='true'/></Root>") &&
                ReadText(database, "<Root><GenericParameters/></Root>"));
    EXPECT_EQ(DumpChanges(database), "GenericParameters!h") << "no attribute leaves the flag";
    ParameterLayout const without;
    ParameterDatabase other(&without), none(nullptr);
    Fill(folder / "file", "<Root/>");
    EXPECT_TRUE(ReadFile(other, (folder / "file").wstring()) && ReadFile(none, (folder / "file").wstring()));
    EXPECT_EQ(DumpChanges(other), "");
}

namespace {

/// A layout that has "GenericParameters" wherever the filter does or doesn't reach.
class FilterLayout : public ParameterLayout {
public:
    FilterLayout() {
        m_name = L"R";
        LayoutNode& editor = *m_profileEditor;
        editor.AppendNode(L"GenericParameters");
        editor.AddNode(L"G")->AppendNode(L"GenericParameters");
        editor.AddNode(L"N")
            ->SetList(true, L"Item", L"")
            ->SetMultiplicity(1)
            ->AppendNode(L"GenericParameters");
        LayoutNode& profiles =
            *editor.AddNode(L"C")->SetProfile(true, L"P")->AppendNode(L"GenericParameters");
        profiles.AddNode(L"D")->SetProfile(true, L"P");
    }
};

} // namespace

TEST(FilterFile, LeavesOutWhatItNamesButNotBelowDefaultsAndItems) {
    FilterLayout const layout;
    TemporaryFolder const folder;
    std::string const all =
        "<R><GenericParameters/><G><GenericParameters/></G><N><Item><GenericParameters/></Item></N>"
        "<C><Default~><GenericParameters/><D><Default~/></D></Default>"
        "<P Name=\"p\"~><GenericParameters/><D><Default~/></D></P></C></R>";
    std::string const noGeneral = "<R><G/><N><Item><GenericParameters/></Item></N>"
                                  "<C><Default~><GenericParameters/><D><Default~/></D></Default>"
                                  "<P Name=\"p\"~><D><Default~/></D></P></C></R>";
    std::string const noDefault =
        "<R><GenericParameters/><G><GenericParameters/></G><N><Item><GenericParameters/></Item></N>"
        "<C><P Name=\"p\"~><GenericParameters/><D/></P></C></R>";
    std::string const neither =
        "<R><G/><N><Item><GenericParameters/></Item></N><C><P Name=\"p\"~><D/></P></C></R>";
    struct Row {
        char const* filter;
        std::string written;
    };
    for (Row const& row :
         {Row{"", all},
          {"<f><ExportGeneralParameters>False</ExportGeneralParameters>", noGeneral},
          {"<f><ExportGeneralParameters>False</ExportGeneralParameters></f>", noGeneral},
          {"<ExportGeneralParameters> false </ExportGeneralParameters>", noGeneral},
          {"<f><x><ExportDefaultParameters>False</ExportDefaultParameters></x></f>", noDefault},
          {"<f><ExportDefaultParameters>0<ExportGeneralParameters>0</ExportGeneralParameters>"
           "</ExportDefaultParameters></f>",
           neither},
          {"<f><ExportGeneralParameters>False</ExportGeneralParameters>"
           "<ExportGeneralParameters>True</ExportGeneralParameters></f>",
           all},
          {"<f><ExportGeneralParameters>no</ExportGeneralParameters><exportDefaultParameters>False"
           "</exportDefaultParameters><p:ExportDefaultParameters>False</p:ExportDefaultParameters></f>",
           all}}) {
        ParameterDatabase database(&layout);
        database.GetProfileEditor().Get(L"C").AddProfile(L"p", false);
        Fill(folder / "filter", row.filter); // the first two are no documents: what arrived counts
        EXPECT_TRUE(WriteFile(database, (folder / "file").wstring(), (folder / "filter").wstring()));
        EXPECT_EQ(Compact(ContentOf(folder / "file")), row.written) << row.filter;
    }
    for (std::wstring const& noFilter :
         {std::wstring(), (folder / "none").wstring(), (folder / "").wstring()}) {
        ParameterDatabase database(&layout);
        database.GetProfileEditor().Get(L"C").AddProfile(L"p", false);
        EXPECT_TRUE(WriteFile(database, (folder / "file").wstring(), noFilter));
        EXPECT_EQ(Compact(ContentOf(folder / "file")), all);
    }
}

TEST(FilterFile, DoesNotBringHiddenGeneralParametersBack) {
    FilterLayout const layout;
    TemporaryFolder const folder;
    ParameterDatabase database(&layout), back(&layout);
    database.GetProfileEditor().Get(L"GenericParameters").SetHidden(true);
    database.GetProfileEditor().Get(L"G").SetHidden(true);
    ParameterDatabaseIOFiltering filtering;
    filtering.m_exportDefaultParameters = false;
    std::unique_ptr<ISAXPersist> const handler(_CreateSaxHandlerForWriting(database, filtering));
    filtering.m_exportDefaultParameters = true; // the handler has its own copy
    KelAM::SaxUtilities::WriteOptions options;
    options.m_rootTag = "R";
    ASSERT_TRUE(KelAM::SaxUtilities::WriteFile((folder / "file").wstring(), *handler, options));
    EXPECT_EQ(
        Compact(ContentOf(folder / "file")),
        "<R><G Hidden=\"true\"><GenericParameters/></G><N><Item><GenericParameters/></Item></N><C/></R>");
    EXPECT_TRUE(ReadFile(back, (folder / "file").wstring()));
    EXPECT_EQ(Dump(back), Dump(database));
}
