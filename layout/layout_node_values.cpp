// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/layout_node.h>

#include "layout/value_text.h"

#include <algorithm>
#include <cmath>
#include <ios>
#include <limits>
#include <sstream>
#include <vector>

// A node keeps every value as text. These functions are all that knows the form of such a text: files,
// defaults and limits go through them, and what one writes the other reads. Numbers follow the locale of the
// host, which thereby reads "1,5" where its users write it; files don't, they have functions of their own.

namespace Zantrel {

namespace {

// All the digits that a double can have behind the point.
constexpr std::int32_t MaxDecimals =
    std::numeric_limits<double>::digits - std::numeric_limits<double>::min_exponent;

/// The identifier comes first: with it alone, if the list can't grow, nothing depends on anything yet.
LayoutNode* AddSource(LayoutNode* node, std::vector<LayoutNodeSource>& sources, LayoutNode* source,
                      std::wstring value) {
    if (source != nullptr) {
        source->GenerateSourceIdentifier();
        sources.push_back({source, std::move(value)});
    }
    return node;
}

} // namespace

template <> std::wstring LayoutNode::FormatValue(double const& value) const {
    std::wostringstream stream;
    // Streams put the text on the stack; zeros beyond the last digit are better added here.
    std::int32_t const decimals = std::min(m_precision, MaxDecimals);
    stream.precision(decimals);
    stream.setf(std::ios_base::showpoint);
    stream.setf(std::ios_base::fixed, std::ios_base::floatfield);
    stream << value;
    std::wstring text = stream.str();
    if (m_precision > decimals && std::isfinite(value)) {
        text.append(static_cast<std::size_t>(m_precision - decimals), L'0');
    }
    return text;
}

template <> std::wstring LayoutNode::FormatValue(std::int32_t const& value) const {
    std::wostringstream stream;
    stream << value;
    return stream.str();
}

template <> std::wstring LayoutNode::FormatValue(bool const& value) const {
    return value ? L"True" : L"False";
}

template <> std::wstring LayoutNode::FormatValue(std::wstring const& value) const { return value; }

template <> std::wstring LayoutNode::FormatValue(wchar_t const* const& value) const {
    return value != nullptr ? std::wstring(value) : std::wstring();
}

template <> double LayoutNode::GetValue(std::wstring const& text) const {
    return ValueReader().ReadDouble(text);
}

template <> std::int32_t LayoutNode::GetValue(std::wstring const& text) const {
    return ValueReader().ReadInteger(text);
}

template <> bool LayoutNode::GetValue(std::wstring const& text) const { return text == L"True"; }

template <> std::wstring LayoutNode::GetValue(std::wstring const& text) const { return text; }

template <> LayoutNode* LayoutNode::AddVisibilitySource(LayoutNode* source, std::wstring const& value) {
    return AddSource(this, m_visibilitySources, source, value);
}

template <> LayoutNode* LayoutNode::AddVisibilitySource(LayoutNode* source, bool const& value) {
    return AddSource(this, m_visibilitySources, source, FormatValue(value));
}

template <> LayoutNode* LayoutNode::AddEditabilitySource(LayoutNode* source, std::wstring const& value) {
    return AddSource(this, m_editabilitySources, source, value);
}

template <> LayoutNode* LayoutNode::AddEditabilitySource(LayoutNode* source, bool const& value) {
    return AddSource(this, m_editabilitySources, source, FormatValue(value));
}

} // namespace Zantrel
