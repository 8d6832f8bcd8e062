// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Zantrel {
namespace {

// What a cursor may stand on, as far as operations tell it apart.
using Place = ParameterNode (*)(TestDatabase&);

ParameterNode WithoutBag(ParameterNode cursor) {
    cursor.m_pProperties = nullptr;
    return cursor;
}
ParameterNode Nowhere(TestDatabase&) { return {}; }
ParameterNode OnGroup(TestDatabase& database) { return database.At(database.layout.group); }
ParameterNode OnGroupWithoutBag(TestDatabase& database) { return WithoutBag(OnGroup(database)); }
ParameterNode OnList(TestDatabase& database) { return database.At(database.layout.ranges); }
ParameterNode OnListWithoutBag(TestDatabase& database) { return WithoutBag(OnList(database)); }
ParameterNode OnItem(TestDatabase& database) { return OnList(database).GetListNode(0); }
ParameterNode OnProfiles(TestDatabase& database) { return database.At(database.layout.machines); }
ParameterNode OnProfile(TestDatabase& database) { return OnProfiles(database).GetDefault(); }

struct Case {
    char const* operation;
    void (*call)(ParameterNode&);
    std::vector<Place> places;
    char const* message; ///< null: the operation gets through
};

constexpr char NoPath[] = "invalid query path, no such node";
constexpr char NoName[] = "invalid query, no such node";
constexpr char NeedsList[] = "AddListNode requires list-container node";
constexpr char NeedsProfileList[] = "Not possible to add a profile to a non-profile-list node";
constexpr char NeedsListToGet[] = "GetListNode requires list-container node";
constexpr char NeedsProfilesToGet[] = "GetProfile requires profile or category container node";
constexpr char NeedsProfilesToList[] = "GetProfiles requires profile or category container node";
constexpr char NeedsContainer[] = "GetDefault requires container node";
constexpr char NeedsContainerForSize[] = "GetSize requires container node";
constexpr char NeedsListToLock[] = "SetDisableAddRemove requires profile or category container node";
constexpr char NeedsListToAsk[] = "GetDisableAddRemove requires profile or category container node";
constexpr char NeedsBag[] = "the cursor has no content";

std::vector<Place> const NoLists = {OnGroup, OnProfiles, OnProfile};
std::vector<Place> const NoProfileLists = {OnGroup, OnList, OnItem};
std::vector<Place> const NoContainers = {OnGroup, OnItem, OnProfile};
std::vector<Place> const NoProfiles = {Nowhere, OnGroup, OnList, OnItem, OnProfiles};

std::vector<Case> const Cases = {
    {"Get(own)", [](auto& at) { at.Get(at.m_pNode); }, {OnGroup, OnList, OnItem, OnProfile}, NoPath},
    {"IfExists(own)",
     [](auto& at) { at.GetParameterNodeIfExists(at.m_pNode); },
     {OnGroup, OnList, OnItem},
     NoPath},
    {"Get(name)",
     [](auto& at) { at.Get(L"None"); },
     {OnGroup, OnList, OnItem, OnProfiles, OnProfile},
     NoName},
    {"Get(name)", [](auto& at) { at.Get(L"None"); }, {Nowhere, OnGroupWithoutBag}, nullptr},
    {"Get(null)", [](auto& at) { at.Get(static_cast<wchar_t const*>(nullptr)); }, {OnGroup}, NoName},
    {"IfExists(name)", [](auto& at) { at.GetParameterNodeIfExists(L"None"); }, {OnGroup, OnItem}, NoName},
    {"IfExists(name)",
     [](auto& at) { at.GetParameterNodeIfExists(L"None"); },
     {Nowhere, OnGroupWithoutBag},
     nullptr},

    {"AddListNode", [](auto& at) { at.AddListNode(true); }, NoLists, NeedsList},
    {"AddListNode", [](auto& at) { at.AddListNode(true); }, {OnList, OnItem}, nullptr},
    {"AddListNode", [](auto& at) { at.AddListNode(true); }, {OnListWithoutBag}, NeedsBag},
    {"AddProfile", [](auto& at) { at.AddProfile(L"A", false); }, NoProfileLists, NeedsProfileList},
    {"AddProfile", [](auto& at) { at.AddProfile(L"A", false); }, {OnProfiles, OnProfile}, nullptr},
    {"AddProfile(null)",
     [](auto& at) { at.AddProfile(nullptr, false); },
     {OnProfiles},
     "AddProfile requires a name"},
    {"GetListNode", [](auto& at) { at.GetListNode(0); }, NoLists, NeedsListToGet},
    {"GetListNode", [](auto& at) { at.GetListNode(0); }, {Nowhere, OnGroupWithoutBag, OnList}, nullptr},
    {"GetProfile", [](auto& at) { at.GetProfile(L"A"); }, NoProfileLists, NeedsProfilesToGet},
    {"GetProfile", [](auto& at) { at.GetProfile(L"A"); }, {Nowhere, OnGroupWithoutBag, OnProfile}, nullptr},
    {"HasProfile", [](auto& at) { at.HasProfile(L"A"); }, NoProfileLists, NeedsProfilesToGet},
    {"HasProfile", [](auto& at) { at.HasProfile(L"A"); }, {Nowhere, OnGroupWithoutBag, OnProfile}, nullptr},
    {"GetProfiles", [](auto& at) { ProfilesOf(at); }, NoProfileLists, NeedsProfilesToList},
    {"GetProfiles", [](auto& at) { ProfilesOf(at); }, {Nowhere, OnGroupWithoutBag, OnProfile}, nullptr},
    {"GetDefault", [](auto& at) { at.GetDefault(); }, NoContainers, NeedsContainer},
    {"GetDefault",
     [](auto& at) { at.GetDefault(); },
     {Nowhere, OnGroupWithoutBag, OnList, OnProfiles},
     nullptr},
    {"GetSize", [](auto& at) { at.GetSize(); }, NoContainers, NeedsContainerForSize},
    {"GetSize", [](auto& at) { at.GetSize(); }, {Nowhere, OnGroupWithoutBag, OnList, OnProfiles}, nullptr},
    {"GetSize(forged)",
     [](auto& at) { at.m_isContainer = true, at.GetSize(); },
     {OnGroup},
     NeedsProfilesToList},
    {"Clear", [](auto& at) { at.Clear(); }, NoContainers, NeedsContainerForSize},
    {"Clear", [](auto& at) { at.Clear(); }, {OnListWithoutBag}, NeedsBag},

    {"GetNameReadOnly", [](auto& at) { at.GetNameReadOnly(); }, NoProfiles,
     "GetNameReadOnly requires profile node"},
    {"SetNameReadOnly", [](auto& at) { at.SetNameReadOnly(true); }, NoProfiles,
     "SetNameReadOnly requires profile node"},
    {"GetCanBeDeleted", [](auto& at) { at.GetCanBeDeleted(); }, NoProfiles,
     "GetCanBeDeleted requires profile node"},
    {"SetCanBeDeleted", [](auto& at) { at.SetCanBeDeleted(true); }, NoProfiles,
     "SetCanBeDeleted requires profile node"},
    {"GetUserDefaultProfile", [](auto& at) { at.GetUserDefaultProfile(); }, NoProfiles,
     "GetUserDefaultProfile requires profile node"},
    {"SetUserDefaultProfile", [](auto& at) { at.SetUserDefaultProfile(true); }, NoProfiles,
     "SetUserDefaultProfile requires profile node"},
    {"GetDisableAddRemove", [](auto& at) { at.GetDisableAddRemove(); }, {Nowhere, OnGroup}, NeedsListToAsk},
    {"SetDisableAddRemove",
     [](auto& at) { at.SetDisableAddRemove(true); },
     {Nowhere, OnGroup},
     NeedsListToLock},
    {"SetDisableAddRemove",
     [](auto& at) { at.SetDisableAddRemove(true); },
     {OnList, OnItem, OnProfiles, OnProfile},
     nullptr},
    {"SetReadOnly", [](auto& at) { at.SetReadOnly(true); }, {Nowhere, OnGroupWithoutBag}, NeedsBag},
    {"SetHidden", [](auto& at) { at.SetHidden(true); }, {Nowhere}, NeedsBag},
    {"SetValueFromText", [](auto& at) { at.SetValueFromText(L"x"); }, {Nowhere}, NeedsBag},
    {"Format",
     [](auto& at) { at.Format(); },
     {Nowhere, OnGroup},
     "formatting needs a layout node and the bag to format it into"},
};

TEST(Misuse, ThrowsTheTextThatCallersKnowAndChangesNothing) {
    for (Case const& each : Cases) {
        for (Place const& place : each.places) {
            SCOPED_TRACE(testing::Message() << each.operation << ", place " << &place - each.places.data());
            TestDatabase database;
            ParameterDatabase const before(database.values);
            ParameterNode cursor = place(database);
            try {
                each.call(cursor);
                EXPECT_EQ(each.message, nullptr) << "nothing thrown";
            } catch (std::runtime_error const& error) {
                EXPECT_STREQ(error.what(), each.message != nullptr ? each.message : "nothing");
                EXPECT_TRUE(database.values.IsEqual(before));
            }
        }
    }
}

TEST(Misuse, AProfileAddedToAProfileStaysAlthoughTheCallThrows) {
    TestDatabase database;
    ParameterNode profile = database.At(database.layout.machines).GetDefault();
    try {
        profile.AddProfile(L"Inner", true);
        ADD_FAILURE() << "nothing thrown";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "GetDefault requires container node");
    }
    EXPECT_EQ(profile.GetProfile(L"Inner").Get(L"Speed").GetValue<double>(), 30.0);
}

} // namespace
} // namespace Zantrel
