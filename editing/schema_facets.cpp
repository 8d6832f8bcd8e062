// SPDX-License-Identifier: Apache-2.0
#include "editing/schema_facets.h"

#include "editing/findings.h"
#include "editing/number_text.h"
#include "editing/pattern.h"
#include "editing/xml_text.h"

#include <zantrel/database/value_type.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>
#include <unordered_set>

// A facet that is no schema would spoil all of it: a limit that no value meets, a pattern in other words.
// Such a rule is left out, and told.

namespace Zantrel::Editing {

namespace {

std::optional<double> Limit(std::wstring const& text, SchemaFacets& facets) {
    std::optional<double> const limit = ParseDouble(text);
    if (!text.empty() && !limit) {
        facets.notes.push_back(L"The limit " + Quoted(text) + L" is no number, so it isn't checked.");
    }
    return limit && std::isfinite(*limit) ? limit : std::nullopt;
}

template <class T> void AddLimits(LayoutNode const& node, SchemaFacets& facets) {
    std::optional<double> least = Limit(node.m_min, facets), greatest = Limit(node.m_max, facets);
    if constexpr (std::is_same_v<T, std::int32_t>) {
        // Limits may have a fraction, or lie where the type has no values. A facet may not: it is rounded to
        // the nearest value within, and left out where the type is the narrower bound.
        constexpr double lowest = std::numeric_limits<T>::min(), highest = std::numeric_limits<T>::max();
        least = least ? std::optional(std::ceil(*least)) : least;
        greatest = greatest ? std::optional(std::floor(*greatest)) : greatest;
        if (least.value_or(lowest) > greatest.value_or(highest) || least > highest ||
            greatest.value_or(highest) < lowest) {
            facets.notes.push_back(L"No value is within the limits, so they aren't checked.");
            return;
        }
        least = least > lowest ? least : std::nullopt;
        greatest = greatest < highest ? greatest : std::nullopt;
    } else if (least && greatest && *least > *greatest) {
        facets.notes.push_back(L"No value is within the limits, so they aren't checked.");
        return;
    }
    auto const add = [&facets](std::string_view facet, std::optional<double> limit) {
        if (limit) {
            if constexpr (std::is_same_v<T, double>) {
                facets.rows.emplace_back(facet, TextOf(*limit));
            } else {
                facets.rows.emplace_back(facet, std::to_wstring(static_cast<T>(*limit)));
            }
        }
    };
    add("minInclusive", least);
    add("maxInclusive", greatest);
}

/// A value that is empty is none that was chosen, and no mistake.
void AddOptions(LayoutNode const& node, SchemaFacets& facets) {
    std::unordered_set<std::wstring_view> seen{L""};
    for (std::wstring const& value : node.m_optionValues) {
        if (IsXmlText(value) && seen.insert(value).second) { // no file holds any other
            facets.rows.emplace_back("enumeration", value);
        }
    }
    if (!node.m_optionValues.empty()) {
        // Last, and once, also where an option is empty.
        facets.rows.emplace_back("enumeration", std::wstring());
    }
}

void AddTextRules(LayoutNode const& node, SchemaFacets& facets) {
    // No document is so long that a greater limit could be passed.
    if (node.m_maxLength != 0 && node.m_maxLength <= std::numeric_limits<std::int32_t>::max()) {
        facets.rows.emplace_back("maxLength", std::to_wstring(node.m_maxLength));
    }
    if (node.m_regex.empty()) {
        return;
    }
    std::optional<Pattern> const pattern = Pattern::Compile(node.m_regex);
    std::optional<std::wstring> const text = pattern ? pattern->ToXmlSchema() : std::nullopt;
    std::wstring const& rule = node.m_regexUserFriendly.empty() ? node.m_regex : node.m_regexUserFriendly;
    if (text && IsXmlText(*text)) {
        facets.rows.emplace_back("pattern", *text);
        facets.rows.emplace_back("pattern", std::wstring()); // of several one must match
        facets.notes.push_back(L"The rule: " + rule);
    } else {
        facets.notes.push_back(L"A rule that a schema can't check: " + rule);
    }
}

} // namespace

SchemaFacets FacetsOf(LayoutNode const& node) {
    SchemaFacets facets;
    if (node.Size() != 0) {
        return facets;
    }
    VisitValueType(node.m_type, [&](auto tag) {
        using T = typename decltype(tag)::Type;
        if constexpr (std::is_same_v<T, std::int32_t> || std::is_same_v<T, double>) {
            AddLimits<T>(node, facets);
        } else if constexpr (std::is_same_v<T, std::wstring>) {
            if (node.m_type == Options) {
                AddOptions(node, facets);
            }
            AddTextRules(node, facets);
        }
    });
    return facets;
}

} // namespace Zantrel::Editing
