// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/walk.h>

#include "tests/database/test_layout.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace Zantrel {
namespace {

/// A line for each place: depth, kind, index, name and path; "-" where nothing stands.
template <class Cursor> std::wstring Outline(Walk<Cursor>&& walk) {
    std::wstring text;
    while (walk.Next()) {
        text += std::to_wstring(walk.Depth()) + L"GLliPdp"[static_cast<int>(walk.Kind())] +
                std::to_wstring(walk.Index()) + L' ' + std::wstring(walk.Name()) + L' ' +
                std::wstring(walk.Path()) + (walk.Node().IsValid() ? L"\n" : L" -\n");
    }
    EXPECT_FALSE(walk.Next()) << "once it has ended";
    return text;
}

/// A place of each kind, two profiles of one name, and entries that look like profiles and are none.
struct WalkedDatabase {
    ParameterLayout layout;
    LayoutNode* editor = layout.m_profileEditor;
    LayoutNode* leaf = editor->AddNode(L"G")->AddNode(L"I", Int, L"1");
    LayoutNode* counts = editor->AddNode(L"N", Int, L"5")->SetList(true, L"C", L"")->SetMultiplicity(2);
    LayoutNode* profiles = editor->AddNode(L"P")->SetProfile(true, L"M");
    LayoutNode* speed = profiles->AddNode(L"S", Int, L"3");
    LayoutNode* both = editor->AddNode(L"B")->SetList(true, L"E", L"")->SetProfile(true, L"E");
    LayoutNode* ofBoth = both->AddNode(L"X");
    ParameterDatabase values{&layout};

    ParameterNode At(LayoutNode const* node) { return values.GetRoot().Get(node); }

