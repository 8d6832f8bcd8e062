// SPDX-License-Identifier: Apache-2.0
#include "tests/build_ticket/ticket_text.h"
#include "tests/support/generated_ticket.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace TestSupport;

namespace {

/// In the tables "@" and "$" stand for one GUID in upper and in lower case.
std::string Expand(std::string_view text) {
    std::string expanded;
    for (char const character : text) {
        expanded += character == '@'   ? "01234567-89AB-CDEF-0123-456789ABCDEF"
                    : character == '$' ? "01234567-89ab-cdef-0123-456789abcdef"
                                       : std::string(1, character);
    }
    return expanded;
}

bool LoadContent(BuildTicket& ticket, std::string const& content, ReadReport* report = nullptr) {
    return Load(ticket, Expand("<p:R xmlns:p='u'>" + content + "</p:R>"), report);
}

/// The content of the root of what is written, on one line and in single quotes.
std::string SavedContent(BuildTicket const& ticket, std::int32_t version) {
    std::istringstream lines(Saved(ticket, version));
    std::string content, line;
    for (int number = 0; std::getline(lines, line); ++number) {
        if (number > 1 && line != "</KlvrBuildTicket>") {
            content += line.substr(line.find_first_not_of(' '));
        }
    }
    std::replace(content.begin(), content.end(), '"', '\'');
    return content;
}

} // namespace

TEST(LoadedTicket, HoldsWhatTheDocumentSays) {
    struct Row {
        char const *content, *ticket;
        char const* reported; ///< kind and path of each entry
    };
    Row const rows[] = {
        {"", "", ""},
        // The sections, in any order.
        {"<ObjectProperties><Instance uuid='o'/></ObjectProperties><PartOverrides><Instance uuid='p'/>"
         "</PartOverrides><Defaults type='build'/><Info><Source Id='s' PropertyTemplate='true'/></Info>"
         "<Defaults><Component uuid='a'/></Defaults><Defaults><Component uuid='b'/></Defaults>",
         "from's' defaults{a:{} b:{}} item p{} object o{}", ""},
        {"<Source Id='s'/><Source/>", "", ""},
        {"<p:Defaults><Component uuid='a'/></p:Defaults><X><Defaults><X><Component "
         "uuid='b'/></X></Defaults></X>",
         "defaults{b:{}}", "untaken p:Defaults untaken p:Defaults/Component untaken X untaken X/Defaults/X"},
        // Instances.
        {"<PartOverrides><Instance uuid='{@}' type='object'><Component uuid='a'/></Instance><Instance "
         "uuid='$' "
         "type='x'><Component uuid='a'/></Instance></PartOverrides><ObjectProperties><Instance uuid='' "
         "type='Build'/><Instance uuid='a' type='build'/><Instance uuid='b' type='builditem'/><Instance "
         "uuid='c' "
         "type='object'/><Instance uuid='a' type='component'/></ObjectProperties>",
         "item $ 3{a:{}} object {} object a 4{} object b 2{} object c 3{}", ""},
        {"<PartOverrides><Instance type='object'><Component uuid='a'/></Instance><X><Instance uuid='a'/></X>"
         "<Instance uuid='b'><Instance uuid='c'/></Instance></PartOverrides><Instance uuid='d'/>",
         "item b{}",
         "dropped PartOverrides/Instance untaken PartOverrides/Instance/Component untaken PartOverrides/X "
         "dropped PartOverrides/X/Instance untaken PartOverrides/Instance/Instance dropped Instance"},
        // Types, and values that don't parse.
        {"<Defaults><Property Name='a' Type='integer'>-5</Property><Property Name='b' Type='number'>1.5"
         "</Property><Property Name='c' Type='double'>1,5</Property><Property Name='d' Type='string'> x "
         "</Property><Property Name='e' Type='ProfileName'>y</Property><Property Name='f' Type='bool'>True"
         "</Property><Property Name='g' "
         "Type='FileContent'><Name>n</Name><Data>AP8=</Data></Property></Defaults>",
         "defaults{a=-5 b#1.5 c#0 d=' x ' e='y' f=True g='n':00FF}", "text Defaults/Property"},
        {"<Defaults><Property Name='a' Type='Properties'><Property Name='b' Type='Complex2'/></Property>"
         "<Property Name='c' Type='SubProperties'><Property Name='d' Type='Complex'/></Property>"
         "<Property Name='e' Type='IndexedPropertySets'><Property/></Property>"
         "<Property Name='f' Type='ExternalProperties'><Component uuid='g'/></Property></Defaults>",
         "defaults{a{b:{}} c:{d{}} e[{}] f:{g:{}}}", ""},
        {"<Defaults><Property Name='a' Type='Number'/><Property Name='b' "
         "Type='Host'><Component "
         "uuid='c'/></Property><Property Name='d'><Property Name='' Type='Complex'/></Property><Property "
         "Type='bool'/><Property Name='a' Type='string'>x<Component uuid='a'/></Property></Defaults>",
         "defaults{{} a='x' a:{} c:{}}",
         "untaken Defaults/Property untaken Defaults/Property dropped Defaults/Property dropped "
         "Defaults/Property"},
        // The deleted mark.
        {"<Defaults><Property Name='a' Type='string' Deleted='true'>x</Property><Property Name='b' "
         "Type='string' "
         "Deleted='false'/><Property Name='c' Type='Complex' Deleted='true'><Property Name='d' "
         "Type='Complex2' "
         "Deleted='true'/></Property><Property Name='e' Type='ComplexArray' Deleted='true'><Property "
         "Name='f' "
         "Type='bool' Deleted='true'/></Property><Property Name='f' Type='Complex' Deleted='x'/></Defaults>",
         "defaults{a~='x' b='' c~{d~:{}} e~[{}] f{}}", "attribute Defaults/Property"},
        // Sequences, which take nothing but properties.
        {"<Defaults><Property Name='a' Type='ComplexArray'><Property/><X/><Component "
         "uuid='x'><Property><Component "
         "uuid='y'/></Property></Component></Property></Defaults>",
         "defaults{a[{}{y:{}}]}", "untaken Defaults/Property/X untaken Defaults/Property/Component"},
        // Components.
        {"<Defaults><Component uuid='$'><Component uuid='a'/></Component><Component uuid='{@}'><Component "
         "uuid='$'/></Component><Component><Component uuid='b'/></Component></Defaults>",
         "defaults{b:{} {@}:{a:{} {@}:{}}}", "dropped Defaults/Component"},
        {"<Defaults><Property Name='{@}' Type='Complex2' Deleted='true'><Component uuid='a'/></Property>"
         "<Component uuid='@'/><Property Name='x' Type='string'/><Component uuid='x'/><Component uuid='x'/>"
         "</Defaults>",
         "defaults{x='' x:{} x:{} {@}:{a:{}}}", ""},
    };
    static char const* const kinds[] = {"", "", "", "untaken ", "text ", "attribute ", "dropped "};
    for (Row const& row : rows) {
        BuildTicket ticket(nullptr);
        ReadReport report;
        EXPECT_TRUE(LoadContent(ticket, row.content, &report));
        EXPECT_EQ(Dump(ticket), Expand(row.ticket)) << row.content;
        std::string reported;
        for (ReadReport::Entry const& entry : report.m_entries) {
            reported += (reported.empty() ? "" : " ") + std::string(kinds[static_cast<int>(entry.kind)]) +
                        StringConversion::NativeToUtf8(entry.path.substr(entry.path.find(L'/') + 1));
        }
        EXPECT_EQ(reported, row.reported) << row.content;
    }
}

