// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include "tests/support/failing_allocator.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Zantrel {
namespace {

using Names = std::vector<std::wstring>;

TEST(ProfileList, CopiesItsDefaultProfileOrTakesTheDefaultsOfTheLayoutAndClearLeavesIt) {
    TestDatabase database;
    ParameterNode machines = database.At(database.layout.machines);
    machines.SetDisableAddRemove(true);
    machines.GetDefault().Get(L"Speed").SetValue(99.0);
    machines.AddProfile(L"fresh", false);
    machines.AddProfile(L"copy", true).Get(L"Speed").SetValue(1.0);
    for (bool const copyDefault : {true, false}) { // further ones, which are never found
        machines.AddProfile(L"::DefaultProfile::", copyDefault).Get(L"Speed").SetValue(2.0);
    }
    EXPECT_EQ(Dump(machines), "!a<{Speed=99}; 'copy'{Speed=1} 'fresh'{Speed=30}>");
    for (int i = 0; i < 50; ++i) {
        machines.AddProfile(i % 2 == 0 ? L"DisableAddRemove" : L"A", true);
    }
    machines.Clear();
    EXPECT_EQ(Dump(machines), "!a<{Speed=99};>");
    machines.m_pProperties->RemoveProperty(L"::DefaultProfile::", false);
    machines.AddProfile(L"no model", true);
    EXPECT_EQ(Dump(machines), "!a<-; 'no model'{Speed=30}>");
    EXPECT_EQ(MisuseOf([&] { machines.GetProfile(L"no model").AddProfile(L"Inner", true); }),
              "GetDefault requires container node");
    EXPECT_EQ(Dump(machines.GetProfile(L"no model").GetProfile(L"Inner")), "{Speed=30}") << "it stays";
}

TEST(ProfileList, ListsItsProfilesByCodeUnitAndFindsTheFirstOfAName) {
    TestDatabase database;
    ParameterNode machines = database.At(database.layout.machines);
    EXPECT_EQ(ProfilesOf(machines), Names());
    // U+1F600 is D83D DE00 in UTF-16, so it stands before U+FFFD, but behind U+D7FF.
    for (wchar_t const* name : {L"\uFFFD", L"a", L"\U0001F600", L"\uD7FF", L"", L"aa", L"B"}) {
        machines.AddProfile(name, true);
    }
    ParameterNode const first = machines.GetProfile(L"B");
    EXPECT_NE(machines.AddProfile(L"B", true).m_pProperties, first.m_pProperties);
    machines.SetDisableAddRemove(true); // a flag is no profile
    Names const names{L"", L"B", L"B", L"a", L"aa", L"\uD7FF", L"\U0001F600", L"\uFFFD"};
    EXPECT_EQ(ProfilesOf(machines), names);
    EXPECT_EQ(machines.GetSize(), names.size());

    ParameterNode const found = machines.GetProfile(L"B");
    EXPECT_EQ(found.m_pProperties, first.m_pProperties);
    EXPECT_EQ(machines.GetProfile(nullptr).m_pProperties, machines.GetDefault().m_pProperties);
    EXPECT_EQ(machines.GetProfile(L"b").m_pNode, database.layout.machines);
    EXPECT_FALSE(machines.GetProfile(L"b").IsValid() || machines.HasProfile(L"b") ||
                 machines.HasProfile(nullptr) || found.m_isContainer);
    EXPECT_TRUE(machines.HasProfile(L"B") && machines.HasProfile(L"::DefaultProfile::"));
    machines.m_pProperties->FindProperty(L"B")->SetDeleted(true);
    EXPECT_FALSE(machines.GetProfile(L"B").IsValid() || machines.HasProfile(L"B"));
    EXPECT_EQ(ProfilesOf(machines), names) << "the listing doesn't look at the mark";
}

TEST(List, CopiesItsTemplateOrTakesTheDefaultsOfTheLayoutAndClearLeavesIt) {
    TestDatabase database;
    ParameterNode list = database.At(database.layout.ranges);
    list.GetDefault().Get(L"Begin").SetValue(8.0);
    list.GetDefault().Get(L"Steps").AddListNode(true);
    list.AddListNode(true);
    ParameterNode const fresh = list.AddListNode(false);
    std::string const model = "{Begin=8 Steps[{Width=7}; {Width=7} {Width=7}]}",
                      plain = " {Begin=1.5 Steps[{Width=7}; {Width=7}]}";
    EXPECT_EQ(Dump(list), '[' + model + ';' + plain + plain + ' ' + model + plain + ']');
    EXPECT_EQ(fresh.m_pParentProperties, list.m_pProperties);
    EXPECT_EQ(list.GetListNode(3).m_pProperties, fresh.m_pProperties);
    EXPECT_EQ(list.GetListNode(4294967299).m_pProperties, fresh.m_pProperties) << "the low 32 bits count";
    EXPECT_THROW(list.GetListNode(4), std::out_of_range);
    list.SetHidden(true);
    list.m_pProperties->FindProperty(L"Value")->SetDeleted(true); // a mark that operations on items take away
    list.Clear();
    EXPECT_EQ(Dump(list), "!h[" + model + ";]");
    EXPECT_FALSE(list.m_pProperties->FindProperty(L"Value")->IsDeleted());

    ParameterNode counts = database.At(database.layout.counts); // whose items are values
    counts.AddListNode(true).SetValue(std::int32_t(6));
    counts.AddListNode(false);
    EXPECT_EQ(Dump(counts), "[=5; =6 =5]");
}

TEST(List, AnItemTakenForItsListGetsASequenceOfItsOwn) {
    TestDatabase database;
    ParameterNode const item = database.At(database.layout.ranges).GetListNode(0);
    EXPECT_THROW(item.GetListNode(0), std::out_of_range);
    EXPECT_EQ(Shape(*item.m_pProperties),
              L"Begin(Value) Steps(::DefaultProfile::(Width(Value)) Value[Width(Value)]) Value");
    item.AddListNode(true); // no template here: the layout's defaults
    EXPECT_EQ(Dump(item.GetListNode(0)), "{Begin=1.5 Steps[{Width=7}; {Width=7}]}");
    EXPECT_EQ(database.At(database.layout.ranges).GetSize(), 2u);
}

TEST(Containers, GainAWholeItemOrNoneWhereMemoryRunsOut) {
    TestDatabase database;
    ParameterNode list = database.At(database.layout.ranges);
    ParameterNode machines = database.At(database.layout.machines);
    list.GetDefault().m_pProperties->SetValue<std::wstring>(L"of the host", L"a value that takes memory");
    for (int way = 0; way < 4; ++way) {
        ParameterNode& container = way < 2 ? list : machines;
        auto const add = [&] {
            return way < 2 ? list.AddListNode(way == 0)
                           : machines.AddProfile(L"a name that takes memory", way == 2);
        };
        container.Clear(); // so that growth is needed
        PersistentProperties const whole = *add().m_pProperties;
        container.Clear();
        ParameterNode added;
        auto const look = [&](std::size_t, bool completed) {
            EXPECT_EQ(container.GetSize(), completed ? 1u : 0u);
            EXPECT_TRUE(!completed || *added.m_pProperties == whole);
        };
        EXPECT_GT(TestSupport::FailEachAllocation([&] { added = add(); }, look), 3u);
    }
}

} // namespace
} // namespace Zantrel
