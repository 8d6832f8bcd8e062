// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/layout_node.h>

#include <zantrel/text/string_conversion.h>

#include "tests/support/failing_allocator.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <vector>

namespace Zantrel {
namespace {

using TestSupport::LeakCheck;

using Owned = std::unique_ptr<LayoutNode>;

Owned Root(std::initializer_list<wchar_t const*> children) {
    Owned root(LayoutNode::MakeNode(L"root", Group));
    for (wchar_t const* const child : children) {
        root->AddNode(child);
    }
    return root;
}

std::wstring Shown(LayoutNode const& node) {
    std::wstring names;
    for (LayoutNode const* const child : node.m_children) {
        names += child->m_name;
    }
    return names;
}

LayoutNode* Find(LayoutNode const& node, wchar_t const* name) { return node.m_children.Find(name); }

/// Tells when it ends, and how many children it has then.
struct Mortal : LayoutNode {
    Mortal(wchar_t const* name, std::wstring& deaths) : LayoutNode(name, Group, nullptr), m_deaths(deaths) {}
    ~Mortal() override { m_deaths += m_name + std::to_wstring(Size()) + L" "; }
    std::wstring& m_deaths;
};

TEST(LayoutNode, AnEmptyNodeHasNoChildAtAll) {
    LayoutNode node(nullptr, Group, nullptr);
    EXPECT_EQ(node.Size(), 0U);
    EXPECT_EQ(node.Back(), nullptr);
    EXPECT_EQ(node.GetNode(static_cast<wchar_t const*>(nullptr)), nullptr);
    EXPECT_THAT([&] { node.At(0); }, testing::ThrowsMessage<std::out_of_range>("invalid vector subscript"));
}

TEST(LayoutNode, OnlyTheConstructorGivesADistanceItsUnit) {
    EXPECT_EQ(LayoutNode(L"a", Distance, nullptr).GetPostfix(), L"mm");
    EXPECT_EQ(LayoutNode(L"a", Double, nullptr).SetType(Distance)->GetPostfix(), L"");
}

TEST(LayoutNode, AppendingGivesTheParentAndAddingTheChild) {
    Owned const root = Root({});
    root->m_childrenWriteToParameterFile = false;
    LayoutNode* const a = root->AppendNode(L"a")->AppendNode(L"b")->At(0).AddNode(L"c")->GetParentNode();
    EXPECT_EQ(Shown(*root), L"ab");
    EXPECT_EQ(a, root->GetNode(L"a"));
    EXPECT_EQ(a->Parent(), root.get());
    EXPECT_FALSE(a->m_writeToParameterFile);
    EXPECT_TRUE(a->At(0).m_writeToParameterFile);
}

TEST(LayoutNode, TheIndexKnowsTheLaterOfTwoNamesakes) {
    Owned const root = Root({L"a", L"a"});
    EXPECT_EQ(root->Size(), 2U);
    EXPECT_EQ(root->GetNode(L"a"), &root->At(1));
}

TEST(LayoutNode, MovingFollowsTheRuleOfTheNewListAndFreesEachNodeOnce) {
    using Row = std::tuple<wchar_t const*, std::size_t, wchar_t const*>;
    for (auto const& [child, index, shown] :
         {Row{L"c", 0, L"cAB"}, Row{L"A", 0, L"ABc"}, Row{L"A", 1, L"BAc"}, Row{L"A", 2, L"Bcc"},
          Row{L"A", 9, L"Bcc"}, Row{L"B", 2, L"Acc"}, Row{L"c", 1, L"AcB"}, Row{L"c", 2, L"ABc"},
          Row{L"c", 3, L"ABc"}}) {
        SCOPED_TRACE(testing::Message() << child << " to " << index);
        LeakCheck const leaks;
        Owned const owner = Root({L"A", L"B", L"c"});
        LayoutNode& root = *owner;
        root.MoveNodeTo(root.GetNode(child), index);
        EXPECT_EQ(Shown(root), shown);
        for (wchar_t const* const name : {L"A", L"B", L"c"}) {
            ASSERT_NE(root.GetNode(name), nullptr);
            EXPECT_EQ(root.GetNode(name)->m_name, name);
        }
        EXPECT_EQ(Shown(LayoutNode(root)), shown);
        root.MoveNodeTo(root.GetNode(L"A"), 0);
        EXPECT_EQ(&root.At(0), root.GetNode(L"A")) << "even when it was dropped";
    }
}

TEST(LayoutNode, MovingSomethingElseThanAChildChangesNothing) {
    Owned const root = Root({L"a", L"b"});
    LayoutNode const* const grandchild = root->At(0).AddNode(L"g");
    for (LayoutNode const* const node :
         std::initializer_list<LayoutNode const*>{grandchild, root.get(), nullptr}) {
        root->MoveNodeTo(node, 0);
    }
    EXPECT_EQ(Shown(*root), L"ab");
}

TEST(LayoutNode, EachNodeHasOneOwnerWhateverIsAppended) {
    LeakCheck const leaks;
    Owned const root = Root({L"a", L"b"});
    LayoutNode* const a = Find(*root, L"a");
    LayoutNode* const b = Find(*root, L"b");
    root->AppendNode(static_cast<LayoutNode*>(nullptr))->AppendNode(root.get());
    a->AppendNode(root.get())->AppendNode(a);
    EXPECT_EQ(Shown(*root) + Shown(*a), L"ab") << "neither nothing nor a node above";
    root->AppendNode(a);
    EXPECT_EQ(Shown(*root), L"aba") << "listed once more";
    b->AppendNode(*a);
    EXPECT_EQ(Shown(*root) + Shown(*b), L"ba") << "gone to another parent";
    EXPECT_EQ(a->Parent(), b);
    EXPECT_EQ(root->GetNode(L"a"), nullptr);
    b->m_children.Clear();
    EXPECT_EQ(Shown(*root), L"b");
}

TEST(LayoutNode, AChildThatEndsFirstLeavesItsNameToTheOneBefore) {
    LeakCheck const leaks;
    Owned const root = Root({L"a", L"b", L"a"});
    {
        LayoutNode local(L"a", Group, nullptr);
        root->AppendNode(local);
        EXPECT_EQ(root->GetNode(L"a"), &local);
    }
    EXPECT_EQ(root->GetNode(L"a"), &root->At(2));
    delete root->Back();
    EXPECT_EQ(root->GetNode(L"a"), &root->At(0));
    delete &root->At(0);
    EXPECT_EQ(root->GetNode(L"a"), nullptr);
    EXPECT_EQ(Shown(*root->AppendNode(L"c")), L"bc");
    delete root->Back();
    delete root->Back();
    std::size_t hint = 0;
    EXPECT_EQ(root->FindChildUtf8("a", hint), nullptr);
}

/// A list with its index, as plainly as can be.
struct PlainList {
    struct Child {
        LayoutNode* node;
        std::wstring name; ///< under which it was appended last
    };