TEST(LoadedTicket, IsAddedToWhateverTheRoot) {
    ParameterLayout const layout;
    BuildTicket with(&layout), without(nullptr);
    for (std::string const root : {"<KlvrBuildTicket xmlns='/build_processing/2016/04'", "<Instance uuid='i'",
                                   "<KlvrBuildTicket xmlns='/build_processing/2017/02'"}) {
        for (BuildTicket* const ticket : {&with, &without}) {
            EXPECT_TRUE(
                Load(*ticket, root +
                                  "><Info><Source Id='s' PropertyTemplate='true'/></Info><PartOverrides>"
                                  "<Instance uuid='p' type='build'><Component uuid='c'><Property Name='a' "
                                  "Type='Complex'/></Component></Instance></PartOverrides></" +
                                  root.substr(1, root.find(' ') - 1) + '>'));
        }
    }
    EXPECT_EQ(Dump(with), "from's' item p 1{c:{a{} a{} a{}}}");
    EXPECT_TRUE(with.HasPropertyTemplate() && !without.HasPropertyTemplate());
}

TEST(SavedTicket, IsThisDocument) {
    ParameterLayout const layout;
    BuildTicket with(&layout), without(nullptr);
    std::string const head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<KlvrBuildTicket";
    std::string const uri = " xmlns=\"https://schemas.zantrel.example/build_processing/";
    std::string const end = "\"/>\n  </Info>\n</KlvrBuildTicket>\n";
    std::string const info = head + uri + "2017/02\">\n  <Info>\n    <Source PropertyTemplate=\"";
    EXPECT_EQ(Saved(with), head + uri + "2016/04\"/>\n");
    EXPECT_EQ(Saved(without), info + "false" + end);
    EXPECT_EQ(Saved(without, 1), Saved(with));
    EXPECT_EQ(Saved(with, 2), info + "true" + end);
    EXPECT_EQ(Saved(without, 3), head + "/>\n");
    EXPECT_EQ(Saved(with, -1), head + "/>\n");
}

