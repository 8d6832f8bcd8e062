// SPDX-License-Identifier: Apache-2.0
#include "tests/build_ticket/ticket_text.h"

#include <zantrel/store/property_names.h>

#include <gtest/gtest.h>

using namespace TestSupport;
using namespace KelAM::ObjectTypes;
using KelAM::ExternalPropertyID;

namespace {

struct Ticket : BuildTicket {
    using BuildTicket::_FilterProperties;
    using BuildTicket::_GetParent;
    using BuildTicket::BuildTicket;
};

/// Uses the properties b (platform), i (part instance) and u (elsewhere).
struct TicketLayout : ParameterLayout {
    TicketLayout() {
        m_platformOptions->AddNode(L"B")->SetPropName(L"b");
        m_partConfigurator->AddNode(L"I")->SetPropName(L"i");
        m_profileEditor->AddNode(L"U")->SetPropName(L"u");
    }
};

/// With one of each kind that a filter tells apart, also under names that would be kept.
KelAM::ExternalProperties MakeStore() {
    std::string const values = "<P b bool/><P i bool/><P u bool/><P x bool/><P b FileContent/>"
                               "<P PartName FileContent/><P c Complex2><P x bool/></P>";
    BuildTicket ticket(nullptr);
    LoadContent(ticket, "<D>" + values + "<P p Complex>" + values + "</P><P s Complex2>" + values +
                            "<P ObjectType Complex/></P><P s Complex2>" + values +
                            "</P><P a ComplexArray/><P PartName bool/></D>");
    KelAM::ExternalProperties store = ticket.GetDefaults();
    store.AddProperty(L"PartName", new HostProperty<std::wstring>(L"PositionMatrix"));
    store.AddProperty(L"b", new HostProperty<KelAM::SubProperties>(L"PositionMatrix"));
    store.AddProperty(L"hb", new HostProperty<PersistentProperties>(L"x"));
    store.AddProperty(L"hs", new HostProperty<KelAM::SubProperties>(L"x"));
    store.AddProperty(L"hx", new HostProperty<std::wstring>(L"x"));
    store.SetValue(L"e", KelAM::ExternalProperties());
    store.FindProperty(L"c")->SetDeleted(true);
    return store;
}

std::string Names(PersistentProperties const& bag) {
    std::string names;
    for (auto const& entry : bag) {
        names += (names.empty() ? "" : " ") + StringConversion::NativeToUtf8(entry.name);
    }
    return names;
}

} // namespace

TEST(TicketFilter, KeepsWhatTheObjectTypeAndTheLayoutSay) {
    TicketLayout const layout;
    TicketLayout lost;
    lost.m_platformConfigurator = lost.m_partConfigurator = nullptr;
    struct Row {
        ParameterLayout const* layout;
        std::wstring objectType;
        char const *kept, *keptInSet;
    };
    char const* const all = "PartName a b c e hb hs hx i p s s u x";
    Row const rows[] = {
        {nullptr, L"", all, "b c i u x"},
        {&layout, L"", all, "b c i u x"},
        {&layout, L"true", all, "b c i u x"},
        {&layout, L"platform", all, "b c i u x"},
        {nullptr, ObjectTypePlatform, all, "b c i u x"},
        {nullptr, ObjectTypePartInstance, all, "b c i u x"},
        {nullptr, ObjectTypeUniquePart, "PartName a b e hb hx i p u x", ""},
        {&layout, ObjectTypePlatform, "PartName b c e hb hs p s s", "b c"},
        {&layout, ObjectTypePartInstance, "PartName c e hb hs i p s s", "c i"},
        {&layout, ObjectTypeUniquePart, "PartName b e hb i p u", ""},
        {&lost, ObjectTypePlatform, "PartName c e hb hs p s s", "c"},
        {&lost, ObjectTypePartInstance, "PartName c e hb hs p s s", "c"},
        {&lost, ObjectTypeUniquePart, "PartName b e hb i p u", ""},
    };
    for (Row const& row : rows) {
        Ticket ticket(row.layout);
        KelAM::ExternalProperties const untouched = MakeStore();
        KelAM::ExternalProperties store = untouched;
        if (row.objectType.empty()) { // nothing but a live text counts
            store.SetValue(L"ObjectType", ObjectTypePlatform).second->SetDeleted(true);
        } else if (row.objectType == L"true") {
            store.SetValue(L"ObjectType", true);
            store.SetValue(L"ObjectType", ObjectTypePlatform);
        } else {
            store.SetValue(L"ObjectType", row.objectType);
        }
        ticket._FilterProperties(store);
        auto const* const set = PropertyCast<KelAM::SubProperties>(store.FindProperty(L"s"));
        EXPECT_EQ(Names(store), row.kept);
        EXPECT_EQ(set != nullptr ? Names(set->m_value) : "", row.keptInSet);
        for (wchar_t const* const name : {L"c", L"p"}) { // a deleted set and a bag keep all their content
            auto const* const kept = store.FindProperty(name);
            EXPECT_TRUE(kept == nullptr || kept->IsEqual(untouched.FindProperty(name)));
        }
        store.SetValue(L"new", true); // the object type is gone, so that nothing restricts names any more
        ticket._FilterProperties(store);
        EXPECT_TRUE(store.HasValue<bool>(L"new"));
    }
}

