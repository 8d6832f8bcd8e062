// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "text/enum_order.h"

#include <zantrel/database/parameter_node.h>
#include <zantrel/layout/layout_node.h>
#include <zantrel/layout/node_type.h>

#include <cstddef>
#include <iterator>
#include <string_view>

/// The words of parameter files, written once for readers and writers.
namespace Zantrel::ParameterFileWord {

// Words of both formats.
inline constexpr std::string_view Default = "Default";
inline constexpr std::string_view Name = "Name";

// Words of the generic format, whose elements are named like the layout's nodes.
inline constexpr std::wstring_view GenericParameters = L"GenericParameters";
inline constexpr std::string_view DisableAddRemove = "DisableAddRemove";
inline constexpr std::string_view ReadOnly = "ReadOnly";
inline constexpr std::string_view Hidden = "Hidden";
inline constexpr std::string_view NameReadOnly = "NameReadOnly";
inline constexpr std::string_view CanBeDeleted = "CanBeDeleted";
inline constexpr std::string_view UserDefaultProfile = "UserDefaultProfile";

// Words of a filter file.
inline constexpr std::string_view ExportGeneralParameters = "ExportGeneralParameters";
inline constexpr std::string_view ExportDefaultParameters = "ExportDefaultParameters";

// Words of the machine parameters file. Profiles and items are written under these, and read under the
// layout's entry names.
inline constexpr std::string_view KlvrMachineParameters = "KlvrMachineParameters";
inline constexpr std::string_view Property = "Property";
inline constexpr std::string_view Profile = "Profile";
inline constexpr std::string_view Instance = "Instance";
inline constexpr std::string_view Type = "Type";               // written only
inline constexpr std::string_view ProfileList = "ProfileList"; // written only

/// What a machine parameters file says of a node's type, and no reader looks at.
struct TypeWord {
    eTypeLayoutNode type;
    std::string_view word;
};
inline constexpr std::string_view Unsupported = "Unsupported"; // though its value is there
inline constexpr TypeWord Types[] = {
    {eTypeLayoutNode::Group, "Complex"},
    {eTypeLayoutNode::Int, "integer"},
    {eTypeLayoutNode::Double, "number"},
    {eTypeLayoutNode::Distance, Unsupported},
    {eTypeLayoutNode::Bool, "bool"},
    {eTypeLayoutNode::String, "string"},
    {eTypeLayoutNode::Options, Unsupported},
    {eTypeLayoutNode::OptionsFromProfiles, "ProfileName"},
    {eTypeLayoutNode::FileAbsolute, Unsupported},
    {eTypeLayoutNode::FileAttachment, Unsupported},
    {eTypeLayoutNode::StandardOptions, "StandardOptions"},
};
static_assert(InEnumOrder(Types, &TypeWord::type, eTypeLayoutNode::StandardOptions));

/// The word of a type; for a number that is none the one that says so.
constexpr std::string_view WordOf(eTypeLayoutNode type) {
    auto const index = static_cast<std::size_t>(type);
    return index < std::size(Types) ? Types[index].word : Unsupported;
}

} // namespace Zantrel::ParameterFileWord

namespace Zantrel {

/// The places that can have a flag, where they have content.
enum class FlagBearers { All, Containers, Profiles };

/// Whether the flag can be set there. Elsewhere setting it throws, which in a file would be an exception for
/// each attribute that someone put into the wrong element.
inline bool CanHave(ParameterNode const& node, FlagBearers bearers) {
    switch (bearers) {
    case FlagBearers::All:
        return node.IsValid();
    case FlagBearers::Containers: // and their entries, by the layout's node
        return node.IsValid() && (node.m_pNode->m_isList || node.m_pNode->m_isProfileList);
    case FlagBearers::Profiles:
        return node.IsValid() && node.m_pNode->m_isProfileList && !node.m_isContainer;
    }
    return false;
}

/// A flag of a node in a file: its attribute and the cursor's operations. It is written where it differs from
/// `ordinary`. The operations throw where CanHave is false; which flags an element is read or written for
/// stands with each reader and writer.
struct FlagAttribute {
    std::string_view word;
    FlagBearers bearers;
    bool (ParameterNode::*get)() const;
    void (ParameterNode::*set)(bool);
    bool ordinary;
};

namespace Flag {

inline constexpr FlagAttribute DisableAddRemove{ParameterFileWord::DisableAddRemove, FlagBearers::Containers,
                                                &ParameterNode::GetDisableAddRemove,
                                                &ParameterNode::SetDisableAddRemove, false};
inline constexpr FlagAttribute ReadOnly{ParameterFileWord::ReadOnly, FlagBearers::All,
                                        &ParameterNode::GetReadOnly, &ParameterNode::SetReadOnly, false};
inline constexpr FlagAttribute Hidden{ParameterFileWord::Hidden, FlagBearers::All, &ParameterNode::GetHidden,
                                      &ParameterNode::SetHidden, false};
inline constexpr FlagAttribute NameReadOnly{ParameterFileWord::NameReadOnly, FlagBearers::Profiles,
                                            &ParameterNode::GetNameReadOnly, &ParameterNode::SetNameReadOnly,
                                            false};
/// A profile can be deleted only where a file says so in words: here true is never written, and a profile
/// that never had the flag is written with false.
inline constexpr FlagAttribute CanBeDeleted{ParameterFileWord::CanBeDeleted, FlagBearers::Profiles,
                                            &ParameterNode::GetCanBeDeleted, &ParameterNode::SetCanBeDeleted,
                                            true};
inline constexpr FlagAttribute UserDefaultProfile{
    ParameterFileWord::UserDefaultProfile, FlagBearers::Profiles, &ParameterNode::GetUserDefaultProfile,
    &ParameterNode::SetUserDefaultProfile, false};

} // namespace Flag

} // namespace Zantrel
