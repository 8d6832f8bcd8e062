// SPDX-License-Identifier: Apache-2.0
#include "build_ticket/build_ticket_write.h"
#include "tests/build_ticket/ticket_text.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/generated_ticket.h"
#include "tests/support/sax_test_support.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

/// The content of the root of what is written.
std::string SavedContent(BuildTicket const& ticket, std::int32_t version) {
    std::string const flat = Flat(Saved(ticket, version));
    std::size_t const start = flat.find('>') + 1;
    return flat.substr(start, flat.rfind("</KlvrBuildTicket>") - start);
}

} // namespace

TEST(LoadedTicket, HoldsWhatTheDocumentSays) {
    struct Row {
        char const *content, *ticket;
        char const* reported = "";
    };
    Row const rows[] = {
        {"", ""},
        // The sections, in any order.
        {"<OP><I o/></OP><PO><I p/></PO><D type='build'/><Info><Source Id='s' "
         "PropertyTemplate='true'/></Info>"
         "<D><C a/></D><D><C b/></D>",
         "from's' defaults{a:{} b:{}} item p{} object o{}"},
        {"<Source Id='s'/><Source/>", ""},
        {"<p:Defaults><C a/></p:Defaults><X><D><X><C b/></X></D></X>", "defaults{b:{}}",
         "untaken p:Defaults untaken Component untaken X untaken X"},
        // Instances.
        {"<PO><I {@} type='object'><C a/></I><I $ type='x'><C a/></I></PO><OP><I uuid='' type='Build'/>"
         "<I a type='build'/><I b type='builditem'/><I c type='object'/><I a type='component'/></OP>",
         "item $ 3{a:{}} object {} object a 4{} object b 2{} object c 3{}",
         "dropped Instance dropped Instance"},
        {"<PO><I type='object'><C a/></I><X><I a/></X><I b><I c/></I></PO><I d/>", "item b{}",
         "dropped Instance untaken Component untaken X dropped Instance untaken Instance dropped Instance"},
        // Types, and values that don't parse.
        {"<D><P a integer>-5</P><P b number>1.5</P><P c double>1,5</P><P d string> x </P><P e ProfileName>y"
         "</P><P f bool>True</P><P g FileContent><Name>n</Name><Data>AP8=</Data></P></D>",
         "defaults{a=-5 b#1.5 c#0 d=' x ' e='y' f=True g='n':00FF}", "text Property"},
        {"<D><P a Properties><P b Complex2/></P><P c SubProperties><P d Complex/></P>"
         "<P e IndexedPropertySets><P/></P><P f ExternalProperties><C g/></P></D>",
         "defaults{a{b:{}} c:{d{}} e[{}] f:{g:{}}}"},
        {"<D><P a Number/><P b Host><C c/></P><P Name='d'><P Name='' Type='Complex'/></P><P Type='bool'/>"
         "<P a string>x<C a/></P></D>",
         "defaults{{} a='x' a:{} c:{}}",
         "dropped Property dropped Property dropped Property dropped Property"},
        // What no element of its kind has: attributes, and text around elements.
        {"<D x=''>x<P a integer Deletd='true'>1</P><C b>x</C><P c Complex>x</P><P d ComplexArray>x<P "
         "Name=''>x</P></P><P e FileContent>x</P></D><PO>x<I f type='x'/></PO><Source id=''/>",
         "defaults{a=1 b:{} c{} d[{}] e='':} item f{}",
         "dropped Defaults unknown Defaults unknown Property dropped Component dropped Property dropped "
         "Property dropped Property unknown Property dropped Property dropped PartOverrides dropped Instance "
         "unknown Source"},
        // The deleted mark.
        {"<D><P a string Deleted='true'>x</P><P b string Deleted='false'/><P c Complex Deleted='true'>"
         "<P d Complex2 Deleted='true'/></P><P e ComplexArray Deleted='true'><P f bool Deleted='true'/></P>"
         "<P f Complex Deleted='x'/></D>",
         "defaults{a~='x' b='' c~{d~:{}} e~[{}] f{}}",
         "unknown Property unknown Property attribute Property"},
        // Sequences, which take nothing but properties.
        {"<D><P a ComplexArray><P/><X/><C x><P><C y/></P></C></P></D>", "defaults{a[{}{y:{}}]}",
         "untaken X untaken Component"},
        // Components.
        {"<D><C $><C a/></C><C {@}><C $/></C><C><C b/></C></D>", "defaults{b:{} {@}:{a:{} {@}:{}}}",
         "dropped Component"},
        {"<D><P {@} Complex2 Deleted='true'><C a/></P><C @/><P x string/><C x/><C x/></D>",
         "defaults{x='' x:{} x:{} {@}:{a:{}}}"},
    };
    for (Row const& row : rows) {
        BuildTicket ticket(nullptr);
        ReadReport report;
        EXPECT_TRUE(LoadContent(ticket, row.content, &report));
        EXPECT_EQ(Dump(ticket), Expand(row.ticket)) << row.content;
        EXPECT_EQ(Reported(report), row.reported) << row.content;
    }
}

