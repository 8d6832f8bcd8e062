// SPDX-License-Identifier: Apache-2.0
#include "tests/editing/generated.h"

#include <zantrel/editing/look.h>
#include <zantrel/editing/value_text.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;
using EditingTests::Make;

/// What LookOf says, found by trying all places of the database for each condition.
class NaiveLook {
public:
    using Values = std::multiset<std::wstring>;
    using Reason = std::tuple<std::size_t, LookReason::Kind, bool, LayoutNode const*, Values>;

    explicit NaiveLook(ParameterDatabase& database) {
        for (PlaceWalk walk(database); walk.Next();) {
            m_places.push_back(walk.GetPlace());
        }
    }
    std::vector<Place> const& Places() const { return m_places; }

    std::multiset<Reason> ReasonsFor(Place const& place) const {
        std::multiset<Reason> reasons;
        for (std::size_t depth = 0; depth <= place.GetDepth(); ++depth) {
            Place const at = place.GetOuter(depth);
            LayoutNode const& node = *at.GetLayoutNode();
            for (bool const isVisibility : {true, false}) {
                if (!at.IsEntry() && (isVisibility ? !node.m_visible : node.m_readOnly)) {
                    reasons.emplace(depth, LookReason::Kind::Layout, isVisibility, nullptr, Values());
                }
                if (isVisibility ? at.GetCursor().GetHidden() : at.GetCursor().GetReadOnly()) {
                    reasons.emplace(depth, LookReason::Kind::Flag, isVisibility, nullptr, Values());
                }
                std::map<LayoutNode const*, Values> wanted;
                for (auto const& condition :
                     isVisibility ? node.m_visibilitySources : node.m_editabilitySources) {
                    wanted[condition.m_source].insert(condition.m_value);
                }
                for (auto const& [source, values] : wanted) {
                    auto const text = TextOfSource(at, source);
                    if (!at.IsEntry() && text && values.count(*text) == 0) {
                        reasons.emplace(depth, LookReason::Kind::Condition, isVisibility, source, values);
                    }
                }
            }
        }
        return reasons;
    }

private:
    /// Of all places of the source the one that shares most of the way, if it leaves it by default profiles.
    std::optional<std::wstring> TextOfSource(Place const& from, LayoutNode const* source) const {
        std::optional<std::wstring> text;
        std::size_t most = 0;
        for (Place const& place : m_places) {
            if (place.GetLayoutNode() != source || place.GetKind() != PlaceKind::Leaf) {
                continue;
            }
            std::size_t shared = 0;
            bool counts = true;
            for (std::size_t depth = 0; depth <= place.GetDepth(); ++depth) {
                bool const isShared =
                    depth == shared && depth <= from.GetDepth() && BagAt(place, depth) == BagAt(from, depth);
                shared += isShared;
                PlaceKind const kind = place.GetOuter(depth).GetKind();
                counts = counts && (isShared || (kind != PlaceKind::Item && kind != PlaceKind::Profile));
            }
            if (counts && shared > most) {
                most = shared;
                text.reset();
                VisitValue(place.GetCursor(), [&](auto const& value) { text = Format(*source, value); });
            }
        }
        return text;
    }
    static PersistentProperties* BagAt(Place const& place, std::size_t depth) {
        return place.GetOuter(depth).GetCursor().m_pProperties;
    }
    template <class T> static std::wstring Format(LayoutNode const& node, T const& value) {
        return node.FormatValue(value);
    }
    static std::wstring Format(LayoutNode const&, KelAM::FileContent const& value) { return value.m_name; }

    std::vector<Place> m_places;
};

TEST(LookTest, IsThatOfASearchThroughAllPlaces) {
    std::size_t conditions = 0;
    for (unsigned seed = 0; seed < 15; ++seed) {
        auto [generated, layout, database] = Make(seed);
        NaiveLook const naive(database);
        LookWalk walk(database);
        for (Place const& place : naive.Places()) {
            Look const look = LookOf(place);
            std::multiset<NaiveLook::Reason> reasons;
            bool isVisible = true, isEditable = true;
            for (LookReason const& reason : look.reasons) {
                reasons.emplace(reason.depth, reason.kind, reason.isAboutVisibility, reason.source,
                                NaiveLook::Values(reason.wanted.begin(), reason.wanted.end()));
                EXPECT_EQ(reason.node, place.GetOuter(reason.depth).GetLayoutNode());
                (reason.isAboutVisibility ? isVisible : isEditable) = false;
                conditions += reason.kind == LookReason::Kind::Condition;
            }
            ASSERT_EQ(reasons, naive.ReasonsFor(place))
                << seed << ' ' << testing::PrintToString(place.GetPath());
            EXPECT_EQ(std::pair(look.isVisible, look.isEditable), std::pair(isVisible, isEditable));

            ASSERT_TRUE(walk.Next());
            EXPECT_EQ(walk.GetPlace().GetPath(), place.GetPath());
            EXPECT_EQ(walk.GetLook().isVisible, isVisible);
            EXPECT_EQ(walk.GetLook().isEditable, isEditable);
            EXPECT_TRUE(std::equal(look.reasons.begin(), look.reasons.end(), walk.GetLook().reasons.begin(),
                                   walk.GetLook().reasons.end(), [&](auto const& left, auto const& right) {
                                       return SentenceOf(left, place) == SentenceOf(right, place);
                                   }));
        }
        EXPECT_FALSE(walk.Next());
    }
    EXPECT_GT(conditions, 500u);
}

/// The examples of docs/conditions.md.
TEST(LookTest, TellsWhatIsMissing) {
    ParameterLayout layout;
    LayoutNode* const materials = layout.m_profileEditor->AddNode(L"Materials")->SetProfile(true, L"Profile");
    LayoutNode* const mode = materials->AddNode(L"Mode", String, L"Simple");
    LayoutNode* const heated = materials->AddNode(L"Heated", Bool, false);
    LayoutNode* const power = materials->AddNode(L"Power", Double, 200.0)->SetDisplayName(L"Laser power");
    power->AddVisibilitySource<std::wstring>(mode, L"Expert")->AddVisibilitySource(heated, true);
    power->AddVisibilitySource<std::wstring>(mode, L"Service");
    ParameterDatabase database(&layout);
    Place const steel = Place(database).Get(L"Materials");
    ParameterNode(steel.GetCursor()).AddProfile(L"Steel", true).SetReadOnly(true);
    Place const place = steel.GetProfile(L"Steel").Get(L"Power");

    std::vector<std::wstring> sentences;
    for (LookReason const& reason : LookOf(place).reasons) {
        sentences.push_back(SentenceOf(reason, place));
    }
    EXPECT_EQ(
        sentences,
        (std::vector<std::wstring>{
            L"Profile \"Steel\" of \"Materials\" is read-only.",
            L"\"Laser power\" is shown only where \"Mode\" is \"Expert\" or \"Service\"; it is \"Simple\".",
            L"\"Laser power\" is shown only where \"Heated\" is \"True\"; it is \"False\"."}));
    EXPECT_FALSE(SetText(steel.GetProfile(L"Steel").Get(L"Mode"), L"Service"));
    EXPECT_FALSE(LookOf(place).isVisible);
    EXPECT_FALSE(SetText(steel.GetProfile(L"Steel").Get(L"Heated"), L"true"));
    EXPECT_TRUE(LookOf(place).isVisible);
    EXPECT_FALSE(LookOf(steel.GetDefaultProfile().Get(L"Power")).isVisible);
}

} // namespace
