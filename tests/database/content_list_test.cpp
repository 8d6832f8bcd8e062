// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/content_list.h>
#include <zantrel/database/value_type.h>

#include "tests/support/characters.h"
#include "tests/support/small_parameter_file.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <type_traits>
#include <utility>

using namespace TestSupport;

namespace {

struct SmallDatabase {
    SmallLayout layout;
    ParameterDatabase values{&layout};

    SmallDatabase() { EXPECT_TRUE(ReadText(values, SmallFile)); }
    ParameterNode Editor() { return values.GetProfileEditor(); }
};

ContentList Listed(ParameterNode const& cursor) {
    ContentList list;
    list.m_nodes.emplace(); // what stood here before
    cursor.CreateContentList(list);
    return list;
}

std::wstring Paths(ContentList const& list) {
    std::wstring paths;
    for (ContentList::Node const& node : list.m_nodes) {
        paths += (paths.empty() ? L"" : L" ") + node.m_path;
    }
    return paths;
}

auto const IsRefused = testing::ThrowsMessage<std::runtime_error>("Invalid type cast : use std::string_t");

} // namespace

TEST(ContentList, NamesEachLeafByTheStepsFromItsCursor) {
    SmallDatabase database;
    ParameterNode const editor = database.Editor();
    ParameterNode withoutBag = editor;
    withoutBag.m_pProperties = nullptr;
    std::pair<ParameterNode, std::wstring> const rows[] = {
        {editor,
         L"AS_Item[0] C_Profile::Default::_C_Profile::Default::_S C_Profile::Default::_I "
         L"C_Profile[p & q]_C_Profile::Default::_S C_Profile[p & q]_C_Profile[in]_S C_Profile[p & q]_I "
         L"C_Profile[p & q]_N_Item[0] G_A G_B G_D G_F G_I G_L G_O G_P G_S G_X GenericParameters_I "
         L"M_Item[0]_I M_Item[0]_N_Item[0] N_Item[0] N_Item[1]"},
        {editor.Get(L"M").GetListNode(0), L"I N_Item[0]"},
        {editor.Get(L"C").GetProfile(L"p & q"), L"C_Profile::Default::_S C_Profile[in]_S I N_Item[0]"},
        {editor.Get(L"C").GetDefault(), L"C_Profile::Default::_S I"},
        // What is no group has none.
        {editor.Get(L"G").Get(L"I"), L""},
        {editor.Get(L"N"), L""},
        {editor.Get(L"N").GetListNode(0), L""},
        {editor.Get(L"C"), L""},
        {ParameterNode(), L""},
        {withoutBag, L""},
    };
    for (auto const& [cursor, paths] : rows) {
        EXPECT_EQ(Paths(Listed(cursor)), paths);
        EXPECT_EQ(Listed(cursor).m_nodes.empty(), paths.empty());
        EXPECT_FALSE(cursor.Query(L"").IsValid());
    }
}

TEST(ContentList, IsSortedByUtf16UnitsAndKeepsTheFirstOfTwoLeavesOnOnePath) {
    ParameterLayout layout;
    LayoutNode& editor = *layout.m_profileEditor;
    std::wstring const high = Character(0x10000);
    editor.AddNode(L"\xFFFD");
    LayoutNode const* const first = editor.AddNode(high.c_str())->AddNode(L"b_c");
    editor.AddNode((high + L"_b").c_str())->AddNode(L"c");
    editor.AddNode(L"n")->SetList(true, L"i", L"")->SetMultiplicity(12);
    editor.AddNode(L"p")->SetProfile(true, L"i")->AddNode(L"I", Int, std::int32_t(1));
    ParameterDatabase values(&layout);
    ParameterNode list = values.GetProfileEditor().Get(L"p");
    PersistentProperties const* const bag = list.AddProfile(L"a", true).Get(L"I").m_pProperties;
    list.AddProfile(L"a", true);
    ParameterNode const cursor = values.GetProfileEditor();
    EXPECT_EQ(Paths(Listed(cursor)),
              L"n_i[0] n_i[10] n_i[11] n_i[1] n_i[2] n_i[3] n_i[4] n_i[5] n_i[6] n_i[7] "
              L"n_i[8] n_i[9] p_i::Default::_I p_i[a]_I " +
                  high + L"_b_c \xFFFD");
    EXPECT_EQ(cursor.Query((high + L"_b_c").c_str()).m_pNode, first);
    EXPECT_EQ(cursor.Query(L"p_i[a]_I").m_pProperties, bag);
    ContentList::Node prefix, longer;
    prefix.m_path = L"a", longer.m_path = L"aa";
    EXPECT_TRUE(prefix < longer && !(longer < prefix));
}

