// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/lint.h>

#include "editing/findings.h"
#include "editing/lint_report.h"
#include "editing/number_text.h"
#include "editing/place_kind.h"
#include "editing/profile_lists.h"

#include <zantrel/database/value_type.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

// Two passes: the first one finds all nodes of the layout and where they stand, by ownership, which is right
// in copies, too; the second one looks at each. So a condition's source is known to be a node of this layout
// before it is looked at: it may be gone.

namespace Zantrel::Editing {

namespace {

/// By what the values of a node are kept.
enum class Section { None, Editor, Platform, Part, Job };

struct Standing {
    LayoutNode const* node;
    LayoutNode const* parent;
    Section section;
    bool isReached; ///< by cursors, in the editor
};

using Names = std::unordered_map<std::wstring_view, LayoutNode const*>;

// Each look is a function of its own, told of the node and where it stands, so that no look relies on one
// that came before; what several need (names met, options of a source) is gathered in fields. Keys are views
// into the layout's own texts, which doesn't change meanwhile.
class Linter {
public:
    explicit Linter(ParameterLayout const& layout)
        : m_layout(layout), m_lists(layout.m_profileEditor.GetNode()) {}

    std::vector<LintFinding> Run();

private:
    void FindNodes();
    Section SectionOf(LayoutNode const& node, Section around) const;
    void LintAnchors();
    void LintNode(Standing const& at);
    void LintContainer(LayoutNode const& node);
    void LintIdentity(Standing const& at);
    void LintTwin(LintKind kind, Names& names, std::wstring const& name, LayoutNode const& node,
                  std::wstring const& before, std::wstring_view behind);
    void LintSiblings(LayoutNode const& parent);
    void LintReach(Standing const& at);
    void LintChoice(LayoutNode const& node);
    void LintConditions(Standing const& at);
    void LintSource(Standing const& at, LayoutNode const* source, std::wstring const& value);
    bool IsSeen(LayoutNode const& source, Standing const& from) const;
    bool CanHave(LayoutNode const& source, std::wstring const& value);

