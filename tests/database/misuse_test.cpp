// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_misuse.h>

#include "tests/database/test_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

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

template <class... Each> std::vector<Place> Any(Each... places) { return {places...}; }

struct Case {
    char const* operation;
    void (*call)(ParameterNode&);
    std::vector<Place> places;
    char const* message;
    std::vector<Place> unharmed = {}; ///< where the call gets through
};

constexpr char NoName[] = "invalid query, no such node";
constexpr char NeedsBag[] = "the cursor has no content";
constexpr char NeedsProfiles[] = "GetProfile requires profile or category container node";
constexpr char NeedsContainer[] = "GetSize requires container node";

std::vector<Place> const NoLists = {OnGroup, OnProfiles, OnProfile};
std::vector<Place> const NoProfileLists = {OnGroup, OnList, OnItem};
std::vector<Place> const NoContainers = {OnGroup, OnItem, OnProfile};
std::vector<Place> const NoProfiles = {Nowhere, OnGroup, OnList, OnItem, OnProfiles};
std::vector<Place> const NoContent = {Nowhere, OnGroupWithoutBag};
std::vector<Place> const NoContentOrAProfile = {Nowhere, OnGroupWithoutBag, OnProfile};
std::vector<Place> const NoContentOrAContainer = {Nowhere, OnGroupWithoutBag, OnList, OnProfiles};

std::vector<Case> const Cases = {
    {"Get(own)", [](auto& at) { at.Get(at.m_pNode); }, Any(OnGroup, OnList, OnItem, OnProfile),
     "invalid query path, no such node"},
    {"IfExists(own)", [](auto& at) { at.GetParameterNodeIfExists(at.m_pNode); }, Any(OnGroup, OnList, OnItem),
     "invalid query path, no such node"},
    {"Get(name)", [](auto& at) { at.Get(L"None"); }, Any(OnGroup, OnList, OnItem, OnProfiles, OnProfile),
     NoName, NoContent},
    {"Get(null)", [](auto& at) { at.Get(static_cast<wchar_t const*>(nullptr)); }, Any(OnGroup), NoName},
    {"IfExists(name)", [](auto& at) { at.GetParameterNodeIfExists(L"None"); }, Any(OnGroup, OnItem), NoName,
     NoContent},

    {"AddListNode", [](auto& at) { at.AddListNode(true); }, NoLists,
     "AddListNode requires list-container node", Any(OnList, OnItem)},
    {"AddListNode", [](auto& at) { at.AddListNode(true); }, Any(OnListWithoutBag), NeedsBag},
    {"AddProfile", [](auto& at) { at.AddProfile(L"A", false); }, NoProfileLists,
     "Not possible to add a profile to a non-profile-list node", Any(OnProfiles, OnProfile)},
    {"AddProfile(null)", [](auto& at) { at.AddProfile(nullptr, false); }, Any(OnProfiles),
     "AddProfile requires a name"},
    {"GetListNode", [](auto& at) { at.GetListNode(0); }, NoLists, "GetListNode requires list-container node",
     Any(Nowhere, OnGroupWithoutBag, OnList)},
    {"GetProfile", [](auto& at) { at.GetProfile(L"A"); }, NoProfileLists, NeedsProfiles, NoContentOrAProfile},
    {"HasProfile", [](auto& at) { at.HasProfile(L"A"); }, NoProfileLists, NeedsProfiles, NoContentOrAProfile},
    {"GetProfiles", [](auto& at) { ProfilesOf(at); }, NoProfileLists,
     "GetProfiles requires profile or category container node", NoContentOrAProfile},
    {"GetDefault", [](auto& at) { at.GetDefault(); }, NoContainers, "GetDefault requires container node",
     NoContentOrAContainer},
    {"GetSize", [](auto& at) { at.GetSize(); }, NoContainers, NeedsContainer, NoContentOrAContainer},
    {"GetSize(forged)", [](auto& at) { at.m_isContainer = true, at.GetSize(); }, Any(OnGroup),
     "GetProfiles requires profile or category container node"},
    {"Clear", [](auto& at) { at.Clear(); }, NoContainers, NeedsContainer},
    {"Clear", [](auto& at) { at.Clear(); }, Any(OnListWithoutBag), NeedsBag},
    {"Clear(forged)", [](auto& at) { at.m_isContainer = true, at.Clear(); }, Any(OnGroup),
     "GetProfiles requires profile or category container node"},

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
    {"GetDisableAddRemove", [](auto& at) { at.GetDisableAddRemove(); }, Any(Nowhere, OnGroup),
     "GetDisableAddRemove requires profile or category container node"},
    {"SetDisableAddRemove", [](auto& at) { at.SetDisableAddRemove(true); }, Any(Nowhere, OnGroup),
     "SetDisableAddRemove requires profile or category container node",
     Any(OnList, OnItem, OnProfiles, OnProfile)},
    {"SetReadOnly", [](auto& at) { at.SetReadOnly(true); }, NoContent, NeedsBag},
    {"SetHidden", [](auto& at) { at.SetHidden(true); }, Any(Nowhere), NeedsBag},
    {"SetValueFromText", [](auto& at) { at.SetValueFromText(L"x"); }, Any(Nowhere), NeedsBag},
    {"Format", [](auto& at) { at.Format(); }, Any(Nowhere, OnGroup),
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
                ADD_FAILURE() << "nothing was thrown";
            } catch (ParameterMisuse const& misuse) {
                EXPECT_STREQ(misuse.what(), each.message);
                EXPECT_EQ(misuse.GetLayoutNode(), cursor.m_pNode);
            }
            EXPECT_TRUE(database.values.IsEqual(before));
        }
        for (Place const& place : each.unharmed) {
            TestDatabase database;
            ParameterNode cursor = place(database);
            EXPECT_NO_THROW(each.call(cursor)) << each.operation;
        }
    }
}

TEST(Misuse, AProfileAddedToAProfileStaysAlthoughTheCallThrows) {
    TestDatabase database;
    ParameterNode profile = database.At(database.layout.machines).GetDefault();
    EXPECT_THAT([&] { profile.AddProfile(L"Inner", true); },
                testing::ThrowsMessage<std::runtime_error>("GetDefault requires container node"));
    EXPECT_EQ(profile.GetProfile(L"Inner").Get(L"Speed").GetValue<double>(), 30.0);
}

TEST(Misuse, NamesThePathInTheLayoutAlsoOfACopiedNodeAndOfNone) {
    TestDatabase database;
    TestLayout const& layout = database.layout;
    LayoutNode const copy(*layout.ranges); // its children name their parents in the source
    ParameterNode onCopy, onCopiedChild;
    onCopy.m_pNode = &copy;
    onCopiedChild.m_pNode = &copy.At(1);
    std::pair<ParameterNode, std::wstring> const rows[] = {
        {database.At(layout.real), L"ProfileEditor_Parameters_Power"},
        {database.At(layout.ranges).GetListNode(0).Get(layout.steps).GetDefault(),
         L"ProfileEditor_Ranges_Steps"},
        {database.values.GetRoot(), L""},
        {ParameterNode(), L""},
        {onCopy, L"ProfileEditor_Ranges"},
        {onCopiedChild, L"ProfileEditor_Ranges_Steps"},
    };
    for (auto const& [cursor, path] : rows) {
        try {
            cursor.GetValue<bool>();
            ADD_FAILURE() << "nothing was thrown";
        } catch (ParameterMisuse const& misuse) {
            ParameterMisuse const kept = misuse; // as a host does that shows it later
            EXPECT_EQ(kept.GetPath(), path);
        }
    }
}

} // namespace
} // namespace Zantrel