TEST(ContentList, FreezesNumbersAndFlagsAndFollowsTexts) {
    SmallDatabase database;
    ParameterNode const group = database.Editor().Get(L"G");
    ContentList made = Listed(group);
    ContentList const copy = made; // names the same bags
    ContentList list = std::move(made), other;
    other = std::move(list);
    EXPECT_TRUE(made.m_nodes.empty() && list.m_nodes.empty()) << "once moved from";
    list = copy;
    EXPECT_EQ(Paths(list), L"A B D F I L O P S X");
    EXPECT_EQ(Paths(list), Paths(other));
    for (ContentList::Node const& node : list.m_nodes) {
        ParameterNode leaf = group.Get(node.m_path.c_str());
        EXPECT_TRUE(node.m_pLayout == leaf.m_pNode && node.m_pProperties == leaf.m_pProperties);
        VisitValueType(leaf.m_pNode->m_type, [&]<class T>(TypeTag<T>) { // of other types nothing is captured
            if constexpr (std::is_same_v<T, double>) {
                double const old = leaf.GetValue<double>();
                leaf.SetValue(old + 7.0);
                EXPECT_EQ(node.m_value.number, old);
            } else if constexpr (std::is_same_v<T, bool>) {
                leaf.SetValue(false);
                EXPECT_TRUE(node.m_value.flag);
            } else if constexpr (std::is_same_v<T, std::wstring>) {
                leaf.SetValue(L"new " + node.m_path);
                EXPECT_EQ(*node.m_value.text, L"new " + node.m_path);
            }
        });
    }
}

TEST(ContentList, StopsAtAnOptionOfTheDriverWithoutAValueAndKeepsWhatItFound) {
    SmallLayout const layout;
    ParameterDatabase values(&layout);
    ParameterNode const cursor = values.GetProfileEditor();
    ContentList list;
    EXPECT_THAT([&] { cursor.CreateContentList(list); }, IsRefused);
    EXPECT_EQ(Paths(list), L"G_A G_B G_D G_F G_I G_L G_O G_P G_S GenericParameters_I");
    EXPECT_THAT([&] { cursor.Query(L"G_I"); }, IsRefused);
    EXPECT_TRUE(cursor.Query(L"G_I").IsValid()) << "the second time it answers from what it found";
    cursor.Get(L"G").Get(L"X").SetValueFromText(L"x");
    for (wchar_t const* const behind : {L"G_X", L"C_Profile::Default::_I"}) {
        EXPECT_FALSE(cursor.Query(behind).IsValid());
        EXPECT_TRUE(values.GetProfileEditor().Query(behind).IsValid());
    }
}

TEST(Query, FindsALeafByItsWholePathOnly) {
    SmallDatabase database;
    ParameterNode const editor = database.Editor();
    ParameterNode found = editor.Query(L"C_Profile[p & q]_N_Item[0]");
    EXPECT_EQ(found.GetValue<std::int32_t>(), 9);
    EXPECT_FALSE(found.m_isContainer || found.m_pParentProperties != nullptr ||
                 found.m_contentList != nullptr);
    found.SetValue(std::int32_t(8)); // of a type that isn't captured
    EXPECT_EQ(editor.Get(L"C").GetProfile(L"p & q").Get(L"N").GetListNode(0).GetValue<std::int32_t>(), 8);
    for (wchar_t const* const path : {static_cast<wchar_t const*>(nullptr), L"", L"G", L"G_", L"G_i", L"_G_I",
                                      L"N", L"N_Item", L"N_Item[2]", L"N_Item[00]", L"C_Profile[p & q]",
                                      L"C_Profile_::Default::_I", L"C_Profile[::DefaultProfile::]_I"}) {
        EXPECT_FALSE(editor.Query(path).IsValid());
    }
}

TEST(Query, SeesNewValuesAndOnlyAFreshCursorNewLeaves) {
    SmallDatabase database;
    ParameterNode const cursor = database.Editor(), before = cursor;
    EXPECT_TRUE(cursor.Query(L"G_S").IsValid());
    ParameterNode const copy = cursor;
    cursor.Get(L"N").AddListNode(true);
    cursor.Get(L"G").Get(L"S").SetValue(L"new");
    Listed(cursor); // a list of the caller's own
    for (ParameterNode const& sharing : {cursor, copy}) {
        EXPECT_EQ(sharing.m_contentList, cursor.m_contentList);
        EXPECT_FALSE(sharing.Query(L"N_Item[2]").IsValid());
        EXPECT_EQ(sharing.Query(L"G_S").GetValue<std::wstring>(), L"new");
    }
    EXPECT_TRUE(before.Query(L"N_Item[2]").IsValid() && database.Editor().Query(L"N_Item[2]").IsValid());
}

