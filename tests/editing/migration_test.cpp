// SPDX-License-Identifier: Apache-2.0
#include "tests/editing/generated.h"

#include <zantrel/database/visit_value.h>
#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;
using EditingTests::Generated, EditingTests::Make;

using Kind = MigrationStep::Kind;
using Lines = std::vector<std::wstring>;

Lines LinesOf(Migration const& migration) {
    static wchar_t const* const words[] = {L"taken ",   L"converted ", L"renamed ",
                                           L"dropped ", L"new ",       L"refused "};
    Lines lines;
    for (MigrationStep const& step : migration.steps) {
        lines.push_back(words[static_cast<std::size_t>(step.kind)] + step.path + L" -> " + step.newPath +
                        L" " + step.what + L": " + step.before + L" -> " + step.after);
        EXPECT_EQ(step.reason.empty(), step.kind == Kind::Taken || step.kind == Kind::Renamed)
            << lines.back();
    }
    return lines;
}

TEST(MigrationTest, ToTheSameLayoutTakesAllAndTellsOfAll) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        auto [generated, layout, database] = Make(seed, false);
        Migration const migration = Migrate(database, *layout);
        ASSERT_TRUE(Differences(database, migration.database).empty()) << seed;
        std::set<std::wstring> told;
        for (MigrationStep const& step : migration.steps) {
            ASSERT_EQ(step.kind, Kind::Taken) << step.path << step.reason;
            told.insert(step.path + L" " + step.what);
        }
        for (PlaceWalk walk(database); walk.Next();) {
            auto const& place = walk.GetPlace();
            bool const isTold = place.GetKind() == PlaceKind::Item || place.GetKind() == PlaceKind::Profile ||
                                VisitValue(place.GetCursor(), [](auto const&) {});
            ASSERT_TRUE(!isTold || told.count(place.GetPath() + L" ") == 1) << place.GetPath();
            ASSERT_TRUE(!place.GetCursor().GetHidden() || told.count(place.GetPath() + L" Hidden") == 1);
        }
    }
}

/// Makes a changed copy of a layout: in another order, some nodes renamed, left out and added.
struct Change {
    Generated& generated;
    std::vector<Renaming> there{}, back{};
    std::set<LayoutNode const*> lost{};

    void Copy(LayoutNode const& from, LayoutNode& to, std::wstring const& path, std::wstring const& newPath) {
        std::vector<LayoutNode const*> children(from.m_children.begin(), from.m_children.end());
        for (std::size_t i = children.size(); i > 1; --i) {
            std::swap(children[i - 1], children[generated.Below(static_cast<unsigned>(i))]);
        }
        for (LayoutNode const* const child : children) {
            if (generated.OneIn(8)) {
                lost.insert(child);
                continue;
            }
            bool const isRenamed = generated.OneIn(3);
            std::wstring const name = child->m_name + (isRenamed ? L"-renamed" : L"");
            LayoutNode* const copy = to.AddNode(name.c_str(), child->m_type, L"");
            static_cast<LayoutNodeAttributes&>(*copy) = *child;
            copy->SetName(name);
            if (isRenamed) {
                there.push_back({path + child->m_name, newPath + name});
                back.push_back({newPath + name, path + child->m_name});
            }
            Copy(*child, *copy, path + child->m_name + L"/", newPath + name + L"/");
        }
        if (generated.OneIn(3)) {
            to.AddNode(L"added", Int, std::int32_t{1});
        }
    }

    bool IsLost(LayoutNode const* node) const {
        return node != nullptr && (lost.count(node) != 0 || IsLost(node->GetOwner()));
    }
};

TEST(MigrationTest, ThereAndBackLosesNothingThatBothLayoutsHave) {
    std::size_t kept = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        auto [generated, layout, database] = Make(seed, false);
        Change change{generated};
        ParameterLayout changed;
        change.Copy(*layout->m_profileEditor.GetNode(), *changed.m_profileEditor.GetNode(), L"", L"");
        Migration const there = Migrate(database, changed, change.there);
        Migration const back = Migrate(there.database, *layout, change.back);
        for (Difference const& difference : Differences(database, back.database)) {
            ParameterView const& at = difference.first.IsValid() ? difference.first : difference.second;
            ASSERT_TRUE(change.IsLost(at.GetLayoutNode())) << seed << " " << difference.path;
        }
        kept += there.steps.size();
    }
    EXPECT_GT(kept, 1000U);
}

struct Conversion {
    eTypeLayoutNode from;
    wchar_t const* text;
    eTypeLayoutNode to;
    Kind kind;
    wchar_t const* after;
};

