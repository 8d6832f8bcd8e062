// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/database/walk.h>
#include <zantrel/editing/place.h>
#include <zantrel/editing/value_text.h>
#include <zantrel/layout/parameter_layout.h>

#include <cstddef>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace EditingTests {

using namespace Zantrel;

/// The values of a database by their paths; of several profiles of one name those of the last.
inline std::map<std::wstring, std::wstring> TextsIn(ParameterDatabase const& database) {
    std::map<std::wstring, std::wstring> texts;
    for (Editing::PlaceWalk walk(database); walk.Next();) {
        if (walk.GetPlace().IsLeaf()) {
            texts[walk.GetPlace().GetPath()] = Editing::TextOf(walk.GetPlace().GetCursor());
        }
    }
    return texts;
}

/// Layouts whose attributes mean something, and values of which many are allowed and some are not: small
/// numbers and few words, so that they meet. Looks the same everywhere for each seed.
class Generated {
public:
    explicit Generated(unsigned seed, bool hasTwins = true) : m_random(seed), m_hasTwins(hasTwins) {}

    /// With some fifty nodes, containers in containers, conditions, and with twins at times siblings of one
    /// name.
    std::unique_ptr<ParameterLayout> MakeLayout() {
        auto layout = std::make_unique<ParameterLayout>();
        layout->SetName(L"Generated");
        m_groups = {layout->m_profileEditor};
        m_nodes.clear();
        m_lists.clear();
        while (m_nodes.size() < 50) {
            AddNode();
        }
        for (LayoutNode* node : m_nodes) {
            SetChoice(*node);
            SetConditions(*node);
        }
        layout->AddCategoryNodeIfNeeded();
        return layout;
    }

    /// Sets values and flags, and adds items and profiles, at times two of a name, at one in so many places.
    void Fill(ParameterDatabase& database, unsigned oneIn = 1) {
        for (Editing::PlaceWalk walk(database); walk.Next();) {
            if (OneIn(oneIn)) {
                Change(walk.GetPlace());
            }
        }
    }

    /// A text for a value of that node, as a rule one that it can take.
    std::wstring Text(LayoutNode const& node) {
        switch (OneIn(9) ? eTypeLayoutNode::StandardOptions : node.m_type) {
        case eTypeLayoutNode::Int:
            return std::to_wstring(Below(12)) + (OneIn(9) ? L"000000000" : L"");
        case eTypeLayoutNode::Double:
        case eTypeLayoutNode::Distance:
            return OneIn(9)   ? AnyOf({L"INF", L"-INF", L"NaN", L"-0", L"1e300"})
                   : OneIn(3) ? L"-" + std::to_wstring(Below(3)) + L".5"
                              : std::to_wstring(Below(12));
        case eTypeLayoutNode::Bool:
            return AnyOf({L"true", L"false"});
        default:
            return Word();
        }
    }

    std::wstring Word() {
        return AnyOf({L"", L"a", L"b", L"ab", L"aab", L"Default", L"\x00E4", L"\x6F22", L"a_b", L"7"});
    }
    unsigned Below(unsigned end) { return static_cast<unsigned>(m_random() % end); }
    bool OneIn(unsigned count) { return Below(count) == 0; }

private:
    std::wstring AnyOf(std::initializer_list<wchar_t const*> texts) {
        return std::data(texts)[Below(static_cast<unsigned>(texts.size()))];
    }
    template <class Add> void AddSome(Add add) {
        for (unsigned count = Below(4); count != 0; --count) {
            add();
        }
    }

    void Change(Editing::Place const& place) {
        ParameterNode node = place.GetCursor();
        node.SetReadOnly(OneIn(8));
        node.SetHidden(OneIn(8));
        if (place.GetKind() == PlaceKind::List) {
            AddSome([&] { node.AddListNode(OneIn(2)); });
        } else if (place.GetKind() == PlaceKind::ProfileList) {
            AddSome([&] { AddProfile(node); });
            node.SetDisableAddRemove(OneIn(4));
        } else if (node.FindValue<KelAM::FileContent>() != nullptr) {
            std::wstring const name = Word();
            node.SetValue(KelAM::FileContent(name, std::vector<std::byte>(name.empty() ? 0 : Below(3))));
        } else if (!OneIn(3)) {
            Editing::SetText(place, Text(*node.m_pNode));
        }
    }

