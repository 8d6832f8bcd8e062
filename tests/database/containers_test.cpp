// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include "tests/support/failing_allocator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <stdexcept>

namespace Zantrel {
namespace {

using Names = std::vector<std::wstring>;

TEST(ProfileList, ListsItsProfilesByCodeUnitWithoutTheDefaultOne) {
    TestDatabase database;
    ParameterNode machines = database.At(database.layout.machines);
    EXPECT_EQ(machines.GetSize(), 0u);
    EXPECT_EQ(ProfilesOf(machines), Names());
    EXPECT_TRUE(machines.HasProfile(L"::DefaultProfile::"));
    EXPECT_FALSE(machines.HasProfile(L"B"));
    EXPECT_FALSE(machines.HasProfile(nullptr));

    // U+1F600 is D83D DE00 in UTF-16, so it stands before U+FFFD, but behind U+D7FF.
    for (wchar_t const* name : {L"\uFFFD", L"a", L"\U0001F600", L"B", L"\uD7FF", L"", L"aa", L"B"}) {
        machines.AddProfile(name, true);
    }
    machines.SetDisableAddRemove(true); // a flag is no profile
    EXPECT_EQ(ProfilesOf(machines),
              (Names{L"", L"B", L"B", L"a", L"aa", L"\uD7FF", L"\U0001F600", L"\uFFFD"}));
    EXPECT_EQ(machines.GetSize(), 8u);
}

TEST(ProfileList, FindsTheFirstProfileOfAName) {
    TestDatabase database;
    ParameterNode machines = database.At(database.layout.machines);
    ParameterNode const first = machines.AddProfile(L"B", true);
    ParameterNode const second = machines.AddProfile(L"B", true);
    EXPECT_NE(first.m_pProperties, second.m_pProperties);
    ParameterNode const found = machines.GetProfile(L"B");
    EXPECT_EQ(found.m_pProperties, first.m_pProperties);
    EXPECT_EQ(found.m_pParentProperties, machines.m_pProperties);
    EXPECT_FALSE(found.m_isContainer);
    EXPECT_EQ(machines.GetProfile(nullptr).m_pProperties, machines.GetDefault().m_pProperties);
    ParameterNode const unknown = machines.GetProfile(L"b");
    EXPECT_FALSE(unknown.IsValid());
    EXPECT_EQ(unknown.m_pNode, database.layout.machines);

    machines.m_pProperties->FindProperty(L"B")->SetDeleted(true);
    EXPECT_FALSE(machines.GetProfile(L"B").IsValid());
    EXPECT_FALSE(machines.HasProfile(L"B"));
    EXPECT_EQ(machines.GetSize(), 2u); // the listing doesn't look at the mark
}

TEST(ProfileList, NewProfilesAreCopiesOfTheDefaultOneOrHaveTheDefaultsOfTheLayout) {
    TestDatabase database;
    ParameterNode machines = database.At(database.layout.machines);
    machines.GetDefault().Get(L"Speed").SetValue<double>(99.0);
    EXPECT_EQ(machines.AddProfile(L"copy", true).Get(L"Speed").GetValue<double>(), 99.0);
    EXPECT_EQ(machines.AddProfile(L"fresh", false).Get(L"Speed").GetValue<double>(), 30.0);
    machines.GetProfile(L"copy").Get(L"Speed").SetValue<double>(1.0);
    EXPECT_EQ(machines.GetDefault().Get(L"Speed").GetValue<double>(), 99.0);
    // A second default profile is a copy as well, and is never found.
    EXPECT_EQ(machines.AddProfile(L"::DefaultProfile::", true).Get(L"Speed").GetValue<double>(), 99.0);
    EXPECT_EQ(machines.AddProfile(L"::DefaultProfile::", false).Get(L"Speed").GetValue<double>(), 30.0);
    EXPECT_EQ(machines.GetDefault().Get(L"Speed").GetValue<double>(), 99.0);
    EXPECT_EQ(machines.GetSize(), 2u);
    machines.m_pProperties->RemoveProperty(L"::DefaultProfile::", false);
    EXPECT_FALSE(machines.GetDefault().IsValid());
    EXPECT_EQ(machines.AddProfile(L"no model", true).Get(L"Speed").GetValue<double>(), 30.0);
}

TEST(ProfileList, ClearLeavesTheDefaultProfileAndTheFlags) {
    TestDatabase database;
    ParameterNode machines = database.At(database.layout.machines);
    machines.SetDisableAddRemove(true);
    ParameterDatabase const before(database.values);
    for (int i = 0; i < 50; ++i) {
        machines.AddProfile(i % 2 == 0 ? L"DisableAddRemove" : L"A", true);
    }
    machines.Clear();
    EXPECT_TRUE(database.values.IsEqual(before));
}

TEST(ProfileList, TakesAHundredThousandProfilesInAnyOrder) {
    constexpr std::size_t Count = 100000;
    std::vector<std::size_t> numbers(Count);
    std::iota(numbers.rbegin(), numbers.rend(), std::size_t(0));
    for (bool const isShuffled : {false, true}) {
        if (isShuffled) {
            std::shuffle(numbers.begin(), numbers.end(), std::mt19937(20240711));
        }
        TestDatabase database;
        ParameterNode machines = database.At(database.layout.machines);
        for (std::size_t number : numbers) {
            machines.AddProfile(std::to_wstring(Count + number).c_str(), true);
        }
        Names const names =
            ProfilesOf(ParameterDatabase(database.values).GetProfileEditor().Get(L"Machines"));
        EXPECT_EQ(names.size(), Count);
        EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
        EXPECT_TRUE(machines.GetProfile(names.back().c_str()).IsValid());
        machines.Clear();
        EXPECT_EQ(machines.GetSize(), 0u);
    }
}

TEST(List, NewItemsAreCopiesOfTheTemplateOrHaveTheDefaultsOfTheLayout) {
    TestDatabase database;
    ParameterNode list = database.At(database.layout.ranges);
    ParameterNode model = list.GetDefault();
    model.Get(L"Begin").SetValue<double>(8.0);
    model.Get(L"Steps").AddListNode(true);
    EXPECT_TRUE(list.AddListNode(true).IsEqual(model));
    ParameterNode const fresh = list.AddListNode(false);
    EXPECT_EQ(fresh.Get(L"Begin").GetValue<double>(), 1.5);
    EXPECT_EQ(fresh.Get(L"Steps").GetSize(), 1u);
    EXPECT_EQ(fresh.m_pParentProperties, list.m_pProperties);
    EXPECT_EQ(list.GetSize(), 4u);
    EXPECT_EQ(list.GetListNode(3).m_pProperties, fresh.m_pProperties);
    EXPECT_THROW(list.GetListNode(4), std::out_of_range);
    EXPECT_EQ(list.GetListNode(4294967297).m_pProperties,
              list.GetListNode(1).m_pProperties); // the low 32 bits count
}

TEST(List, ClearLeavesTheTemplateAndTheFlags) {
    TestDatabase database;
    ParameterNode list = database.At(database.layout.ranges);
    list.GetDefault().Get(L"Begin").SetValue<double>(8.0);
    list.SetHidden(true);
    list.m_pProperties->FindProperty(L"Value")->SetDeleted(true); // a mark that operations on items take away
    list.Clear();
    EXPECT_EQ(list.GetSize(), 0u);
    EXPECT_FALSE(list.m_pProperties->FindProperty(L"Value")->IsDeleted());
    EXPECT_TRUE(list.GetHidden());
    EXPECT_EQ(list.AddListNode(true).Get(L"Begin").GetValue<double>(), 8.0);
}

TEST(List, AnItemTakenForItsListGetsASequenceOfItsOwn) {
    TestDatabase database;
    ParameterNode const item = database.At(database.layout.ranges).GetListNode(0);
    EXPECT_THROW(item.GetListNode(0), std::out_of_range);
    EXPECT_EQ(Shape(*item.m_pProperties),
              L"Begin(Value) Steps(::DefaultProfile::(Width(Value)) Value[Width(Value)]) Value");
    item.AddListNode(true); // no template here: the layout's defaults
    EXPECT_EQ(item.GetListNode(0).Get(L"Begin").GetValue<double>(), 1.5);
    EXPECT_EQ(database.At(database.layout.ranges).GetSize(), 2u);
}

TEST(List, OfLeavesHasItemsThatAreValues) {
    TestDatabase database;
    ParameterNode counts = database.At(database.layout.counts);
    counts.AddListNode(true).SetValue<std::int32_t>(6);
    counts.AddListNode(false);
    EXPECT_EQ(counts.GetListNode(0).GetValue<std::int32_t>(), 6);
    EXPECT_EQ(counts.GetListNode(1).GetValue<std::int32_t>(), 5);
}

TEST(Containers, GainAWholeItemOrNoneWhereMemoryRunsOut) {
    TestDatabase database;
    ParameterNode list = database.At(database.layout.ranges);
    ParameterNode machines = database.At(database.layout.machines);
    list.GetDefault().m_pProperties->SetValue<std::wstring>(L"of the host", L"a value that takes memory");
    wchar_t const* const name = L"a name that takes memory";
    std::pair<ParameterNode&, std::function<ParameterNode()>> const cases[] = {
        {list, [&] { return list.AddListNode(true); }},
        {list, [&] { return list.AddListNode(false); }},
        {machines, [&] { return machines.AddProfile(name, true); }},
        {machines, [&] { return machines.AddProfile(name, false); }},
    };
    for (auto const& [container, add] : cases) {
        ParameterDatabase const before(database.values);
        container.Clear(); // so that growth is needed
        PersistentProperties const whole = *add().m_pProperties;
        container.Clear();
        ParameterNode added;
        std::size_t const failures =
            TestSupport::FailEachAllocation([&, &make = add] { added = make(); },
                                            [&, &grown = container](std::size_t, bool completed) {
                                                EXPECT_EQ(grown.GetSize(), completed ? 1u : 0u);
                                                EXPECT_TRUE(!completed || *added.m_pProperties == whole);
                                            });
        EXPECT_GT(failures, 3u);
    }
}

} // namespace
} // namespace Zantrel
