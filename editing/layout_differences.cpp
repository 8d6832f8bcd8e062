// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/layout_differences.h>

#include "editing/matching.h"
#include "editing/node_path.h"
#include "editing/type_word.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Zantrel::Editing {

namespace {

// --- What a field says, and how it is shown ---

using Node = LayoutNode;

using Condition = std::pair<std::wstring, std::wstring>; ///< path of the source, and value

/// In a form that can be compared across layouts.
template <class Field> Field const& Facts(Field const& field) { return field; }
std::wstring Facts(LayoutNode const* node) { return PathOf(node); }
std::vector<Condition> Facts(std::vector<LayoutNodeSource> const& sources) {
    std::vector<Condition> conditions;
    for (LayoutNodeSource const& source : sources) {
        conditions.emplace_back(PathOf(source.m_source), source.m_value);
    }
    return conditions;
}

std::wstring Shown(std::wstring const& text) { return text; }
std::wstring Shown(bool flag) { return flag ? L"True" : L"False"; }
std::wstring Shown(eTypeLayoutNode type) { return TypeWord(type); }
std::wstring Shown(std::int32_t number) { return std::to_wstring(number); }
std::wstring Shown(std::uint64_t number) { return std::to_wstring(number); }
std::wstring Shown(Condition const& condition) { return condition.first + L" = " + condition.second; }
template <class Part> std::wstring Shown(std::vector<Part> const& parts) {
    std::wstring text;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        text.append(i == 0 ? L"" : L";").append(Shown(parts[i]));
    }
    return text;
}

// --- The catalogue ---

// A field is compared and shown only by its row below: a new one of LayoutNode has to get one. What refers to
// other nodes is compared by their paths, as two layouts share no addresses.
struct Attribute {
    std::wstring_view word;
    bool (*isSame)(Node const& first, Node const& second);
    std::wstring (*show)(Node const& node);
};

template <auto Field> constexpr Attribute Row(std::wstring_view word) {
    return {word,
            [](Node const& first, Node const& second) { return Facts(first.*Field) == Facts(second.*Field); },
            [](Node const& node) { return Shown(Facts(node.*Field)); }};
}

