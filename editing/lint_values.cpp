// SPDX-License-Identifier: Apache-2.0
#include "editing/character_set.h"
#include "editing/findings.h"
#include "editing/lint_report.h"
#include "editing/number_text.h"
#include "editing/pattern.h"

#include <zantrel/database/value_type.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <type_traits>
#include <unordered_set>

// Texts are taken as a program in the classic locale takes them. A layout that was built under another one
// may hold "200,5000", of which that program sees 200.

namespace Zantrel::Editing {

namespace {

std::wstring Default(LayoutNode const& node) { return L"The default " + Quoted(node.m_defaultValue); }

/// What a default must be within, and what its text says.
class NumberLint {
public:
    NumberLint(LayoutNode const& node, LintReport& report) : m_node(node), m_report(report) {}

    void Run() {
        std::optional<double> const least = Limit(m_node.m_min), greatest = Limit(m_node.m_max);
        if (least && greatest && *least > *greatest) {
            m_report.Add(LintKind::EmptyRange, &m_node, m_node.m_min,
                         L"The least value " + m_node.m_min + L" is above the greatest, " + m_node.m_max +
                             L'.');
            // No default fits an empty range, and what is wrong is the range.
            return LintDefault({}, {});
        }
        LintDefault(least, greatest);
    }

private:
    bool IsWhole() const { return m_node.m_type == Int; }

    std::optional<double> Limit(std::wstring const& text) {
        std::optional<double> const limit = ParseDouble(text);
        bool const isValue = limit && !std::isnan(*limit) && (!IsWhole() || std::rint(*limit) == *limit);
        if (!text.empty() && !isValue) {
            m_report.Add(LintKind::BadLimit, &m_node, text,
                         L"The limit " + Quoted(text) + L" is no " +
                             (IsWhole() ? L"whole number" : L"number") + L" as files have it, with a point.");
        }
        return isValue ? limit : std::nullopt;
    }

    /// What formatting makes of the default, or nothing where it isn't wholly a number.
    std::optional<double> Value() const {
        if (m_node.m_defaultValue.empty()) {
            return 0.0; // as formatting has it
        }
        std::optional<double> value = ParseDouble(m_node.m_defaultValue);
        if (IsWhole()) {
            std::optional<std::int32_t> const whole = ParseInteger(m_node.m_defaultValue);
            value = whole ? std::optional<double>(*whole) : std::nullopt;
        }
        return value && std::isfinite(*value) ? value : std::nullopt;
    }

    void LintDefault(std::optional<double> least, std::optional<double> greatest) {
        std::optional<double> const value = Value();
        if (!value) {
            m_report.Add(LintKind::BadDefault, &m_node, m_node.m_defaultValue,
                         Default(m_node) + L" is no " + (IsWhole() ? L"whole number" : L"number") +
                             L" as files have it, with a point.");
            return;
        }
        if ((least && *value < *least) || (greatest && *value > *greatest)) {
            m_report.Add(LintKind::DefaultOutOfRange, &m_node, m_node.m_defaultValue,
                         L"The default " + TextOf(*value) + L" is outside of the limits, " +
                             (least ? TextOf(*least) : L"none") + L" and " +
                             (greatest ? TextOf(*greatest) : L"none") + L'.');
        }
        // By the shown text a condition compares: one that waits for a default with more digits never holds.
        std::wstring const shown = IsWhole() ? std::wstring() : TextOf(*value, m_node.m_precision);
        if (!IsWhole() && ParseDouble(shown) != value) {
            m_report.Add(LintKind::DefaultCut, &m_node, m_node.m_defaultValue,
                         L"The default " + TextOf(*value) + L" is shown as " + shown +
                             L" by a precision of " + std::to_wstring(m_node.m_precision) + L'.');
        }
    }

    LayoutNode const& m_node;
    LintReport& m_report;
};

void LintOptions(LayoutNode const& node, LintReport& report) {
    if (node.m_optionValues.empty()) {
        report.Add(LintKind::NoOptions, &node, {}, L"There is nothing to choose from: no option.");
        return;
    }
    std::unordered_set<std::wstring_view> values;
    for (std::wstring const& value : node.m_optionValues) {
        if (!values.insert(value).second) {
            report.Add(LintKind::NoOptions, &node, value, L"The option " + Quoted(value) + L" stands twice.");
        }
    }
    if (!node.m_defaultValue.empty() && values.count(node.m_defaultValue) == 0) {
        report.Add(LintKind::DefaultNoOption, &node, node.m_defaultValue,
                   Default(node) + L" is none of the options.");
    }
}

void LintText(LayoutNode const& node, LintReport& report) {
    if (node.m_maxLength != 0 && CountCharacters(node.m_defaultValue) > node.m_maxLength) {
        report.Add(LintKind::DefaultOutOfRange, &node, node.m_defaultValue,
                   Default(node) + L" is longer than " + std::to_wstring(node.m_maxLength) + L" characters.");
    }
    if (node.m_regex.empty()) {
        return;
    }
    std::wstring why;
    std::optional<Pattern> const pattern = Pattern::Compile(node.m_regex, &why);
    if (!pattern) {
        report.Add(LintKind::BadPattern, &node, node.m_regex,
                   L"The pattern " + Quoted(node.m_regex) + L" isn't understood, so nothing is checked: " +
                       why);
    } else if (!node.m_defaultValue.empty() && !pattern->Matches(node.m_defaultValue)) {
        report.Add(LintKind::DefaultOutOfRange, &node, node.m_defaultValue,
                   Default(node) + L" doesn't follow the node's own pattern.");
    }
}

void LintFlag(LayoutNode const& node, LintReport& report) {
    std::wstring const& text = node.m_defaultValue;
    if (!text.empty() && text != L"True" && text != L"False") {
        report.Add(LintKind::BadDefault, &node, text,
                   Default(node) + L" is neither \"True\" nor \"False\", and so is taken for \"False\".");
    }
}

void LintSizes(LayoutNode const& node, LintReport& report) {
    // A greatest number of 0 limits nothing, as whoever adds an entry takes it.
    std::uint64_t const least = node.m_multiplicityMin;
    std::uint64_t const most =
        node.m_multiplicityMax != 0 ? node.m_multiplicityMax : std::numeric_limits<std::uint64_t>::max();
    if (least > most) {
        report.Add(LintKind::EmptyRange, &node, std::to_wstring(least),
                   L"At least " + std::to_wstring(least) + L" entries are needed, and at most " +
                       std::to_wstring(most) + L" are allowed.");
    } else if (node.m_multiplicity < least || node.m_multiplicity > most) {
        report.Add(LintKind::DefaultOutOfRange, &node, std::to_wstring(node.m_multiplicity),
                   L"A new list has " + std::to_wstring(node.m_multiplicity) +
                       L" entries, which is outside of the list's own limits.");
    }
}

} // namespace

void LintValues(LayoutNode const& node, LintReport& report) {
    if (node.m_isList && !node.m_isProfileList) {
        LintSizes(node, report);
    }
    VisitValueType(node.m_type, [&](auto tag) {
        using T = typename decltype(tag)::Type;
        if constexpr (std::is_same_v<T, bool>) {
            LintFlag(node, report);
        } else if constexpr (std::is_same_v<T, double> || std::is_same_v<T, std::int32_t>) {
            NumberLint(node, report).Run();
        } else if constexpr (std::is_same_v<T, std::wstring>) {
            if (node.m_type == Options) {
                LintOptions(node, report);
            }
            LintText(node, report);
        }
    });
}

} // namespace Zantrel::Editing
