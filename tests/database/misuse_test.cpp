// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/vocabulary.h"
#include "tests/database/test_layout.h"

#include <gtest/gtest.h>

#include <utility>

namespace Zantrel {
namespace {

// What a cursor may stand on, as far as operations tell it apart.
using Place = ParameterNode (*)(TestDatabase&);
using Places = std::vector<Place>;

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
    void (*call)(ParameterNode&);
    char const* message;
    Places places;        ///< where it is thrown
    Places unharmed = {}; ///< where the call gets through
};

constexpr char NoName[] = "invalid query, no such node";
constexpr char NoPath[] = "invalid query path, no such node";
constexpr char NeedsBag[] = "the cursor has no content";
constexpr char NeedsProfiles[] = "GetProfile requires profile or category container node";
constexpr char NeedsProfileList[] = "GetProfiles requires profile or category container node";
constexpr char NeedsContainer[] = "GetSize requires container node";

Places const NoLists = {OnGroup, OnProfiles, OnProfile};
Places const NoProfileLists = {OnGroup, OnList, OnItem};
Places const NoContainers = {OnGroup, OnItem, OnProfile};
Places const NoContent = {Nowhere, OnGroupWithoutBag};
Places const NoContentOrAProfile = {Nowhere, OnGroupWithoutBag, OnProfile};
Places const NoContentOrAContainer = {Nowhere, OnGroupWithoutBag, OnList, OnProfiles};

Case const Cases[] = {
    {[](auto& at) { at.Get(at.m_pNode); }, NoPath, {OnGroup, OnList, OnItem, OnProfile}},
    {[](auto& at) { at.GetParameterNodeIfExists(at.m_pNode); }, NoPath, {OnGroup, OnList, OnItem}},
    {[](auto& at) { at.Get(L"None"); }, NoName, {OnGroup, OnList, OnItem, OnProfiles, OnProfile}, NoContent},
    {[](auto& at) { at.Get(static_cast<wchar_t const*>(nullptr)); }, NoName, {OnGroup}},
    {[](auto& at) { at.GetParameterNodeIfExists(L"None"); }, NoName, {OnGroup, OnItem}, NoContent},

    {[](auto& at) { at.AddListNode(true); },
     "AddListNode requires list-container node",
     NoLists,
     {OnList, OnItem}},
    {[](auto& at) { at.AddListNode(true); }, NeedsBag, {OnListWithoutBag}},
    {[](auto& at) { at.AddProfile(L"A", false); },
     "Not possible to add a profile to a non-profile-list node",
     NoProfileLists,
     {OnProfiles, OnProfile}},
    {[](auto& at) { at.AddProfile(nullptr, false); }, "AddProfile requires a name", {OnProfiles}},
    {[](auto& at) { at.GetListNode(0); },
     "GetListNode requires list-container node",
     NoLists,
     {Nowhere, OnGroupWithoutBag, OnList}},
    {[](auto& at) { at.GetProfile(L"A"); }, NeedsProfiles, NoProfileLists, NoContentOrAProfile},
    {[](auto& at) { at.HasProfile(L"A"); }, NeedsProfiles, NoProfileLists, NoContentOrAProfile},
    {[](auto& at) { ProfilesOf(at); }, NeedsProfileList, NoProfileLists, NoContentOrAProfile},
    {[](auto& at) { at.GetDefault(); }, "GetDefault requires container node", NoContainers,
     NoContentOrAContainer},
    {[](auto& at) { at.GetSize(); }, NeedsContainer, NoContainers, NoContentOrAContainer},
    {[](auto& at) { at.m_isContainer = true, at.GetSize(); }, NeedsProfileList, {OnGroup}},
    {[](auto& at) { at.Clear(); }, NeedsContainer, NoContainers},
    {[](auto& at) { at.m_isContainer = true, at.Clear(); }, NeedsProfileList, {OnGroup}},
    {[](auto& at) { at.Clear(); }, NeedsBag, {OnListWithoutBag}},

    {[](auto& at) { at.SetReadOnly(true); }, NeedsBag, NoContent},
    {[](auto& at) { at.SetValueFromText(L"x"); }, NeedsBag, {Nowhere}},
    {[](auto& at) { at.Format(); },
     "formatting needs a layout node and the bag to format it into",
     {Nowhere, OnGroup}},
};

TEST(Misuse, ThrowsTheTextThatCallersKnowWithTheNodeAndChangesNothing) {
    for (Case const& each : Cases) {
        SCOPED_TRACE(testing::Message() << "row " << &each - Cases << ", " << each.message);
        for (Place const& place : each.places) {
            TestDatabase database;
            ParameterDatabase const before(database.values);
            ParameterNode cursor = place(database);
            try {
                each.call(cursor);
                ADD_FAILURE() << "nothing was thrown at place " << &place - each.places.data();
            } catch (ParameterMisuse const& misuse) {
                EXPECT_STREQ(misuse.what(), each.message);
                EXPECT_EQ(misuse.GetLayoutNode(), cursor.m_pNode);
            }
            EXPECT_TRUE(database.values.IsEqual(before));
        }
        for (Place const& place : each.unharmed) {
            TestDatabase database;
            ParameterNode cursor = place(database);
            EXPECT_NO_THROW(each.call(cursor));
        }
    }
}

TEST(Flags, AreFalseUntilSetTurnBackAndBelongToSomePlacesOnly) {
    Places const all{OnGroup, OnList, OnItem, OnProfiles, OnProfile}, profile{OnProfile},
        lists{OnList, OnItem, OnProfiles, OnProfile}, noProfile{Nowhere, OnGroup, OnList, OnItem, OnProfiles};
    std::string const ofProfile = " requires profile node";
    struct {
        FlagAttribute flag; ///< what files call it is its name in the bag
        Places places, others;
        std::string requirement;
    } const rows[] = {
        {Flag::ReadOnly, all, {}, ""},
        {Flag::Hidden, all, {}, ""},
        {Flag::NameReadOnly, profile, noProfile, ofProfile},
        {Flag::CanBeDeleted, profile, noProfile, ofProfile},
        {Flag::UserDefaultProfile, profile, noProfile, ofProfile},
        {Flag::DisableAddRemove, lists, {Nowhere, OnGroup}, " requires profile or category container node"},
    };
    for (auto const& [flag, places, others, requirement] : rows) {
        TestDatabase database;
        std::string const name(flag.word);
        SCOPED_TRACE(name);
        for (Place const place : places) {
            ParameterNode cursor = place(database);
            EXPECT_FALSE((cursor.*flag.get)());
            for (bool const value : {true, false}) {
                (cursor.*flag.set)(value);
                EXPECT_EQ((cursor.*flag.get)(), value);
                std::wstring const entry = StringConversion::Utf8ToNative(name);
                EXPECT_EQ(cursor.m_pProperties->GetValueOr<bool>(entry, !value), value);
            }
        }
        for (Place const place : others) {
            ParameterNode cursor = place(database);
            EXPECT_EQ(MisuseOf([&, get = flag.get] { (cursor.*get)(); }), "Get" + name + requirement);
            EXPECT_EQ(MisuseOf([&, set = flag.set] { (cursor.*set)(true); }), "Set" + name + requirement);
        }
    }
    EXPECT_FALSE(ParameterNode().GetReadOnly());
}

TEST(Misuse, NamesThePathInTheLayoutAlsoOfACopiedNodeAndOfNone) {
    TestDatabase database;
    LayoutNode const copy(*database.layout.ranges); // its children name their parents in the source
    for (auto const& [node, path] :
         {std::pair<LayoutNode const*, std::wstring>{database.layout.real, L"ProfileEditor_Parameters_Power"},
          {&copy.At(1), L"Steps"}, // its parents are of the source, which may have ended
          {&database.layout, L""},
          {nullptr, L""}}) {
        ParameterMisuse kept("", nullptr);
        kept = ParameterMisuse("kept", node); // as a host does that shows it later
        EXPECT_EQ(kept.GetPath(), path);
        EXPECT_STREQ(kept.what(), "kept");
    }
}

} // namespace
} // namespace Zantrel
