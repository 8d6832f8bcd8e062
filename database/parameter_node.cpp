// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_node.h>

#include "database/find_bag.h"
#include "database/format.h"
#include "database/layout_shapes.h"

#include <zantrel/database/parameter_misuse.h>
#include <zantrel/database/value_type.h>
#include <zantrel/layout/layout_node.h>

#include <deque>
#include <locale>

// A cursor goes down by names: what a bag holds under the name of a layout's child is that child's content,
// whatever container the bag belongs to. Only a bag counts that is the first entry of its name and not marked
// deleted. Nothing is created on the way, and a missing bag is no error until a value is asked for.

namespace Zantrel {

namespace {

/// The nodes from the first level below `top` down to `node`; empty when it doesn't lie below. Throws for
/// `top` itself.
std::deque<LayoutNode const*> PathTo(LayoutNode const& node, LayoutNode const& top) {
    std::deque<LayoutNode const*> path;
    if (!node.GetQueryPath(top, path)) {
        return {};
    }
    if (path.size() < 2) {
        throw ParameterMisuse("invalid query path, no such node", &top);
    }
    return path;
}

LayoutNode const& FindChild(LayoutNode const* parent, wchar_t const* name) {
    LayoutNode const* child = parent != nullptr && name != nullptr ? parent->GetNode(name) : nullptr;
    if (child == nullptr) {
        throw ParameterMisuse("invalid query, no such node", parent);
    }
    return *child;
}

/// What a typed value asks of its node, and what is thrown where it is not there.
/// The texts are part of the interface and stay as they are, also where a type is no longer called so.
template <class T> struct Access;
template <> struct Access<std::int32_t> {
    static constexpr char const* Message = "Invalid type cast : use long";
    static bool Allows(eTypeLayoutNode type) { return type == eTypeLayoutNode::Int; }
};
template <> struct Access<double> {
    static constexpr char const* Message = "Invalid type cast : use double";
    static bool Allows(eTypeLayoutNode type) {
        return type == eTypeLayoutNode::Double || type == eTypeLayoutNode::Distance;
    }
};
template <> struct Access<bool> {
    static constexpr char const* Message = "Invalid type cast : use bool";
    static bool Allows(eTypeLayoutNode type) { return type == eTypeLayoutNode::Bool; }
};
template <> struct Access<std::wstring> {
    static constexpr char const* Message = "Invalid type cast : use std::string_t";
    static bool Allows(eTypeLayoutNode) { return true; } // any node: what stands in the bag decides
};
template <> struct Access<KelAM::FileContent> {
    static constexpr char const* Message = "Invalid type cast : use KelAM::FileContent";
    static bool Allows(eTypeLayoutNode type) { return type == eTypeLayoutNode::FileAttachment; }
};

/// By the global locale's idea of lower case, which is what callers were written against.
bool IsWordTrue(std::wstring text) {
    std::locale const locale;
    std::use_facet<std::ctype<wchar_t>>(locale).tolower(text.data(), text.data() + text.size());
    return text == L"true";
}

} // namespace

// Navigation

ParameterNode ParameterNode::Get(LayoutNode const* node) const {
    if (m_pProperties == nullptr || m_pNode == nullptr || node == nullptr) {
        return {};
    }
    if (node->Parent() == m_pNode) {
        return CursorOn(*node, FindBag(*m_pProperties, node->m_name));
    }
    ParameterNode result = *this;
    std::deque<LayoutNode const*> const path = PathTo(*node, *m_pNode);
    for (LayoutNode const* step : path) {
        result = result.Get(step);
    }
    return path.empty() ? ParameterNode() : result;
}

ParameterNode ParameterNode::Get(wchar_t const* name) const {
    NodeShape const* const shape =
        m_pProperties != nullptr && m_pNode != nullptr ? NodeShapeOf(*m_pProperties) : nullptr;
    NodeShape::Child const* const found =
        shape != nullptr && name != nullptr ? shape->FindByName(*m_pNode, name) : nullptr;
    if (found != nullptr && found->node->Parent() == m_pNode) {
        return CursorOn(*found->node, LiveBagAt(*m_pProperties, found->slot));
    }
    return m_pProperties != nullptr ? Get(&FindChild(m_pNode, name)) : ParameterNode();
}

// Each step is taken from a place that has content; what the last one leads to isn't asked. So the result may
// be a cursor without content.
std::unique_ptr<ParameterNode> ParameterNode::GetParameterNodeIfExists(LayoutNode const* node) const {
    if (m_pProperties == nullptr || m_pNode == nullptr || node == nullptr) {
        return nullptr;
    }
    if (node->Parent() == m_pNode) {
        return std::make_unique<ParameterNode>(Get(node));
    }
    std::deque<LayoutNode const*> const path = PathTo(*node, *m_pNode);
    ParameterNode at = *this;
    for (LayoutNode const* step : path) {
        if (!at.IsValid()) {
            return nullptr;
        }
        at = at.Get(step);
    }
    return path.empty() ? nullptr : std::make_unique<ParameterNode>(at);
}

std::unique_ptr<ParameterNode> ParameterNode::GetParameterNodeIfExists(wchar_t const* name) const {
    return m_pProperties != nullptr ? GetParameterNodeIfExists(&FindChild(m_pNode, name)) : nullptr;
}

// By what the bags hold: cursors on two nodes, even of two databases, can be equal. Two that have no content
// are.
bool ParameterNode::IsEqual(ParameterNode const& other) const {
    if (m_pProperties == nullptr || other.m_pProperties == nullptr) {
        return m_pProperties == other.m_pProperties;
    }
    return *m_pProperties == *other.m_pProperties;
}

// Values

template <class T> T* ParameterNode::_FindReference() const {
    if (m_pNode == nullptr || m_pProperties == nullptr || !Access<T>::Allows(m_pNode->m_type)) {
        return nullptr;
    }
    auto* property = PropertyCast<T>(BagAccess::Find(*m_pProperties, Reserved().value));
    return property != nullptr && !property->IsDeleted() ? &property->m_value : nullptr;
}

template <class T> T& ParameterNode::_GetReference() const {
    T* value = _FindReference<T>();
    if (value == nullptr) {
        throw ParameterMisuse(Access<T>::Message, m_pNode);
    }
    return *value;
}

template <class T> void ParameterNode::_SetValue(T const& value) { _GetReference<T>() = value; }

template <> void ParameterNode::_SetValue<std::wstring>(std::wstring const& text) { SetValueFromText(text); }

void ParameterNode::SetValueFromText(std::wstring const& text) {
    PersistentProperties& bag = RequireBag(*this);
    std::wstring const& name = Reserved().value;
    // A Distance is not among the numbers: its text stands as a second value behind the number, which hosts
    // rely on. So does a text on what else isn't a number or flag.
    eTypeLayoutNode const type = m_pNode != nullptr ? m_pNode->m_type : eTypeLayoutNode::String;
    VisitValueType(type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, bool>) {
            *bag.GetValuePointer<bool>(name, true) = IsWordTrue(text);
        } else if constexpr (std::is_same_v<T, double> || std::is_same_v<T, std::int32_t>) {
            if (type != eTypeLayoutNode::Distance) {
                *bag.GetValuePointer<T>(name, true) = m_pNode->GetValue<T>(text);
                return;
            }
        }
        if constexpr (!std::is_same_v<T, bool>) {
            *bag.GetValuePointer<std::wstring>(name, true) = text;
        }
    });
}

