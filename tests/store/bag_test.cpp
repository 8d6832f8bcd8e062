// SPDX-License-Identifier: Apache-2.0
#include "tests/store/bags.h"

#include "tests/support/failing_allocator.h"
#include "text/utf16_order.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <stdexcept>

namespace {

double Number(Bag const& bag, wchar_t const* name) { return bag.GetValueOr<double>(name, 0); }

TEST(Bag, LooksAtTheFirstEntryOfANameButSetsTheFirstOfAClassAfresh) {
    Bag bag;
    bag.CreateValue<double>(L"n", true);
    auto* second = bag.CreateValue<std::wstring>(L"n", true);
    EXPECT_EQ(bag.GetValuePointer<std::wstring>(L"n", false), nullptr);
    EXPECT_FALSE(bag.HasValue<std::wstring>(L"n"));
    second->SetFirstAuxFlag(false);
    second->SetSecondOverride(true);
    second->SetDeleted(true);
    bag.SetValue<std::wstring>(L"n", L"new");
    EXPECT_EQ(bag.GetNumProperties(), 2u);
    EXPECT_EQ(second->m_value, L"new");
    EXPECT_TRUE(second->GetFirstAuxFlag() && !second->HasSecondOverride() && !second->IsDeleted());
}

TEST(Bag, RevivesADeletedValueOnlyWhenAskedToCreate) {
    Bag bag;
    bag.SetValue<std::int32_t>(L"n", 7);
    bag.FindProperty(L"n")->SetDeleted(true);
    EXPECT_EQ(bag.GetValuePointer<std::int32_t>(L"n", false), nullptr);
    EXPECT_EQ(bag.GetValueOr<std::int32_t>(L"n", -1), -1);
    EXPECT_EQ(*bag.GetValuePointer<std::int32_t>(L"n", true), 7);
}

TEST(Bag, CreatesBehindExistingEntriesOrReplacesOnlyTheFirst) {
    Bag bag;
    auto* first = bag.CreateValue<double>(L"n", false);
    auto* second = bag.CreateValue<double>(L"n", true);
    EXPECT_EQ(bag.FindProperty(L"n"), first);
    auto* third = bag.CreateValue<double>(L"n", false);
    EXPECT_EQ(bag.GetNumProperties(), 2u);
    EXPECT_EQ(bag.FindProperty(L"n"), second);
    EXPECT_EQ((*++bag.begin()).property, third);
}

TEST(Property, CopiesCarryTheDeletedMarkAndNoOtherFlag) {
    PersistentProperty<double> property(1.5);
    property.SetDeleted(true);
    property.SetFirstOverride(true);
    std::unique_ptr<IPersistentProperty> const copy(property.Clone());
    EXPECT_TRUE(copy->IsDeleted() && !copy->HasFirstOverride());
    EXPECT_TRUE(PersistentProperty<double>(1.5).IsEqual(&property));
    EXPECT_FALSE(PersistentProperty<double>(std::nan("")).IsEqual(&property));
    PersistentProperty<std::int32_t> other(1);
    other.Assign(&property);
    EXPECT_FALSE(other.IsDeleted());
}

TEST(Property, OverridesKeepTheirBits) {
    PersistentProperty<bool> property;
    property.SetFirstOverride(false);
    EXPECT_EQ(property.m_overrides, 2u);
    property.SetSecondOverride(true);
    EXPECT_EQ(property.m_overrides, 14u);
    property.SetFirstOverride(true);
    property.SetSecondOverride(false);
    EXPECT_EQ(property.m_overrides, 11u);
}

struct ByUtf16Unit {
    bool operator()(std::wstring const& left, std::wstring const& right) const {
        return Zantrel::Text::Compare(left, right) < 0;
    }
};

/// The entries of a bag in the order of the multi-map that it is to behave like.
using Model = std::multimap<std::wstring, IPersistentProperty*, ByUtf16Unit>;

void ExpectEqual(Bag const& bag, Model const& model) {
    std::vector<std::pair<std::wstring, IPersistentProperty*>> entries;
    for (auto const& [name, property] : bag) {
        entries.emplace_back(name, property);
    }
    EXPECT_EQ(entries, decltype(entries)(model.begin(), model.end()));
    EXPECT_EQ(bag.GetNumProperties(), model.size());
    EXPECT_TRUE(Bag(bag) == bag);
}

TEST(Bag, BehavesLikeAMultiMapAtEverySizeAndInAnyOrder) {
    std::mt19937 random(20240711);
    std::vector<std::wstring> names = {L"Value",      L"",       L"Hidden", L"b",     L"B",
                                       L"\U0001F600", L"\uFFFD", L"Val",    L"Values"};
    for (int i = 0; i < 60; ++i) {
        names.push_back(L"n" + std::to_wstring(random() % 50));
    }
    for (int const steps : {1, 3, 20, 200, 1000}) {
        Bag bag;
        Model model;
        for (int step = 0; step < steps; ++step) {
            std::wstring const& name = names[step == 0 ? 0 : random() % names.size()];
            if (step == 0 || random() % 4 != 0) {
                auto* const added = bag.CreateValue<std::int32_t>(name, true);
                added->m_value = step;
                model.emplace(name, added);
            } else {
                bag.RemoveProperty(name, true);
                if (auto const at = model.lower_bound(name); at != model.end() && at->first == name) {
                    model.erase(at);
                }
            }
        }
        ExpectEqual(bag, model);
        auto const isKept = [](IPersistentProperty* property) {
            return dynamic_cast<PersistentProperty<std::int32_t>&>(*property).m_value % 3 != 0;
        };
        std::erase_if(model, [&](auto const& entry) { return !isKept(entry.second); });
        Keeping::In(bag, isKept);
        ExpectEqual(bag, model);
    }
}

TEST(Bag, TellsNamesApartThatAreOneTextInUtf16) {
    if (sizeof(wchar_t) == 2) {
        GTEST_SKIP() << "there are no such names where wchar_t has 16 bits";
    }
    std::wstring const joined = L"\U0001F600";
    std::wstring const halves = {wchar_t(0xD83D), wchar_t(0xDE00)};
    Bag bag;
    for (int i = 0; i < 40; ++i) {
        bag.SetValue<double>(std::to_wstring(i), i);
    }
    bag.SetValue<double>(joined + halves, 100);
    bag.SetValue<double>(halves + joined, 101);
    EXPECT_EQ(Number(bag, (joined + halves).c_str()), 100);
    EXPECT_EQ(Number(bag, (halves + joined).c_str()), 101);
}

TEST(Bag, CopiesDeeplyAlsoFromWithinItself) {
    Bag bag;
    FillWithEveryClass(bag);
    Bag copy(bag);
    EXPECT_TRUE(copy == bag);
    for (auto const& [name, property] : copy) {
        property->SetDeleted(true);
    }
    for (auto const& [name, property] : Bag(copy)) {
        EXPECT_TRUE(property->IsDeleted()) << name.size();
    }
    copy = bag;
    Inner(copy, L"bag").SetValue<double>(L"Value", 3.0);
    EXPECT_FALSE(copy == bag);

    Inner(bag, L"bag").SetValue<double>(L"deep", 4.0);
    bag = Inner(bag, L"bag");
    EXPECT_EQ(Number(bag, L"deep"), 4.0);
    EXPECT_EQ(Number(bag, L"Value"), 2.5);
    Inner(bag, L"inner") = bag;
    EXPECT_EQ(Inner(bag, L"inner").GetNumProperties(), 3u);
    bag = static_cast<Bag const&>(bag);
    EXPECT_EQ(bag.GetNumProperties(), 3u);
}

TEST(Bag, MergesPerNameAndReplacesSequencesAsAWhole) {
    Bag target;
    FillWithEveryClass(target);
    Bag source(target);
    target.SetValue<double>(L"own", 1.0);
    source.SetValue<double>(L"double", 9.0);
    Inner(source, L"bag").SetValue<double>(L"extra", 5.0);
    Sequence(source, L"sequence").Clear();
    source.SetValue<bool>(L"own", true);
    source.FindProperty(L"bag")->SetDeleted(true);
    target.Merge(source, true);
    EXPECT_TRUE(target.FindProperty(L"bag")->IsDeleted());
    EXPECT_EQ(Number(target, L"double"), 9.0);
    EXPECT_EQ(Number(target, L"own"), 1.0); // another class: a further entry
    EXPECT_EQ(target.GetNumProperties(), 10u);
    Bag& inner = Inner(target, L"bag");
    EXPECT_EQ(inner.GetNumProperties(), 2u);
    EXPECT_EQ(Sequence(target, L"sequence").GetNumProperties(), 0u);

    Inner(inner, L"bag").SetValue<double>(L"innermost", 6.0);
    target.Merge(inner, true); // what is merged lies within what it is merged into
    EXPECT_EQ(Number(inner, L"innermost"), 6.0);
    target.Merge(target, true);
}

TEST(Bag, TakesWhatEndsInTheTaking) {
    using Property = PersistentProperty<Bag>;
    void (*const takings[])(Property&, Property const&) = {
        [](Property& target, Property const& within) { target.Assign(&within); },
        [](Property& target, Property const& within) { target = within; }};
    for (auto const& take : takings) {
        Property target;
        auto* const within = Sequence(target.m_value, L"s").AddProperty().CreateValue<Bag>(L"", true);
        within->SetDeleted(true);
        within->SetSecondOverride(true);
        Sequence(within->m_value, L"s"); // replaces the sequence that all of this stands in
        within->m_value.SetValue<std::wstring>(L"name", L"a text that takes memory of its own");
        take(target, *within);
        EXPECT_TRUE(target.IsDeleted());
        EXPECT_EQ(target.HasSecondOverride(), take == takings[1]);
        EXPECT_EQ(target.m_value.GetValueOr<std::wstring>(L"name", L""),
                  L"a text that takes memory of its own");
        EXPECT_EQ(Sequence(target.m_value, L"s").GetNumProperties(), 0u);
    }
}

TEST(Bag, IsAsItWasWhereMemoryRunsOut) {
    void (*const changes[])(Bag&, Bag const&) = {
        [](Bag& bag, Bag const&) { bag.SetValue<std::wstring>(L"a new name", L"a new value"); },
        [](Bag& bag, Bag const&) { bag.CreateValue<std::wstring>(L"1", false)->m_value.clear(); },
        [](Bag& bag, Bag const&) { bag.AddProperty(L"a new name", new PersistentProperty<double>(1.0)); },
        [](Bag& bag, Bag const& other) { bag = other; },
    };
    Bag other;
    FillWithEveryClass(other);
    for (int const size : {0, 1, 2, 31, 32, 33}) {
        for (auto const& change : changes) {
            SCOPED_TRACE(testing::Message() << size << " entries, change " << &change - changes);
            Bag bag;
            for (int i = 0; i < size; ++i) {
                bag.SetValue<std::wstring>(std::to_wstring(i), L"an old value");
            }
            Bag const before(bag);
            auto const check = [&](std::size_t, bool completed) { EXPECT_EQ(bag == before, !completed); };
            EXPECT_GT(TestSupport::FailEachAllocation([&] { change(bag, other); }, check), 0u);
        }
    }
}

TEST(Bag, LosesNothingWhereMergingRunsOutOfMemoryOrANameEndsWithItsProperty) {
    Bag source;
    FillWithEveryClass(source);
    EXPECT_GT(TestSupport::FailEachAllocation([&] { Bag().Merge(source, true); }), 0u);
    Bag bag;
    for (int i = 0; i < 3; ++i) {
        bag.CreateValue<std::wstring>(L"a name of its own", true)->m_value = L"a name of its own";
    }
    bag.RemoveProperty(*bag.GetValuePointer<std::wstring>(L"a name of its own", false), false);
    EXPECT_TRUE(bag.IsEmpty());
}

TEST(Sequence, IsNotExchangedWithOneWithinIt) {
    Bags outer;
    Bags& inner = Sequence(outer.AddProperty(), L"inner");
    inner.AddProperty();
    outer.Swap(inner);
    inner.Swap(outer);
    EXPECT_EQ(&outer.GetProperty(0).GetValuePointer<Bags>(L"inner", false)->GetProperty(0),
              &inner.GetProperty(0));
}

TEST(Sequence, KeepsItsBagsInPlaceWhileItGrows) {
    Bags sequence;
    std::vector<Bag*> bags(2000);
    for (Bag*& bag : bags) {
        bag = &sequence.AddProperty();
    }
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(&sequence.GetProperty(i), bags[static_cast<std::size_t>(i)]);
    }
    EXPECT_THROW(sequence.GetProperty(2000), std::out_of_range);
    EXPECT_THROW(sequence.GetProperty(-1), std::out_of_range);
}