// "{" is a component; whatever was expected of a store by those before it, its names are in order.
TEST(LoadedTicket, HasPropertiesInTheOrderOfNames) {
    using KelAM::ExternalPropertyID;
    BuildTicket loaded(nullptr), built(nullptr);
    std::string content;
    for (std::string const order : {"bac", "abc", "abc", "abdc", "ab{ac", "ab{ac", "aab", "abc"}) {
        std::string const id(1, static_cast<char>('a' + built.GetPartOverrides().GetNumProperties()));
        auto& store = *built.GetPartOverrides().GetProperties(
            ExternalPropertyID(StringConversion::Utf8ToNative(id)), true);
        content += "<I " + id + ">";
        for (char const name : order) {
            content += name == '{' ? "<C @/>" : std::string("<P ") + name + " integer>1</P>";
            name == '{'
                ? store.AddProperty(
                      ExternalPropertyID(StringConversion::Utf8ToNative(Expand("@"))).FormatGuid(true, true),
                      new PersistentProperty<KelAM::SubProperties>)
                : store.AddProperty(StringConversion::Utf8ToNative(std::string(1, name)),
                                    new PersistentProperty<std::int32_t>(1));
        }
        content += "</I>";
    }
    ASSERT_TRUE(LoadContent(loaded, "<PO>" + content + "</PO>"));
    EXPECT_TRUE(loaded.GetPartOverrides() == built.GetPartOverrides()) << Dump(loaded);
}

TEST(LoadedTicket, IsAddedToWhateverTheRoot) {
    ParameterLayout const layout;
    BuildTicket with(&layout), without(nullptr);
    for (std::string const root : {"<KlvrBuildTicket xmlns='/build_processing/2016/04'", "<Instance uuid='i'",
                                   "<KlvrBuildTicket xmlns='/build_processing/2017/02'"}) {
        std::string const document =
            root + "><Info><Source Id='s' PropertyTemplate='true'/></Info><PO><I p type='build'><C c>" +
            "<P a Complex/></C></I></PO></" + root.substr(1, root.find(' ') - 1) + '>';
        EXPECT_TRUE(Load(with, Expand(document)) && Load(without, Expand(document)));
    }
    EXPECT_EQ(Dump(with), "from's' item p 1{c:{a{} a{} a{}}}");
    EXPECT_EQ(Dump(without), Dump(with));
    EXPECT_TRUE(with.HasPropertyTemplate() && !without.HasPropertyTemplate());
    ReadReport report;
    EXPECT_TRUE(Load(with, "<R x='' xmlns='u'/>", &report));
    EXPECT_EQ(Reported(report), "unknown R");
}