/// Each field of a node, in the words of the meta file. What has no word there, or shares it with another
/// field, goes by the field's name.
constexpr Attribute Attributes[] = {
    Row<&Node::m_name>(L"Name"),
    Row<&Node::m_type>(L"Type"),
    Row<&Node::m_defaultValue>(L"Default"),
    Row<&Node::m_min>(L"Min"),
    Row<&Node::m_max>(L"Max"),
    Row<&Node::m_precision>(L"Precision"),
    Row<&Node::m_optionValues>(L"Options"),
    Row<&Node::m_optionDisplayNames>(L"OptionDisplayNames"),
    Row<&Node::m_profileName>(L"ProfileName"),
    Row<&Node::m_profileNode>(L"ProfileNode"),
    Row<&Node::m_requestName>(L"ProcessorRequest"),
    Row<&Node::m_triggerPropertyName>(L"TriggerPropertyName"),
    Row<&Node::m_fileFilter>(L"FileFilter"),
    Row<&Node::m_allowEmpty>(L"AllowNull"),
    Row<&Node::m_isValueUnique>(L"ValueUnique"),
    Row<&Node::m_enableMultiLine>(L"EnableMultiLine"),
    Row<&Node::m_maxLength>(L"MaxLength"),
    Row<&Node::m_regex>(L"Regex"),
    Row<&Node::m_regexUserFriendly>(L"RegexUserFriendly"),
    Row<&Node::m_propName>(L"PropertyName"),
    Row<&Node::m_writeToParameterFile>(L"WriteToParameterFile"),
    Row<&Node::m_childrenWriteToParameterFile>(L"ChildrenWriteToParameterFile"),

    Row<&Node::m_displayName>(L"DisplayName"),
    Row<&Node::m_prefix>(L"Prefix"),
    Row<&Node::m_postfix>(L"Postfix"),
    Row<&Node::m_description>(L"Description"),
    Row<&Node::m_imageDescription>(L"DescriptionImage"),
    Row<&Node::m_imageStretch>(L"DescriptionImageStretch"),
    Row<&Node::m_displayNameSharedSizeGroup>(L"DisplayNameSharedSizeGroup"),
    Row<&Node::m_postfixSharedSizeGroup>(L"PostfixSharedSizeGroup"),
    Row<&Node::m_visible>(L"Visible"),
    Row<&Node::m_readOnly>(L"IsReadOnly"),
    Row<&Node::m_expanded>(L"Expanded"),
    Row<&Node::m_hideName>(L"HideParameterName"),

    Row<&Node::m_identifier>(L"VisibilityIdentifier"),
    Row<&Node::m_visibilitySources>(L"VisibilitySource"),
    Row<&Node::m_editabilitySources>(L"EditabilitySource"),
    Row<&Node::m_visibilityRequest>(L"VisibilityRequest"),
    Row<&Node::m_editorLicenseChecks>(L"LicenseForEditorPaneVisibility"),
    Row<&Node::m_disableForParents>(L"DisableForParents"),
    Row<&Node::m_disableForSubParts>(L"DisableForSubParts"),
    Row<&Node::m_showOnlyPartsSelectedInTessra>(L"ShowOnlyPartsSelectedInTessra"),
    Row<&Node::m_profileEditingPolicy>(L"ProfileEditingPolicy"),

    Row<&Node::m_isList>(L"IsList"),
    Row<&Node::m_isProfileList>(L"IsProfileList"),
    Row<&Node::m_isCategoryList>(L"IsCategoryList"),
    Row<&Node::m_canBeTransformed>(L"CanBeTransformed"),
    Row<&Node::m_performTransform>(L"PerformTransform"),
    Row<&Node::m_nodeName>(L"NodeName"),
    Row<&Node::m_nodeDisplayName>(L"NodeDisplayName"),
    Row<&Node::m_containerDisplayName>(L"ContainerDisplayName"),
    Row<&Node::m_containerDescription>(L"ContainerDescription"),
    Row<&Node::m_userCanAddRemove>(L"CanUserAddRemove"),
    Row<&Node::m_userCanSort>(L"CanUserSort"),
    Row<&Node::m_userCanRemoveAnyElement>(L"RemovingType"),
    Row<&Node::m_multiplicity>(L"Multiplicity"),
    Row<&Node::m_multiplicityMax>(L"MultiplicityLimit"),
    Row<&Node::m_multiplicityMaxMessage>(L"MultiplicityLimitMessage"),
    Row<&Node::m_multiplicityMin>(L"MultiplicityMinLimit"),
    Row<&Node::m_multiplicityMinMessage>(L"MultiplicityMinLimitMessage"),
};

// --- The comparison ---

/// Positions of `row`, which has no number twice, outside of one of its longest increasing runs: for each
/// length the run is kept that ends lowest, since any number that continues another one continues this one,
/// too.
std::vector<std::size_t> OutsideOfLongestRun(std::vector<std::size_t> const& row) {
    std::vector<std::size_t> ends,
        before(row.size()); // ends[n]: where the run of n + 1 ends that ends lowest
    for (std::size_t i = 0; i < row.size(); ++i) {
        auto const at = std::lower_bound(ends.begin(), ends.end(), i, [&](std::size_t end, std::size_t here) {
            return row[end] < row[here];
        });
        before[i] = at == ends.begin() ? Nowhere : *(at - 1);
        at == ends.end() ? ends.push_back(i) : void(*at = i);
    }
    std::vector<bool> isInRun(row.size());
    for (std::size_t i = ends.empty() ? Nowhere : ends.back(); i != Nowhere; i = before[i]) {
        isInRun[i] = true;
    }
    std::vector<std::size_t> outside;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (!isInRun[i]) {
            outside.push_back(i);
        }
    }
    return outside;
}

