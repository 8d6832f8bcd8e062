// SPDX-License-Identifier: Apache-2.0
#include "tests/support/generated_ticket.h"
#include "tests/support/schema_check.h"

#include <zantrel/build_ticket/build_ticket_file.h>
#include <zantrel/sax/xml_namespaces.h>
#include <zantrel/text/string_conversion.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

using namespace TestSupport;

namespace {

struct Version {
    std::int32_t number;
    std::string schema;
};
Version const Versions[] = {{1, "build_processing_2016_04.xsd"}, {2, "build_processing_2017_02.xsd"}};

std::string Document(BuildTicket const& ticket, std::int32_t version) {
    BuildTicketWriteOptions options;
    options.m_version = version;
    std::ostringstream document;
    EXPECT_TRUE(SaveBuildTicket(document, ticket, options));
    return document.str();
}

/// A property class of a host's own.
struct Matrix : PersistentProperty<std::wstring> {
    std::wstring GetType() const override { return L"PositionMatrix"; }
};

wchar_t const* const Guid = L"0123ABCD-0000-0000-0000-000000000000";

/// With one element of each kind that mistakes are made about, and no overrides of parts.
void FillSmallTicket(BuildTicket& ticket) {
    ticket.ConvertFromInternalBuildTicket(KelAM::DatabaseExternalProperties());
    auto& defaults = ticket.GetDefaults();
    defaults.m_objectKind = 1;
    defaults.SetValue(L"Power", 200.0);
    defaults.GetValuePointer<PersistentProperties>(L"Bag", true)->SetValue(L"Inner", std::int32_t(1));
    defaults.GetValuePointer<IndexedProperties<PersistentProperties>>(L"Sequence", true)->AddProperty();
    defaults.SetValue(L"File", KelAM::FileContent(L"f", {std::byte(1)}));
    defaults.GetValuePointer<KelAM::SubProperties>(Guid, true)->SetValue(L"Sub", true);
    KelAM::ExternalPropertyID const id(L"id");
    ticket.GetObjectProperties().GetProperties(id, true)->m_objectKind = 3;
}

} // namespace

TEST(SchemaOfTickets, TakesWhatIsWritten) {
    for (auto const& [version, schema] : Versions) {
        Documents documents;
        for (unsigned seed = 0; seed < 30; ++seed) {
            BuildTicket ticket(nullptr);
            FillTicket(ticket, seed, seed, 40);
            documents.push_back(Document(ticket, version));
        }
        ExpectAllValid(documents, XmlSchema(schema));
    }
}

TEST(SchemaOfTickets, TakesWhatIsWrittenOfTheLeastTickets) {
    ParameterLayout const layout;
    std::vector<BuildTicket> tickets(6, BuildTicket(&layout));
    tickets[1] = BuildTicket(nullptr);
    tickets[2].GetDefaults().CreateValue<bool>(L"deleted", true)->SetDeleted(true);
    tickets[3].GetPartOverrides().GetProperties(KelAM::ExternalPropertyID(), true);
    tickets[4].GetDefaults().AddProperty(L"a host's own", new Matrix);
    FillSmallTicket(tickets[5]);
    for (auto const& [version, schema] : Versions) {
        Documents documents;
        for (BuildTicket const& ticket : tickets) {
            documents.push_back(Document(ticket, version));
        }
        ExpectAllValid(documents, XmlSchema(schema));
    }
}

TEST(SchemaOfTickets, TakesADocumentThatRefersToIt) {
    namespace Paths = XML_namespaces;
    std::wstring const folder = StringConversion::Utf8ToNative(ZANTREL_SCHEMAS "/");
    Paths::m_local_schema_file_build_processors_2016_04 = folder + L"build_processing_2016_04.xsd";
    Paths::m_local_schema_file_build_processors_2017_02 = folder + L"build_processing_2017_02.xsd";
    for (auto const& [version, schema] : Versions) {
        std::string const document = Document(BuildTicket(nullptr), version);
        EXPECT_NE(document.find('/' + schema + '"'), std::string::npos) << document;
        ExpectAllValid({document}, XmlSchema(schema));
    }
    Paths::m_local_schema_file_build_processors_2016_04.clear();
    Paths::m_local_schema_file_build_processors_2017_02.clear();
}

