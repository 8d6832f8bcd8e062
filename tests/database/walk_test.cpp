// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/walk.h>

#include "tests/database/test_layout.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace Zantrel {
namespace {

/// A line for each place: depth, kind, index, name and path; "-" where nothing stands.
template <class Cursor> std::wstring Outline(Walk<Cursor>& walk) {
    std::wstring text;
    while (walk.Next()) {
        text += std::to_wstring(walk.Depth()) + L"GLliPdp"[static_cast<int>(walk.Kind())] +
                std::to_wstring(walk.Index()) + L' ' + std::wstring(walk.Name()) + L' ' +
                std::wstring(walk.Path()) + (walk.Node().IsValid() ? L"\n" : L" -\n");
    }
    return text;
}

/// A place of each kind, two profiles of one name, and entries that look like profiles and are none.
struct SmallDatabase {
    ParameterLayout layout;
    LayoutNode* editor = layout.m_profileEditor;
    LayoutNode* group = editor->AddNode(L"G");
    LayoutNode* leaf = group->AddNode(L"I", Int, L"1");
    LayoutNode* counts = editor->AddNode(L"N", Int, L"5")->SetList(true, L"C", L"")->SetMultiplicity(2);
    LayoutNode* profiles = editor->AddNode(L"P")->SetProfile(true, L"M");
    LayoutNode* speed = profiles->AddNode(L"S", Int, L"3");
    LayoutNode* both = editor->AddNode(L"B")->SetList(true, L"E", L"")->SetProfile(true, L"E");
    LayoutNode* x = both->AddNode(L"X");
    ParameterDatabase values{&layout};

