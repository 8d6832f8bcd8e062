// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/type_words.h"

/// The words of the property template, for its reader and its writer.
namespace Zantrel::PropertyTemplateWord {

inline constexpr std::string_view Root = "KlvrPropertyTemplate";
inline constexpr std::string_view MachineParameters = "MachineParameters";
inline constexpr std::string_view BuildTicket = "BuildTicket";
inline constexpr std::string_view Defaults = "Defaults";
inline constexpr std::string_view PartOverrides = "PartOverrides";
inline constexpr std::string_view PropertyNode = "PropertyNode";

inline constexpr std::string_view Name = "Name";
inline constexpr std::string_view Type = "Type";
inline constexpr std::string_view Precision = "Precision"; // written only
inline constexpr std::string_view Options = "Options";     // written only
inline constexpr std::string_view ProfileList = "ProfileList";
inline constexpr std::string_view List = "List";
inline constexpr std::string_view DisplayName = "DisplayName";
inline constexpr std::string_view DisplayNameContainer = "DisplayNameContainer";
inline constexpr std::string_view PropertyName = "PropertyName";
inline constexpr std::string_view ProfileName = "ProfileName";
inline constexpr std::string_view Default = "Default";

/// A type whose word isn't read comes back as Double (a distance) or as String.
inline constexpr TypeWord Types[] = {
    {eTypeLayoutNode::Group, "Complex", true},
    {eTypeLayoutNode::Int, "integer", true},
    {eTypeLayoutNode::Double, "number", true},
    {eTypeLayoutNode::Distance, "number", false},
    {eTypeLayoutNode::Bool, "bool", true},
    {eTypeLayoutNode::String, "string", true},
    {eTypeLayoutNode::Options, "enum", false},
    {eTypeLayoutNode::OptionsFromProfiles, "ProfileName", true},
    {eTypeLayoutNode::FileAbsolute, "FileAbsolute", true},
    {eTypeLayoutNode::FileAttachment, "string", false},
    {eTypeLayoutNode::StandardOptions, "StandardOptions", true},
};
static_assert(IsCompleteAndInOrder(Types));

} // namespace Zantrel::PropertyTemplateWord