TEST(SavedTicket, IsThisDocument) {
    ParameterLayout const layout;
    BuildTicket with(&layout), without(nullptr);
    std::string const start = "<KlvrBuildTicket", end = "</KlvrBuildTicket>";
    std::string const uri = start + " xmlns='https://schemas.zantrel.example/build_processing/";
    std::string const info = uri + "2017/02'><Info><Source PropertyTemplate='";
    EXPECT_EQ(Flat(Saved(with)), uri + "2016/04'/>");
    EXPECT_EQ(Flat(Saved(without)), info + "false'/></Info>" + end);
    EXPECT_EQ(Saved(without, 1), Saved(with));
    EXPECT_EQ(Flat(Saved(with, 2)), info + "true'/></Info>" + end);
    EXPECT_EQ(Flat(Saved(without, 3)), start + "/>");
    EXPECT_EQ(Flat(Saved(with, -1)), start + "/>");
    TemporaryFolder const folder;
    EXPECT_TRUE(SaveBuildTicket(folder / "file", without, {}) && LoadBuildTicket(folder / "file", with));
    EXPECT_EQ(ContentOf(folder / "file"), Saved(without));
}

TEST(SavedTicket, HoldsWhatIsInUse) {
    struct Row {
        char const* loaded; ///< before `fill`
        void (*fill)(BuildTicket&);
        char const* content;
    };
    Row const rows[] = {
        // Components stand behind all properties, and nowhere else.
        {"<D><C @><C @/></C><P a ComplexArray><P><C @/></P><P/></P><P {{ Complex><C @/></P>"
         "<P &lt; ComplexArray/></D>",
         [](BuildTicket&) {},
         "<D><P &lt; ComplexArray/><P a ComplexArray><P Type='Complex'><P {@} Complex2/></P>"
         "<P Type='Complex'/></P><P {{ Complex><P {@} Complex2/></P><C $><P {@} Complex2/></C></D>"},
        // What is deleted.
        {"<D><P a bool Deleted='true'/></D><PO><I @><P @ Complex2 Deleted='true'/><P b Complex>"
         "<P c bool Deleted='true'/></P></I><I d/></PO>",
         [](BuildTicket& ticket) { ticket.GetPartOverrides().FindProperty(L"d")->SetDeleted(true); },
         "<D/><PO><I $><P b Complex/></I><I d/></PO>"},
        // Kinds, also of the defaults.
        {"<D><P a ProfileName/></D>",
         [](BuildTicket& ticket) {
             ticket.GetDefaults().m_objectKind = 1;
             for (std::int32_t kind = -1; kind < 6; ++kind) {
                 KelAM::ExternalPropertyID const id(std::to_wstring(kind));
                 ticket.GetObjectProperties().GetProperties(id, true)->m_objectKind = kind;
             }
         },
         "<D type='build'><P a string/></D><OP><I -1/><I 0/><I 1 type='build'/><I 2 type='builditem'/>"
         "<I 3 type='object'/><I 4 type='component'/><I 5/></OP>"},
        // What only a host makes; its text that is called a set is no component.
        {"", [](BuildTicket& ticket) { ticket.GetDefaults().m_objectKind = 1; }, ""},
        {"",
         [](BuildTicket& ticket) {
             ticket.GetPartOverrides().SetValue(L"a", KelAM::SubProperties());
             KelAM::ExternalProperties object;
             object.AddProperty(L"a", new HostProperty<std::wstring>(L"PositionMatrix", L"1 0"));
             object.AddProperty(L"b", new HostProperty<std::wstring>(L"double", L"1"));
             object.AddProperty(L"c",
                                new HostProperty<PersistentProperties>(L"x", ticket.GetPartOverrides()));
             std::wstring const guid = StringConversion::Utf8ToNative(Expand("{@}"));
             object.AddProperty(guid, new HostProperty<std::wstring>(L"SubProperties", L"lost"));
             ticket.GetObjectProperties().SetValue(guid, object);
         },
         "<PO/><OP><I $><P a PositionMatrix>1 0</P><P b number>1</P>"
         "<P c Complex><P a Complex2/></P></I></OP>"},
    };
    for (Row const& row : rows) {
        BuildTicket ticket(nullptr);
        LoadContent(ticket, row.loaded + std::string("<Source Id='&lt;'/>"));
        row.fill(ticket);
        EXPECT_EQ(SavedContent(ticket, 1), Expand(row.content));
        EXPECT_EQ(SavedContent(ticket, 2),
                  "<Info><Source Id='&lt;' PropertyTemplate='false'/></Info>" + Expand(row.content));
    }
}