TEST(Sequence, MovesAndRemovesWhatItsBagsHoldAsAVectorDoes) {
    Bags sequence;
    std::vector<std::int32_t const*> values; // each keeps its address, and tells its number
    std::mt19937 random(7);
    for (std::int32_t turn = 0; turn < 6000; ++turn) {
        std::size_t const size = values.size();
        if (size == 0 || random() % 7 < (turn < 4000 ? 4u : 2u)) {
            Bag& bag = sequence.AddProperty();
            bag.SetValue<std::int32_t>(L"i", turn);
            Sequence(bag, L"below").AddProperty().SetValue<std::int32_t>(L"i", turn);
            values.push_back(bag.GetValuePointer<std::int32_t>(L"i", false));
        } else {
            auto const from = static_cast<std::int32_t>(random() % size);
            auto const to = static_cast<std::int32_t>(random() % size);
            auto const* const value = values[static_cast<std::size_t>(from)];
            values.erase(values.begin() + from);
            if (random() % 2 != 0) {
                sequence.RemoveProperty(from);
            } else {
                sequence.MoveProperty(from, to);
                values.insert(values.begin() + to, value);
            }
        }
        ASSERT_EQ(sequence.GetNumProperties(), values.size());
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        Bag& bag = sequence.GetProperty(static_cast<std::int32_t>(i));
        ASSERT_EQ(bag.GetValuePointer<std::int32_t>(L"i", false), values[i]);
        ASSERT_EQ(Sequence(bag, L"below").GetProperty(0).GetValueOr<std::int32_t>(L"i", -1), *values[i]);
    }
    EXPECT_TRUE(Bags(sequence) == sequence);
    auto const end = static_cast<std::int32_t>(values.size());
    EXPECT_THROW(sequence.MoveProperty(0, end), std::out_of_range);
    EXPECT_THROW(sequence.MoveProperty(-1, 0), std::out_of_range);
    EXPECT_THROW(sequence.RemoveProperty(end), std::out_of_range);
    while (sequence.GetNumProperties() != 0) {
        sequence.RemoveProperty(0);
    }
    EXPECT_TRUE(sequence == Bags());
    EXPECT_THROW(sequence.RemoveProperty(0), std::out_of_range);
}

} // namespace
