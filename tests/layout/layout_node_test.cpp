// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/layout_node.h>

#include <zantrel/text/string_conversion.h>

#include "tests/support/failing_allocator.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <memory>
#include <random>
#include <stdexcept>
#include <vector>

namespace Zantrel {
namespace {

using TestSupport::LeakCheck;

using Owned = std::unique_ptr<LayoutNode>;
using Nodes = std::vector<LayoutNode*>;
using Path = std::deque<LayoutNode const*>;

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

TEST(LayoutNode, AppendingGivesTheParentAndAddingTheChild) {
    Owned const root = Root({});
    EXPECT_THAT([&] { root->At(0); }, testing::ThrowsMessage<std::out_of_range>("invalid vector subscript"));
    EXPECT_EQ(root->GetNode(static_cast<wchar_t const*>(nullptr)), nullptr);
    root->m_childrenWriteToParameterFile = false;
    LayoutNode* const a = root->AppendNode(L"a")->AppendNode(L"b")->At(0).AddNode(L"c")->GetParentNode();
    EXPECT_EQ(Shown(*root), L"ab");
    EXPECT_EQ(a, root->GetNode(L"a"));
    EXPECT_EQ(a->Parent(), root.get());
    EXPECT_FALSE(a->m_writeToParameterFile);
    EXPECT_TRUE(a->At(0).m_writeToParameterFile);
}

/// A list and its index, as plainly as can be.
struct PlainList {
    void Append(LayoutNode* child) {
        m_shown.push_back(child);
        m_named.emplace_back(child->m_name, child);
    }
    void Move(LayoutNode* child, std::size_t index) {
        Nodes moved;
        for (LayoutNode* const node : m_shown) {
            moved.insert(moved.end(), moved.size() == index, child);
            moved.insert(moved.end(), node != child, node);
        }
        std::copy_n(moved.begin(), std::min(moved.size(), m_shown.size()), m_shown.begin());
    }
    void Release(LayoutNode* child) {
        std::erase(m_shown, child);
        std::erase_if(m_named, [&](auto const& entry) { return entry.second == child; });
    }
    void ExpectLike(LayoutNode const& node, std::size_t someHint) const {
        ASSERT_EQ(Nodes(node.m_children.begin(), node.m_children.end()), m_shown);
        ASSERT_EQ(node.m_children.Back(), m_shown.empty() ? nullptr : m_shown.back());
        for (char const* const utf8 :
             {"a", "\xc3\xbc", "\xf0\x9f\x98\x80", "", "\xff", "\xef\xbf\xbd", "none"}) {
            std::wstring const name = StringConversion::Utf8ToNative(utf8);
            auto const latest = std::find_if(m_named.rbegin(), m_named.rend(),
                                             [&](auto const& entry) { return entry.first == name; });
            LayoutNode* const found = latest != m_named.rend() ? latest->second : nullptr;
            ASSERT_EQ(node.GetNode(name), found) << utf8;
            std::size_t hint = someHint % 8 == 0 ? ~std::size_t{0} : someHint % (m_shown.size() + 2);
            ASSERT_EQ(node.FindChildUtf8(utf8, hint), found) << utf8;
        }
    }

