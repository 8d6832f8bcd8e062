// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"
#include "tests/support/comma_locale.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/generated_database.h"

#include <zantrel/database/walk.h>
#include <zantrel/parameter_files/generic_parameter_file.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <istream>
#include <memory>
#include <random>
#include <streambuf>
#include <string>
#include <utility>

// Bags of a database share what their layout says once. None of that may show.

namespace Zantrel {
namespace {

using Bag = PersistentProperties;

struct DeeperLayout : TestLayout {
    DeeperLayout() {
        machines->AddNode(L"Axes")->AddNode(L"X", Double, L"2,5");
        machines->AppendNode(new LayoutNode(L"CanBeDeleted", Int, L"3")); // as a flag is called
        LayoutNode* const names = machines->AddNode(L"Names");
        for (wchar_t const* name : {L"\uFFFD", L"\U0001F600", L"\U0001F601", L"\uD7FF", L"twice", L"twice"}) {
            names->AddNode(name, String, name);
        }
    }
};

/// A new profile and item of a database, and a new database.
std::string Additions(ParameterDatabase& database) {
    ParameterNode const editor = database.GetProfileEditor();
    ParameterNode machines = editor.Get(L"Machines");
    ParameterNode const profile = machines.AddProfile(L"new", false);
    ParameterNode const item = editor.Get(L"Ranges").AddListNode(false);
    ParameterDatabase other(database.GetLayout());
    return Dump(profile) + Dump(item) + Dump(other);
}

TEST(Shapes, GoWithTheLayoutWhenItChanges) {
    std::function<void(DeeperLayout&)> const changes[] = {
        [](DeeperLayout& layout) { layout.speed->m_defaultValue = L"31"; },
        [](DeeperLayout& layout) { layout.machines->AddNode(L"Late", Int, L"4"); },
        [](DeeperLayout& layout) { layout.machines->GetParentNode()->AppendNode(layout.speed); },
        [](DeeperLayout& layout) { layout.machines->MoveNodeTo(layout.machines->At(1).Back(), 0); },
        [](DeeperLayout& layout) { layout.machines->MoveNodeTo(&layout.machines->At(1), 0); },
        [](DeeperLayout& layout) { layout.machines->MoveNodeTo(layout.speed, 9); }, // the last one twice
        [](DeeperLayout& layout) { layout.speed->m_type = String; },
        [](DeeperLayout& layout) { layout.speed->SetList(true, L"Item", L"")->SetMultiplicity(2); },
        [](DeeperLayout& layout) { layout.speed->m_name = L"Zoom"; },
        [](DeeperLayout& layout) { layout.machines->At(1).At(0).m_name = L"Y"; },
        [](DeeperLayout& layout) { layout.machines->At(1).At(0).m_type = StandardOptions; },
        [](DeeperLayout& layout) { layout.machines->m_type = Int; },
        [](DeeperLayout& layout) { layout.steps->SetMultiplicity(3); },
        [](DeeperLayout& layout) { layout.option->m_optionValues.front() = L"Slow"; },
        [](DeeperLayout& layout) { layout.step->AddNode(L"Below a number", Int, L"1"); },
    };
    for (auto const& change : changes) {
        SCOPED_TRACE(&change - changes);
        DeeperLayout before, after;
        ParameterDatabase database(&before), untouched(&before);
        change(before);
        change(after);
        ParameterDatabase expected(&after);
        EXPECT_EQ(Additions(database), Additions(expected));
        EXPECT_TRUE(ParameterDatabase(untouched).IsEqual(untouched));
    }
}

TEST(Shapes, AnswerByTheNamesThatNodesHaveNow) {
    for (int other = 1; other < 20; ++other) {
        ParameterLayout layout;
        LayoutNode& group = *layout.m_profileEditor->AddNode(L"Group");
        for (int child = 0; child < 20; ++child) {
            group.AddNode((L"Child" + std::to_wstring(child)).c_str(), Int, std::to_wstring(child).c_str());
        }
        ParameterDatabase database(&layout);
        ParameterNode const values = database.GetProfileEditor().Get(L"Group");
        std::swap(group.At(0).m_name, group.At(static_cast<std::size_t>(other)).m_name);
        EXPECT_EQ(values.Get(L"Child0").m_pNode, &group.At(0)) << "as it was appended";
        EXPECT_EQ(values.Get(L"Child0").GetValue<std::int32_t>(), 0);
        EXPECT_THROW(values.Get(L"New"), ParameterMisuse);
        group.At(0).m_name = L"New";
        EXPECT_TRUE(values.m_pProperties->HasValue<Bag>(L"New"));
        group.At(2).m_name = group.At(1).m_name; // so that a look-up finds the first of them
        for (Walk<ParameterNode> walk(values); walk.Next();) {
            EXPECT_EQ(walk.Node().m_pProperties,
                      walk.Depth() == 0 ? values.m_pProperties : values.Get(&walk.Layout()).m_pProperties);
        }
    }
}

TEST(Shapes, GoWithTheLocale) {
    DeeperLayout layout;
    ParameterDatabase classic(&layout);
    std::string const before = Additions(classic);
    TestSupport::CommaLocale const comma;
    DeeperLayout fresh;
    ParameterDatabase expected(&fresh);
    std::string const after = Additions(expected);
    EXPECT_NE(before, after);
    EXPECT_EQ(Additions(classic), after);
}

TEST(Shapes, KeepTheFlagOfAProfileBesideAChildOfItsName) {
    DeeperLayout layout;
    ParameterDatabase database(&layout);
    ParameterNode machines = database.GetProfileEditor().Get(L"Machines");
    ParameterNode profile = machines.AddProfile(L"p", false);
    Bag const plain(*profile.m_pProperties);
    for (bool const value : {false, true}) {
        profile.SetCanBeDeleted(value);
        EXPECT_FALSE(profile.GetCanBeDeleted()) << "the child comes first";
        EXPECT_EQ(profile.m_pProperties->GetNumProperties(), 5u);
        EXPECT_TRUE(Bag(*profile.m_pProperties) == *profile.m_pProperties);
        EXPECT_FALSE(plain == *profile.m_pProperties);
    }
    ParameterDatabase copy(database);
    EXPECT_TRUE(copy.IsEqual(database));
    profile.m_pProperties->RemoveProperty(L"CanBeDeleted", true);
    EXPECT_TRUE(profile.GetCanBeDeleted());
    EXPECT_FALSE(copy.IsEqual(database));
}

/// Does one thing that a host may do with an entry of that name to all of these bags alike.
void ChangeEntry(std::mt19937& random, std::wstring const& name, std::vector<Bag*> const& bags) {
    unsigned const what = static_cast<unsigned>(random() % 7);
    for (Bag* const bag : bags) {
        IPersistentProperty* const property = bag->FindProperty(name);
        if (what < 2) {
            bag->RemoveProperty(name, what == 0);
        } else if (what == 2) {
            bag->AddProperty(name, property != nullptr ? property->Clone() : nullptr);
        } else if (what == 3) {
            bag->SetValue<bool>(name, true);
        } else if (what == 4) {
            bag->CreateValue<Bag>(name, false)->m_value.SetValue<double>(L"Value", 1.0);
        } else if (property != nullptr && what == 5) {
            property->SetDeleted(!property->IsDeleted());
        } else if (auto* inner = PropertyCast<Bag>(property)) {
            inner->m_value.RemoveProperty(L"Value", true);
            inner->m_value.SetValue<std::wstring>(L"Value", L"another class");
        }
    }
}

TEST(Shapes, LetAHostTakeABagApartAndPutItTogether) {
    DeeperLayout layout;
    std::wstring const names[] = {L"Speed", L"Axes",    L"CanBeDeleted", L"Names", L"twice",
                                  L"X",     L"::new::", L"\U0001F600",   L"Hidden"};
    for (unsigned seed = 1; seed <= 60; ++seed) {
        std::mt19937 random(seed);
        ParameterDatabase database(&layout);
        ParameterNode profile = database.GetProfileEditor().Get(L"Machines").AddProfile(L"p", false);
        profile.SetCanBeDeleted(seed % 2 == 0);
        Bag own(*profile.m_pProperties); // that has no shape
        for (int step = 0; step < 12; ++step) {
            bool const isBelow = random() % 2 == 0;
            std::vector<Bag*> bags;
            for (Bag* const bag : {profile.m_pProperties, &own}) {
                Bag* const below = isBelow ? bag->GetValuePointer<Bag>(L"Names", false) : nullptr;
                bags.push_back(below != nullptr ? below : bag);
            }
            ChangeEntry(random, names[random() % std::size(names)], bags);
            ASSERT_EQ(Shape(*profile.m_pProperties), Shape(own)) << seed;
            ASSERT_TRUE(own == *profile.m_pProperties) << seed;
        }
        ParameterDatabase copy(database), assigned(&layout);
        assigned = copy;
        EXPECT_TRUE(assigned.IsEqual(database)) << seed;
        EXPECT_EQ(Dump(assigned), Dump(database)) << seed;
    }
}

/// Gives one text, and another one after something was done.
struct InterruptedText : std::streambuf {
    InterruptedText(std::string before, std::function<void()> what, std::string after)
        : texts{std::move(before), std::move(after)}, between(std::move(what)) {}

