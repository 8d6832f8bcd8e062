// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace RoundTrip {

/// Prints what stands under the cursor as an indented tree in UTF-8, one line for each value, entry and
/// group.
void Show(Zantrel::ParameterNode const& node, std::ostream& out);

/// How much two trees were found to have in common.
struct Equalities {
    std::size_t values = 0;
    std::size_t flags = 0;
    std::size_t entries = 0; ///< profiles and list items
};

/// Walks both trees side by side and compares every value, flag, profile name and list size. Throws
/// std::runtime_error that names, in UTF-8, the first place where they differ.
Equalities Compare(Zantrel::ParameterNode const& first, Zantrel::ParameterNode const& second);

// What both have in common: which flags, values and profiles stand under a cursor.

struct Flag {
    wchar_t const* words; ///< what it means to the user when it is set
    bool (Zantrel::ParameterNode::*get)() const;
};

/// The flags that the node under the cursor can have; asking for any other would throw.
inline std::vector<Flag> FlagsOf(Zantrel::ParameterNode const& node) {
    using Node = Zantrel::ParameterNode;
    std::vector<Flag> flags{{L"read-only", &Node::GetReadOnly}, {L"hidden", &Node::GetHidden}};
    if (node.m_pNode->m_isProfileList || node.m_pNode->m_isList) {
        flags.push_back({L"fixed entries", &Node::GetDisableAddRemove});
    }
    if (node.m_pNode->m_isProfileList && !node.m_isContainer) {
        flags.push_back({L"fixed name", &Node::GetNameReadOnly});
        flags.push_back({L"can be deleted", &Node::GetCanBeDeleted});
        flags.push_back({L"the user's default", &Node::GetUserDefaultProfile});
    }
    return flags;
}

/// Calls `visit` with an empty value of the type that a node of this type holds; a group holds none.
template <class Visitor> void VisitValueType(Zantrel::eTypeLayoutNode type, Visitor&& visit) {
    switch (type) { // no default: the compiler names a type that is forgotten
    case Zantrel::Group:
        return;
    case Zantrel::Int:
        return visit(std::int32_t());
    case Zantrel::Double:
    case Zantrel::Distance:
        return visit(double());
    case Zantrel::Bool:
        return visit(bool());
    case Zantrel::String:
    case Zantrel::Options:
    case Zantrel::OptionsFromProfiles:
    case Zantrel::FileAbsolute:
    case Zantrel::StandardOptions:
        return visit(std::wstring());
    case Zantrel::FileAttachment:
        return visit(KelAM::FileContent());
    }
}

/// The value under the cursor, or null: options of the driver have none until somebody chooses.
template <class T> T const* FindValue(Zantrel::ParameterNode const& leaf) {
    return leaf.m_pProperties->HasValue<T>(L"Value") ? &leaf.GetValue<T>() : nullptr;
}

inline std::vector<std::wstring> ProfilesOf(Zantrel::ParameterNode const& list) {
    std::vector<std::wstring> names;
    list.GetProfiles(names);
    return names;
}

} // namespace RoundTrip
