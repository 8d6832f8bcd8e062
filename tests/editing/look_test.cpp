// SPDX-License-Identifier: Apache-2.0
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

/// Layouts with every kind of container and conditions between any two nodes, and values that often meet
/// them.
class Random {
public:
    explicit Random(unsigned seed) : m_random(seed) {}
    bool Chance(unsigned oneIn) { return m_random() % oneIn == 0; }
    template <class T> T const& AnyOf(std::vector<T> const& all) { return all[m_random() % all.size()]; }

    std::unique_ptr<ParameterLayout> MakeLayout() {
        auto layout = std::make_unique<ParameterLayout>();
        std::vector<LayoutNode*> groups{layout->m_profileEditor}, nodes;
        for (unsigned i = 0; i < 25; ++i) {
            std::vector<eTypeLayoutNode> const types{Group, Group,  Bool,           Double,
                                                     Int,   String, StandardOptions};
            eTypeLayoutNode const type = AnyOf(types);
            std::wstring const name = L"n" + std::to_wstring(i);
            LayoutNode* const node = AnyOf(groups)->AddNode(name.c_str(), type, L"");
            node->SetVisible(!Chance(9))
                ->SetReadOnly(Chance(9))
                ->SetPrecision(static_cast<int>(m_random() % 3));
            node->SetIsList(Chance(5))
                ->SetIsProfileList(type == Group && Chance(3))
                ->SetMultiplicity(m_random() % 3);
            nodes.push_back(node);
            if (type == Group) {
                groups.push_back(node);
            }
        }
        for (LayoutNode* node : nodes) {
            while (Chance(2)) {
                std::wstring const value = AnyOf(m_values);
                Chance(2) ? node->AddVisibilitySource(AnyOf(nodes), value)
                          : node->AddEditabilitySource(AnyOf(nodes), value);
            }
        }
        return layout;
    }

    void Fill(ParameterDatabase& database) {
        for (PlaceWalk walk(database); walk.Next();) {
            Place const& place = walk.GetPlace();
            ParameterNode cursor = place.GetCursor();
            cursor.SetHidden(Chance(9));
            cursor.SetReadOnly(Chance(9));
            if (place.GetKind() == PlaceKind::ProfileList && place.GetDepth() < 5) {
                cursor.AddProfile(L"a", true);
                cursor.AddProfile(L"b", false);
            } else if (place.IsLeaf() && !Chance(3)) {
                static_cast<void>(SetText(place, AnyOf(m_texts)));
            }
        }
    }

private:
    std::mt19937 m_random;
    std::vector<std::wstring> const m_values{L"True", L"False", L"0", L"0.", L"1.0",
                                             L"0.00", L"1",     L"",  L"a"};
    std::vector<std::wstring> const m_texts{L"true", L"0", L"1", L"a", L""};
};

/// What LookOf says, found by trying all places of the database for each condition.
class NaiveLook {
public:
    using Reason =
        std::tuple<std::size_t, LookReason::Kind, bool, LayoutNode const*, std::multiset<std::wstring>>;

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
                    reasons.emplace(depth, LookReason::Kind::Layout, isVisibility, nullptr,
                                    std::multiset<std::wstring>());
                }
                if (isVisibility ? at.GetCursor().GetHidden() : at.GetCursor().GetReadOnly()) {
                    reasons.emplace(depth, LookReason::Kind::Flag, isVisibility, nullptr,
                                    std::multiset<std::wstring>());
                }
                std::map<LayoutNode const*, std::multiset<std::wstring>> wanted;
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
    for (unsigned seed = 0; seed < 60; ++seed) {
        Random random(seed);
        auto const layout = random.MakeLayout();
        ParameterDatabase database(layout.get());
        random.Fill(database);
        NaiveLook const naive(database);
        LookWalk walk(database);
        for (Place const& place : naive.Places()) {
            Look const look = LookOf(place);
            std::multiset<NaiveLook::Reason> reasons;
            bool isVisible = true, isEditable = true;
            for (LookReason const& reason : look.reasons) {
                reasons.emplace(reason.depth, reason.kind, reason.isAboutVisibility, reason.source,
                                std::multiset<std::wstring>(reason.wanted.begin(), reason.wanted.end()));
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
