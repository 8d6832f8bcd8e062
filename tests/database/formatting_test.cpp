// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include "tests/support/dump.h"
#include "tests/support/failing_allocator.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace Zantrel {
namespace {

TEST(Formatting, GivesEachLeafTheDefaultOfItsType) {
    TestDatabase database;
    EXPECT_EQ(TestSupport::Dump(database.At(database.layout.group)),
              "{Layer count=12 Power=0.10000000000000001 Thickness=0.050000000000000003 Supports=True "
              "Material=' steel ' Strategy='Fast' Scanner='Left' Path='a.txt' Attachment='': Gas=?}");
}

TEST(Formatting, TakesTheDefaultOfAnOptionAsItStandsAndElseTheFirstOption) {
    using Row = std::tuple<wchar_t const*, bool, wchar_t const*>;
    for (auto const& [defaultText, hasOption, expected] :
         {Row{L"", true, L"First"}, Row{L"None of them", true, L"None of them"}, Row{L"", false, L""}}) {
        ParameterLayout layout;
        LayoutNode* option = layout.m_profileEditor->AddNode(L"Option", Options, defaultText);
        if (hasOption) {
            option->AddOption(L"First", L"Shown")->AddOption(L"Second", L"");
        }
        EXPECT_EQ(ParameterDatabase(&layout).GetProfileEditor().Get(option).GetValue<std::wstring>(),
                  expected);
    }
}

TEST(Formatting, NestsTheTemplatesAndItemsOfListsWithinTemplatesAndItems) {
    TestDatabase database;
    std::wstring const steps = L"Steps(::DefaultProfile::(Width(Value)) Value[Width(Value)])";
    std::wstring const range = L"Begin(Value) " + steps;
    EXPECT_EQ(
        Shape(*database.Editor().m_pProperties),
        L"Counts(::DefaultProfile::(Value) Value) Machines(::DefaultProfile::(Speed(Value))) "
        L"Parameters(Attachment(Value) Gas() Layer count(Value) Material(Value) Path(Value) Power(Value) "
        L"Scanner(Value) Strategy(Value) Supports(Value) Thickness(Value)) "
        L"Ranges(::DefaultProfile::(" +
            range + L") Value[" + range + L"][" + range + L"])");
    EXPECT_EQ(Shape(*database.values.GetRoot().m_pProperties).substr(0, 15), L"ProfileEditor(C");
    EXPECT_TRUE(database.At(database.layout.ranges)
                    .GetListNode(1)
                    .IsEqual(database.At(database.layout.ranges).GetDefault()));
}

TEST(Formatting, TakesANodeThatIsBothForAProfileListAndAnUnknownTypeForNothing) {
    ParameterLayout layout;
    LayoutNode* both = layout.m_profileEditor->AddNode(L"Both", Int, L"1");
    both->SetIsList(true)->SetIsProfileList(true)->SetMultiplicity(3);
    layout.m_profileEditor->AddNode(L"Unknown", Int, L"1")->SetType(static_cast<eTypeLayoutNode>(11));
    ParameterDatabase database(&layout);
    EXPECT_EQ(Shape(*database.GetProfileEditor().m_pProperties),
              L"Both(::DefaultProfile::(Value)) Unknown()");
}

TEST(Formatting, GivesSiblingsOfOneNameABagEachAndFindsTheFirst) {
    ParameterLayout layout;
    for (wchar_t const* value : {L"1", L"2"}) {
        layout.m_profileEditor->AddNode(L"Same", Int, value);
        layout.m_profileEditor->AddNode(L"Value", Int, value);
    }
    ParameterDatabase database(&layout);
    ParameterNode const editor = database.GetProfileEditor();
    EXPECT_EQ(Shape(*editor.m_pProperties), L"Same(Value) Same(Value) Value(Value) Value(Value)");
    EXPECT_EQ(editor.Get(L"Same").m_pNode->m_defaultValue,
              L"2"); // the layout finds the last, the bag the first
    EXPECT_EQ(editor.Get(L"Same").GetValue<std::int32_t>(), 1);
    EXPECT_EQ(editor.Get(L"Value").GetValue<std::int32_t>(), 1);
}

TEST(Formatting, GroupsAndListsOfEverySizeKeepAllTheirChildren) {
    for (std::size_t count : {1u, 31u, 32u, 33u, 300u}) {
        SCOPED_TRACE(count);
        ParameterLayout layout;
        LayoutNode* list =
            layout.m_profileEditor->AddNode(L"List")->SetList(true, L"Item", L"")->SetMultiplicity(count);
        for (std::size_t i = 0; i < count; ++i) {
            list->AddNode(std::to_wstring(1000 - i).c_str(), Int, std::to_wstring(i));
        }
        ParameterDatabase database(&layout);
        ParameterNode const item = database.GetProfileEditor().Get(list).GetListNode(count - 1);
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(item.Get(&list->At(i)).GetValue<std::int32_t>(), static_cast<std::int32_t>(i));
        }
    }
}

