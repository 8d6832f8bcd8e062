// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/place.h>
#include <zantrel/editing/validation.h>
#include <zantrel/editing/value_text.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <utility>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

/// Names that hold what stands between the steps of a path.
class PlaceTest : public testing::Test {
protected:
    PlaceTest() {
        LayoutNode* materials = m_layout.m_profileEditor->AddNode(L"Materials")->SetProfile(true, L"Profile");
        materials->AddNode(L"Power", Double, 200.0);
        materials->AddNode(L"Power_Max", Double, 300.0);
        LayoutNode* passes = materials->AddNode(L"Power_Profile")->SetList(true, L"Pass", std::wstring());
        passes->AddNode(L"Speed", Int, std::int32_t{5});
        m_layout.AddCategoryNodeIfNeeded();
    }
    ParameterLayout m_layout;
};

TEST_F(PlaceTest, IsFoundByItsPathWhateverNamesHold) {
    ParameterDatabase database(&m_layout);
    ParameterNode materials = database.GetProfileEditor().Get(L"Materials");
    for (wchar_t const* name : {L"a", L"a]_Power", L"][", L"::Default::"}) {
        materials.AddProfile(name, true).Get(L"Power_Profile").AddListNode(true);
    }
    std::size_t places = 0;
    for (PlaceWalk walk(database); walk.Next(); ++places) {
        std::wstring const path = walk.GetPlace().GetPath();
        EXPECT_EQ(path, walk.GetPathBelowTop());
        std::optional<Place> const found = Place::Find(database, path);
        ASSERT_TRUE(found) << places;
        EXPECT_EQ(found->GetCursor().m_pProperties, walk.GetPlace().GetCursor().m_pProperties) << places;
        EXPECT_EQ(found->GetKind(), walk.GetPlace().GetKind());
        EXPECT_EQ(found->GetName(), walk.GetPlace().GetName());
        EXPECT_EQ(found->IsLeaf(), walk.GetPlace().IsLeaf());
    }
    EXPECT_EQ(places, 1 + 1 + 5 * 4 + 4 * 2);
    for (wchar_t const* path :
         {L"Material", L"Materials_", L"Materials_Profile[b]", L"Materials_Profile",
          L"Materials_Profile[a]_Power_Profile_Pass[1]", L"Materials_Profile[a]_Power_Profile_Pass[00]",
          L"Materials_Profile[::DefaultProfile::]"}) {
        EXPECT_FALSE(Place::Find(database, path)) << path;
    }
}

TEST_F(PlaceTest, TakesOnlyTextsThatAreWhollyAValue) {
    ParameterDatabase database(&m_layout);
    Place const power = Place(database).Get(L"Materials").GetDefaultProfile().Get(L"Power");
    EXPECT_FALSE(SetText(power, L" +5.25e1 "));
    EXPECT_EQ(TextOf(power.GetCursor()), L"52.5");
    for (wchar_t const* text : {L"", L"5 W", L"5,5", L"0x10", L"nan(1)", L"infinity", L"1e999", L"+-1"}) {
        std::optional<Finding> const finding = SetText(power, text);
        ASSERT_TRUE(finding) << text;
        EXPECT_EQ(finding->kind, FindingKind::NoNumber);
        EXPECT_EQ(finding->path, L"Materials_Profile::Default::_Power");
    }
    EXPECT_EQ(TextOf(power.GetCursor()), L"52.5");
}

TEST_F(PlaceTest, SetsNothingInTheContentOfAnotherNodeOfItsName) {
    std::pair<wchar_t const*, eTypeLayoutNode> const firsts[] = {
        {L"Alone", StandardOptions}, {L"Number", Int}, {L"Group", Group}};
    for (auto const& [name, type] : firsts) {
        m_layout.m_profileEditor->AddNode(name, type, L"");
        m_layout.m_profileEditor->AddNode(name, StandardOptions, L"");
    }
    ParameterDatabase database(&m_layout);
    std::wstring refused;
    for (PlaceWalk walk(database); walk.Next();) {
        Place const& place = walk.GetPlace();
        if (place.GetLayoutNode()->m_type == StandardOptions) {
            bool const isRefused = SetText(place, L"x").has_value();
            EXPECT_EQ(TextOf(place.GetCursor()), isRefused ? L"" : L"x");
            EXPECT_EQ(Objections(place, L"x").empty(), !isRefused);
            refused += isRefused ? place.GetName() : L"";
        }
    }
    EXPECT_EQ(refused, L"NumberGroup");
}

} // namespace
