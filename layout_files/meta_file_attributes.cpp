// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_attributes.h"

#include "layout_files/layout_write.h"

#include <zantrel/text/stream_text_out.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace Zantrel {

namespace {

// The attributes of both elements stand in one table, in the order in which they are written. A row names
// the word, the elements that have it, and the form that it has there with the field that holds it, so that
// all that is to be known of an attribute stands in one line.

using Node = LayoutNode;
using Writer = KelSAX::ISAXWriter;
namespace Word = LayoutWord;

/// One of the elements of a node.
struct Element {
    Node const& node;
    bool isContainer; ///< the outer one of two
};

// --- Which elements have an attribute ---

bool Value(Element const& element) { return !element.isContainer; }
template <eTypeLayoutNode... Types> bool ValueOf(Element const& element) {
    return Value(element) && ((element.node.m_type == Types) || ...);
}

bool Container(Element const& element) { return element.isContainer; }
bool List(Element const& element) { return Container(element) && element.node.m_isList; }
bool TransformList(Element const& element) { return List(element) && element.node.m_canBeTransformed; }
bool GrowingList(Element const& element) { return List(element) && element.node.m_userCanAddRemove; }
bool CategoryList(Element const& element) { return Container(element) && element.node.m_isCategoryList; }
bool PlainProfileList(Element const& element) {
    return Container(element) && element.node.m_isProfileList && !element.node.m_isCategoryList;
}

bool ValueOrList(Element const& element) { return Value(element) || List(element); }

// --- How an attribute is written ---

using Form = void (*)(std::string_view word, Element const& element, Writer& writer);

void Write(std::string_view word, std::wstring_view text, Writer& writer) {
    writer.WriteAttribute(word, text);
}

template <class FieldType> void WriteField(std::string_view word, FieldType const& field, Writer& writer) {
    if constexpr (std::is_same_v<FieldType, std::wstring>) {
        Write(word, field, writer);
    } else if constexpr (std::is_same_v<FieldType, bool>) {
        writer.WriteAttribute(word, field ? Word::True : Word::False);
    } else if constexpr (std::is_integral_v<FieldType>) {
        writer.WriteAttribute(word, std::to_string(field));
    } else {
        Write(word, Join(field), writer);
    }
}

template <auto Field> void Always(std::string_view word, Element const& element, Writer& writer) {
    WriteField(word, element.node.*Field, writer);
}

/// Written where the field is true, isn't 0, holds something.
template <auto Field> void IfSet(std::string_view word, Element const& element, Writer& writer) {
    if (element.node.*Field != std::decay_t<decltype(element.node.*Field)>()) {
        WriteField(word, element.node.*Field, writer);
    }
}

/// Of flags that are true by default.
template <auto Field> void IfFalse(std::string_view word, Element const& element, Writer& writer) {
    if (!(element.node.*Field)) {
        WriteField(word, element.node.*Field, writer);
    }
}

/// Two flags have always been printed by a stream, in lower case, which their readers compare with.
template <auto Field> void Streamed(std::string_view word, Element const& element, Writer& writer) {
    if (element.node.*Field) {
        writer.WriteAttribute(word, (MStreamTextOut<char>() << element.node.*Field).str());
    }
}

void Type(std::string_view, Element const& element, Writer& writer) {
    WriteType(&Word::TypeRow::inMetaFile, element.node, writer);
}

void ListType(std::string_view word, Element const& element, Writer& writer) {
    writer.WriteAttribute(word, TransformList(element) ? Word::TransformListContainer : Word::ListContainer);
}

void Removing(std::string_view word, Element const& element, Writer& writer) {
    writer.WriteAttribute(word,
                          element.node.m_userCanRemoveAnyElement ? Word::RemoveAny : Word::RemoveOnlyLast);
}

/// Inside a container the name of one item comes before the node's own.
void DisplayName(std::string_view word, Element const& element, Writer& writer) {
    bool const isNamedItem = IsContainer(element.node) && !element.node.m_nodeDisplayName.empty();
    WriteText(word, isNamedItem ? element.node.m_nodeDisplayName : element.node.m_displayName, writer);
}

/// An image is of no use without the way to stretch it, nor that without an image.
template <auto Field> void Image(std::string_view word, Element const& element, Writer& writer) {
    if (!element.node.m_imageDescription.empty() && !element.node.m_imageStretch.empty()) {
        Write(word, element.node.*Field, writer);
    }
}

std::wstring IdentifierOf(LayoutNodeSource const& source) {
    return source.m_source != nullptr ? source.m_source->m_identifier : std::wstring();
}
std::wstring const& ConditionOf(LayoutNodeSource const& source) { return source.m_value; }

/// One half of the conditions; the other half corresponds by position.
template <auto Field, auto TextOf>
void Sources(std::string_view word, Element const& element, Writer& writer) {
    if (!(element.node.*Field).empty()) {
        Write(word, Join(element.node.*Field, TextOf), writer);
    }
}
// A condition whose source a host has left null writes an empty identifier, so that positions still
// correspond.
template <auto Field> constexpr Form Identifiers = Sources<Field, IdentifierOf>;
template <auto Field> constexpr Form Values = Sources<Field, ConditionOf>;

// --- The catalogue ---

struct Attribute {
    std::string_view word;
    bool (*isOf)(Element const& element);
    Form write;
};

constexpr Attribute Attributes[] = {
    {Word::ProcessorRequest, ValueOf<String>, IfSet<&Node::m_requestName>},
    {Word::Type, Value, Type},
    {Word::Precision, ValueOf<Double, Distance>, Always<&Node::m_precision>},
    {Word::ProfileName, ValueOf<OptionsFromProfiles>, Always<&Node::m_profileName>},
    {Word::ProcessorRequest, ValueOf<OptionsFromProfiles>, IfSet<&Node::m_requestName>},
    {Word::TriggerPropertyName, ValueOf<OptionsFromProfiles>, IfSet<&Node::m_triggerPropertyName>},
    {Word::FileFilter, ValueOf<FileAbsolute>, IfSet<&Node::m_fileFilter>},
    {Word::OptionsByDriverRequest, ValueOf<StandardOptions>, IfSet<&Node::m_requestName>},
    {Word::VisibilityRequest, Value, IfSet<&Node::m_visibilityRequest>},

    {Word::DisplayName, Value, DisplayName},
    {Word::Postfix, Value, IfSet<&Node::m_postfix>},
    {Word::Prefix, Value, IfSet<&Node::m_prefix>},
    {Word::Description, Value, IfSet<&Node::m_description>},
    {Word::Expanded, Value, IfSet<&Node::m_expanded>},
    {Word::HideParameterName, Value, IfSet<&Node::m_hideName>},
    {Word::IsReadOnly, Value, IfSet<&Node::m_readOnly>},
    {Word::Visible, Value, IfFalse<&Node::m_visible>},
    {Word::AllowNull, Value, IfSet<&Node::m_allowEmpty>},
    {Word::Max, Value, IfSet<&Node::m_max>},
    {Word::Min, Value, IfSet<&Node::m_min>},
    {Word::ValueUnique, Value, IfSet<&Node::m_isValueUnique>},
    {Word::PropertyName, Value, IfSet<&Node::m_propName>},
    {Word::DisplayNameSharedSizeGroup, Value, IfSet<&Node::m_displayNameSharedSizeGroup>},
    {Word::PostfixSharedSizeGroup, Value, IfSet<&Node::m_postfixSharedSizeGroup>},
    {Word::DescriptionImage, Value, Image<&Node::m_imageDescription>},
    {Word::DescriptionImageStretch, Value, Image<&Node::m_imageStretch>},
    {Word::LicenseForEditorPaneVisibility, Value, IfSet<&Node::m_editorLicenseChecks>},
    // A node has one identifier, which both kinds of conditions refer to.
    {Word::VisibilityIdentifier, Value, IfSet<&Node::m_identifier>},
    {Word::EditabilityIdentifier, Value, IfSet<&Node::m_identifier>},
    {Word::DisableForParents, Value, Streamed<&Node::m_disableForParents>},
    {Word::DisableForSubParts, Value, Streamed<&Node::m_disableForSubParts>},
    {Word::ProfileEditingPolicy, Value, IfSet<&Node::m_profileEditingPolicy>},
    {Word::ShowOnlyPartsSelectedInTessra, Value, IfFalse<&Node::m_showOnlyPartsSelectedInTessra>},

    {Word::DisplayName, Container, IfSet<&Node::m_containerDisplayName>},
    {Word::Description, Container, IfSet<&Node::m_containerDescription>},
    {Word::Visible, Container, IfFalse<&Node::m_visible>},
    {Word::Type, List, ListType},
    {Word::PerformTransform, TransformList, Always<&Node::m_performTransform>},
    {Word::ProfilesXmlName, PlainProfileList, Always<&Node::m_nodeName>},
    {Word::CategoriesName, CategoryList, Always<&Node::m_nodeName>},

    {Word::VisibilitySource, ValueOrList, Identifiers<&Node::m_visibilitySources>},
    {Word::VisibleValue, ValueOrList, Values<&Node::m_visibilitySources>},
    {Word::EditabilitySource, ValueOrList, Identifiers<&Node::m_editabilitySources>},
    {Word::EditableValue, ValueOrList, Values<&Node::m_editabilitySources>},

    {Word::EnableMultiLine, ValueOf<String>, IfSet<&Node::m_enableMultiLine>},
    {Word::Regex, ValueOf<String>, IfSet<&Node::m_regex>},
    {Word::RegexUserFriendly, ValueOf<String>, IfSet<&Node::m_regexUserFriendly>},
    {Word::MaxLength, ValueOf<String>, IfSet<&Node::m_maxLength>},

    {Word::CanUserAddRemove, List, Always<&Node::m_userCanAddRemove>},
    {Word::CanUserSort, List, Always<&Node::m_userCanSort>},
    {Word::Multiplicity, List, IfSet<&Node::m_multiplicity>},
    {Word::MultiplicityLimit, List, IfSet<&Node::m_multiplicityMax>},
    {Word::MultiplicityLimitMessage, List, IfSet<&Node::m_multiplicityMaxMessage>},
    {Word::MultiplicityMinLimit, List, IfSet<&Node::m_multiplicityMin>},
    {Word::MultiplicityMinLimitMessage, List, IfSet<&Node::m_multiplicityMinMessage>},
    {Word::RemovingType, GrowingList, Removing},
};

void WriteAttributes(Element const& element, Writer& writer) {
    for (Attribute const& attribute : Attributes) {
        if (attribute.isOf(element)) {
            attribute.write(attribute.word, element, writer);
        }
    }
}

} // namespace

bool IsContainer(LayoutNode const& node) {
    return node.m_isList || node.m_isProfileList || node.m_isCategoryList;
}

void WriteContainerAttributes(LayoutNode const& node, Writer& writer) {
    WriteAttributes({node, true}, writer);
}

void WriteValueAttributes(LayoutNode const& node, Writer& writer) { WriteAttributes({node, false}, writer); }

} // namespace Zantrel