TEST(MigrationTest, ConvertsWhatIsTheSameValue) {
    Conversion const rows[] = {
        {Int, L"-7", Double, Kind::Converted, L"-7"},
        {Double, L"100000", Int, Kind::Converted, L"100000"},
        {Double, L"0.5", Int, Kind::Refused, L"1"},
        {Double, L"2147483648", Int, Kind::Refused, L"1"},
        {Double, L"NaN", Int, Kind::Refused, L"1"},
        {Double, L"0.1", Distance, Kind::Converted, L"0.1"},
        {Int, L"0", Bool, Kind::Converted, L"false"},
        {Int, L"2", Bool, Kind::Refused, L"false"},
        {Bool, L"true", Double, Kind::Converted, L"1"},
        {Double, L"0.1", String, Kind::Converted, L"0.1"},
        {String, L" 4 ", Int, Kind::Converted, L"4"},
        {String, L"4 W", Double, Kind::Refused, L"1"},
        {String, L"True", Bool, Kind::Converted, L"true"},
        {String, L"yes", Bool, Kind::Refused, L"false"},
        {String, L"fast", Options, Kind::Converted, L"fast"},
        {OptionsFromProfiles, L"Steel", StandardOptions, Kind::Converted, L"Steel"},
        {StandardOptions, L"x", String, Kind::Converted, L"x"},
        {FileAbsolute, L"/a", FileAttachment, Kind::Refused, L", 0 bytes, checksum cbf29ce484222325"},
        {String, L"text", Group, Kind::Refused, L""},
    };
    for (Conversion const& row : rows) {
        ParameterLayout before, after;
        before.m_profileEditor->AddNode(L"Value", row.from, L"1")->AddOption(L"1", L"");
        after.m_profileEditor->AddNode(L"Value", row.to, L"1")->AddOption(L"1", L"");
        ParameterDatabase database(&before);
        ASSERT_FALSE(SetText(Place(database).Get(L"Value"), row.text));
        Migration const migration = Migrate(database, after);
        ASSERT_EQ(migration.steps.size(), 1U);
        MigrationStep const& step = migration.steps[0];
        EXPECT_EQ(step.kind, row.kind) << row.text << step.reason;
        EXPECT_EQ(step.after, row.after) << row.text;
        EXPECT_FALSE(step.reason.empty());
    }
}

TEST(MigrationTest, LeadsIntoListsAndOutOfThem) {
    ParameterLayout before, after;
    before.m_profileEditor->AddNode(L"Single", Int, std::int32_t{1});
    before.m_profileEditor->AddNode(L"Plain")->AddNode(L"Power", Int, std::int32_t{2});
    before.m_profileEditor->AddNode(L"Many", Int, std::int32_t{3})
        ->SetList(true, L"Item", L"")
        ->SetMultiplicity(2);
    before.m_profileEditor->AddNode(L"Other", Int, std::int32_t{4})
        ->SetList(true, L"Item", L"")
        ->SetMultiplicity(1);
    LayoutNode* const old = before.m_profileEditor->AddNode(L"Lasers")->SetProfile(true, L"P");
    old->AddNode(L"Power", Int, std::int32_t{5}), old->AddNode(L"Out", Int, std::int32_t{6});
    after.m_profileEditor->AddNode(L"Single", Int, std::int32_t{0})->SetList(true, L"E", L"");
    after.m_profileEditor->AddNode(L"Plain")->SetProfile(true, L"P")->AddNode(L"Power", Int, std::int32_t{0});
    after.m_profileEditor->AddNode(L"Many", Int, std::int32_t{0});
    after.m_profileEditor->AddNode(L"Other", Int, std::int32_t{0})->SetProfile(true, L"P");
    LayoutNode* const fresh = after.m_profileEditor->AddNode(L"Beams")->SetProfile(true, L"Beam");
    fresh->AddNode(L"Sub")->AddNode(L"Watt", Int, std::int32_t{0}), fresh->AddNode(L"New", Bool, true);
    after.m_profileEditor->AddNode(L"Out", Int, std::int32_t{0});

    ParameterDatabase database(&before);
    ParameterNode lasers = database.GetProfileEditor().Get(L"Lasers");
    lasers.AddProfile(L"a", true).SetCanBeDeleted(true);
    lasers.AddProfile(L"a", true).Get(L"Power").SetValue(std::int32_t{7});
    Lines lines = LinesOf(
        Migrate(database, after,
                {{L"Lasers", L"Beams"}, {L"Lasers/Power", L"Beams/Sub/Watt"}, {L"Lasers/Out", L"Out"}}));
    ASSERT_EQ(lines.size(), 26U);
    EXPECT_EQ(lines[15], L"renamed Lasers_P[a] -> Beams_Beam[a] CanBeDeleted: true -> true");
    EXPECT_EQ(lines[17], L"renamed Lasers_P[a]_Power -> Beams_Beam[a]_Sub_Watt : 5 -> 5");
    EXPECT_EQ(lines[22], L"renamed Lasers_P[a]_Power -> Beams_Beam[a]_Sub_Watt : 7 -> 7");
    EXPECT_EQ(lines[25], L"new Out -> Out :  -> 0");
    lines.resize(14);
    EXPECT_EQ(lines,
              (Lines{L"converted Single -> Single_E[0] :  -> ", L"renamed Single -> Single_E[0] : 1 -> 1",
                     L"converted Plain -> Plain_P::Default:: :  -> ",
                     L"renamed Plain_Power -> Plain_P::Default::_Power : 2 -> 2",
                     L"converted Many_Item[0] -> Many :  -> ", L"renamed Many_Item[0] -> Many : 3 -> 3",
                     L"dropped Many_Item[1] ->  :  -> ", L"dropped Many_Item[1] ->  : 3 -> ",
                     L"dropped Other_Item[0] ->  :  -> ", L"dropped Other_Item[0] ->  : 4 -> ",
                     L"new Beams_Beam::Default::_Sub -> Beams_Beam::Default::_Sub :  -> ",
                     L"renamed Lasers_P::Default::_Power -> Beams_Beam::Default::_Sub_Watt : 5 -> 5",
                     L"dropped Lasers_P::Default::_Out ->  : 6 -> ",
                     L"new Beams_Beam::Default::_New -> Beams_Beam::Default::_New :  -> true"}));
}