TEST(Formatting, ASecondTimeChangesNothingThatACursorReaches) {
    TestDatabase database;
    ParameterNode real = database.At(database.layout.real);
    real.SetValue<double>(7.0);
    database.values.Format();
    EXPECT_EQ(database.At(database.layout.real).m_pProperties, real.m_pProperties);
    EXPECT_EQ(real.GetValue<double>(), 7.0);
    EXPECT_EQ(database.values.GetRoot().m_pProperties->GetNumProperties(), 2u);
}

TEST(Formatting, OneNodeGoesIntoTheBagOfItsParent) {
    TestDatabase database;
    PersistentProperties bag;
    ParameterNode cursor;
    cursor.m_pNode = database.layout.ranges;
    cursor.m_pParentProperties = &bag;
    cursor.Format();
    EXPECT_TRUE(cursor.m_isContainer);
    EXPECT_EQ(cursor.GetSize(), 2u);
    EXPECT_TRUE(cursor.IsEqual(database.At(database.layout.ranges)));
}

TEST(Formatting, ContentThatStandsThereResetsAValueAndAddsBehindTheChildrenOfAGroup) {
    struct OpenCursor : ParameterNode {
        explicit OpenCursor(ParameterNode const& cursor) : ParameterNode(cursor) {}
        using ParameterNode::_FormatContent;
    };
    TestDatabase database;
    ParameterNode real = database.At(database.layout.real);
    real.SetValue<double>(7.0);
    for (int i = 0; i < 2; ++i) {
        OpenCursor(database.At(database.layout.group))._FormatContent();
    }
    EXPECT_EQ(database.At(database.layout.group).m_pProperties->GetNumProperties(), 30u);
    EXPECT_EQ(real.GetValue<double>(), 7.0);
    OpenCursor(real)._FormatContent();
    EXPECT_EQ(real.GetValue<double>(), 0.1);
    OpenCursor(ParameterNode())._FormatContent();
}

TEST(Database, WithoutALayoutIsEmptyAndSafe) {
    ParameterDatabase database(nullptr);
    EXPECT_EQ(database.GetLayout(), nullptr);
    EXPECT_FALSE(database.GetProfileEditor().IsValid());
    EXPECT_TRUE(database.GetRoot().m_pProperties->IsEmpty());
    EXPECT_FALSE(database.GetRoot().Get(ParameterLayout().m_profileEditor.GetNode()).IsValid());
    database.Format();
    EXPECT_TRUE(database.IsEqual(ParameterDatabase(nullptr)));
}

TEST(Database, OnACopiedLayoutHasAnUnreachableEditor) {
    TestLayout const source;
    ParameterLayout const copy(source);
    ParameterDatabase database(&copy);
    EXPECT_FALSE(database.GetProfileEditor().IsValid());
    EXPECT_TRUE(database.GetRoot().m_pProperties->HasValue<PersistentProperties>(L"ProfileEditor"));
}