    void Append(LayoutNode* node) {
        auto const known = std::find_if(owned.begin(), owned.end(), [&](auto& c) { return c.node == node; });
        (known == owned.end() ? owned.emplace_back(Child{node, L""}) : *known).name = node->m_name;
        index[node->m_name] = node;
    }
    void Release(LayoutNode* node) {
        std::erase_if(owned, [&](Child const& child) { return child.node == node; });
        for (auto& entry : index) {
            auto const before = std::find_if(owned.rbegin(), owned.rend(),
                                             [&](auto& child) { return child.name == entry.first; });
            if (entry.second == node) {
                entry.second = before != owned.rend() ? before->node : nullptr;
            }
        }
    }

    std::vector<Child> owned;
    std::map<std::wstring, LayoutNode*> index;
};

TEST(LayoutNode, WhateverComesAndGoesTheIndexIsThatOfAPlainList) {
    LeakCheck const leaks;
    Owned const roots[] = {Root({}), Root({})};
    PlainList lists[2];
    std::mt19937 random(1);
    auto const below = [&](std::size_t end) { return random() % end; };
    for (int step = 0; step < 5000; ++step) {
        std::size_t const at = below(2), to = below(2);
        std::wstring const name(1, static_cast<wchar_t>(L'a' + below(5)));
        if (lists[at].owned.empty() || below(3) == 0) {
            lists[at].Append(roots[at]->AddNode(name.c_str()));
        } else if (LayoutNode* const child = lists[at].owned[below(lists[at].owned.size())].node;
                   below(3) == 0) {
            lists[at].Release(child);
            delete child;
        } else {
            child->m_name = below(2) == 0 ? name : child->m_name;
            roots[to]->AppendNode(child);
            if (to != at) {
                lists[at].Release(child);
            }
            lists[to].Append(child);
        }
        for (std::size_t const which : {std::size_t{0}, std::size_t{1}}) {
            for (auto const& [key, found] : lists[which].index) {
                ASSERT_EQ(roots[which]->GetNode(key.c_str()), found) << "step " << step;
            }
        }
    }
}

TEST(LayoutNode, ALongListGivesItsChildrenAwayOneByOne) {
    constexpr std::size_t Many = 8'000;
    Owned const root = Root({}), other = Root({});
    for (std::size_t i = 0; i < Many; ++i) {
        root->AddNode(i % 2 == 0 ? L"same" : std::to_wstring(i).c_str());
    }
    while (root->Size() > Many / 2) {
        other->AppendNode(&root->At(0));
    }
    while (root->Size() != 0) {
        delete root->Back();
    }
    EXPECT_EQ(other->Size(), Many / 2);
    EXPECT_EQ(root->GetNode(L"same"), nullptr);
}

TEST(LayoutNode, ChildrenEndInListOrderEachBeforeItsOwn) {
    std::wstring deaths;
    {
        Owned const root(new Mortal(L"r", deaths));
        for (wchar_t const* const name : {L"a", L"b"}) {
            root->AppendNode(new Mortal(name, deaths));
            root->Back()->AppendNode(new Mortal(L"x", deaths))->AppendNode(new Mortal(L"y", deaths));
            root->Back()->At(0).AppendNode(new Mortal(L"z", deaths));
        }
        root->MoveNodeTo(root->Back(), 0);
        root->At(0).MoveNodeTo(&root->At(0).At(0), 2); // out of the list, which shows the other one twice
    }
    EXPECT_EQ(deaths, L"r2 b2 y0 x1 z0 a2 x1 z0 y0 ");
}

TEST(LayoutNode, AChildMayEndAnotherWhenItEndsWithItsParent) {
    struct Ending : LayoutNode {
        using LayoutNode::LayoutNode;
        ~Ending() override { delete m_other; }
        LayoutNode* m_other = nullptr;
    };
    LeakCheck const leaks;
    Owned const root = Root({L"a"});
    auto* const ending = new Ending(L"ending", Group, nullptr);
    ending->m_other = root->At(0).AppendNode(ending)->AddNode(L"b");
    root->At(0).AddNode(L"c");
}

TEST(LayoutNode, ACopyHasTheNodesButNeitherTheirNamesNorTheirParents) {
    Owned const source = Root({L"a", L"b"});
    source->At(0).AddNode(L"x")->AddOption(L"1", L"one");
    Owned const root = Root({});
    LayoutNode const* const copy = root->AddNode(*source);
    EXPECT_EQ(copy->m_parent, root.get());
    EXPECT_EQ(root->GetNode(L"root"), copy);
    EXPECT_EQ(Shown(*copy), L"ab");
    EXPECT_EQ(copy->GetNode(L"a"), nullptr);
    EXPECT_EQ(copy->At(0).GetNode(L"x"), nullptr);
    EXPECT_EQ(copy->At(0).m_parent, source.get());
    EXPECT_EQ(copy->At(0).At(0).m_parent, &source->At(0));
    EXPECT_EQ(copy->At(0).At(0).m_optionDisplayNames, std::vector<std::wstring>{L"one"});
    LayoutNode assigned(L"assigned", Group, nullptr);
    assigned = *source;
    EXPECT_EQ(assigned.At(0).m_parent, source.get());
}

TEST(LayoutNode, AssignmentFromBelowKeepsTheNodeAndItsLinksWhole) {
    Owned const root = Root({L"a"});
    LayoutNode& node = root->At(0);
    node.AddNode(L"b")->AddNode(L"c")->AddNode(L"d")->AddNode(L"e")->AddNode(L"f");
    node = node.At(0).At(0);
    EXPECT_EQ(node.m_name, L"c");
    EXPECT_EQ(node.m_parent, root.get());
    ASSERT_EQ(Shown(node), L"d");
    EXPECT_EQ(node.At(0).At(0).GetQueryName(*root), L"c_d_e");
    node = static_cast<LayoutNode const&>(node);
    node.m_children = node.At(0).m_children;
    EXPECT_EQ(node.At(0).GetQueryName(*root), L"c_e");
    LayoutNode const copyOfChild(node.At(0));
    node = copyOfChild;
    EXPECT_EQ(node.m_parent, root.get()) << "and not itself, which the copy names";
}

TEST(LayoutNode, DepthIsBoundedByTheHeapAlone) {
    Owned root(LayoutNode::MakeNode(L"deepest", Group));
    for (int level = 0; level < 100'000; ++level) {
        Owned above(LayoutNode::MakeNode(L"n", Group));
        above->AppendNode(root.release());
        root = std::move(above);
    }
    Owned const copy(LayoutNode::MakeNode(*root));
    EXPECT_EQ(root->FindProfileList(L"none", true), nullptr);
    root->m_children.Clear();
    EXPECT_EQ(root->Size(), 0U);
    EXPECT_EQ(root->GetNode(L"n"), nullptr);
}

TEST(LayoutNode, AnyHintFindsByUtf8WhatTheIndexFinds) {
    Owned const root = Root({L"a", L"\u00fcmlaut", L"a", L"b", L"\ufffd", L"", L"\U0001F600"});
    Find(*root, L"b")->SetName(L"renamed");
    root->AppendNode(Find(*root, L"b"));
    LayoutNode const* const steps[] = {nullptr, Find(*root, L"b"), Find(*root, L"\ufffd")};
    for (LayoutNode const* const step : steps) {
        root->MoveNodeTo(step, step == steps[1] ? 0 : 99);
        for (char const* const name :
             {"a", "\xc3\xbcmlaut", "b", "renamed", "\xff", "\xef\xbf\xbd", "", "none", "\xf0\x9f\x98\x80"}) {
            for (std::size_t start = 0; start <= root->Size() + 1; ++start) {
                std::size_t hint = start <= root->Size() ? start : std::numeric_limits<std::size_t>::max();
                EXPECT_EQ(root->FindChildUtf8(name, hint),
                          root->GetNode(StringConversion::Utf8ToNative(name)))
                    << name << " from " << start;
            }
        }
    }
    std::size_t hint = 0;
    EXPECT_EQ(LayoutNode(*root).FindChildUtf8("a", hint), nullptr);
}

TEST(LayoutNode, AChildThatNoListShowsIsStillFoundByUtf8) {
    Owned const root = Root({L"a", L"b"});
    root->MoveNodeTo(root->GetNode(L"a"), 1);
    delete root->GetNode(L"b");
    std::size_t hint = 0;
    EXPECT_EQ(root->Size(), 0U);
    EXPECT_NE(root->GetNode(L"a"), nullptr);
    EXPECT_EQ(root->FindChildUtf8("a", hint), root->GetNode(L"a"));
}

TEST(LayoutNode, NamesInListOrderAreFoundWithoutAnAllocation) {
    Owned const root =
        Root({L"long enough for the heap", L"the second of these names", L"the third of these names"});
    std::size_t hint = 1;
    TestSupport::AllocationFailure const failure(0);
    LayoutNode const* const third = root->FindChildUtf8("the third of these names", hint);
    LayoutNode const* const first = root->FindChildUtf8("long enough for the heap", hint);
    EXPECT_EQ(third, &root->At(2));
    EXPECT_EQ(first, &root->At(0));
    EXPECT_EQ(hint, 1U);
}

TEST(LayoutNode, AQueryNameJoinsTheNamesBelowTheTop) {
    using Row = std::array<wchar_t const*, 4>;
    for (auto const& [upper, middle, lower, expected] :
         {Row{L"a", L"b", L"c", L"a_b_c"}, Row{L"", L"b", L"c", L"_b_c"}, Row{L"a", L"", L"c", L"a__c"},
          Row{L"a", L"b", L"", L"a_b"}, Row{L"", L"", L"", L""}}) {
        Owned const root = Root({upper});
        LayoutNode* const node = root->At(0).AddNode(middle)->AddNode(lower);
        EXPECT_EQ(node->GetQueryName(*root), expected);
        EXPECT_EQ(node->GetQueryName(*node), L"");
    }
}

TEST(LayoutNode, AQueryPathEndsAtTheTopOrAtTheRoot) {
    Owned const root = Root({L"a", L"b"});
    LayoutNode const& a = root->At(0);
    std::deque<LayoutNode const*> path{&a};
    EXPECT_TRUE(a.GetQueryPath(a, path));
    EXPECT_TRUE(path.empty());
    EXPECT_FALSE(a.GetQueryPath(root->At(1), path));
    EXPECT_EQ(path, (std::deque<LayoutNode const*>{root.get(), &a}));
    EXPECT_EQ(root->At(0).GetQueryName(root->At(1)), L"root_a");
}

TEST(LayoutNode, AQueryEndsWhenCopiesTieTheParentsIntoARing) {
    Owned root = Root({L"a"});
    LayoutNode copy(root->At(0));
    LayoutNode const other(L"other", Group, nullptr);
    copy.AppendNode(root.release());
    std::deque<LayoutNode const*> path;
    EXPECT_FALSE(copy.At(0).At(0).GetQueryPath(other, path));
}

TEST(LayoutNode, AProfileListIsFoundDepthFirstAndThroughTheIndexAlone) {
    Owned const root = Root({L"p", L"a", L"b"});
    LayoutNode* const deep = root->At(1).AddNode(L"x")->AddNode(L"p")->SetProfile(true, L"Profile");
    LayoutNode* const flat = root->At(2).AddNode(L"p")->SetProfile(true, L"Profile");
    EXPECT_EQ(root->FindProfileList(L"p", false), nullptr);
    EXPECT_EQ(root->FindProfileList(L"p", true), deep);
    EXPECT_EQ(root->At(2).FindProfileList(L"p", false), flat);
    EXPECT_EQ(LayoutNode(*root).FindProfileList(L"p", true), nullptr);
}

TEST(LayoutNode, AFailedAllocationLeavesTheTreeAsItWasAndNothingBehind) {
    constexpr wchar_t const* New = L"a new name that needs the heap";
    Owned const source = Root({L"a name that needs the heap", L"b"});
    source->At(1).AddNode(New)->AddOption(L"an option that needs the heap", L"its name, which needs it too");
    auto const failEach = [&](auto change) {
        TestSupport::FailEachAllocation([&] {
            LayoutNode root(*source);
            Owned other(LayoutNode::MakeNode(New, Group));
            try {
                change(root, other);
            } catch (std::bad_alloc const&) {
                EXPECT_EQ(Shown(root), Shown(*source));
                EXPECT_EQ(Shown(root.At(1)), New);
                EXPECT_EQ(root.GetNode(New), nullptr);
                throw;
            }
        });
    };
    failEach([](LayoutNode& root, Owned&) { root.AddNode(New); });
    failEach([](LayoutNode& root, Owned&) { root.AddNode(New, Double, 1.5); });
    failEach([](LayoutNode& root, Owned& other) { root.AppendNode(other.release()); });
    failEach([](LayoutNode& root, Owned&) { root.AppendNode(root.At(1).Back()); });
    failEach([](LayoutNode& root, Owned&) { root.At(0).AddNode(root); });
    failEach([](LayoutNode& root, Owned& other) { root = *other; });
    failEach([](LayoutNode& root, Owned&) { root = root.At(1); });
}

} // namespace
} // namespace Zantrel