TEST(MigrationTest, TakesFlagsAndDropsThoseThatHaveNoPlace) {
    ParameterLayout before, after;
    before.m_profileEditor->AddNode(L"L", Int, std::int32_t{1})->SetList(true, L"I", L"");
    before.m_profileEditor->AddNode(L"Gone", Int, std::int32_t{1})->SetList(true, L"I", L"");
    after.m_profileEditor->AddNode(L"L", Int, std::int32_t{1});
    ParameterDatabase database(&before);
    database.GetProfileEditor().Get(L"L").SetHidden(true);
    database.GetProfileEditor().Get(L"L").SetDisableAddRemove(true);
    database.GetProfileEditor().Get(L"Gone").AddListNode(true).SetReadOnly(true);
    EXPECT_EQ(LinesOf(Migrate(database, after)),
              (Lines{L"taken L -> L Hidden: true -> true", L"dropped L ->  DisableAddRemove: true -> ",
                     L"dropped Gone_I[0] ->  :  -> ", L"dropped Gone_I[0] ->  : 1 -> ",
                     L"dropped Gone_I[0] ->  ReadOnly: true -> "}));
}

TEST(MigrationTest, RefusesRenamingsThatCannotBe) {
    ParameterLayout layout;
    for (wchar_t const* name : {L"a", L"b", L"c"}) {
        layout.m_profileEditor->AddNode(name, Int, std::int32_t{name[0]});
    }
    ParameterDatabase const database(&layout);
    for (std::vector<Renaming> const& renamings : std::vector<std::vector<Renaming>>{
             {{L"x", L"a"}}, {{L"a", L"x"}}, {{L"a", L"b"}, {L"a", L"c"}}, {{L"a", L"c"}, {L"b", L"c"}}}) {
        EXPECT_THROW(Migrate(database, layout, renamings), std::invalid_argument);
    }
    Migration const exchanged = Migrate(database, layout, {{L"a", L"b"}, {L"b", L"a"}, {L"a", L"b"}});
    EXPECT_EQ(LinesOf(exchanged), (Lines{L"renamed b -> a : 98 -> 98", L"renamed a -> b : 97 -> 97",
                                         L"taken c -> c : 99 -> 99"}));
    EXPECT_EQ(LinesOf(Migrate(database, layout, {{L"a", L"b"}})),
              (Lines{L"new a -> a :  -> 97", L"renamed a -> b : 97 -> 97", L"dropped b ->  : 98 -> ",
                     L"taken c -> c : 99 -> 99"}));
}

TEST(MigrationTest, EnduresWhateverCanBeBuilt) {
    ParameterLayout layout;
    LayoutNode* const top = layout.m_profileEditor;
    top->AddNode(L"Both")
        ->SetList(true, L"I", L"")
        ->SetProfile(true, L"P")
        ->SetMultiplicity(2)
        ->AddNode(L"", Int, std::int32_t{1});
    top->AddNode(L"Category")
        ->SetIsCategoryList(true)
        ->AddNode(L"In", static_cast<eTypeLayoutNode>(99), L"x");
    top->AddNode(L"Same", Int, std::int32_t{1})->AddNode(L"Below", Int, std::int32_t{1});
    top->AddNode(L"Same", String, L"2")->SetList(true, L"I", L"");
    top->AddNode(L"Copied")->AppendNode(LayoutNode::MakeNode(*top->GetNode(L"Category")));
    top->AddNode(L"File", FileAttachment, L"")->SetList(true, L"", L"")->SetMultiplicity(1);
    LayoutNode* deep = top->AddNode(L"Deep")->SetList(true, L"D", L"");
    for (int level = 0; level < 256; ++level) {
        deep = deep->AddNode(L"Deep")->SetList(true, L"D", L"");
    }
    deep->AddNode(L"Value", Double, 1.0);
    ParameterDatabase database(&layout);
    database.GetProfileEditor().Get(L"Both").AddProfile(L"DisableAddRemove", true);
    Migration const migration = Migrate(database, layout);
    EXPECT_TRUE(Differences(database, migration.database).empty());
    EXPECT_TRUE(migration.database.IsEqual(database));
    EXPECT_TRUE(LayoutDifferences(layout, ParameterLayout(layout)).empty());
    ParameterLayout other;
    EXPECT_EQ(Differences(database, Migrate(database, other).database).size(), top->Size() - 1);
}

} // namespace