template ZANTREL_EXPORT std::int32_t& ParameterNode::_GetReference() const;
template ZANTREL_EXPORT double& ParameterNode::_GetReference() const;
template ZANTREL_EXPORT bool& ParameterNode::_GetReference() const;
template ZANTREL_EXPORT std::wstring& ParameterNode::_GetReference() const;
template ZANTREL_EXPORT KelAM::FileContent& ParameterNode::_GetReference() const;
template ZANTREL_EXPORT std::int32_t* ParameterNode::_FindReference() const;
template ZANTREL_EXPORT double* ParameterNode::_FindReference() const;
template ZANTREL_EXPORT bool* ParameterNode::_FindReference() const;
template ZANTREL_EXPORT std::wstring* ParameterNode::_FindReference() const;
template ZANTREL_EXPORT KelAM::FileContent* ParameterNode::_FindReference() const;
template ZANTREL_EXPORT void ParameterNode::_SetValue(std::int32_t const&);
template ZANTREL_EXPORT void ParameterNode::_SetValue(double const&);

// Formatting

void ParameterNode::Format() {
    if (m_pNode == nullptr || m_pParentProperties == nullptr) {
        throw ParameterMisuse("formatting needs a layout node and the bag to format it into", m_pNode);
    }
    m_pProperties = &FormatNode(*m_pNode, *m_pParentProperties);
    m_isContainer = m_isContainer || m_pNode->m_isProfileList || m_pNode->m_isList;
}

void ParameterNode::_FormatContent() {
    if (m_pNode != nullptr && m_pProperties != nullptr) {
        FittingShapes none;
        FormatContent(*m_pNode, *m_pProperties, nullptr, none);
    }
}

} // namespace Zantrel