TEST(Database, IsEqualToAnotherOnTheSameLayoutWithEqualValues) {
    TestDatabase first;
    TestDatabase second;
    EXPECT_TRUE(first.Editor().IsEqual(second.Editor()));
    EXPECT_FALSE(first.values.IsEqual(second.values)); // another layout object
    ParameterDatabase copy(first.values);
    EXPECT_TRUE(copy.IsEqual(first.values));
    copy.GetProfileEditor().Get(first.layout.real).SetValue<double>(2.0);
    EXPECT_FALSE(copy.IsEqual(first.values));
    EXPECT_EQ(first.At(first.layout.real).GetValue<double>(), 0.1);
}

TEST(Database, AssignmentTakesLayoutAndValuesAndKeepsTheRootBag) {
    TestDatabase source;
    source.At(source.layout.real).SetValue<double>(3.0);
    ParameterLayout other;
    ParameterDatabase target(&other);
    PersistentProperties* const root = target.GetRoot().m_pProperties;
    target = source.values;
    EXPECT_TRUE(target.IsEqual(source.values));
    EXPECT_EQ(target.GetRoot().m_pProperties, root);
    target = static_cast<ParameterDatabase const&>(target);
    EXPECT_EQ(target.GetProfileEditor().Get(source.layout.real).GetValue<double>(), 3.0);
}

TEST(Database, WhatIsCopiedOutOfItOutlivesTheLayout) {
    using Bag = PersistentProperties;
    std::function<void(Bag const& source, Bag& target)> const ways[] = {
        [](Bag const& source, Bag& target) { target = Bag(source); },
        [](Bag const& source, Bag& target) { target = source; },
        [](Bag const& source, Bag& target) { target.Merge(source, true); },
        [](Bag const& source, Bag& target) {
            for (auto const& [name, property] : source) {
                target.AddProperty(std::wstring(name), property->Clone());
            }
        },
        [](Bag const& source, Bag& target) {
            PersistentProperty<Bag> copy;
            PersistentProperty<Bag> const original(source);
            copy.Assign(&original);
            target = copy.m_value;
        },
    };
    for (auto const& copy : ways) {
        SCOPED_TRACE(&copy - ways);
        auto layout = std::make_unique<TestLayout>();
        Bag bag;
        std::wstring shape;
        {
            ParameterDatabase database(layout.get());
            database.GetProfileEditor().Get(layout->ranges).AddListNode(true);
            copy(*database.GetProfileEditor().m_pProperties, bag);
            shape = Shape(*database.GetProfileEditor().m_pProperties);
        }
        for (LayoutNode* node :
             {layout->group, layout->text, layout->ranges, layout->begin, layout->step, layout->speed}) {
            node->SetName(L"no longer there");
        }
        EXPECT_EQ(Shape(bag), shape);
        layout.reset();
        EXPECT_EQ(Shape(Bag(bag)), shape);
    }
}

TEST(Database, IsMadeAndCopiedWholeOrNotAtAllWhereMemoryRunsOut) {
    TestDatabase database;
    database.Editor().m_pProperties->SetValue<std::wstring>(L"of the host", L"a value that takes memory");
    database.At(database.layout.machines).AddProfile(L"a name that takes memory", true);
    auto const make = [&] { EXPECT_TRUE(ParameterDatabase(&database.layout).GetProfileEditor().IsValid()); };
    auto const copy = [&] { EXPECT_TRUE(ParameterDatabase(database.values).IsEqual(database.values)); };
    EXPECT_GT(TestSupport::FailEachAllocation(make), 10u);
    EXPECT_GT(TestSupport::FailEachAllocation(copy), 10u);

    ParameterDatabase target(&database.layout);
    ParameterDatabase const before(target);
    auto const assign = [&] { target = database.values; };
    TestSupport::FailEachAllocation(assign, [&](std::size_t, bool completed) {
        EXPECT_TRUE(target.IsEqual(completed ? database.values : before));
    });
}

} // namespace
} // namespace Zantrel