    SmallDatabase() {
        ParameterNode list = Editor().Get(profiles);
        list.SetReadOnly(true);
        for (std::int32_t number : {10, 20}) {
            list.AddProfile(L"a", true).Get(speed).SetValue(number);
        }
        list.m_pProperties->SetValue(L"b", true); // in front of a profile: a look-up finds this
        list.AddProfile(L"b", true).Get(speed).SetValue(std::int32_t(30));
        list.AddProfile(L"::DefaultProfile::", true);
    }
    ParameterNode Editor() { return values.GetProfileEditor(); }
};

TEST(Walk, GivesEachPlaceInTheOrderOfTheLayoutWithTheStepsThatLeadToIt) {
    SmallDatabase database;
    std::wstring const common = L"0G0 ProfileEditor \n1G0 G G\n2L0 I G_I\n"
                                L"1l1 N N\n2i0  N_C[0]\n2i1  N_C[1]\n"
                                L"1P2 P P\n2d0  P_M::Default::\n3L0 S P_M::Default::_S\n"
                                L"2p0 a P_M[a]\n3L0 S P_M[a]_S\n2p1 a P_M[a]\n3L0 S P_M[a]_S\n"
                                L"2p2 b P_M[b]\n3L0 S P_M[b]_S\n";
    Walk everything(database.Editor());
    EXPECT_EQ(Outline(everything), common + L"1P3 B B\n2d0  B_E::Default::\n3L0 X B_E::Default::_X\n");
    database.Editor().Get(database.both).AddListNode(false);
    Walk asLists(database.Editor(), SameNames::Each, TwofoldContainers::AreLists);
    EXPECT_EQ(Outline(asLists), common + L"1l3 B B\n2i0  B_E[0]\n3L0 X B_E[0]_X\n");
}

TEST(Walk, BeginsWithAnyCursorAndEndsAtOnceWithoutALayoutNode) {
    SmallDatabase database;
    ParameterNode const list = database.Editor().Get(database.profiles);
    std::pair<ParameterNode, std::wstring> const rows[] = {
        {ParameterNode(), L""},
        {database.Editor().Get(database.leaf), L"0L0 I \n"},
        {list.GetProfile(L"a"), L"0G0 P \n1L0 S S\n"},
        {database.Editor().Get(database.counts), L"0l0 N \n1i0  C[0]\n1i1  C[1]\n"},
    };
    for (auto const& [top, outline] : rows) {
        Walk walk(top);
        EXPECT_EQ(Outline(walk), outline);
        EXPECT_FALSE(walk.Next()) << "once it has ended";
    }
}

TEST(Walk, GivesOfSeveralProfilesOfOneNameWhatWasAskedFor) {
    SmallDatabase database;
    std::pair<SameNames, std::wstring> const rows[] = {
        {SameNames::Each, L" a10 a20 b30"},
        {SameNames::FirstAgain, L" a10 a10 b?"}, // the first "b" is a flag
        {SameNames::FirstOnly, L" a10 b?"},
    };
    for (auto const& [sameNames, expected] : rows) {
        std::wstring profiles;
        for (Walk walk(database.Editor().Get(database.profiles), sameNames); walk.Next();) {
            if (walk.Kind() == PlaceKind::Profile) {
                auto const* value = walk.Node().Get(database.speed).FindValue<std::int32_t>();
                profiles.append(L" ").append(walk.Name()).append(value ? std::to_wstring(*value) : L"?");
                EXPECT_EQ(walk.Node().m_pParentProperties,
                          database.Editor().Get(database.profiles).m_pProperties);
                walk.SkipContent();
            }
        }
        EXPECT_EQ(profiles, expected);
    }
}

TEST(Walk, GoesOnOneLevelBelowAPlaceWithoutContentUnlessThatIsSkipped) {
    SmallDatabase database;
    database.Editor().m_pProperties->FindProperty(L"N")->SetDeleted(true);
    database.Editor().m_pProperties->FindProperty(L"G")->SetDeleted(true);
    database.Editor().m_pProperties->RemoveProperty(L"B", true);
    database.Editor().Get(database.profiles).m_pProperties->RemoveProperty(L"::DefaultProfile::", false);
    Walk all(database.Editor(), SameNames::FirstOnly);
    EXPECT_EQ(Outline(all), L"0G0 ProfileEditor \n1G0 G G -\n2L0 I G_I -\n1l1 N N -\n"
                            L"1P2 P P\n2d0  P_M::Default:: -\n3L0 S P_M::Default::_S -\n"
                            L"2p0 a P_M[a]\n3L0 S P_M[a]_S\n2p1 b P_M[b] -\n3L0 S P_M[b]_S -\n1P3 B B -\n");
    std::wstring names;
    for (Walk walk(database.Editor()); walk.Next(); walk.Depth() != 0 ? walk.SkipContent() : void()) {
        names += walk.Name();
        EXPECT_EQ(walk.IsLeaf(), false);
        EXPECT_EQ(walk.Node().m_pNode, &walk.Layout());
    }
    EXPECT_EQ(names, L"ProfileEditorGNPB");
}

TEST(Walk, MayChangeThePlaceWhereItStandsAndForgetsWhatWasAskedThere) {
    SmallDatabase database;
    std::wstring values;
    for (Walk walk(database.Editor()); walk.Next();) {
        if (walk.Kind() == PlaceKind::List) {
            walk.Node().AddListNode(true).SetValue(std::int32_t(9));
        } else if (walk.Kind() == PlaceKind::Item) {
            values += std::to_wstring(walk.Node().GetValue<std::int32_t>());
        } else if (walk.Kind() == PlaceKind::Group) {
            EXPECT_EQ(walk.Node().Query(L"I").IsValid(), walk.Name() == L"G");
        }
    }
    EXPECT_EQ(values, L"559");
}

TEST(View, ReadsWhatACursorReadsAndAddsNothing) {
    SmallDatabase database;
    ParameterDatabase const& values = database.values;
    ParameterView const list = values.GetProfileEditor().Get(database.profiles);
    EXPECT_EQ(list.GetLayoutNode(), database.profiles);
    EXPECT_TRUE(list.IsContainer() && list.GetReadOnly() && !list.GetHidden() && !list.GetDisableAddRemove());
    EXPECT_EQ(list.GetSize(), 3u);
    EXPECT_EQ(list.GetProfile(L"a").Get(L"S").GetValue<std::int32_t>(), 10);
    EXPECT_EQ(values.GetProfileEditor().Query(L"N_C[1]").GetValue<std::int32_t>(), 5);
    EXPECT_EQ(values.GetRoot().Get(database.leaf).FindValue<double>(), nullptr);
    EXPECT_TRUE(list.IsEqual(database.Editor().Get(database.profiles)));

    ParameterNode both = database.Editor().Get(database.both);
    std::wstring const shape = Shape(*both.m_pProperties);
    ParameterView const withoutSequence = both;
    EXPECT_EQ(withoutSequence.GetSize(), 0u);
    EXPECT_THROW(withoutSequence.GetListNode(0), std::out_of_range);
    EXPECT_THROW(withoutSequence.GetDefault().GetListNode(0), std::out_of_range);
    Walk walk(values.GetProfileEditor(), SameNames::Each, TwofoldContainers::AreLists);
    Walk same(database.Editor(), SameNames::Each, TwofoldContainers::AreLists);
    EXPECT_EQ(Outline(walk), Outline(same));
    EXPECT_EQ(Shape(*both.m_pProperties), shape);
    EXPECT_EQ(both.GetSize(), 0u);
    EXPECT_NE(Shape(*both.m_pProperties), shape) << "which a cursor that writes adds to";
}

} // namespace
} // namespace Zantrel