    ParameterLayout const& m_layout;
    LintReport m_report;
    ProfileLists m_lists;
    /// False in a copy, where an anchor leads to the source: what is said through one is then left unsaid, as
    /// it would be wrong for every node at once.
    bool m_hasOwnAnchors = true;
    std::vector<Standing> m_nodes;
    std::unordered_map<LayoutNode const*, std::size_t> m_places; ///< in m_nodes
    Names m_identifiers, m_platformNames, m_partNames;
    std::unordered_map<LayoutNode const*, std::unordered_set<std::wstring_view>> m_options; ///< of sources
};

bool HasValue(LayoutNode const& node) {
    return VisitValueType(node.m_type,
                          [](auto tag) { return !std::is_same_v<typename decltype(tag)::Type, NoValue>; });
}

Section Linter::SectionOf(LayoutNode const& node, Section around) const {
    std::pair<LayoutNode const*, Section> const anchors[] = {
        {m_layout.m_profileEditor.GetNode(), Section::Editor},
        {m_layout.m_platformConfigurator.GetNode(), Section::Platform},
        {m_layout.m_partConfigurator.GetNode(), Section::Part},
        {m_layout.m_jobConfigurator.GetNode(), Section::Job},
    };
    for (auto const& [anchor, section] : anchors) {
        if (&node == anchor) {
            return section;
        }
    }
    return around;
}

/// In the order of the layout. A child that stands twice is taken once: its content would double at each
/// level.
void Linter::FindNodes() {
    std::vector<Standing> open{{&m_layout, nullptr, Section::None, false}};
    while (!open.empty()) {
        Standing at = open.back();
        open.pop_back();
        if (!m_places.emplace(at.node, m_nodes.size()).second) {
            continue;
        }
        at.section = SectionOf(*at.node, at.section);
        bool const isEditor = at.node == m_layout.m_profileEditor.GetNode();
        // A cursor goes by names through groups alone, and only to nodes that call the one around them their
        // parent; a copied node calls the source's so.
        at.isReached = isEditor || (at.isReached && at.node->Parent() == at.parent);
        m_nodes.push_back(at);
        bool const leadsOn = at.isReached && at.node->m_type == Group;
        auto const& children = at.node->m_children;
        for (std::size_t i = children.Size(); i != 0; --i) {
            open.push_back({&children.At(i - 1), at.node, at.section, leadsOn});
        }
    }
}

std::vector<LintFinding> Linter::Run() {
    FindNodes();
    LintAnchors();
    for (Standing const& at : m_nodes) {
        LintNode(at);
    }
    return m_report.Take();
}

void Linter::LintAnchors() {
    std::pair<std::wstring, LayoutNode const*> const anchors[] = {
        {L"m_versionNode", m_layout.m_versionNode.GetNode()},
        {L"m_profileEditor", m_layout.m_profileEditor.GetNode()},
        {L"m_genericParameters", m_layout.m_genericParameters.GetNode()},
        {L"m_categories", m_layout.m_categories.GetNode()},
        {L"m_jobConfigurator", m_layout.m_jobConfigurator.GetNode()},
        {L"m_platformConfigurator", m_layout.m_platformConfigurator.GetNode()},
        {L"m_categoryOption", m_layout.m_categoryOption.GetNode()},
        {L"m_platformOptions", m_layout.m_platformOptions.GetNode()},
        {L"m_partOptions", m_layout.m_partOptions.GetNode()},
        {L"m_partConfigurator", m_layout.m_partConfigurator.GetNode()},
    };
    for (auto const& [name, anchor] : anchors) {
        // A layout may lack every section but this one.
        bool const isOptional = name != L"m_profileEditor";
        if (anchor != nullptr ? m_places.count(anchor) == 0 : !isOptional) {
            m_hasOwnAnchors = false;
            m_report.Add(LintKind::ForeignAnchor, nullptr, name,
                         L"The anchor " + name +
                             L" isn't in the layout's own tree, as in a copy: nothing is found through it.");
        }
    }
}

void Linter::LintNode(Standing const& at) {
    LayoutNode const& node = *at.node;
    bool const isInEditor = at.section == Section::Editor && &node != m_layout.m_profileEditor.GetNode();
    LintNames(node, {&m_layout, at.parent, isInEditor}, m_report);
    LintIdentity(at);
    LintReach(at);
    LintConditions(at);
    if (at.section == Section::Editor && !at.isReached) {
        return; // where no values are, nothing is wrong with them
    }
    LintContainer(node);
    LintValues(node, m_report);
    LintChoice(node);
    LintSiblings(node);
}

void Linter::LintContainer(LayoutNode const& node) {
    if (node.m_isList && (node.m_isProfileList || node.m_isCategoryList)) {
        m_report.Add(LintKind::TwoContainers, &node, {},
                     L"The node is a list and a profile list: files keep the entries of one of them only.");
    } else if (node.m_isCategoryList && !node.m_isProfileList) {
        m_report.Add(LintKind::TwoContainers, &node, {},
                     L"The node is a list of categories and no profile list: it has no profiles.");
    }
}

/// Of the nodes of one name only the latest is found by it.
void Linter::LintSiblings(LayoutNode const& parent) {
    Names seen;
    for (LayoutNode const* const child : parent.m_children) {
        auto const [first, isNew] = seen.emplace(child->m_name, child);
        // Reading a layout's file adds a second version, which nothing looks at.
        bool const isVersion = &parent == &m_layout && child->m_name == L"Version";
        if (!isNew && !isVersion) {
            m_report.Add(LintKind::SameName, child, child->m_name,
                         first->second == child ? L"The node stands twice among the children of its parent."
                                                : L"There is another " + Quoted(child->m_name) +
                                                      L" beside it, and only one of "
                                                      L"them is found by the name.",
                         first->second);
        }
    }
}

void Linter::LintIdentity(Standing const& at) {
    LintTwin(LintKind::SameIdentifier, m_identifiers, at.node->m_identifier, *at.node,
             L"Another node has the identifier ", L": a file's conditions can't tell the two.");
    // Each section for itself: what a part has under a name of the platform's takes the place of that.
    if (at.section == Section::Platform || at.section == Section::Part) {
        Names& names = at.section == Section::Part ? m_partNames : m_platformNames;
        LintTwin(LintKind::SamePropertyName, names, at.node->m_propName, *at.node,
                 L"Another node of the section has the property name ",
                 L": a build ticket holds one value for both.");
    }
}

/// Of names that must differ.
void Linter::LintTwin(LintKind kind, Names& names, std::wstring const& name, LayoutNode const& node,
                      std::wstring const& before, std::wstring_view behind) {
    if (name.empty()) {
        return;
    }
    auto const [first, isNew] = names.emplace(name, &node);
    if (!isNew) {
        m_report.Add(kind, &node, name, (before + Quoted(name)).append(behind), first->second);
    }
}

/// The topmost node that isn't reached is told of, and not what stands below it.
void Linter::LintReach(Standing const& at) {
    LayoutNode const& node = *at.node;
    if (at.parent == &m_layout && at.section == Section::None && m_hasOwnAnchors &&
        node.m_name != L"Version") {
        m_report.Add(LintKind::Unreached, &node, {},
                     L"The node stands beside the sections of the layout: nothing holds its values.");
    }
    if (at.isReached && node.m_isProfileList && node.Size() == 0 && HasValue(node)) {
        m_report.Add(LintKind::Unreached, &node, {},
                     L"The profiles are values and not groups: they are written and not read back.");
    }
    bool const isBelowReached = at.parent != nullptr && at.section == Section::Editor && !at.isReached &&
                                m_nodes[m_places.at(at.parent)].isReached;
    if (!isBelowReached) {
        return;
    }
    bool const isCopied = node.Parent() != at.parent;
    m_report.Add(LintKind::Unreached, &node, {},
                 isCopied ? L"The node was copied together with its parent: its parameters aren't reached "
                            L"through that."
                          : L"The node stands below " + Quoted(at.parent->m_name) +
                                L", which isn't a group: neither its values nor that one's are kept.",
                 at.parent);
}

void Linter::LintChoice(LayoutNode const& node) {
    if (node.m_type != OptionsFromProfiles || !m_hasOwnAnchors) {
        return; // in a copy it isn't this layout's lists that are found
    }
    std::wstring const& name = ProfileLists::NameOf(node);
    if (m_lists.ListOf(node) == nullptr) {
        m_report.Add(LintKind::MissingProfileList, &node, name,
                     L"There is no profile list " + Quoted(name) + L" to choose from.");
    } else if (node.m_profileName.empty()) {
        m_report.Add(LintKind::MissingProfileList, &node, name,
                     L"The profile list isn't named by the profile name: files of the layout won't know it.");
    }
}

// --- Conditions ---

void Linter::LintConditions(Standing const& at) {
    for (auto const* const sources : {&at.node->m_visibilitySources, &at.node->m_editabilitySources}) {
        for (LayoutNodeSource const& condition : *sources) {
            LintSource(at, condition.m_source, condition.m_value);
        }
    }
}

void Linter::LintSource(Standing const& at, LayoutNode const* source, std::wstring const& value) {
    LayoutNode const* const node = at.node;
    if (source == nullptr || m_places.count(source) == 0) {
        m_report.Add(LintKind::MissingSource, node, value,
                     L"A condition depends on a node that isn't in the layout, and so always holds.");
        return;
    }
    // By owners and not by parents, which lead elsewhere in a copy.
    for (LayoutNode const* above = source; above != nullptr; above = above->GetOwner()) {
        if (above == node) {
            m_report.Add(LintKind::OwnSource, node, value,
                         source == node ? L"A condition depends on the node itself."
                                        : L"A condition depends on a node below the one that it shows.",
                         source);
            return;
        }
    }
    if (!IsSeen(*source, at)) {
        m_report.Add(LintKind::UnreachedSource, node, value,
                     L"A condition depends on " + Quoted(source->m_name) +
                         L", which holds no value that this node could see.",
                     source);
    } else if (!CanHave(*source, value)) {
        m_report.Add(LintKind::BadConditionValue, node, value,
                     L"A condition waits for " + Quoted(value) + L", which " + Quoted(source->m_name) +
                         L" never is.",
                     source);
    }
}

/// An item counts only for what stands in it. Outside of the editor nobody but the host knows what a node
/// sees.
bool Linter::IsSeen(LayoutNode const& source, Standing const& from) const {
    if (!HasValue(source) || IsContainer(source)) {
        return false;
    }
    if (from.section != Section::Editor) {
        return true;
    }
    std::unordered_set<LayoutNode const*> around;
    for (LayoutNode const* at = from.node; at != nullptr; at = at->GetOwner()) {
        around.insert(at);
    }
    for (LayoutNode const* at = source.GetOwner(); at != nullptr; at = at->GetOwner()) {
        // Of a profile list that the node isn't in, the default profile would count.
        if (at->m_isList && !at->m_isProfileList && around.count(at) == 0) {
            return false;
        }
    }
    return m_nodes[m_places.at(&source)].isReached;
}

template <class Number> bool IsWithin(Number value, LayoutNode const& node) {
    std::optional<double> const least = ParseDouble(node.m_min), greatest = ParseDouble(node.m_max);
    return !(least && value < *least) && !(greatest && value > *greatest);
}

/// Conditions are compared with the text that the source's node formats. So a number has to be written as
/// that writes it, with all the digits of its precision: "1" is never what a distance is. Options may also be
/// empty, or hold a default that none of them is.
bool Linter::CanHave(LayoutNode const& source, std::wstring const& value) {
    if (source.m_type == Options) {
        auto const [options, isNew] = m_options.try_emplace(&source);
        if (isNew) {
            options->second.insert({std::wstring_view(), std::wstring_view(source.m_defaultValue)});
            options->second.insert(source.m_optionValues.begin(), source.m_optionValues.end());
        }
        return options->second.count(value) != 0;
    }
    return VisitValueType(source.m_type, [&](auto tag) {
        using T = typename decltype(tag)::Type;
        if constexpr (std::is_same_v<T, bool>) {
            return value == L"True" || value == L"False";
        } else if constexpr (std::is_same_v<T, std::int32_t>) {
            auto const number = ParseInteger(value);
            return number && std::to_wstring(*number) == value && IsWithin(*number, source);
        } else if constexpr (std::is_same_v<T, double>) {
            auto const number = ParseDouble(value);
            return number && TextOf(*number, source.m_precision) == value && IsWithin(*number, source);
        } else {
            return true;
        }
    });
}

} // namespace

std::vector<LintFinding> Lint(ParameterLayout const& layout) {
    layout.CheckAnchors();
    return Linter(layout).Run();
}

} // namespace Zantrel::Editing