TEST(SavedTicket, HoldsWhatIsInUse) {
    struct Row {
        char const* loaded; ///< before `fill`
        void (*fill)(BuildTicket&);
        char const* content;
    };
    Row const rows[] = {
        // Components stand behind all properties, and nowhere else.
        {"<Defaults><Component uuid='@'><Component uuid='@'/></Component><Property Name='a' "
         "Type='ComplexArray'>"
         "<Property><Component uuid='@'/></Property><Property/></Property><Property Name='{{' Type='Complex'>"
         "<Component uuid='@'/></Property><Property Name='&lt;' Type='ComplexArray'/></Defaults>",
         [](BuildTicket&) {},
         "<Defaults><Property Name='&lt;' Type='ComplexArray'/><Property Name='a' "
         "Type='ComplexArray'><Property "
         "Type='Complex'><Property Name='{@}' Type='Complex2'/></Property><Property "
         "Type='Complex'/></Property>"
         "<Property Name='{{' Type='Complex'><Property Name='{@}' Type='Complex2'/></Property>"
         "<Component uuid='$'><Property Name='{@}' Type='Complex2'/></Component></Defaults>"},
        // What is deleted.
        {"<Defaults><Property Name='a' Type='bool' Deleted='true'/></Defaults><PartOverrides><Instance "
         "uuid='@'>"
         "<Property Name='@' Type='Complex2' Deleted='true'/><Property Name='b' Type='Complex'><Property "
         "Name='c' Type='bool' Deleted='true'/></Property></Instance><Instance uuid='d'/></PartOverrides>",
         [](BuildTicket& ticket) { ticket.GetPartOverrides().FindProperty(L"d")->SetDeleted(true); },
         "<Defaults/><PartOverrides><Instance uuid='$'><Property Name='b' Type='Complex'/></Instance>"
         "<Instance uuid='d'/></PartOverrides>"},
        // Kinds, also of the defaults.
        {"<Defaults><Property Name='a' Type='ProfileName'/></Defaults>",
         [](BuildTicket& ticket) {
             ticket.GetDefaults().m_objectKind = 1;
             for (std::int32_t kind = -1; kind < 6; ++kind) {
                 KelAM::ExternalPropertyID const id(std::to_wstring(kind));
                 ticket.GetObjectProperties().GetProperties(id, true)->m_objectKind = kind;
             }
         },
         "<Defaults type='build'><Property Name='a' Type='string'/></Defaults><ObjectProperties>"
         "<Instance uuid='-1'/><Instance uuid='0'/><Instance uuid='1' type='build'/><Instance uuid='2' "
         "type='builditem'/><Instance uuid='3' type='object'/><Instance uuid='4' type='component'/>"
         "<Instance uuid='5'/></ObjectProperties>"},
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
         "<PartOverrides/><ObjectProperties><Instance uuid='$'><Property Name='a' Type='PositionMatrix'>1 0"
         "</Property><Property Name='b' Type='number'>1</Property><Property Name='c' "
         "Type='Complex'><Property "
         "Name='a' Type='Complex2'/></Property></Instance></ObjectProperties>"},
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

TEST(SavedTicket, ComesBackWithAllThatIsInUse) {
    ParameterLayout const layout;
    for (unsigned seed = 0; seed < 31; ++seed) {
        BuildTicket ticket(seed % 2 == 0 ? nullptr : &layout);
        FillTicket(ticket, seed, seed == 30 ? 2'500 : seed % 20, seed == 30 ? 9 : seed);
        for (std::int32_t const version : {1, 2}) {
            BuildTicket back(nullptr);
            std::string const document = Saved(ticket, version);
            ASSERT_TRUE(Load(back, document)) << seed;
            EXPECT_TRUE(Dump(back) == Dump(ticket, Form::Saved)) << seed << '\n' << document;
        }
        EXPECT_TRUE(Saved(ticket) == Saved(ticket, seed % 2 == 0 ? 2 : 1)) << "whatever it holds";
    }
}
