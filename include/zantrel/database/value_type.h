// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/node_type.h>
#include <zantrel/store/file_content.h>

#include <cstdint>
#include <string>

#include <zantrel/macros_away.h>

namespace Zantrel {

/// A type as an argument: what VisitValueType gives its visitor.
template <class T> struct TypeTag { using Type = T; };

/// In place of a value's type, for a node that has none.
struct NoValue {};

/// The one place where node types meet the types of values: calls `visit` with a TypeTag of the type that a
/// node of `type` holds, and gives what that gives, which is of one type for all tags. NoValue stands for a
/// Group and for a number that is no type. A StandardOptions node is a text that formatting leaves out.
///
///     VisitValueType(node.m_type, [&](auto tag) {
///         using T = typename decltype(tag)::Type;
///         if constexpr (!std::is_same_v<T, NoValue>) {
///             T const* value = cursor.template FindValue<T>(); // null: not set
///         }
///     });
template <class Visitor> decltype(auto) VisitValueType(eTypeLayoutNode type, Visitor&& visit) {
    switch (type) { // no default: the compiler names a type that is forgotten
    case eTypeLayoutNode::Group:
        return visit(TypeTag<NoValue>());
    case eTypeLayoutNode::Int:
        return visit(TypeTag<std::int32_t>());
    case eTypeLayoutNode::Double:
    case eTypeLayoutNode::Distance:
        return visit(TypeTag<double>());
    case eTypeLayoutNode::Bool:
        return visit(TypeTag<bool>());
    case eTypeLayoutNode::String:
    case eTypeLayoutNode::Options:
    case eTypeLayoutNode::OptionsFromProfiles:
    case eTypeLayoutNode::FileAbsolute:
    case eTypeLayoutNode::StandardOptions:
        return visit(TypeTag<std::wstring>());
    case eTypeLayoutNode::FileAttachment:
        return visit(TypeTag<KelAM::FileContent>());
    }
    return visit(TypeTag<NoValue>()); // a number that is no type
}

} // namespace Zantrel

#include <zantrel/macros_back.h>
