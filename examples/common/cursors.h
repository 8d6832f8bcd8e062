// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <cstdint>
#include <string>
#include <vector>

/// What hosts ask of any cursor, whatever its layout: which flags and which value stand there, and their
/// texts.
namespace Host {

struct Flag {
    wchar_t const* words; ///< what it means to the user when it is set
    bool (Zantrel::ParameterNode::*get)() const;
};

/// The flags that the node under the cursor can have; asking for any other would throw.
std::vector<Flag> FlagsOf(Zantrel::ParameterNode const& node);

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

/// The value alone: a text as it stands, a number exact in few digits. LayoutNode::FormatValue would round to
/// the node's precision, as an editor does.
std::wstring PlainText(Zantrel::ParameterNode const& leaf);

/// "0.03 mm": the value between the node's prefix and postfix, as a rule its unit; a text in quotes. Empty
/// without a value, and for options of the driver also with an empty one, which files can't tell from none.
std::wstring ValueText(Zantrel::ParameterNode const& leaf);

/// "read-only, hidden".
std::wstring FlagsText(Zantrel::ParameterNode const& node);

} // namespace Host