TEST(SchemaOfTickets, RefusesAnInfoInVersion1) {
    std::string const document = Document(BuildTicket(nullptr), 1);
    std::vector<Mistake> const mistakes = {
        {"an info",
         {{"2016/04'/>", "2016/04'><Info><Source PropertyTemplate='true'/></Info></KlvrBuildTicket>"}}},
    };
    ExpectAllRefused(document, mistakes, XmlSchema(Versions[0].schema));
}

TEST(SchemaOfTickets, RefusesEachMistake) {
    BuildTicket ticket(nullptr);
    FillSmallTicket(ticket);
    std::vector<Mistake> const mistakes = {
        {"another namespace", {{"2017/02'", "2016/04'"}}},
        {"no info", {{"<Info>", "<!--"}, {"</Info>", "-->"}}},
        {"an info without a source", {{"<Source", "<!--"}, {"</Info>", "--></Info>"}}},
        {"an info behind the defaults", {{"<Info>", "<Defaults/><Info>"}}},
        {"an empty origin", {{"'BuildTicketInternal'", "''"}}},
        {"a source that does not say whether there was a layout", {{" PropertyTemplate='false'", ""}}},
        {"a flag in another form", {{"PropertyTemplate='false'", "PropertyTemplate='False'"}}},
        {"defaults behind the objects",
         {{"<Defaults", "<!--"}, {"</Defaults>", "-->"}, {"</KlvrB", "<Defaults/></KlvrB"}}},
        {"overrides before the defaults", {{"<Defaults", "<PartOverrides/><Defaults"}}},
        {"overrides behind the objects", {{"</KlvrB", "<PartOverrides/></KlvrB"}}},
        {"a section twice", {{"</KlvrB", "<ObjectProperties/></KlvrB"}}},
        {"an unknown section", {{"</KlvrB", "<Objects/></KlvrB"}}},
        {"a property outside of a store", {{"<Instance", "<Property Name='x' Type='bool'/><Instance"}}},
        {"an instance in the defaults", {{"</Defaults>", "<Instance uuid='x'/></Defaults>"}}},
        {"an identifier of the defaults", {{"<Defaults", "<Defaults uuid='x'"}}},
        {"an instance without an identifier", {{" uuid='id'", ""}}},
        {"an unknown kind of object", {{"'object'", "'part'"}}},
        {"an unknown kind of the defaults", {{"'build'", "'Build'"}}},
        {"text in a store", {{"</Defaults>", "x</Defaults>"}}},
        {"text in a component", {{"</Component>", "x</Component>"}}},
        {"a component before a property",
         {{"<Property", "<Component uuid='0123abcd-0000-0000-0000-000000000000'/><Property"}}},
        {"a component in a bag",
         {{"<Property Name='Inner'",
           "<Component uuid='0123abcd-0000-0000-0000-000000000000'/><Property Name='Inner'"}}},
        {"a component in a component",
         {{"</Component>", "<Component uuid='0123abcd-0000-0000-0000-000000000000'/></Component>"}}},
        {"a component without an identifier", {{" uuid='0123abcd-0000-0000-0000-000000000000'", ""}}},
        {"a component with too short an identifier", {{"0000-000000000000'", "0000-00000'"}}},
        {"a component with a dash out of place", {{"'0123abcd-0000-", "'0123abcd0-000-"}}},
        {"a kind of a component", {{"<Component", "<Component type='component'"}}},
        {"a property without a name", {{" Name='Power'", ""}}},
        {"a component's property without a name", {{" Name='Sub'", ""}}},
        {"a property without a type", {{" Type='number'", ""}}},
        {"an inner property without a type", {{" Type='integer'", ""}}},
        {"an item of a sequence without a type", {{"<Property Type='Complex'/>", "<Property/>"}}},
        {"an empty type", {{" Type='number'", " Type=''"}}},
        {"a property that says whether it is deleted", {{"Name='Power'", "Name='Power' Deleted='false'"}}},
        {"an unknown element in a bag", {{"<Property Name='Inner'", "<Value/><Property Name='Inner'"}}},
        {"a property in another namespace", {{"Name='Power'", "Name='Power' xmlns='x'"}}},
        {"a file without bytes", {{"<Data>AQ==</Data>", ""}}},
        {"a file without a name", {{"<Name>f</Name>", ""}}},
        {"bytes that are no base64", {{"AQ==", "A"}}},
        {"a file with properties", {{"<Name>f", "<Property Name='x' Type='bool'/><Name>f"}}},
    };
    ExpectAllRefused(Document(ticket, 2), mistakes, XmlSchema(Versions[1].schema));
}
