// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include "tests/support/failing_allocator.h"

#include <gtest/gtest.h>

#include <memory>

namespace Zantrel {
namespace {

TEST(Formatting, GivesLeavesTheirDefaultsAndNestsTemplatesAndItemsWithinEachOther) {
    TestDatabase database;
    std::string const range = "{Begin=1.5 Steps[{Width=7}; {Width=7}]}";
    EXPECT_EQ(Dump(database.values),
              "{Parameters{Layer count=12 Power=0.10000000000000001 Thickness=0.050000000000000003 "
              "Supports=True Material=' steel ' Strategy='Fast' Scanner='Left' Path='a.txt' Attachment='': "
              "Gas=?} Ranges[" +
                  range + "; " + range + ' ' + range + "] Counts[=5;] Machines<{Speed=30};>}");
    // Nothing else stands in the bags.
    EXPECT_EQ(Shape(*database.At(database.layout.group).m_pProperties),
              L"Attachment(Value) Gas() Layer count(Value) Material(Value) Path(Value) Power(Value) "
              L"Scanner(Value) Strategy(Value) Supports(Value) Thickness(Value)");
    EXPECT_EQ(Shape(*database.At(database.layout.machines).m_pProperties),
              L"::DefaultProfile::(Speed(Value))");
    EXPECT_EQ(Shape(*database.At(database.layout.ranges).GetDefault().m_pProperties),
              L"Begin(Value) Steps(::DefaultProfile::(Width(Value)) Value[Width(Value)])");
    EXPECT_EQ(Shape(*database.values.GetRoot().m_pProperties).substr(0, 15), L"ProfileEditor(C");
}

TEST(Formatting, DecidesWhatALayoutLeavesOpen) {
    struct {
        void (*build)(LayoutNode& editor);
        char const* values;
        wchar_t const* shape;
    } const rows[] = {
        {[](auto& at) { at.AddNode(L"O", Options, L"")->AddOption(L"1st", L"")->AddOption(L"2nd", L""); },
         "{O='1st'}", L"O(Value)"},
        {[](auto& at) { at.AddNode(L"O", Options, L"none of them")->AddOption(L"1st", L""); },
         "{O='none of them'}", L"O(Value)"},
        {[](auto& at) { at.AddNode(L"O", Options, L""); }, "{O=''}", L"O(Value)"},
        {[](auto& at) {
             at.AddNode(L"Both", Int, L"1")->SetIsList(true)->SetIsProfileList(true)->SetMultiplicity(3);
         },
         "{Both<=1;>}", L"Both(::DefaultProfile::(Value))"},
        {[](auto& at) { at.AddNode(L"No type", Int, L"1")->SetType(static_cast<eTypeLayoutNode>(11)); },
         "{No type{}}", L"No type()"},
        {[](auto& at) { // siblings of one name: the first bag is found
             for (wchar_t const* value : {L"1", L"2"}) {
                 at.AddNode(L"S", Int, value);
                 at.AddNode(L"Value", Int, value);
             }
         },
         "{S=1 Value=1 S=1 Value=1}", L"S(Value) S(Value) Value(Value) Value(Value)"},
    };
    for (auto const& row : rows) {
        ParameterLayout layout;
        row.build(*layout.m_profileEditor);
        ParameterDatabase database(&layout);
        EXPECT_EQ(Dump(database), row.values);
        EXPECT_EQ(Shape(*database.GetProfileEditor().m_pProperties), row.shape);
    }
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

TEST(Formatting, OfWhatIsThereResetsAValueAddsBehindTheChildrenOfAGroupAndHidesNothing) {
    TestDatabase database;
    ParameterNode real = database.At(database.layout.real), group = database.At(database.layout.group);
    real.SetValue(7.0);
    database.values.Format();
    EXPECT_EQ(database.values.GetRoot().m_pProperties->GetNumProperties(), 2u);
    for (int i = 0; i < 2; ++i) {
        OpenCursor(group)._FormatContent();
    }
    EXPECT_EQ(group.m_pProperties->GetNumProperties(), 30u);
    EXPECT_EQ(TestSupport::DumpChanges(database.values), "Parameters/Power=7");
    EXPECT_EQ(database.At(database.layout.real).m_pProperties, real.m_pProperties);
    OpenCursor(real)._FormatContent();
    EXPECT_EQ(TestSupport::DumpChanges(database.values), "");
    OpenCursor(ParameterNode())._FormatContent();

    PersistentProperties bag;
    ParameterNode cursor;
    cursor.m_pNode = database.layout.ranges;
    cursor.m_pParentProperties = &bag;
    cursor.Format();
    EXPECT_EQ(Dump(cursor), Dump(database.At(database.layout.ranges)));
}

TEST(Database, WithoutALayoutOrOnACopiedOneHasNoEditor) {
    ParameterDatabase database(nullptr);
    database.Format();
    EXPECT_EQ(database.GetLayout(), nullptr);
    EXPECT_FALSE(database.GetProfileEditor().IsValid());
    EXPECT_TRUE(database.GetRoot().m_pProperties->IsEmpty());
    EXPECT_FALSE(database.GetRoot().Get(ParameterLayout().m_profileEditor.GetNode()).IsValid());
    EXPECT_TRUE(database.IsEqual(ParameterDatabase(nullptr)));

    TestLayout const source;
    ParameterLayout const copy(source);
    ParameterDatabase onCopy(&copy);
    EXPECT_FALSE(onCopy.GetProfileEditor().IsValid());
    EXPECT_TRUE(onCopy.GetRoot().m_pProperties->HasValue<PersistentProperties>(L"ProfileEditor"));
}

TEST(Database, IsEqualToAnotherOnTheSameLayoutWithEqualValuesAsAfterACopyOrAnAssignment) {
    TestDatabase first, second;
    EXPECT_TRUE(first.Editor().IsEqual(second.Editor()));
    EXPECT_FALSE(first.values.IsEqual(second.values)); // another layout object
    ParameterDatabase copy(first.values);
    EXPECT_TRUE(copy.IsEqual(first.values));
    copy.GetProfileEditor().Get(first.layout.real).SetValue(2.0);
    EXPECT_FALSE(copy.IsEqual(first.values));
    PersistentProperties* const root = second.values.GetRoot().m_pProperties;
    second.values = copy;
    second.values = static_cast<ParameterDatabase const&>(second.values);
    EXPECT_TRUE(second.values.IsEqual(copy));
    EXPECT_EQ(second.values.GetRoot().m_pProperties, root);
    EXPECT_EQ(TestSupport::DumpChanges(second.values), "Parameters/Power=2");
}

TEST(Database, WhatIsCopiedOutOfItOutlivesTheLayout) {
    using Bag = PersistentProperties;
    void (*const ways[])(Bag const& source, Bag& target) = {
        [](Bag const& source, Bag& target) { target = source; },
        [](Bag const& source, Bag& target) { target.Merge(source, true); },
        [](Bag const& source, Bag& target) {
            PersistentProperty<Bag> copy;
            copy.Assign(std::unique_ptr<IPersistentProperty>(PersistentProperty<Bag>(source).Clone()).get());
            target = Bag(copy.m_value);
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