TEST(Query, AnswersFromTheSetAsAHostHasLeftIt) {
    using Nodes = ContentList::Nodes;
    auto const isFound = [](ParameterNode const& cursor) {
        return cursor.Query(L"G_I").IsValid() && cursor.Query(L"G_I").m_pNode->m_name == L"I";
    };
    auto const isThere = [](Nodes const& nodes) { return nodes.contains(L"G_I"); };
    struct {
        bool finds;
        std::function<void(Nodes&, Nodes& other)> edit;
    } const rows[] = {
        {true, [](Nodes&, Nodes&) {}},
        {true, [](Nodes& nodes, Nodes&) { nodes.erase(nodes.find(L"G_S")); }},
        {false, [](Nodes& nodes, Nodes&) { nodes.erase(nodes.find(L"G_I")); }},
        {false, [](Nodes& nodes, Nodes&) { nodes.erase(*nodes.find(L"G_I")); }},
        {false, [](Nodes& nodes, Nodes&) { nodes.erase(nodes.begin(), nodes.end()); }},
        {false, [](Nodes& nodes, Nodes&) { nodes.clear(); }},
        {false, [](Nodes& nodes, Nodes&) { nodes = {}; }},
        {false, [](Nodes& nodes, Nodes&) { nodes = Nodes({ContentList::Node()}); }},
        {false, [](Nodes& nodes, Nodes& other) { nodes.swap(other); }},
        {false, [](Nodes& nodes, Nodes& other) { other = std::move(nodes); }},
        {false, [](Nodes& nodes, Nodes& other) { other.merge(nodes); }},
        {true, [](Nodes& nodes, Nodes& other) { other.merge(nodes), nodes.merge(other); }},
        {true, [](Nodes& nodes, Nodes& other) { other = nodes, nodes = other; }},
        {false,
         [](Nodes& nodes, Nodes& other) { // one comes for one that lives on elsewhere
             other.insert(nodes.extract(nodes.find(L"G_I")));
             nodes.emplace();
         }},
        {true,
         [](Nodes& nodes, Nodes&) { // under another path, and back
             auto node = nodes.extract(nodes.find(L"G_I"));
             node.value().m_path = L"new";
             auto renamed = nodes.extract(nodes.insert(std::move(node)).position);
             renamed.value().m_path = L"G_I";
             nodes.insert(std::move(renamed));
         }},
    };
    SmallDatabase database;
    for (auto const& row : rows) {
        ParameterNode const cursor = database.Editor();
        EXPECT_TRUE(isFound(cursor));
        Nodes& nodes = cursor.m_contentList->m_nodes;
        Nodes other;
        row.edit(nodes, other);
        EXPECT_EQ(isFound(cursor), row.finds) << &row - rows;
        EXPECT_EQ(isThere(nodes), row.finds) << &row - rows;
        ContentList::Node added;
        added.m_path = L"added";
        added.m_pLayout = database.layout.m_profileEditor.GetNode();
        nodes.insert(added);
        EXPECT_EQ(cursor.Query(L"added").m_pNode, added.m_pLayout);
    }
}

TEST(Query, FindsEachLeafWhateverTheOrderOfTheirPaths) {
    ParameterLayout layout;
    LayoutNode& editor = *layout.m_profileEditor;
    LayoutNode& list = *editor.AddNode(L"z_[1]")->SetList(true, L"i", L"");
    list.SetMultiplicity(1234);
    for (wchar_t const* const name : {L"c", L"b_", L"b", L"b_c", L"a", L"a"}) {
        LayoutNode& group = *editor.AddNode(name)->AddNode(L"p");
        group.SetProfile(true, L"i")->AddNode(L"c_d")->AddNode(L"e");
        group.AddNode(L"c")->AddNode(L"d_e");
        group.AddNode(L"c]");
    }
    ParameterDatabase values(&layout);
    for (wchar_t const* const name : {L"1", L"10", L"1]", L"1^", L"2", L"a", L"a]_c", L"::"}) {
        values.GetProfileEditor().Get(L"b").Get(L"p").AddProfile(name, true);
    }
    for (std::wstring const& name : {Character(0xD800) + Character(0xDC00), Character(0x10000)}) {
        values.GetProfileEditor().Get(L"c").Get(L"p").AddProfile(name.c_str(), true);
    }
    ParameterNode const cursor = values.GetProfileEditor();
    ContentList const all = Listed(cursor);
    EXPECT_GT(all.m_nodes.size(), 1234u);
    EXPECT_TRUE(std::is_sorted(all.m_nodes.begin(), all.m_nodes.end()));
    for (ContentList::Node const& node : all.m_nodes) {
        ParameterNode const found = cursor.Query(node.m_path.c_str());
        EXPECT_TRUE(found.m_pNode == node.m_pLayout && found.m_pProperties == node.m_pProperties);
    }
}
