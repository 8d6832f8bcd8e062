// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>

#include <string_view>

/// The words of parameter files, written once for readers and writers.
namespace Zantrel::ParameterFileWord {

inline constexpr std::string_view Default = "Default";
inline constexpr std::wstring_view GenericParameters = L"GenericParameters";

inline constexpr std::string_view Name = "Name";
inline constexpr std::string_view DisableAddRemove = "DisableAddRemove";
inline constexpr std::string_view ReadOnly = "ReadOnly";
inline constexpr std::string_view Hidden = "Hidden";
inline constexpr std::string_view NameReadOnly = "NameReadOnly";
inline constexpr std::string_view CanBeDeleted = "CanBeDeleted";
inline constexpr std::string_view UserDefaultProfile = "UserDefaultProfile";

// Words of a filter file.
inline constexpr std::string_view ExportGeneralParameters = "ExportGeneralParameters";
inline constexpr std::string_view ExportDefaultParameters = "ExportDefaultParameters";

} // namespace Zantrel::ParameterFileWord

namespace Zantrel {

/// A flag of a node in a file: its attribute and the cursor's operations. It is written where it differs from
/// `ordinary`.
struct FlagAttribute {
    std::string_view word;
    bool (ParameterNode::*get)() const;
    void (ParameterNode::*set)(bool);
    bool ordinary;
};

namespace Flag {

inline constexpr FlagAttribute DisableAddRemove{ParameterFileWord::DisableAddRemove,
                                                &ParameterNode::GetDisableAddRemove,
                                                &ParameterNode::SetDisableAddRemove, false};
inline constexpr FlagAttribute ReadOnly{ParameterFileWord::ReadOnly, &ParameterNode::GetReadOnly,
                                        &ParameterNode::SetReadOnly, false};
inline constexpr FlagAttribute Hidden{ParameterFileWord::Hidden, &ParameterNode::GetHidden,
                                      &ParameterNode::SetHidden, false};
inline constexpr FlagAttribute NameReadOnly{ParameterFileWord::NameReadOnly, &ParameterNode::GetNameReadOnly,
                                            &ParameterNode::SetNameReadOnly, false};
/// A profile can be deleted only where a file says so in words: here true is never written, and a profile
/// that never had the flag is written with false.
inline constexpr FlagAttribute CanBeDeleted{ParameterFileWord::CanBeDeleted, &ParameterNode::GetCanBeDeleted,
                                            &ParameterNode::SetCanBeDeleted, true};
inline constexpr FlagAttribute UserDefaultProfile{ParameterFileWord::UserDefaultProfile,
                                                  &ParameterNode::GetUserDefaultProfile,
                                                  &ParameterNode::SetUserDefaultProfile, false};

} // namespace Flag

} // namespace Zantrel