    WalkedDatabase() {
        ParameterNode list = At(profiles);
        list.SetReadOnly(true);
        for (std::int32_t number : {10, 20}) {
            list.AddProfile(L"a", true).Get(speed).SetValue(number);
        }
        list.m_pProperties->SetValue(L"b", true); // in front of a profile: a look-up finds this
        list.AddProfile(L"b", true).Get(speed).SetValue(std::int32_t(30));
        list.AddProfile(L"::DefaultProfile::", true);
    }
};

TEST(Walk, GivesEachPlaceInTheOrderOfTheLayoutWithTheStepsThatLeadToIt) {
    WalkedDatabase database;
    ParameterNode const editor = database.At(database.editor);
    std::wstring const common = L"0G0 ProfileEditor \n1G0 G G\n2L0 I G_I\n1l1 N N\n2i0  N_C[0]\n"
                                L"2i1  N_C[1]\n1P2 P P\n2d0  P_M::Default::\n3L0 S P_M::Default::_S\n"
                                L"2p0 a P_M[a]\n3L0 S P_M[a]_S\n2p1 a P_M[a]\n3L0 S P_M[a]_S\n"
                                L"2p2 b P_M[b]\n3L0 S P_M[b]_S\n";
    EXPECT_EQ(Outline(Walk(editor)), common + L"1P3 B B\n2d0  B_E::Default::\n3L0 X B_E::Default::_X\n");
    database.At(database.both).AddListNode(false);
    EXPECT_EQ(Outline(Walk(editor, SameNames::Each, TwofoldContainers::AreLists)),
              common + L"1l3 B B\n2i0  B_E[0]\n3L0 X B_E[0]_X\n");

    EXPECT_EQ(Outline(Walk(ParameterNode())), L"");
    EXPECT_EQ(Outline(Walk(database.At(database.leaf))), L"0L0 I \n");
    EXPECT_EQ(Outline(Walk(database.At(database.profiles).GetProfile(L"a"))), L"0G0 P \n1L0 S S\n");
    EXPECT_EQ(Outline(Walk(database.At(database.counts))), L"0l0 N \n1i0  C[0]\n1i1  C[1]\n");
}

TEST(Walk, GivesOfSeveralProfilesOfOneNameWhatWasAskedFor) {
    WalkedDatabase database;
    ParameterNode const list = database.At(database.profiles);
    for (auto const& [sameNames, expected] :
         {std::pair{SameNames::Each, L" a10 a20 b30"},
          {SameNames::FirstAgain, L" a10 a10 b?"}, // of "b" a flag is first
          {SameNames::FirstOnly, L" a10 b?"}}) {
        std::wstring profiles;
        for (Walk walk(list, sameNames); walk.Next();) {
            if (walk.Kind() == PlaceKind::Profile) {
                auto const* value = walk.Node().Get(database.speed).FindValue<std::int32_t>();
                profiles.append(L" ").append(walk.Name()).append(value ? std::to_wstring(*value) : L"?");
                EXPECT_EQ(walk.Node().m_pParentProperties, list.m_pProperties);
                walk.SkipContent();
            }
        }
        EXPECT_EQ(profiles, expected);
    }
}

TEST(Walk, GoesOnOneLevelBelowAPlaceWithoutContentUnlessThatIsSkipped) {
    WalkedDatabase database;
    PersistentProperties& bag = *database.At(database.editor).m_pProperties;
    bag.FindProperty(L"N")->SetDeleted(true);
    bag.FindProperty(L"G")->SetDeleted(true);
    bag.RemoveProperty(L"B", true);
    database.At(database.profiles).m_pProperties->RemoveProperty(L"::DefaultProfile::", false);
    EXPECT_EQ(Outline(Walk(database.At(database.editor), SameNames::FirstOnly)),
              L"0G0 ProfileEditor \n1G0 G G -\n2L0 I G_I -\n1l1 N N -\n"
              L"1P2 P P\n2d0  P_M::Default:: -\n3L0 S P_M::Default::_S -\n"
              L"2p0 a P_M[a]\n3L0 S P_M[a]_S\n2p1 b P_M[b] -\n3L0 S P_M[b]_S -\n1P3 B B -\n");
    std::wstring names;
    for (Walk walk(database.At(database.editor)); walk.Next();
         walk.Depth() != 0 ? walk.SkipContent() : void()) {
        names += walk.Name();
        EXPECT_TRUE(!walk.IsLeaf() && walk.Node().m_pNode == &walk.Layout());
    }
    EXPECT_EQ(names, L"ProfileEditorGNPB");
    LayoutNode const copy(*database.editor); // which is nobody's parent
    ParameterNode elsewhere = database.At(database.editor);
    elsewhere.m_pNode = &copy;
    EXPECT_EQ(Outline(Walk(elsewhere)), L"0G0 ProfileEditor \n1G0 G G -\n1L1 N N -\n1G2 P P -\n1G3 B B -\n");
}

TEST(Walk, MayChangeThePlaceWhereItStandsAndForgetsWhatWasAskedThere) {
    WalkedDatabase database;
    std::wstring values;
    for (Walk walk(database.At(database.editor)); walk.Next();) {
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
    WalkedDatabase database;
    ParameterDatabase const& values = database.values;
    ParameterView const list = values.GetProfileEditor().Get(database.profiles);
    EXPECT_TRUE(list.IsContainer() && list.GetReadOnly() && !list.GetHidden() && !list.GetDisableAddRemove());
    EXPECT_EQ(list.GetSize(), 3u);
    EXPECT_EQ(list.GetProfile(L"a").Get(L"S").GetValue<std::int32_t>(), 10);
    EXPECT_EQ(values.GetProfileEditor().Query(L"N_C[1]").GetValue<std::int32_t>(), 5);
    EXPECT_EQ(values.GetRoot().Get(database.leaf).FindValue<double>(), nullptr);
    EXPECT_TRUE(list.IsEqual(database.At(database.profiles)));

    ParameterNode const both = database.At(database.both);
    ParameterView const withoutSequence = both;
    std::wstring const shape = Shape(*both.m_pProperties);
    EXPECT_EQ(withoutSequence.GetSize(), 0u);
    EXPECT_THROW(withoutSequence.GetListNode(0), std::out_of_range);
    EXPECT_THROW(withoutSequence.GetDefault().GetListNode(0), std::out_of_range);
    EXPECT_EQ(Outline(Walk(values.GetProfileEditor(), SameNames::Each, TwofoldContainers::AreLists)),
              Outline(Walk(database.At(database.editor), SameNames::Each, TwofoldContainers::AreLists)));
    EXPECT_EQ(Shape(*both.m_pProperties), shape);
    EXPECT_EQ(both.GetSize(), 0u);
    EXPECT_NE(Shape(*both.m_pProperties), shape) << "which a cursor that writes adds to";
}

} // namespace
} // namespace Zantrel
