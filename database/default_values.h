// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout/value_text.h"

#include <zantrel/database/value_type.h>
#include <zantrel/layout/layout_node.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace Zantrel {

/// The text that formatting takes a node's value from: of options without a default the first one.
inline std::wstring const& DefaultText(LayoutNode const& node) {
    bool const takesFirstOption = node.m_type == eTypeLayoutNode::Options && node.m_defaultValue.empty() &&
                                  !node.m_optionValues.empty();
    return takesFirstOption ? node.m_optionValues.front() : node.m_defaultValue;
}

/// Whether formatting gives a node that has a type of value its value, too.
inline bool HoldsValueOnceFormatted(LayoutNode const& node) {
    return node.m_type != eTypeLayoutNode::StandardOptions;
}

/// What stands below a node and isn't a value: the entries that formatting gives its bag, or the bags of its
/// items and profiles.
inline bool HasBody(LayoutNode const& node) {
    return node.m_type == eTypeLayoutNode::Group && node.Size() != 0;
}

/// The values that nodes have once they are formatted, by the global locale as it was when this was made.
class DefaultValues {
public:
    /// Of a type of VisitValueType. A text is given by reference.
    template <class T> decltype(auto) Of(LayoutNode const& node) const {
        if constexpr (std::is_same_v<T, std::wstring>) {
            return DefaultText(node);
        } else if constexpr (std::is_same_v<T, std::int32_t>) {
            return m_numbers.ReadInteger(node.m_defaultValue);
        } else if constexpr (std::is_same_v<T, double>) {
            return m_numbers.ReadDouble(node.m_defaultValue);
        } else if constexpr (std::is_same_v<T, bool>) {
            return node.GetValue<bool>(node.m_defaultValue);
        } else {
            return T();
        }
    }

private:
    ValueReader const m_numbers;
};

} // namespace Zantrel