TEST(SavedTicket, KnowsAComponentByTheShapeOfItsName) {
    auto const saved = [](char const* name, auto const& value) {
        BuildTicket ticket(nullptr);
        ticket.GetDefaults().SetValue(StringConversion::Utf8ToNative(Expand(name)), value);
        return SavedContent(ticket, 1).substr(10, 10);
    };
    for (char const* const name :
         {"@", "{@}", "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxX", "{-------------------------------- X--}"}) {
        EXPECT_EQ(saved(name, KelAM::SubProperties()), "<Component") << name;
        EXPECT_EQ(saved(name, PersistentProperties()), "<Property ") << name;
    }
    for (char const* const name :
         {"01234567x89AB-CDEF-0123-456789ABCDEF", "01234567-89ABxCDEF-0123-456789ABCDEF",
          "01234567-89AB-CDEFx0123-456789ABCDEF", "{01234567-89AB-CDEF-0123x456789ABCDEF}",
          "{0123456-789AB-CDEF-0123-456789ABCDE}", "{@]", "[@}", "{@", "@}", "@0", "", "@@"}) {
        EXPECT_EQ(saved(name, KelAM::SubProperties()), "<Property ") << name;
    }
}

TEST(LoadedTicket, HoldsThePropertiesOfAStoreThatIsLikeTheOneBeforeInOneAllocation) {
    auto const allocations = [](int stores, std::size_t properties) {
        std::string content = "<PO>";
        for (int store = 0; store < stores; ++store) {
            content += "<I uuid='" + std::to_string(store) + "'>";
            for (std::size_t property = 0; property < properties; ++property) {
                content += "<P Name='" + std::to_string(property) + "' Type='integer'>1</P>";
            }
            content += "</I>";
        }
        std::ptrdiff_t const before = LiveAllocations();
        BuildTicket ticket(nullptr);
        EXPECT_TRUE(LoadContent(ticket, content + "</PO>"));
        return LiveAllocations() - before;
    };
    for (std::size_t const properties : {5u, 32u}) {
        EXPECT_EQ(allocations(22, properties) - allocations(2, properties), 60) << properties;
    }
}

TEST(SavedTicket, ComesBackWithAllThatIsInUse) {
    ParameterLayout const layout;
    for (unsigned seed = 0; seed < 31; ++seed) {
        BuildTicket ticket(seed % 2 == 0 ? nullptr : &layout);
        FillTicket(ticket, seed, seed == 30 ? 2'500 : seed % 20, seed == 30 ? 9 : seed);
        for (std::int32_t const version : {1, 2}) {
            BuildTicket back(nullptr);
            std::string const document = Saved(ticket, version);
            ReadReport report;
            ASSERT_TRUE(Load(back, document, &report)) << seed;
            EXPECT_EQ(Reported(report), "");
            EXPECT_TRUE(Dump(back) == Dump(ticket, Form::Saved)) << seed << '\n' << document;
        }
        std::int32_t const own = seed % 2 == 0 ? 2 : 1;
        EXPECT_TRUE(Saved(ticket) == Saved(ticket, own)) << "whatever it holds";
        EXPECT_EQ(BuildTicketWrite(ticket, 0)._DetermineVersion(), own);
    }
}
