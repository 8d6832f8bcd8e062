// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/type_words.h"

/// The words of the layout meta file that its reader and its writer share, or that only the reader knows.
/// What only the writer knows stands in its table of attributes.
namespace Zantrel::MetaFileWord {

inline constexpr std::string_view JobConfigurator = "JobConfigurator";
inline constexpr std::string_view ParameterStructure = "ParameterStructure";
inline constexpr std::string_view AdditionalConfiguration = "AdditionalConfiguration";
inline constexpr std::string_view InheritOverrides = "InheritOverrides";
inline constexpr std::string_view OverrideEntry = "OverrideEntry";

inline constexpr std::string_view ResourceDictionary = "ResourceDictionary";
inline constexpr std::string_view Entry = "Entry";
inline constexpr std::string_view Key = "Key";
inline constexpr std::string_view Translation = "Translation";
inline constexpr std::string_view Language = "Language";

/// Written as an element; as an attribute, known to the reader only.
inline constexpr std::string_view Options = "Options";
inline constexpr std::string_view Option = "Option";

inline constexpr std::string_view Type = "Type";
inline constexpr std::string_view DisplayName = "DisplayName";
inline constexpr std::string_view PropertyName = "PropertyName";
inline constexpr std::string_view ProfileName = "ProfileName";
inline constexpr std::string_view ProfilesXmlName = "ProfilesXMLName";
inline constexpr std::string_view CategoriesName = "CategoriesName";

/// The "Type" of a list. The other one is no word of the reader's, which takes such a list for a text.
inline constexpr std::string_view ListContainer = "ListContainer";
inline constexpr std::string_view TransformListContainer = "TransformListContainer";

/// Files mark options by what stands inside the element and not by a word of their own.
inline constexpr TypeWord Types[] = {
    {eTypeLayoutNode::Group, "", false},
    {eTypeLayoutNode::Int, "Int", true},
    {eTypeLayoutNode::Double, "Double", true},
    {eTypeLayoutNode::Distance, "Distance", true},
    {eTypeLayoutNode::Bool, "Bool", true},
    {eTypeLayoutNode::String, "String", true},
    {eTypeLayoutNode::Options, "String", false},
    {eTypeLayoutNode::OptionsFromProfiles, "OptionsFromProfiles", true},
    {eTypeLayoutNode::FileAbsolute, "FileAbsolute", true},
    {eTypeLayoutNode::FileAttachment, "FileAttachment", true},
    {eTypeLayoutNode::StandardOptions, "StandardOptions", true},
};
static_assert(IsCompleteAndInOrder(Types));

} // namespace Zantrel::MetaFileWord