TEST(Ticket, SharesNamesWithinADatabaseOfStoresAlone) {
    auto const addTo = [](KelAM::DatabaseExternalProperties& stores, wchar_t const* id) {
        auto& store = *stores.GetProperties(KelAM::ExternalPropertyID(id), true);
        store.SetValue(L"Name", std::int32_t(1));
        return (*store.begin()).name.data();
    };
    BuildTicket ticket(nullptr);
    wchar_t const* const name = addTo(ticket.GetPartOverrides(), L"1");
    EXPECT_EQ(addTo(ticket.GetPartOverrides(), L"2"), name);
    BuildTicket copy(ticket);
    EXPECT_NE(addTo(copy.GetPartOverrides(), L"1"), name);
    EXPECT_NE(addTo(copy.GetPartOverrides(), L"3"), name);
}

TEST(Ticket, CleansUpAllStores) {
    TicketLayout const layout;
    BuildTicket ticket(&layout);
    std::string const content = "<P ObjectType string>Platform</P><P b bool/><P x bool/>";
    std::string const instances = "<I 1>" + content + "</I><I 2>" + content + "</I>";
    LoadContent(ticket, "<D>" + content + "</D><PO>" + instances + "</PO><OP>" + instances + "</OP>");
    ticket.CleanUp();
    EXPECT_EQ(Dump(ticket), "defaults{b=False} item 1{b=False} item 2{b=False} object 1{b=False} "
                            "object 2{b=False}");
}

TEST(Ticket, KnowsWhereOverridesBelong) {
    Ticket ticket(nullptr);
    std::wstring const id = L"p";
    ticket.GetObjectProperties().GetProperties(ExternalPropertyID(id), true);
    for (bool const create : {false, true}) {
        EXPECT_EQ(ticket._GetParent(nullptr, create), &ticket.GetDefaults());
        KelAM::ExternalProperties const* const store = ticket._GetParent(&id, create);
        EXPECT_EQ(store, ticket.GetPartOverrides().GetProperties(ExternalPropertyID(id), false));
        EXPECT_EQ(Dump(ticket), create ? "item p{} object p{}" : "object p{}");
    }
}

TEST(ConvertedTicket, HoldsTheStoresOfKnownTypesAndWhatWasThereBefore) {
    char const* const stores[] = {"build'><P ObjectType string>Platform",
                                  "object'><P ObjectType string>UniquePart",
                                  "build'><P ObjectType string>PartInstance",
                                  "'><P ObjectType string>platform",
                                  "builditem'><P ObjectType string>Platform",
                                  "'><P ObjectType string>Other",
                                  "'><P ObjectType string Deleted='1'>Platform",
                                  "'><P ObjectType Complex>Platform",
                                  "'><P ObjectType string>Platform"};
    std::string document = "<PO>", key = "1";
    for (std::string const store : stores) {
        document += "<I " + key + " type='" + store + "</P><P " + key + " bool/><P f FileContent/></I>";
        ++key[0];
    }
    BuildTicket source(nullptr), ticket(nullptr);
    LoadContent(source, document + "</PO>");
    auto& internal = source.GetPartOverrides();
    internal.GetProperties(ExternalPropertyID(L"3"), false)->m_id = ExternalPropertyID(L"item");
    internal.FindProperty(L"9")->SetDeleted(true);
    BuildTicket sameTicket(source);
    internal.SetValue(L"0", true); // no store

    LoadContent(ticket, "<D><C old/></D><PO><I item><C old/></I><I q><P f FileContent/></I></PO>"
                        "<OP><I q/></OP>");
    ticket.ConvertFromInternalBuildTicket(internal);
    ticket.ConvertFromInternalBuildTicket(KelAM::DatabaseExternalProperties());
    EXPECT_EQ(Dump(ticket),
              "from'BuildTicketInternal' defaults 2{5=False} item item 1{3=False} item q{f='':} "
              "object 2 3{2=False} object q{}");
    EXPECT_EQ(ticket.GetDefaults().m_id, ExternalPropertyID(L"5"));

    std::string const before = Dump(sameTicket);
    sameTicket.ConvertFromInternalBuildTicket(sameTicket.GetPartOverrides());
    sameTicket.GetObjectProperties()
        .GetProperties(ExternalPropertyID(L"2"), false)
        ->SetValue(L"ObjectType", ObjectTypeUniquePart);
    sameTicket.ConvertFromInternalBuildTicket(sameTicket.GetObjectProperties());
    EXPECT_EQ(Dump(sameTicket), "from'BuildTicketInternal' defaults 2{5=False} " + before +
                                    " item item 1{3=False} object 2 3{2=False}");
}
