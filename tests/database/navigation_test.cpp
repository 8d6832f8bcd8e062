// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include <gtest/gtest.h>

namespace Zantrel {
namespace {

/// Where a look-up may end: nowhere, on a layout node without content, or on content.
enum End { Nothing, NodeOnly, Content };

/// Checks a look-up by every function that does it.
void ExpectEnd(ParameterNode const& from, LayoutNode const* to, End expected) {
    ParameterNode const found = from.Get(to);
    EXPECT_EQ(found.m_pNode, expected == Nothing ? nullptr : to);
    EXPECT_EQ(found.IsValid(), expected == Content);
    EXPECT_EQ(found.m_isContainer, expected != Nothing && (to->m_isList || to->m_isProfileList));
    auto const pointer = from.GetParameterNodeIfExists(to);
    ASSERT_EQ(pointer != nullptr, expected != Nothing);
    EXPECT_TRUE(pointer == nullptr ||
                (pointer->m_pNode == to && pointer->m_pProperties == found.m_pProperties));
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
    } const cases[] = {
        {root, layout.editor, Content},
        {root, layout.real, Content},
        {database.Editor(), layout.real, Content},
        {database.Editor(), layout.begin, NodeOnly}, // directly below the container
        {database.Editor(), layout.step, Nothing},   // below what isn't there
        {list, layout.begin, NodeOnly},
        {list.GetListNode(1), layout.begin, Content},
        {list.GetDefault(), layout.step, NodeOnly},
        {list.GetDefault().Get(layout.steps).GetListNode(0), layout.step, Content},
        {list.GetListNode(0), layout.real, Nothing},               // in another branch
        {database.At(layout.group), layout.editor, Nothing},       // above
        {root, layout.m_platformConfigurator.GetNode(), NodeOnly}, // never formatted
        {ParameterNode(), layout.real, Nothing},
        {database.Editor().Get(layout.begin), layout.begin, Nothing},
    };
    for (auto const& each : cases) {
        SCOPED_TRACE(testing::Message() << &each - cases);
        ExpectEnd(each.from, each.to, each.end);
    }
    EXPECT_FALSE(database.Editor().Get(static_cast<LayoutNode const*>(nullptr)).IsValid());
    EXPECT_EQ(database.Editor().GetParameterNodeIfExists(static_cast<LayoutNode const*>(nullptr)), nullptr);
}

TEST(Navigation, TellsAMissingChildFromAMissingGrandchildAndTakesAProfileOfItsNameForAChild) {
    TestDatabase database;
    ParameterNode machines = database.At(database.layout.machines);
    database.At(database.layout.group).m_pProperties->RemoveProperty(L"Power", false);
    ExpectEnd(database.Editor(), database.layout.real, NodeOnly);
    database.Editor().m_pProperties->FindProperty(L"Parameters")->SetDeleted(true);
    ExpectEnd(database.Editor(), database.layout.group, NodeOnly);
    ExpectEnd(database.Editor(), database.layout.text, Nothing);
    ExpectEnd(machines, database.layout.speed, NodeOnly);
    machines.AddProfile(L"Speed", false);
    ExpectEnd(machines, database.layout.speed, Content);
}

} // namespace
} // namespace Zantrel
