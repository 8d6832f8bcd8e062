// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "text/enum_order.h"

#include <zantrel/layout/node_type.h>

#include <cstddef>
#include <string_view>

/// Every word of the two layout files, the meta file and the property template, for their readers and
/// writers. A word stands once, also where both files have it or where it names an element here and an
/// attribute there.
namespace Zantrel::LayoutWord {

using Text = std::string_view;

// --- Elements of the meta file, beside those that bear the name of a node ---

inline constexpr Text JobConfigurator = "JobConfigurator";
inline constexpr Text ParameterStructure = "ParameterStructure";           ///< read only
inline constexpr Text AdditionalConfiguration = "AdditionalConfiguration"; ///< read only
inline constexpr Text InheritOverrides = "InheritOverrides";               ///< read only
inline constexpr Text OverrideEntry = "OverrideEntry";                     ///< read only

/// Below "ProfileEditor", where a layout may have them.
inline constexpr Text GenericParameters = "GenericParameters", Categories = "Categories";

/// The dictionary, with its attributes, is written only for who wants the whole layout.
inline constexpr Text ResourceDictionary = "ResourceDictionary", Entry = "Entry", Key = "Key",
                      Translation = "Translation", Language = "Language";

/// The meta file writes the choices of a node as elements and has them also as an attribute; the property
/// template writes them as the attribute.
inline constexpr Text Options = "Options", Option = "Option";

// --- Elements of the property template ---

inline constexpr Text PropertyTemplate = "KlvrPropertyTemplate"; ///< the root
inline constexpr Text MachineParameters = "MachineParameters";
inline constexpr Text BuildTicket = "BuildTicket", Defaults = "Defaults", PartOverrides = "PartOverrides";
inline constexpr Text PropertyNode = "PropertyNode";

// --- Attributes of both files ---

inline constexpr Text Type = "Type";
inline constexpr Text DisplayName = "DisplayName";
inline constexpr Text PropertyName = "PropertyName";
inline constexpr Text ProfileName = "ProfileName"; ///< in the template also a type
inline constexpr Text Precision = "Precision";     ///< read only with the whole layout

// --- Attributes of the property template ---

inline constexpr Text Name = "Name";
inline constexpr Text Default = "Default";
inline constexpr Text DisplayNameContainer = "DisplayNameContainer";
inline constexpr Text ProfileList = "ProfileList", List = "List"; ///< their presence counts

// --- Attributes of the meta file, all but the two names of containers read only with the whole layout ---

inline constexpr Text ProfilesXmlName = "ProfilesXMLName", CategoriesName = "CategoriesName";

inline constexpr Text ProcessorRequest = "ProcessorRequest";
inline constexpr Text OptionsByDriverRequest = "OptionsByDriverRequest";
inline constexpr Text VisibilityRequest = "VisibilityRequest";
inline constexpr Text TriggerPropertyName = "TriggerPropertyName";
inline constexpr Text FileFilter = "FileFilter";
inline constexpr Text AllowNull = "AllowNull", Max = "Max", Min = "Min", ValueUnique = "ValueUnique";
inline constexpr Text EnableMultiLine = "EnableMultiLine", MaxLength = "MaxLength";
inline constexpr Text Regex = "Regex", RegexUserFriendly = "RegexUserFriendly";

inline constexpr Text Postfix = "Postfix", Prefix = "Prefix", Description = "Description";
inline constexpr Text Expanded = "Expanded", HideParameterName = "HideParameterName";
inline constexpr Text IsReadOnly = "IsReadOnly", Visible = "Visible";
inline constexpr Text DisplayNameSharedSizeGroup = "DisplayNameSharedSizeGroup";
inline constexpr Text PostfixSharedSizeGroup = "PostfixSharedSizeGroup";
inline constexpr Text DescriptionImage = "DescriptionImage";
inline constexpr Text DescriptionImageStretch = "DescriptionImageStretch";
inline constexpr Text LicenseForEditorPaneVisibility = "LicenseForEditorPaneVisibility";
inline constexpr Text DisableForParents = "DisableForParents", DisableForSubParts = "DisableForSubParts";
inline constexpr Text ProfileEditingPolicy = "ProfileEditingPolicy";
inline constexpr Text ShowOnlyPartsSelectedInTessra = "ShowOnlyPartsSelectedInTessra";

inline constexpr Text VisibilityIdentifier = "VisibilityIdentifier";
inline constexpr Text EditabilityIdentifier = "EditabilityIdentifier";
inline constexpr Text VisibilitySource = "VisibilitySource", VisibleValue = "VisibleValue";
inline constexpr Text EditabilitySource = "EditabilitySource", EditableValue = "EditableValue";

inline constexpr Text PerformTransform = "PerformTransform";
inline constexpr Text CanUserAddRemove = "CanUserAddRemove", CanUserSort = "CanUserSort";
inline constexpr Text Multiplicity = "Multiplicity";
inline constexpr Text MultiplicityLimit = "MultiplicityLimit";
inline constexpr Text MultiplicityLimitMessage = "MultiplicityLimitMessage";
inline constexpr Text MultiplicityMinLimit = "MultiplicityMinLimit";
inline constexpr Text MultiplicityMinLimitMessage = "MultiplicityMinLimitMessage";
inline constexpr Text RemovingType = "RemovingType";

// --- Values of attributes of the meta file ---

inline constexpr Text True = "True", False = "False";
inline constexpr Text RemoveAny = "RemoveAny", RemoveOnlyLast = "RemoveOnlyLast";
/// The "Type" of a list. The second is no word of the reader's, which takes such a list for a text.
inline constexpr Text ListContainer = "ListContainer", TransformListContainer = "TransformListContainer";

// --- Types ---

/// Words that stand for two types or in both files.
inline constexpr Text MetaString = "String", Number = "number", String = "string", Enum = "enum";
inline constexpr Text FileAbsolute = "FileAbsolute", StandardOptions = "StandardOptions";

/// The word of a node type in a file. One that isn't read is none of the reader's, or stands for another
/// type there: such a type doesn't come back.
struct TypeWord {
    Text word; ///< empty: none is written
    bool isRead = !word.empty();
};

struct TypeRow {
    eTypeLayoutNode type;
    TypeWord inMetaFile, inTemplate;
};

/// The meta file marks options by what stands inside the element and not by a word of their own.
inline constexpr TypeRow Types[] = {
    {eTypeLayoutNode::Group, {}, {"Complex"}},
    {eTypeLayoutNode::Int, {"Int"}, {"integer"}},
    {eTypeLayoutNode::Double, {"Double"}, {Number}},
    {eTypeLayoutNode::Distance, {"Distance"}, {Number, false}},
    {eTypeLayoutNode::Bool, {"Bool"}, {"bool"}},
    {eTypeLayoutNode::String, {MetaString}, {String}},
    {eTypeLayoutNode::Options, {MetaString, false}, {Enum, false}},
    {eTypeLayoutNode::OptionsFromProfiles, {"OptionsFromProfiles"}, {ProfileName}},
    {eTypeLayoutNode::FileAbsolute, {FileAbsolute}, {FileAbsolute}},
    {eTypeLayoutNode::FileAttachment, {"FileAttachment"}, {String, false}},
    {eTypeLayoutNode::StandardOptions, {StandardOptions}, {StandardOptions}},
};
static_assert(InEnumOrder(Types, &TypeRow::type, eTypeLayoutNode::StandardOptions));

/// Whether the reader of a file has at most one type for a word.
constexpr bool ReadsEachWordOnce(TypeWord TypeRow::*file) {
    for (TypeRow const& row : Types) {
        for (TypeRow const& other : Types) {
            bool const isSameWord = (row.*file).word == (other.*file).word;
            if (&row != &other && (row.*file).isRead && (other.*file).isRead && isSameWord) {
                return false;
            }
        }
    }
    return true;
}
static_assert(ReadsEachWordOnce(&TypeRow::inMetaFile) && ReadsEachWordOnce(&TypeRow::inTemplate));

} // namespace Zantrel::LayoutWord