    void AddProfile(ParameterNode list) {
        std::wstring const name = Word();
        ParameterNode profile = list.AddProfile(name.c_str(), OneIn(2));
        profile.SetCanBeDeleted(OneIn(2));
        profile.SetNameReadOnly(OneIn(4));
        profile.SetUserDefaultProfile(OneIn(4));
    }

    void AddNode() {
        auto const type = static_cast<eTypeLayoutNode>(OneIn(3) ? 0 : Below(11));
        std::wstring const name =
            L"n" + std::to_wstring(m_hasTwins && OneIn(12) ? Below(3) : 10 + m_nodes.size());
        LayoutNode* const parent = m_groups[Below(static_cast<unsigned>(m_groups.size()))];
        LayoutNode* const node = parent->AddNode(name.c_str(), type, L"");
        m_nodes.push_back(node);
        SetAttributes(*node);
        if (OneIn(4)) {
            node->SetList(true, L"Item", std::wstring());
        } else if (OneIn(4)) {
            OneIn(4) ? node->SetCategoryList(true, L"Category") : node->SetProfile(true, L"Profile");
            m_lists.push_back(node);
        }
        if (type == Group) {
            m_groups.push_back(node);
        }
    }

    void SetAttributes(LayoutNode& node) {
        node.m_defaultValue = OneIn(2) ? Text(node) : L"";
        node.m_min = OneIn(3) ? AnyOf({L"2", L"-1.5", L"many", L" 3 ", L"NaN"}) : L"";
        node.m_max = OneIn(3) ? AnyOf({L"5", L"7.25", L"12abc", L"INF"}) : L"";
        node.m_maxLength = OneIn(3) ? 1 + Below(2) : 0;
        node.m_regex = OneIn(3) ? AnyOf({L"a+b?", L"^[a-z_]+$", L".", L"(", L"(a|b|ab)*"}) : L"";
        node.m_regexUserFriendly = OneIn(2) ? L"In words" : L"";
        node.m_isValueUnique = OneIn(3);
        node.m_allowEmpty = OneIn(2);
        node.m_visible = !OneIn(6);
        node.m_readOnly = OneIn(6);
        node.m_multiplicity = Below(3);
        node.m_multiplicityMin = OneIn(3) ? Below(4) : 0;
        node.m_multiplicityMax = OneIn(3) ? Below(4) : 0;
        node.m_multiplicityMaxMessage = OneIn(2) ? L"No more" : L"";
        node.m_userCanAddRemove = !OneIn(4);
        node.m_userCanSort = OneIn(2);
        node.m_userCanRemoveAnyElement = !OneIn(3);
        node.m_displayName = OneIn(2) ? L"Shown" : L"";
        node.m_precision = static_cast<std::int32_t>(Below(5));
        if (node.m_type == Options) {
            AddSome([&] {
                std::wstring const value = Word();
                node.AddOption(value, Word());
            });
        }
    }

    void SetChoice(LayoutNode& node) {
        if (node.m_type != OptionsFromProfiles || m_lists.empty()) {
            return;
        }
        LayoutNode const* const list = m_lists[Below(static_cast<unsigned>(m_lists.size()))];
        switch (Below(3)) {
        case 0:
            node.SetProfileNode(list);
            break;
        case 1:
            node.SetProfileName(OneIn(4) ? L"Missing" : list->m_name);
            break;
        default:
            node.SetTypeFromProfiles(list);
        }
    }

    void SetConditions(LayoutNode& node) {
        while (OneIn(3)) {
            LayoutNode* const source = m_nodes[Below(static_cast<unsigned>(m_nodes.size()))];
            bool const isNumber = source->m_type == Double || source->m_type == Distance;
            std::wstring const value = source->m_type == Bool ? L"True"
                                       : isNumber && OneIn(2) ? source->FormatValue(double(Below(12)))
                                                              : Text(*source);
            OneIn(2) ? node.AddVisibilitySource(source, value) : node.AddEditabilitySource(source, value);
        }
    }

    std::mt19937 m_random;
    bool m_hasTwins;
    std::vector<LayoutNode*> m_groups, m_nodes, m_lists;
};

/// A layout with a database on it, and what goes on from there.
struct Made {
    Generated generated;
    std::unique_ptr<ParameterLayout> layout;
    ParameterDatabase database;
};

inline Made Make(unsigned seed, bool hasTwins = true) {
    Generated generated(seed, hasTwins);
    auto layout = generated.MakeLayout();
    ParameterDatabase database(layout.get());
    generated.Fill(database);
    return {std::move(generated), std::move(layout), std::move(database)};
}

} // namespace EditingTests
