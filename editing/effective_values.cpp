// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/effective_values.h>

#include "editing/value_conversion.h"

#include <zantrel/database/value_type.h>
#include <zantrel/store/persistent_property.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <utility>

// What counts is asked in one order everywhere: overrides of the part, defaults of the ticket, default of the
// layout. The layout says which properties there are and in which order they are told; what the ticket has
// beyond that follows by name, as its bags have no order that means anything to a user.

namespace Zantrel::Editing {

namespace {

using Source = EffectiveValue::Source;

// --- Texts ---

template <class... Types> std::wstring TextOfAny(IPersistentProperty const& property) {
    std::wstring text = property.GetType();
    auto const take = [&text](auto const* typed) {
        text = typed != nullptr ? TextOf(typed->m_value) : std::move(text);
    };
    // At most one of the types is the property's.
    (take(PropertyCast<Types>(&property)), ...);
    return text;
}

/// What formatting makes of a node's default, as TextOf has it; a text that is none of the type's as it
/// stands.
std::wstring DefaultTextOf(LayoutNode const& node) {
    std::wstring const& text = node.m_defaultValue;
    return VisitValueType(node.m_type, [&](auto tag) -> std::wstring {
        using T = typename decltype(tag)::Type;
        if constexpr (std::is_same_v<T, double> || std::is_same_v<T, std::int32_t>) {
            std::optional<T> const number = ParseValue(text, tag);
            return number ? TextOf(*number) : text;
        } else if constexpr (std::is_same_v<T, bool>) {
            return TextOf(text == L"True");
        } else if constexpr (std::is_same_v<T, std::wstring>) {
            bool const isFirstOption =
                node.m_type == eTypeLayoutNode::Options && text.empty() && !node.m_optionValues.empty();
            return isFirstOption ? node.m_optionValues.front() : text;
        } else {
            return std::wstring();
        }
    });
}

// --- Values ---

/// The first property of a name, as look-ups find it; null where it is marked deleted.
IPersistentProperty const* Find(PersistentProperties const* bag, std::wstring_view name) {
    IPersistentProperty const* const property = bag != nullptr ? bag->FindProperty(name) : nullptr;
    return property != nullptr && !property->IsDeleted() ? property : nullptr;
}

class Collection {
public:
    Collection(PersistentProperties const& defaults, PersistentProperties const* overrides)
        : m_defaults(defaults), m_overrides(overrides) {}

    /// The properties that a section of the layout declares. What stands below a node that has a property, or
    /// is a list, lies within that property.
    void AddSection(LayoutNode const* section) {
        std::vector<LayoutNode const*> open;
        if (section != nullptr) {
            open.push_back(section);
        }
        while (!open.empty()) {
            LayoutNode const& node = *open.back();
            open.pop_back();
            if (&node != section && !node.m_propName.empty()) {
                AddDeclared(node);
            } else if (&node == section || (!node.m_isList && !node.m_isProfileList)) {
                auto const mark = static_cast<std::ptrdiff_t>(open.size());
                open.insert(open.end(), node.m_children.begin(), node.m_children.end());
                std::reverse(open.begin() + mark, open.end());
            }
        }
    }

    /// By name, what is in the ticket and no node declares.
    void AddOthers() {
        std::map<std::wstring_view, EffectiveValue> others;
        // Which bag comes first plays no part: what counts is looked up anew for each name.
        for (PersistentProperties const* const bag : {m_overrides, &m_defaults}) {
            if (bag == nullptr) {
                continue;
            }
            for (auto const [name, property] : *bag) {
                EffectiveValue value;
                if (m_names.count(name) == 0 && others.count(name) == 0 && FindValue(name, value)) {
                    others.emplace(name, std::move(value));
                }
            }
        }
        for (auto& [name, value] : others) {
            m_values.push_back(std::move(value));
        }
    }

    std::vector<EffectiveValue> m_values;

private:
    void AddDeclared(LayoutNode const& node) {
        EffectiveValue value;
        if (!m_names.insert(node.m_propName).second) {
            return;
        }
        if (!FindValue(node.m_propName, value)) {
            value.text = DefaultTextOf(node);
        }
        value.property = node.m_propName;
        value.node = &node;
        m_values.push_back(std::move(value));
    }

    bool FindValue(std::wstring_view name, EffectiveValue& value) const {
        value.property = name;
        value.value = Find(m_overrides, name);
        value.source = Source::PartOverride;
        if (value.value == nullptr) {
            value.value = Find(&m_defaults, name);
            value.source = value.value != nullptr ? Source::TicketDefault : Source::LayoutDefault;
        }
        if (value.value != nullptr) {
            value.text = TextOfAny<double, std::int32_t, bool, std::wstring>(*value.value);
        }
        return value.value != nullptr;
    }

    PersistentProperties const& m_defaults;
    PersistentProperties const* m_overrides;       ///< null: the part has none
    std::unordered_set<std::wstring_view> m_names; ///< declared ones, borrowed from the layout
};

} // namespace

std::vector<EffectiveValue> EffectiveValues(BuildTicket const& ticket, std::wstring const& part,
                                            ParameterLayout const& layout) {
    Collection collection(
        ticket.GetDefaults(),
        part.empty() ? nullptr : ticket.GetPartOverrides().GetProperties(KelAM::ExternalPropertyID(part)));
    for (LayoutNode const* const section :
         {layout.m_platformOptions.GetNode(), layout.m_partOptions.GetNode(),
          layout.m_partConfigurator.GetNode()}) {
        collection.AddSection(section);
    }
    collection.AddOthers();
    return std::move(collection.m_values);
}

} // namespace Zantrel::Editing
