// SPDX-License-Identifier: Apache-2.0
#include "tests/parameter_files/reading_test.h"
#include "tests/support/sax_test_support.h"

#include <zantrel/parameter_files/machine_parameters_file.h>

using namespace TestSupport;

namespace {

/// Reads what stands in "<Root>...</Root>", or a whole document from its "<?xml" on.
void Check(std::initializer_list<ReadRow> rows) {
    CheckReading(
        [](ParameterDatabase& database, std::string const& text, ReadReport* report) {
            bool const isWhole = text.substr(0, 5) == "<?xml";
            return ReadText(database, isWhole ? text : "<Root>" + text + "</Root>", report);
        },
        rows);
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
    Check({
        {"<G><I> +5 </I><D>-INF</D><L>nan</L><B> 1 </B></G>", "G/I=5 G/D=-INF G/L=NaN G/B=True"},
        {"<G><S> a&#13;&#10;b\r\n</S><P>\t</P></G>", "G/S=' a\r\nb\n' G/P='\t'"},
        {"<G><S>a<!-- c -->b<?p i?>c<![CDATA[<&]]></S><I>1<!-- -->2</I></G>", "G/I=12 G/S='abc<&'"},
        {"<G><I>5.5</I><D>1,5</D>\n<B>yes</B><I/><I>2147483648</I></G>", "",
         "text@1:10:Root/G/I text@1:20:Root/G/D text@2:1:Root/G/B text@2:11:Root/G/I "
         "text@2:15:Root/G/I"},
        {"<G><I>1</I><I>2</I></G>", "G/I=2"},
        {"<G><I>5<D>2</D></I></G>", "G/I=5 G/D=2"},
        {"<M>\n <Item>\n  <Q> <I>5</I></Q>\n  <N>\n<Item>3</Item>x<Item>4</Item></N></Item> "
         "<Item><N><!-- --><Item>6</Item></N><I>7</I></Item></M><G>\n<D>2.5</D><B>0</B></G>",
         "G/D=2.5 M[{I=1 N[=0;]}; {I=5 N[=0; =3 =4]} {I=7 N[=0; =6]}]", "untaken@3:3:Root/M/Item/Q"},
        {"<G><X/></G>", ""},
        {"<G><X> </X><X/></G>", "G/X=''"},
        {"<G><A><Data>AQ==</Data><Name>n</Name><S>s</S></A><S>t</S></G>", "G/S='t' G/A='n':01",
         "untaken@1:44:Root/G/A/S"},
        {"<G><A>a<Name>n</Name><Data>AQ</Data></A></G>",
         "G/A='n':", "dropped@1:10:Root/G/A dropped@1:28:Root/G/A/Data"},
        {"5<G>6<I>7</I></G><C>x</C><C><Default>y</Default></C>", "G/I=7",
         "dropped@1:8:Root/G dropped@1:24:Root/C dropped@1:35:Root/C/Default"},
    });
}

TEST(GenericParameterFile, ReadsElementsByTheirNamesInTheLayout) {
    Check({
        {"<?xml version='1.0'?><Other xmlns='u'><N><Item>5</Item></N></Other>", "N[=0; =5]"},
        {"<?xml version='1.0'?><N><Item>5</Item></N>", "N[=0; =5]"},
        {"<?xml version='1.0'?><G><I>5</I></G>", "G/I=5"},
        {"<n><Item>1</Item></n><p:N xmlns:p='u'/>", "",
         "untaken@1:7:Root/n untaken@1:10:Root/n/Item "
         "untaken@1:28:Root/p:N"},
        {"<U>x<V><N><Item>5</Item></N></V></U>", "N[=0; =5]", "untaken@1:7:Root/U untaken@1:11:Root/U/V"},
        {"<N><Item>1</Item></N><N><Item>2</Item></N>", "N[=0; =2]"},
        {"<Z><Both Name='a'/></Z>", "Z<{I=1}; 'a'{I=1}>"},
        {"<C><Profile Name='a'/></C><C><Profile><N/></Profile></C>",
         "C<{I=1 N[=0;] C<{S='s'};>}; ''{I=1 N[=0;] C<{S='s'};>}>"},
        {"<Z><Both Name='b'><I>2</I></Both><Both Name='a'/><Default><I>3</I></Default></Z>",
         "Z<{I=3}; 'a'{I=1} 'b'{I=2}>"},
        // Both a list and a profile list: emptied as a list is, and the first of a name is the one that
        // is found.
        {"<Z><Both Name='a'><I>2</I></Both></Z><Z><Both Name='a'/></Z>", "Z<{I=1}; 'a'{I=2} 'a'{I=2}>",
         "dropped@1:47:Root/Z/Both \"a\""},
        {"<M><Row/><Item><I>2</I></Item><I>5</I></M>", "M[{I=1 N[=0;]}; {I=2 N[=0;]}]",
         "untaken@1:10:Root/M/Row untaken@1:37:Root/M/I"},
    });
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
    Check({
        {"<G ReadOnly='true' Hidden='1'/><N Hidden='True' DisableAddRemove='true'/>", "G!r!h N!h!a[=0;]"},
        {"<G ReadOnly='true'/><G ReadOnly=' false '/><G ReadOnly='no'/>", "", "attribute@1:50:Root/G"},
        {"<G DisableAddRemove='true' ReadOnly='true'><I DisableAddRemove='false'/></G>", "G!r",
         "dropped@1:7:Root/G dropped@1:50:Root/G/I text@1:50:Root/G/I"},
        {"<Z ReadOnly='true'><Both Name='a' ReadOnly='true' Hidden='true' NameReadOnly='true' "
         "CanBeDeleted='true' UserDefaultProfile='true' DisableAddRemove='true'/></Z>",
         "Z!r<{I=1}; 'a'!r!n!d!u{I=1}>", "unknown@1:26:Root/Z/Both \"a\""},
        {"<Z><Default ReadOnly='true' NameReadOnly='true'/><Both Nam='a'/></Z>", "Z<{I=1}; ''{I=1}>",
         "unknown@1:56:Root/Z/Both"},
        {"<G ReadOnyl='true'><I xml:lang='de' unit='mm'>5</I></G>", "G/I=5",
         "unknown@1:7:Root/G unknown@1:26:Root/G/I"},
        {"<N><Item ReadOnly='true' Hidden='true' DisableAddRemove='true'>3</Item></N>", "N[=0; !r!h=3]",
         "unknown@1:10:Root/N/Item"},
    });
}

TEST(GenericParameterFile, PassesOverWhatHasNoPlaceInTheDatabase) {
    Check({
        // Entries without their wrappers: children of the list's node that the list itself doesn't hold.
        {"<C><I ReadOnly='true'>5</I></C>", "", "dropped@1:10:Root/C/I dropped@1:10:Root/C/I"},
        {"<C><N>x<Item>1<I>2</I></Item></N></C>", "",
         "dropped@1:10:Root/C/N dropped@1:14:Root/C/N/Item untaken@1:21:Root/C/N/Item/I"},
        {"<C><C DisableAddRemove='true'><Profile "
         "Name='p'><S>1</S></Profile><Default><S>2</S></Default></C></C>",
         "",
         "dropped@1:10:Root/C/C dropped@1:37:Root/C/C/Profile \"p\" dropped@1:55:Root/C/C/Profile \"p\"/S "
         "dropped@1:82:Root/C/C/Default/S"},
        // Profiles that are taken for a child of their list.
        {"<C><Profile Name='I'/><I>9</I></C>", "C<{I=1 N[=0;] C<{S='s'};>}; 'I'{I=1 N[=0;] C<{S='s'};>}>",
         "dropped@1:29:Root/C/I"},
        {"<C><Profile Name='N'/><N><Item>9</Item></N></C>",
         "C<{I=1 N[=0;] C<{S='s'};>}; 'N'{I=1 N[=0;] C<{S='s'};>}>"},
        {"<C><Profile Name='C'/><C><Default/></C></C>", "C<{I=1 N[=0;] C<{S='s'};>}; 'C'{I- N- C-}>", ""},
        {"<C><Profile Name='ReadOnly'><I>2</I></Profile></C>",
         "C<{I=1 N[=0;] C<{S='s'};>}; 'ReadOnly'{I=2 N[=0;] C<{S='s'};>}>"},
        {"<Z><I>5</I></Z>", "", "dropped@1:10:Root/Z/I"}, // a list, too, but not looked up as one
        {"<Z><Both Name='::DefaultProfile::'><I>2</I></Both></Z>", "",
         "dropped@1:10:Root/Z/Both \"::DefaultProfile::\""},
        // A document that ends too early, and what had arrived.
        {"<?xml version='1.0'?><Root><N><Item>1</Item><Item>2</N></Root>", "N[=0; =1]",
         "document@1:52:Root/N/Item"},
    });
}

TEST(GenericParameterFile, IsWrittenInTheOrderOfTheLayout) {
    SmallLayout const layout;
    ParameterDatabase database(&layout);
    ASSERT_TRUE(ReadText(database, SmallFile));
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

// The same places, once with all bags but the changed ones as they were formatted, once with none of them.
TEST(GenericParameterFile, IsTheSameWhereverBagsAreNotAsTheyWereFormatted) {
    constexpr int Depth = 40;
    ParameterLayout layout;
    LayoutNode* group = layout.m_profileEditor.GetNode();
    for (int level = 0; level < Depth; ++level) {
        group->AddNode(L"I", eTypeLayoutNode::Int, std::int32_t{5});
        LayoutNode* const inner = group->AddNode(L"G");
        group->AddNode(L"S", eTypeLayoutNode::String, L"a<\xE4");
        group = inner;
    }
    using Change = void (*)(ParameterNode const&);
    auto const written = [&](int changed, Change change, bool isFormatted) {
        ParameterDatabase database(&layout);
        ParameterNode at = database.GetProfileEditor();
        for (int level = 0; level < Depth && at.IsValid(); ++level, at = at.Get(L"G")) {
            if (!isFormatted) {
                at.m_pProperties->AddProperty(L"x", new PersistentProperty<bool>());
                at.m_pProperties->RemoveProperty(L"x", true);
            }
            if (level == changed) {
                change(at);
            }
        }
        std::ostringstream out;
        EXPECT_TRUE(WriteStream(database, out, {}) && KlvrProperties::WriteStream(database, out, {}));
        return out.str();
    };
    for (int const level : {0, 1, 30, 31, 32, 38}) {
        for (Change const change : std::initializer_list<Change>{
                 [](ParameterNode const& at) { at.Get(L"I").SetReadOnly(true); },
                 [](ParameterNode const& at) { at.Get(L"G").SetHidden(true); },
                 [](ParameterNode const& at) { at.m_pProperties->FindProperty(L"G")->SetDeleted(true); },
                 [](ParameterNode const& at) { at.m_pProperties->FindProperty(L"S")->SetDeleted(true); }}) {
            EXPECT_EQ(written(level, change, true), written(level, change, false)) << level;
        }
    }
}

TEST(GenericParameterFile, IsTheSameAsAFileOnAnyPathAndAsAStream) {
    SmallLayout const layout;
    TemporaryFolder const folder;
    std::filesystem::path const path = folder / "file", filter = folder / "filter";
    ParameterDatabase database(&layout), byText(&layout), byPath(&layout), byStream(&layout);
    ASSERT_TRUE(ReadText(database, SmallFile));
    ParameterDatabaseIOFiltering filtering;
    filtering.m_exportGeneralParameters = false;
    Fill(filter, "<ExportGeneralParameters>False</ExportGeneralParameters>");
    std::stringstream document;
    EXPECT_TRUE(WriteStream(database, document, filtering) && WriteFile(database, path, filter));
    EXPECT_EQ(ContentOf(path), document.str());
    EXPECT_TRUE(ReadFile(byText, path.wstring()) && ReadFile(byPath, path) && ReadStream(byStream, document));
    EXPECT_EQ(DumpChanges(byText).substr(0, 21), "GenericParameters!h G");
    EXPECT_TRUE(byText.IsEqual(byPath) && byText.IsEqual(byStream));
    EXPECT_FALSE(ReadStream(byStream, document)) << "nothing is left in it";
    EXPECT_TRUE(WriteFile(database, path.wstring(), L""));
    EXPECT_EQ(ContentOf(path), WriteText(database));
}

TEST(GenericParameters, AreHiddenWhenTheFileHasNoneAtItsTop) {
    SmallLayout const layout;
    ParameterLayout const without;
    ParameterDatabase other(&without), none(nullptr);
    auto const read = [](ParameterDatabase& database, std::string const& document) {
        std::istringstream in(document);
        return ReadStream(database, in);
    };
    for (auto const& [document, changes] : std::initializer_list<std::pair<char const*, char const*>>{
             {"<Root/>", "GenericParameters!h"},
             {"<Root><GenericParameters/></Root>", ""},
             {"<Root><GenericParameters Hidden='true'/></Root>", "GenericParameters!h"},
             {"<Root><U><GenericParameters/></U></Root>", ""},
             {"<Root><G><GenericParameters/></G></Root>", "GenericParameters!h"},
             {"<GenericParameters><I>5</I></GenericParameters>", "GenericParameters/I=5"},
             {"<Root>", ""}}) {
        ParameterDatabase database(&layout);
        EXPECT_EQ(read(database, document), document != std::string("<Root>")) << document;
        EXPECT_EQ(DumpChanges(database), changes) << document;
    }
    ParameterDatabase database(&layout);
    EXPECT_TRUE(read(database, "<Root/>") && read(database, "<Root><GenericParameters/></Root>"));
    EXPECT_EQ(DumpChanges(database), "GenericParameters!h") << "no attribute leaves the flag";
    EXPECT_TRUE(read(other, "<Root/>") && read(none, "<Root/>"));
    EXPECT_EQ(DumpChanges(other), "");
}

namespace {

/// A layout that has "GenericParameters" wherever the filter does or doesn't reach.
class FilterLayout : public ParameterLayout {
public:
    FilterLayout() {
        m_name = L"R";
        m_profileEditor->AppendNode(L"GenericParameters");
        m_profileEditor->AddNode(L"G")->AppendNode(L"GenericParameters");
        LayoutNode* const list = m_profileEditor->AddNode(L"N")->SetList(true, L"Item", L"");
        list->SetMultiplicity(1)->AppendNode(L"GenericParameters");
        LayoutNode* const profiles = m_profileEditor->AddNode(L"C")->SetProfile(true, L"P");
        profiles->AppendNode(L"GenericParameters")->AddNode(L"D")->SetProfile(true, L"P");
    }
};

} // namespace

TEST(FilterFile, LeavesOutWhatItNamesButNotBelowDefaultsAndItems) {
    FilterLayout const layout;
    TemporaryFolder const folder;
    ParameterDatabase database(&layout);
    database.GetProfileEditor().Get(L"C").AddProfile(L"p", false);
    KelAM::SaxUtilities::WriteOptions options;
    options.m_rootTag = "R";
    std::initializer_list<std::tuple<char const*, bool, bool>> const rows = {
        {"", true, true}, // no document, as the next: what arrived counts
        {"<f><ExportGeneralParameters>False</ExportGeneralParameters>", false, true},
        {"<ExportGeneralParameters> false </ExportGeneralParameters>", false, true},
        {"<f><x><ExportDefaultParameters>False</ExportDefaultParameters></x></f>", true, false},
        {"<f><ExportDefaultParameters>0<ExportGeneralParameters>0</ExportGeneralParameters>"
         "</ExportDefaultParameters></f>",
         false, false},
        {"<f><ExportGeneralParameters>False</ExportGeneralParameters>"
         "<ExportGeneralParameters>True</ExportGeneralParameters></f>",
         true, true},
        {"<f><ExportGeneralParameters>no</ExportGeneralParameters><exportDefaultParameters>False"
         "</exportDefaultParameters><p:ExportDefaultParameters>False</p:ExportDefaultParameters></f>",
         true, true},
        {nullptr, true, true}}; // no file
    for (auto const& [filter, hasGeneral, hasDefault] : rows) {
        std::filesystem::path const path = folder / (filter != nullptr ? "filter" : "none");
        Fill(folder / "filter", filter != nullptr ? filter : "");
        std::string const all = "<GenericParameters/>", general = hasGeneral ? all : "";
        std::string const written =
            "<R>" + general + (hasGeneral ? "<G>" + all + "</G>" : "<G/>") + "<N><Item>" + all +
            "</Item></N><C>" + (hasDefault ? "<Default~>" + all + "<D><Default~/></D></Default>" : "") +
            "<P Name=\"p\"~>" + general + (hasDefault ? "<D><Default~/></D>" : "<D/>") + "</P></C></R>";
        EXPECT_TRUE(WriteFile(database, (folder / "file").wstring(), path.wstring()));
        EXPECT_EQ(Compact(ContentOf(folder / "file")), written) << path;
        std::unique_ptr<ISAXPersist> const handler(_CreateSaxHandlerForWriting(database, path));
        std::ostringstream out;
        EXPECT_TRUE(KelAM::SaxUtilities::WriteStream(out, *handler, options));
        EXPECT_EQ(Compact(out.str()), written) << path;
    }
}

TEST(FilterFile, DoesNotBringHiddenGeneralParametersBack) {
    FilterLayout const layout;
    ParameterDatabase database(&layout), back(&layout);
    database.GetProfileEditor().Get(L"GenericParameters").SetHidden(true);
    database.GetProfileEditor().Get(L"G").SetHidden(true);
    ParameterDatabaseIOFiltering filtering;
    filtering.m_exportDefaultParameters = false;
    std::unique_ptr<ISAXPersist> const handler(_CreateSaxHandlerForWriting(database, filtering));
    filtering.m_exportDefaultParameters = true; // the handler has its own copy
    KelAM::SaxUtilities::WriteOptions options;
    options.m_rootTag = "R";
    std::stringstream document;
    ASSERT_TRUE(KelAM::SaxUtilities::WriteStream(document, *handler, options));
    EXPECT_EQ(
        Compact(document.str()),
        "<R><G Hidden=\"true\"><GenericParameters/></G><N><Item><GenericParameters/></Item></N><C/></R>");
    EXPECT_TRUE(ReadStream(back, document));
    EXPECT_EQ(Dump(back), Dump(database));
}