    int underflow() override {
        if (given == texts.size()) {
            return traits_type::eof();
        }
        if (given == 1) {
            between();
        }
        std::string& text = texts[given++];
        setg(text.data(), text.data(), text.data() + text.size());
        return traits_type::to_int_type(text.front());
    }

    std::array<std::string, 2> texts;
    std::function<void()> between;
    std::size_t given = 0;
};

TEST(Shapes, MayBeLeftWhileABagIsRead) {
    std::pair<void (*)(Bag&), double> const rows[] = {
        {[](Bag& profile) { profile.RemoveProperty(L"Names", true); }, 8},
        {[](Bag& profile) { profile.FindProperty(L"Axes")->SetDeleted(true); }, 2},
    };
    std::string const far(200'000, ' '); // beyond what is read ahead
    for (auto const& [change, expected] : rows) {
        DeeperLayout layout;
        ParameterDatabase database(&layout);
        ParameterNode const machines = database.GetProfileEditor().Get(L"Machines");
        InterruptedText text(
            "<R><Machines><Machine Name='p'><Speed>7</Speed>" + far,
            [&, change = change] { change(*machines.GetProfile(L"p").m_pProperties); },
            "<Axes><X>8</X><Speed>9</Speed></Axes></Machine></Machines></R>");
        std::istream in(&text);
        ReadReport report;
        EXPECT_TRUE(ReadStream(database, in, &report));
        ParameterNode const profile = machines.GetProfile(L"p");
        profile.m_pProperties->FindProperty(L"Axes")->SetDeleted(false);
        EXPECT_EQ(profile.Get(L"Axes").Get(L"X").GetValue<double>(), expected);
        EXPECT_EQ(profile.Get(L"Speed").GetValue<double>(), 7);
    }
}

TEST(Shapes, HoldTheLeavesOfAGroupInOneAllocation) {
    ParameterLayout layout;
    LayoutNode* const list = layout.m_profileEditor->AddNode(L"L")->SetList(true, L"I", L"");
    LayoutNode* const profiles = layout.m_profileEditor->AddNode(L"P")->SetProfile(true, L"E");
    for (std::size_t child = 0; child < 40; ++child) {
        (child % 8 == 0 ? list : profiles)->AddNode(std::to_wstring(child).c_str(), Int, L"1");
    }
    ParameterDatabase database(&layout);
    ParameterNode const editor = database.GetProfileEditor();
    ParameterNode lists = editor.Get(L"L"), profile;
    lists.AddListNode(false);
    std::unique_ptr<ParameterDatabase> made, copy;
    Bag own;
    for (wchar_t const* const name : {L"a", L"b", L"c"}) {
        own.GetValuePointer<Bag>(name, true)->SetValue<std::int32_t>(L"Value", 1);
    }
    auto const allocations = [](auto const& make) {
        std::ptrdiff_t const before = TestSupport::LiveAllocations();
        make();
        return TestSupport::LiveAllocations() - before;
    };
    EXPECT_EQ(allocations([&] { made = std::make_unique<ParameterDatabase>(&layout); }), 8);
    EXPECT_EQ(allocations([&] { copy = std::make_unique<ParameterDatabase>(*made); }), 7);
    EXPECT_EQ(allocations([&] { lists.AddListNode(false); }), 1);
    profile = editor.Get(L"P").AddProfile(L"p", false);
    EXPECT_EQ(allocations([&] { profile.SetCanBeDeleted(false); }), 0);
    EXPECT_EQ(allocations([&] { *own.GetValuePointer<Bag>(L"b", true) = own; }), 3) << "two of the names";
    list->AddNode(L"f", Int, L"1");
    EXPECT_EQ(allocations([&] { lists.AddListNode(false); }), 3) << "by names";
    profile.m_pProperties->RemoveProperty(L"7", false);
    EXPECT_EQ(profile.m_pProperties->GetNumProperties(), 35u);
}

TEST(Shapes, OutliveTheLayoutsLaterOnesAndTheDatabaseThatMadeThem) {
    DeeperLayout layout, other;
    auto first = std::make_unique<ParameterDatabase>(&layout);
    ParameterDatabase copy(*first), assigned(&other);
    layout.machines->AddNode(L"Late", Int, L"4");
    ParameterDatabase second(&layout);
    assigned = *first;
    first = std::make_unique<ParameterDatabase>(second);
    first->Format(); // behind the content that stands
    layout.machines->AddNode(L"Later", Int, L"5");
    ParameterDatabase const third(&layout);
    for (ParameterDatabase* old : {&copy, &assigned}) { // the second has its shapes alone
        old->GetProfileEditor().Get(L"Counts").AddListNode(true);
        EXPECT_EQ(old->GetProfileEditor().Get(L"Counts").GetSize(), 1u);
        EXPECT_FALSE(old->GetProfileEditor().Get(L"Machines").GetDefault().Get(L"Later").IsValid());
        copy = third;
    }
    EXPECT_EQ(Dump(*first), Dump(second));
    EXPECT_TRUE(copy.IsEqual(third));
}

} // namespace
} // namespace Zantrel