/// For each spot the one it stands behind among its siblings, or Nowhere.
std::vector<std::size_t> Neighbours(std::vector<Spot> const& spots) {
    std::vector<std::size_t> neighbours(spots.size(), Nowhere), last(spots.size(), Nowhere);
    for (std::size_t i = 1; i < spots.size(); ++i) {
        neighbours[i] = std::exchange(last[spots[i].parent], i);
    }
    return neighbours;
}

class Comparison {
public:
    Comparison(LayoutNode const& first, LayoutNode const& second)
        : m_first(SpotsOf(first)), m_second(SpotsOf(second)) {}

    std::vector<LayoutDifference> Run() {
        std::vector<SpotPair> const pairs = Match(m_first, m_second, {});
        FindMoved(pairs);
        for (auto const& [first, second, isTop] : pairs) {
            if (first != Nowhere && second != Nowhere) {
                Compare(first, second);
            } else if (isTop) {
                bool const isAdded = first == Nowhere;
                auto const& spots = isAdded ? m_second : m_first;
                std::size_t const spot = isAdded ? second : first;
                Add(isAdded ? Kind::Added : Kind::Removed, PathOf(spots, spot, L'/'), first, second);
            }
        }
        return std::move(m_differences);
    }

private:
    using Kind = LayoutDifference::Kind;

    /// Of the siblings that both have, the fewest without which the others stand in the same order.
    /// One node that was taken to the front moves alone, and not all that it passed. Pairs have paired
    /// parents here, as no renaming plays a part: so those below one parent of the first are siblings in the
    /// second.
    void FindMoved(std::vector<SpotPair> const& pairs) {
        std::vector<std::size_t> target(m_first.size(), Nowhere);
        for (SpotPair const& pair : pairs) {
            if (pair.first != Nowhere) {
                target[pair.first] = pair.second;
            }
        }
        std::vector<std::vector<std::size_t>> rows(m_first.size());
        for (std::size_t i = 1; i < m_first.size(); ++i) {
            if (target[i] != Nowhere) {
                rows[m_first[i].parent].push_back(target[i]);
            }
        }
        m_isMoved.resize(m_second.size());
        for (std::vector<std::size_t> const& row : rows) {
            for (std::size_t const i : OutsideOfLongestRun(row)) {
                m_isMoved[row[i]] = true;
            }
        }
    }

    void Compare(std::size_t first, std::size_t second) {
        LayoutNode const& before = *m_first[first].layout;
        LayoutNode const& after = *m_second[second].layout;
        if (m_isMoved[second]) {
            Add(Kind::Moved, PathOf(m_second, second, L'/'), first, second, {},
                NameOf(m_first, m_behindFirst[first]), NameOf(m_second, m_behindSecond[second]));
        }
        for (Attribute const& attribute : Attributes) {
            if (!attribute.isSame(before, after)) {
                Add(Kind::Attribute, PathOf(m_second, second, L'/'), first, second, attribute.word,
                    attribute.show(before), attribute.show(after));
            }
        }
    }

    static std::wstring NameOf(std::vector<Spot> const& spots, std::size_t spot) {
        return spot != Nowhere ? spots[spot].layout->m_name : std::wstring();
    }

    void Add(Kind kind, std::wstring path, std::size_t first, std::size_t second, std::wstring_view what = {},
             std::wstring before = {}, std::wstring after = {}) {
        m_differences.push_back({kind, std::move(path), std::wstring(what), std::move(before),
                                 std::move(after), first != Nowhere ? m_first[first].layout : nullptr,
                                 second != Nowhere ? m_second[second].layout : nullptr});
    }

    using Spots = std::vector<Spot>;
    Spots const m_first, m_second;
    std::vector<std::size_t> const m_behindFirst = Neighbours(m_first), m_behindSecond = Neighbours(m_second);
    std::vector<bool> m_isMoved; ///< of the second
    std::vector<LayoutDifference> m_differences;
};

} // namespace

std::vector<LayoutDifference> LayoutDifferences(ParameterLayout const& first, ParameterLayout const& second) {
    return Comparison(first, second).Run();
}

} // namespace Zantrel::Editing
