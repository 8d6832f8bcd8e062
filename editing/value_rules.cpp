// SPDX-License-Identifier: Apache-2.0
#include "editing/value_rules.h"

#include "editing/character_set.h"
#include "editing/default_profile.h"
#include "editing/findings.h"
#include "editing/number_text.h"
#include "editing/scope.h"

#include <zantrel/database/value_type.h>
#include <zantrel/editing/validation.h>

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>

// What a node asks is worked out once, as it may have thousands of places: limits parsed, options hashed, the
// pattern compiled. A rule that isn't understood (a limit that is no number, a pattern that is refused)
// objects to nothing: the layout is at fault and not the value, and Lint says so.

namespace Zantrel::Editing {

namespace {

/// Of a number for whole ones, which a person reads without an exponent.
std::wstring WholeTextOf(double number) {
    // Below the bound a double holds every whole number exactly, and the conversion can't overflow.
    bool const isWhole = std::trunc(number) == number && std::fabs(number) < 1e15;
    return isWhole ? std::to_wstring(static_cast<std::int64_t>(number)) : TextOf(number);
}

/// The first ones, since a list may be long and be told at many places.
std::wstring ListOf(std::vector<std::wstring> const& options, std::size_t most) {
    std::wstring list;
    for (std::size_t i = 0; i != std::min(options.size(), most); ++i) {
        list.append(i == 0 ? L"" : L", ").append(Quoted(options[i]));
    }
    return options.size() > most ? list + L" and " + std::to_wstring(options.size() - most) + L" more" : list;
}

bool HasText(LayoutNode const& node) {
    return VisitValueType(
        node.m_type, [](auto tag) { return std::is_same_v<typename decltype(tag)::Type, std::wstring>; });
}

} // namespace

// What is to be chosen or picked has no default that could tell; a text that the layout itself leaves empty
// may stay so.
bool IsEmptyNoted(LayoutNode const& node) noexcept {
    switch (node.m_type) {
    case eTypeLayoutNode::Options:
        return !node.m_allowEmpty && !node.m_optionValues.empty();
    case eTypeLayoutNode::OptionsFromProfiles:
    case eTypeLayoutNode::FileAbsolute:
    case eTypeLayoutNode::FileAttachment:
        return !node.m_allowEmpty;
    default:
        return !node.m_allowEmpty && (!node.m_defaultValue.empty() || node.m_isValueUnique);
    }
}

ValueRules::ValueRules(LayoutNode const& node, ProfileLists& lists)
    : m_node(node), m_minimum(ParseDouble(node.m_min)), m_maximum(ParseDouble(node.m_max)),
      m_isEmptyNoted(IsEmptyNoted(node)) {
    if (node.m_type == eTypeLayoutNode::Options && !node.m_optionValues.empty()) {
        auto const& values = node.m_optionValues;
        m_options = std::make_unique<Options const>(
            Options{{values.begin(), values.end()}, ListOf(values, 20), ListOf(values, 5)});
    }
    if (node.m_type == eTypeLayoutNode::OptionsFromProfiles) {
        m_profileList = lists.ListOf(node);
    }
    if (!node.m_regex.empty() && HasText(node)) {
        if (std::optional<Pattern> pattern = Pattern::Compile(node.m_regex)) {
            m_pattern = std::make_unique<Pattern const>(*std::move(pattern));
        }
    }
}

void ValueRules::Check(PlaceView const& place, double value, std::vector<Finding>& findings) const {
    if (!std::isfinite(value)) {
        findings.push_back(MakeFinding(FindingKind::NoNumber, place, TextOf(value)));
        return;
    }
    CheckLimits(place, value, TextOf, findings);
}

void ValueRules::Check(PlaceView const& place, std::int32_t value, std::vector<Finding>& findings) const {
    CheckLimits(place, value, WholeTextOf, findings);
}

void ValueRules::CheckLimits(PlaceView const& place, double value, std::wstring (*textOf)(double),
                             std::vector<Finding>& findings) const {
    if (m_minimum && value < *m_minimum) {
        findings.push_back(MakeFinding(FindingKind::BelowMinimum, place, textOf(value), textOf(*m_minimum)));
    }
    if (m_maximum && value > *m_maximum) {
        findings.push_back(MakeFinding(FindingKind::AboveMaximum, place, textOf(value), textOf(*m_maximum)));
    }
}

void ValueRules::Check(PlaceView const& place, std::wstring const& value,
                       std::vector<Finding>& findings) const {
    // An empty text is held against nothing but being empty; one of the options may be empty itself.
    if (!value.empty()) {
        CheckText(place, value, findings);
    } else if (m_isEmptyNoted && (m_options == nullptr || m_options->values.count(value) == 0)) {
        findings.push_back(MakeFinding(FindingKind::Empty, place));
    }
}

void ValueRules::Check(PlaceView const& place, KelAM::FileContent const& value,
                       std::vector<Finding>& findings) const {
    if (m_isEmptyNoted && value.m_name.empty() && value.m_data.empty()) {
        findings.push_back(MakeFinding(FindingKind::Empty, place));
    }
}

void ValueRules::CheckText(PlaceView const& place, std::wstring const& value,
                           std::vector<Finding>& findings) const {
    if (m_options != nullptr && m_options->values.count(value) == 0) {
        findings.push_back(
            MakeFinding(FindingKind::NoOption, place, value, m_options->list, m_options->shown));
    }
    if (m_profileList != nullptr) {
        CheckProfile(place, value, findings);
    }
    bool const isTooLong = m_node.m_maxLength != 0 && CountCharacters(value) > m_node.m_maxLength;
    if (isTooLong) {
        findings.push_back(
            MakeFinding(FindingKind::TooLong, place, value, std::to_wstring(m_node.m_maxLength)));
    }
    // What is too long isn't matched: that takes time in its length.
    if (!isTooLong && m_pattern != nullptr && !m_pattern->Matches(value)) {
        std::wstring const& words = m_node.m_regexUserFriendly;
        findings.push_back(MakeFinding(FindingKind::AgainstPattern, place, value,
                                       words.empty() ? m_node.m_regex : words, words));
    }
}

/// Where no list can be seen from the place nothing can be said.
void ValueRules::CheckProfile(PlaceView const& place, std::wstring const& value,
                              std::vector<Finding>& findings) const {
    if (MeansDefaultProfile(value)) {
        return;
    }
    ParameterView const list = Scope::Find(place, *m_profileList);
    // A name goes to the look-up as a text that ends at its first zero, which might find the profile of a
    // shorter name.
    bool const isCut = value.find(L'\0') != value.npos; // in a look-up by name
    if (list.IsValid() && (isCut || !list.HasProfile(value.c_str()))) {
        findings.push_back(MakeFinding(FindingKind::NoSuchProfile, place, value, m_profileList->m_name));
    }
}

} // namespace Zantrel::Editing
