// SPDX-License-Identifier: Apache-2.0
#include <zantrel/io/mfile.h>
#include <zantrel/store/external_properties.h>

#include "tests/store/bags.h"
#include "tests/support/failing_allocator.h"

#include <gtest/gtest.h>

#include <iterator>
#include <memory>

// Bags in bags, far deeper than any stack would let a recursion go.

namespace {

Bag& InTree(Bag& bag) {
    for (int i = 0; i < 40; ++i) {
        bag.SetValue<std::int32_t>(std::to_wstring(i), i);
    }
    return *bag.GetValuePointer<Bag>(L"2 and a half", true);
}

/// The ways in which a bag can hold another one, by the form of the outer one and the class of what it holds.
Bag& (*const StepsDown[])(Bag&) = {
    [](Bag& bag) -> Bag& { return *bag.GetValuePointer<Bag>(L"Value", true); },
    [](Bag& bag) -> Bag& {
        bag.SetValue<std::wstring>(L"behind", L"a text");
        return *bag.GetValuePointer<KelAM::SubProperties>(L"b", true);
    },
    [](Bag& bag) -> Bag& { return bag.GetValuePointer<Bags>(L"Value", true)->AddProperty(); },
    [](Bag& bag) -> Bag& {
        auto& bags = *bag.GetValuePointer<Bags>(L"bags", true);
        Bag& first = bags.AddProperty();
        bags.AddProperty().SetValue<bool>(L"Value", true);
        return first;
    },
    [](Bag& bag) -> Bag& { return *bag.GetValuePointer<KelAM::ExternalProperties>(L"an object", true); },
};

Bag& Innermost(Bag& outer, int levels) {
    Bag* bag = &outer;
    for (int level = 0; level < levels; ++level) {
        auto const step =
            level % 1000 == 999 ? InTree : StepsDown[level % static_cast<int>(std::size(StepsDown))];
        bag = &step(*bag);
    }
    return *bag;
}

TEST(NestedBags, AreCopiedComparedMergedAndEndedAtAnyDepth) {
    constexpr int Levels = 50000;
    Bag deep;
    Bag& innermost = Innermost(deep, Levels);
    innermost.SetValue<double>(L"Value", 1.0);
    Bag copy(deep);
    EXPECT_TRUE(copy == deep);
    innermost.SetValue<double>(L"Value", 2.0);
    EXPECT_FALSE(copy == deep);
    copy.Merge(deep, true);
    EXPECT_TRUE(copy == deep);

    std::unique_ptr<IPersistentProperty> const property(PersistentProperty<Bag>(deep).Clone());
    EXPECT_TRUE(property->IsEqual(std::make_unique<PersistentProperty<Bag>>(copy).get()));
    MFile file;
    EXPECT_THROW(dynamic_cast<PersistentProperty<Bag>&>(*property).Write(file), std::runtime_error);

    Bags here;
    Bags there;
    here.AddProperty() = deep;
    here.Swap(there);
    EXPECT_EQ(here.GetNumProperties(), 0u);
    EXPECT_TRUE(there.GetProperty(0) == copy);
    there.Clear();
}

TEST(NestedBags, AreCopiedAndRenamedWholeOrNotAtAll) {
    Bag bag;
    Innermost(InTree(bag), 12).SetValue<std::wstring>(L"Value", L"the innermost of all values");
    auto const copyAndRename = [&bag] {
        Bags here, there;
        here.AddProperty() = bag;
        try {
            here.Swap(there);
        } catch (std::bad_alloc const&) {
            EXPECT_TRUE(here.GetProperty(0) == bag && there.GetNumProperties() == 0);
            throw;
        }
        EXPECT_TRUE(there.GetProperty(0) == bag);
    };
    EXPECT_GT(TestSupport::FailEachAllocation(copyAndRename), 0u);
}

} // namespace
