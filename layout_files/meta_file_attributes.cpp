// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_attributes.h"

#include "layout_files/join.h"
#include "layout_files/meta_file_words.h"

#include <zantrel/text/stream_text_out.h>

#include <string>
#include <string_view>

namespace Zantrel {

namespace {

using Node = LayoutNode;
using Writer = KelSAX::ISAXWriter;
namespace Word = MetaFileWord;

// --- Which nodes have an attribute ---

bool Any(Node const&) { return true; }
template <eTypeLayoutNode... Types> bool Is(Node const& node) { return ((node.m_type == Types) || ...); }

bool List(Node const& node) { return node.m_isList; }
bool TransformList(Node const& node) { return node.m_isList && node.m_canBeTransformed; }
bool GrowingList(Node const& node) { return node.m_isList && node.m_userCanAddRemove; }
bool CategoryList(Node const& node) { return node.m_isCategoryList; }
bool PlainProfileList(Node const& node) { return node.m_isProfileList && !node.m_isCategoryList; }

// --- How an attribute is written ---

using Form = void (*)(std::string_view word, Node const& node, Writer& writer);

void Write(std::string_view word, std::wstring_view text, Writer& writer) {
    writer.WriteAttribute(word, text);
}

std::string_view FlagWord(bool flag) { return flag ? "True" : "False"; }

template <auto Field> void TextAlways(std::string_view word, Node const& node, Writer& writer) {
    Write(word, node.*Field, writer);
}

template <auto Field> void Text(std::string_view word, Node const& node, Writer& writer) {
    if (!(node.*Field).empty()) {
        Write(word, node.*Field, writer);
    }
}

template <auto Field> void FlagAlways(std::string_view word, Node const& node, Writer& writer) {
    writer.WriteAttribute(word, FlagWord(node.*Field));
}

/// Written in the one state only.
template <auto Field, bool State> void Flag(std::string_view word, Node const& node, Writer& writer) {
    if (node.*Field == State) {
        FlagAlways<Field>(word, node, writer);
    }
}

/// Two flags have always been printed by a stream, in lower case, which their readers compare with.
template <auto Field> void StreamedFlag(std::string_view word, Node const& node, Writer& writer) {
    if (node.*Field) {
        writer.WriteAttribute(word, (MStreamTextOut<char>() << node.*Field).str());
    }
}

template <auto Field> void Number(std::string_view word, Node const& node, Writer& writer) {
    writer.WriteAttribute(word, std::to_string(node.*Field));
}

/// 0 says that nothing was set.
template <auto Field> void Count(std::string_view word, Node const& node, Writer& writer) {
    if (node.*Field != 0) {
        Number<Field>(word, node, writer);
    }
}

void Type(std::string_view word, Node const& node, Writer& writer) {
    std::string_view const type = WordOf(Word::Types, node.m_type);
    if (!type.empty()) {
        writer.WriteAttribute(word, type);
    }
}

void ListType(std::string_view word, Node const& node, Writer& writer) {
    writer.WriteAttribute(word, TransformList(node) ? Word::TransformListContainer : Word::ListContainer);
}

void Removing(std::string_view word, Node const& node, Writer& writer) {
    writer.WriteAttribute(word, node.m_userCanRemoveAnyElement ? std::string_view("RemoveAny")
                                                               : std::string_view("RemoveOnlyLast"));
}

/// Inside a container the name of one item comes before the node's own.
void DisplayName(std::string_view word, Node const& node, Writer& writer) {
    bool const isNamedItem = IsContainer(node) && !node.m_nodeDisplayName.empty();
    isNamedItem ? Text<&Node::m_nodeDisplayName>(word, node, writer)
                : Text<&Node::m_displayName>(word, node, writer);
}

/// An image is of no use without the way to stretch it, nor that without an image.
template <auto Field> void Image(std::string_view word, Node const& node, Writer& writer) {
    if (!node.m_imageDescription.empty() && !node.m_imageStretch.empty()) {
        Write(word, node.*Field, writer);
    }
}

void Licences(std::string_view word, Node const& node, Writer& writer) {
    if (!node.m_editorLicenseChecks.empty()) {
        Write(word, Join(node.m_editorLicenseChecks), writer);
    }
}

std::wstring IdentifierOf(LayoutNodeSource const& source) {
    return source.m_source != nullptr ? source.m_source->m_identifier : std::wstring();
}
std::wstring ValueOf(LayoutNodeSource const& source) { return source.m_value; }

/// One half of the conditions; the other half corresponds by position.
template <auto Field, auto TextOf> void Sources(std::string_view word, Node const& node, Writer& writer) {
    if (!(node.*Field).empty()) {
        Write(word, Join(node.*Field, TextOf), writer);
    }
}

// --- The catalogue ---

struct Attribute {
    std::string_view word;
    bool (*isOf)(Node const& node);
    Form write;
};

constexpr Attribute ValueAttributes[] = {
    {"ProcessorRequest", Is<String>, Text<&Node::m_requestName>},
    {Word::Type, Any, Type},
    {"Precision", Is<Double, Distance>, Number<&Node::m_precision>},
    {Word::ProfileName, Is<OptionsFromProfiles>, TextAlways<&Node::m_profileName>},
    {"ProcessorRequest", Is<OptionsFromProfiles>, Text<&Node::m_requestName>},
    {"TriggerPropertyName", Is<OptionsFromProfiles>, Text<&Node::m_triggerPropertyName>},
    {"FileFilter", Is<FileAbsolute>, Text<&Node::m_fileFilter>},
    {"OptionsByDriverRequest", Is<StandardOptions>, Text<&Node::m_requestName>},
    {"VisibilityRequest", Any, Text<&Node::m_visibilityRequest>},

    {Word::DisplayName, Any, DisplayName},
    {"Postfix", Any, Text<&Node::m_postfix>},
    {"Prefix", Any, Text<&Node::m_prefix>},
    {"Description", Any, Text<&Node::m_description>},
    {"Expanded", Any, Flag<&Node::m_expanded, true>},
    {"HideParameterName", Any, Flag<&Node::m_hideName, true>},
    {"IsReadOnly", Any, Flag<&Node::m_readOnly, true>},
    {"Visible", Any, Flag<&Node::m_visible, false>},
    {"AllowNull", Any, Flag<&Node::m_allowEmpty, true>},
    {"Max", Any, Text<&Node::m_max>},
    {"Min", Any, Text<&Node::m_min>},
    {"ValueUnique", Any, Flag<&Node::m_isValueUnique, true>},
    {Word::PropertyName, Any, Text<&Node::m_propName>},
    {"DisplayNameSharedSizeGroup", Any, Text<&Node::m_displayNameSharedSizeGroup>},
    {"PostfixSharedSizeGroup", Any, Text<&Node::m_postfixSharedSizeGroup>},
    {"DescriptionImage", Any, Image<&Node::m_imageDescription>},
    {"DescriptionImageStretch", Any, Image<&Node::m_imageStretch>},
    {"LicenseForEditorPaneVisibility", Any, Licences},
    {"VisibilityIdentifier", Any, Text<&Node::m_identifier>},
    {"EditabilityIdentifier", Any, Text<&Node::m_identifier>},
    {"DisableForParents", Any, StreamedFlag<&Node::m_disableForParents>},
    {"DisableForSubParts", Any, StreamedFlag<&Node::m_disableForSubParts>},
    {"ProfileEditingPolicy", Any, Text<&Node::m_profileEditingPolicy>},
    {"ShowOnlyPartsSelectedInTessra", Any, Flag<&Node::m_showOnlyPartsSelectedInTessra, false>},

    {"VisibilitySource", Any, Sources<&Node::m_visibilitySources, IdentifierOf>},
    {"VisibleValue", Any, Sources<&Node::m_visibilitySources, ValueOf>},
    {"EditabilitySource", Any, Sources<&Node::m_editabilitySources, IdentifierOf>},
    {"EditableValue", Any, Sources<&Node::m_editabilitySources, ValueOf>},

    {"EnableMultiLine", Is<String>, Flag<&Node::m_enableMultiLine, true>},
    {"Regex", Is<String>, Text<&Node::m_regex>},
    {"RegexUserFriendly", Is<String>, Text<&Node::m_regexUserFriendly>},
    {"MaxLength", Is<String>, Count<&Node::m_maxLength>},
};

constexpr Attribute ContainerAttributes[] = {
    {Word::DisplayName, Any, Text<&Node::m_containerDisplayName>},
    {"Description", Any, Text<&Node::m_containerDescription>},
    {"Visible", Any, Flag<&Node::m_visible, false>},
    {Word::Type, List, ListType},
    {"PerformTransform", TransformList, FlagAlways<&Node::m_performTransform>},
    {Word::ProfilesXmlName, PlainProfileList, TextAlways<&Node::m_nodeName>},
    {Word::CategoriesName, CategoryList, TextAlways<&Node::m_nodeName>},
    {"VisibilitySource", List, Sources<&Node::m_visibilitySources, IdentifierOf>},
    {"VisibleValue", List, Sources<&Node::m_visibilitySources, ValueOf>},
    {"EditabilitySource", List, Sources<&Node::m_editabilitySources, IdentifierOf>},
    {"EditableValue", List, Sources<&Node::m_editabilitySources, ValueOf>},
    {"CanUserAddRemove", List, FlagAlways<&Node::m_userCanAddRemove>},
    {"CanUserSort", List, FlagAlways<&Node::m_userCanSort>},
    {"Multiplicity", List, Count<&Node::m_multiplicity>},
    {"MultiplicityLimit", List, Count<&Node::m_multiplicityMax>},
    {"MultiplicityLimitMessage", List, Text<&Node::m_multiplicityMaxMessage>},
    {"MultiplicityMinLimit", List, Count<&Node::m_multiplicityMin>},
    {"MultiplicityMinLimitMessage", List, Text<&Node::m_multiplicityMinMessage>},
    {"RemovingType", GrowingList, Removing},
};

template <std::size_t Size>
void WriteAll(Attribute const (&attributes)[Size], Node const& node, Writer& writer) {
    for (Attribute const& attribute : attributes) {
        if (attribute.isOf(node)) {
            attribute.write(attribute.word, node, writer);
        }
    }
}

} // namespace

bool IsContainer(LayoutNode const& node) {
    return node.m_isList || node.m_isProfileList || node.m_isCategoryList;
}

void WriteContainerAttributes(LayoutNode const& node, Writer& writer) {
    WriteAll(ContainerAttributes, node, writer);
}

void WriteValueAttributes(LayoutNode const& node, Writer& writer) { WriteAll(ValueAttributes, node, writer); }

} // namespace Zantrel
