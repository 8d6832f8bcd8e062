// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include <gtest/gtest.h>

namespace Zantrel {
namespace {

/// Where a look-up may end: nowhere, on a layout node without content, or on content.
enum End { Nothing, NodeOnly, Content };

/// Checks a look-up by every function that does it.
void ExpectEnd(ParameterNode const& from, LayoutNode const* to, End expected, bool existsAsPointer) {
    ParameterNode const found = from.Get(to);
    EXPECT_EQ(found.m_pNode, expected == Nothing ? nullptr : to);
    EXPECT_EQ(found.IsValid(), expected == Content);
    EXPECT_EQ(found.m_isContainer, expected != Nothing && (to->m_isList || to->m_isProfileList));
    auto const pointer = from.GetParameterNodeIfExists(to);
    ASSERT_EQ(pointer != nullptr, existsAsPointer);
    if (pointer != nullptr) {
        EXPECT_EQ(pointer->m_pNode, to);
        EXPECT_EQ(pointer->m_pProperties, found.m_pProperties);
    }
    if (to->Parent() == from.m_pNode && from.IsValid()) {
        EXPECT_EQ(from.Get(to->m_name).m_pProperties, found.m_pProperties);
        EXPECT_EQ(from.GetParameterNodeIfExists(to->m_name.c_str())->m_pProperties, found.m_pProperties);
    }
}

TEST(Navigation, GoesDownThroughGroupsButNotThroughContainers) {
    TestDatabase database;
    TestLayout const& layout = database.layout;
    ParameterNode const root = database.values.GetRoot();
    ParameterNode const list = database.At(layout.ranges);
    struct {
        ParameterNode from;
        LayoutNode const* to;
        End end;
        bool existsAsPointer;
    } const cases[] = {
        {root, layout.editor, Content, true},
        {root, layout.real, Content, true},
        {database.Editor(), layout.real, Content, true},
        {database.Editor(), layout.ranges, Content, true},
        {database.Editor(), layout.begin, NodeOnly, true}, // directly below the container
        {database.Editor(), layout.steps, NodeOnly, true},
        {database.Editor(), layout.step, Nothing, false}, // below what isn't there
        {list, layout.begin, NodeOnly, true},
        {list, layout.step, Nothing, false},
        {list.GetListNode(1), layout.begin, Content, true},
        {list.GetDefault(), layout.steps, Content, true},
        {list.GetDefault(), layout.step, NodeOnly, true},
        {list.GetDefault().Get(layout.steps).GetListNode(0), layout.step, Content, true},
        {list.GetListNode(0), layout.real, Nothing, false},         // in another branch
        {database.At(layout.group), layout.editor, Nothing, false}, // above
        {database.At(layout.real), layout.text, Nothing, false},
        {root, layout.m_platformConfigurator.GetNode(), NodeOnly, true}, // never formatted
        {root, layout.m_partOptions.GetNode(), Nothing, false},
        {ParameterNode(), layout.real, Nothing, false},
        {database.Editor().Get(layout.begin), layout.begin, Nothing, false},
    };
    for (auto const& each : cases) {
        SCOPED_TRACE(testing::Message() << &each - cases);
        ExpectEnd(each.from, each.to, each.end, each.existsAsPointer);
    }
    EXPECT_FALSE(database.Editor().Get(static_cast<LayoutNode const*>(nullptr)).IsValid());
    EXPECT_EQ(database.Editor().GetParameterNodeIfExists(static_cast<LayoutNode const*>(nullptr)), nullptr);
}

TEST(Navigation, TellsAMissingChildFromAMissingGrandchild) {
    TestDatabase database;
    database.At(database.layout.group).m_pProperties->RemoveProperty(L"Power", false);
    ExpectEnd(database.Editor(), database.layout.real, NodeOnly, true);
    database.Editor().m_pProperties->FindProperty(L"Parameters")->SetDeleted(true);
    ExpectEnd(database.Editor(), database.layout.group, NodeOnly, true);
    ExpectEnd(database.Editor(), database.layout.text, Nothing, false);
}

TEST(Navigation, TakesAProfileThatBearsTheNameOfAChildForThatChild) {
    TestDatabase database;
    ParameterNode machines = database.At(database.layout.machines);
    ParameterNode const profile = machines.AddProfile(L"Speed", false);
    EXPECT_EQ(machines.Get(L"Speed").m_pProperties, profile.m_pProperties);
}

TEST(Navigation, ComparesContentAndNotNodes) {
    TestDatabase database;
    TestLayout const& layout = database.layout;
    ParameterNode text = database.At(layout.text);
    database.At(layout.member).SetValue<std::wstring>(L" steel ");
    EXPECT_TRUE(text.IsEqual(database.At(layout.member)));
    text.SetHidden(false); // a flag that was set is content
    EXPECT_FALSE(text.IsEqual(database.At(layout.member)));
    EXPECT_FALSE(text.IsEqual(ParameterNode()));
    EXPECT_TRUE(ParameterNode().IsEqual(ParameterNode()));
}

} // namespace
} // namespace Zantrel