    Nodes m_shown;
    std::vector<std::pair<std::wstring, LayoutNode*>> m_named; ///< in the order of appending
};

TEST(LayoutNode, WhateverComesMovesAndGoesTheChildrenAreThoseOfAPlainList) {
    wchar_t const* const names[] = {L"a", L"\u00fc", L"\U0001F600", L"", L"\ufffd"};
    for (std::size_t const usual : {3U, 300U}) { // children: long lists keep their positions otherwise
        LeakCheck const leaks;
        Owned const roots[] = {Root({}), Root({})};
        PlainList lists[2];
        std::mt19937 random(1);
        auto const below = [&](std::size_t end) { return random() % end; };
        for (int step = 0; step < 3000; ++step) {
            std::size_t const at = below(2), to = below(2), what = below(4);
            PlainList& list = lists[at];
            if (list.m_named.empty() || below(2 * usual) > list.m_named.size()) {
                list.Append(roots[at]->AddNode(names[below(5)]));
                continue;
            }
            LayoutNode* const child = list.m_named[below(list.m_named.size())].second;
            if (what == 0) {
                list.Release(child);
                delete child;
            } else if (what == 1) {
                std::size_t const index = below(list.m_shown.size() + 2);
                for (LayoutNode* const stranger : {child, static_cast<LayoutNode*>(nullptr)}) {
                    roots[1 - at]->MoveNodeTo(stranger, 0); // which changes nothing
                }
                roots[at]->MoveNodeTo(child, index);
                list.Move(child, index);
                ASSERT_EQ(Shown(LayoutNode(*roots[at])), Shown(*roots[at]));
            } else {
                child->m_name = names[below(5)];
                roots[to]->AppendNode(child);
                if (to != at) {
                    list.Release(child);
                }
                lists[to].Append(child);
            }
            lists[at].ExpectLike(*roots[at], random());
            lists[to].ExpectLike(*roots[to], random());
        }
    }
}

TEST(LayoutNode, ChildrenThatComeAndGoLeaveNoRoomBehind) {
    Owned const root = Root({L"stays"});
    TestSupport::MemoryPeak const peak;
    for (int turn = 0; turn < 5000; ++turn) {
        delete root->AddNode(L"goes");
    }
    EXPECT_LT(peak.Bytes(), 10'000u);
}

TEST(LayoutNode, EachNodeHasOneOwnerWhateverIsAppended) {
    LeakCheck const leaks;
    Owned const root = Root({L"a", L"b"});
    LayoutNode &a = root->At(0), &b = root->At(1);
    root->AppendNode(static_cast<LayoutNode*>(nullptr))->AppendNode(root.get());
    a.AppendNode(root.get())->AppendNode(a);
    EXPECT_EQ(Shown(*root) + Shown(a), L"ab") << "neither nothing nor a node above";
    b.AppendNode(a);
    LayoutNode local(L"local", Group, nullptr);
    root->AppendNode(local);
    EXPECT_EQ(a.Parent(), &b);
    b.m_children.Clear();
    EXPECT_EQ(Shown(*root), L"blocal");
}

TEST(LayoutNode, NoNodeBecomesItsOwnAncestorByWayOfACopy) {
    enum Which { Top, A, B, X };
    using Row = std::tuple<Which, bool, std::wstring>;
    for (auto const& [which, isBelowTheCopy, above] :
         {Row{Top, false, L"a"}, Row{Top, true, L"ab"}, Row{A, false, L"ra"}, Row{A, true, L"rab"},
          Row{B, true, L"rAb"}, Row{X, false, L"ra"}, Row{X, true, L"rAb"}}) {
        auto* const root = new LayoutNode(L"r", Group, nullptr);
        LayoutNode* const nodes[] = {root, root->AddNode(L"a"), root->Back()->AddNode(L"b"),
                                     root->AddNode(L"x")};
        LayoutNode copy(*nodes[A]); // names the root as its parent, and its child names the source's A
        nodes[A]->SetName(L"A");
        LayoutNode& taker = isBelowTheCopy ? copy.At(0) : copy;
        EXPECT_EQ(taker.AppendNode(nodes[which])->Back(), nodes[which]);
        std::wstring names;
        for (LayoutNode const* node = &taker; node != nullptr && names.size() < 9; node = node->m_parent) {
            names.insert(0, node->m_name);
        }
        EXPECT_EQ(names, above) << which;
        Owned const end(which == Top ? nullptr : root);
    }
}

TEST(LayoutNode, AppendingKnowsFormerParentsByTheirAddressAlone) {
    auto* const parent = new LayoutNode(L"p", Group, nullptr);
    parent->AppendNode(L"a")->AppendNode(L"b");
    LayoutNode first(*parent), second(*parent);
    parent->m_children.Clear();
    first.At(0).AddNode(L"x")->AppendNode(parent);
    EXPECT_EQ(first.At(0).Parent(), &first);
    first.m_children.Clear();
    second.At(0).AppendNode(Root({L"x"}).release()); // perhaps where the parent was
    second.At(1).AddNode(L"y");
    EXPECT_EQ(Shown(second.At(0)) + Shown(second.At(1)), L"rooty");
}

/// Tells when it ends, and how many children it has then.
struct Mortal : LayoutNode {
    Mortal(wchar_t const* name, std::wstring& deaths) : LayoutNode(name, Group, nullptr), m_deaths(deaths) {}
    ~Mortal() override { m_deaths += m_name + std::to_wstring(Size()) + L" "; }
    std::wstring& m_deaths;
};

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

TEST(LayoutNode, AChildThatEndsMayEndOrRescueOnesThatWait) {
    struct Ending : LayoutNode {
        using LayoutNode::LayoutNode;
        ~Ending() override {
            delete m_victim;
            m_haven->AppendNode(m_rescued)->AppendNode(this);
        }
        LayoutNode *m_victim = nullptr, *m_rescued = nullptr, *m_haven = nullptr;
    };
    LeakCheck const leaks;
    Owned const haven = Root({});
    Owned root = Root({L"a"});
    auto* const ending = new Ending(L"ending", Group, nullptr);
    LayoutNode* const a = root->At(0).AppendNode(ending);
    ending->m_victim = a->AppendNode(a->AddNode(L"b"))->Back();
    ending->m_rescued = a->AddNode(L"c")->AddNode(L"d")->GetParentNode();
    ending->m_haven = haven.get();
    a->AddNode(L"e");
    root.reset();
    EXPECT_EQ(Shown(*haven) + Shown(haven->At(0)), L"cd");
}

TEST(LayoutNode, ACopyHasTheNodesButNeitherTheirNamesNorTheirParents) {
    Owned const source = Root({L"a", L"b"}), root = Root({});
    source->At(0).AddNode(L"x")->AddOption(L"1", L"one");
    LayoutNode* const copy = root->AddNode(*source);
    EXPECT_EQ(copy->m_parent, root.get());
    EXPECT_EQ(root->GetNode(L"root"), copy);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Shown(*copy), L"ab");
        EXPECT_EQ(copy->GetNode(L"a"), nullptr);
        EXPECT_EQ(copy->At(0).GetNode(L"x"), nullptr);
        EXPECT_EQ(copy->At(0).m_parent, source.get());
        EXPECT_EQ(copy->At(0).At(0).m_parent, &source->At(0));
        EXPECT_EQ(copy->At(0).At(0).m_optionDisplayNames, std::vector<std::wstring>{L"one"});
        *copy = *source;
    }
}

TEST(LayoutNode, AssignmentFromBelowKeepsTheNodeAndItsLinksWhole) {
    Owned const root = Root({L"a"});
    LayoutNode& node = root->At(0);
    node.AddNode(L"b")->AddNode(L"c")->AddNode(L"d")->AddNode(L"e")->AddNode(L"f");
    node = node.At(0).At(0);
    EXPECT_EQ(node.m_name, L"c");
    EXPECT_EQ(node.m_parent, root.get());
    EXPECT_EQ(node.At(0).At(0).At(0).GetQueryName(*root), L"c_d_e_f");
    node = static_cast<LayoutNode const&>(node);
    node.m_children = node.At(0).m_children;
    EXPECT_EQ(node.At(0).GetQueryName(*root), L"c_e");
    LayoutNode const copy(node.At(0).At(0));
    node = copy;
    EXPECT_EQ(node.m_parent, root.get()) << "and not what has ended, which the copy names";
}

TEST(LayoutNode, DepthIsBoundedByTheHeapAlone) {
    constexpr std::size_t Levels = 100'000;
    Owned const root = Root({});
    Owned bottomUp(LayoutNode::MakeNode(L"n", Group));
    LayoutNode* deepest = root.get();
    for (std::size_t level = 0; level < Levels; ++level) {
        deepest = deepest->AddNode(L"n");
        Owned above(LayoutNode::MakeNode(L"n", Group));
        above->AppendNode(bottomUp.release());
        bottomUp = std::move(above);
    }
    LayoutNode copy(*root);
    copy = *bottomUp;
    std::set<std::wstring> names;
    deepest->SetPropName(L"deep");
    EXPECT_EQ(root->FindProfileList(L"none", true), nullptr);
    EXPECT_EQ(root->AddUsedPropertyNames(names), root.get());
    EXPECT_EQ(names, std::set<std::wstring>{L"deep"});
    EXPECT_EQ(deepest->GetQueryName(*root).size(), 2 * Levels - 1);
    EXPECT_EQ(deepest->AppendNode(root.get())->Size(), 0U);
    root->m_children.Clear();
    EXPECT_EQ(root->Size(), 0U);
}

TEST(LayoutNode, NamesInListOrderAreFoundWithoutAnAllocation) {
    Owned const root =
        Root({L"long enough for the heap", L"the second of these names", L"the third of these names"});
    std::size_t hint = 1;
    TestSupport::AllocationFailure const failure(0);
    EXPECT_EQ(root->FindChildUtf8("the third of these names", hint), &root->At(2));
    EXPECT_EQ(root->FindChildUtf8("long enough for the heap", hint), &root->At(0));
    EXPECT_EQ(hint, 1U);
}

TEST(LayoutNode, AQueryPathEndsAtTheTopOrAtTheRootOrWhenAHostTiedTheParentsIntoARing) {
    using Row = std::array<wchar_t const*, 3>;
    for (auto const& [upper, lower, name] :
         {Row{L"a", L"c", L"a__c"}, Row{L"a", L"", L"a"}, Row{L"", L"c", L"__c"}, Row{L"", L"", L""}}) {
        Owned const root = Root({upper});
        LayoutNode* const node = root->At(0).AddNode(L"")->AddNode(lower);
        EXPECT_EQ(node->GetQueryName(*root), name);
        EXPECT_EQ(node->GetQueryName(*node), L"");
    }
    Owned const root = Root({L"a", L"b"});
    LayoutNode& a = root->At(0);
    Path path{&a};
    EXPECT_TRUE(a.GetQueryPath(a, path));
    EXPECT_TRUE(path.empty());
    EXPECT_FALSE(a.GetQueryPath(root->At(1), path));
    EXPECT_EQ(path, (Path{root.get(), &a}));
    EXPECT_EQ(a.GetQueryName(root->At(1)), L"root_a");
    root->m_parent = &a;
    EXPECT_FALSE(a.AddNode(L"x")->AddNode(L"y")->GetQueryPath(root->At(1), path));
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
    using Change = void (*)(LayoutNode & root, Owned & other);
    for (Change const change :
         std::initializer_list<Change>{[](LayoutNode&root, Owned&) { root.AddNode(New, Double, 1.5); },
                                       [](LayoutNode&root, Owned&other) { root.AppendNode(other.release()); },
                                       [](LayoutNode&root, Owned&) { root.AppendNode(root.At(1).Back()); },
                                       [](LayoutNode&root, Owned&) { root.At(0).AddNode(root); },
                                       [](LayoutNode&root, Owned&) { root.MoveNodeTo(&root.At(0), 1); },
                                       [](LayoutNode&root, Owned&other) { root = *other; },
                                       [](LayoutNode&root, Owned&) { root = root.At(1); }}) {
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
    }
}

} // namespace
} // namespace Zantrel
