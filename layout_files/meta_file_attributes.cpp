// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_attributes.h"

#include "layout_files/layout_write.h"
#include "layout_files/meta_file_references.h"
#include "layout_files/read_values.h"

#include <zantrel/text/stream_text_out.h>
#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zantrel {

namespace {

// The attributes of both elements stand in one table, in the order in which they are written. A row names
// the word, the elements that have it, and the form that it has there with the field that holds it, so that
// all that is to be known of an attribute stands in one line. A form has two sides: what it writes is what it
// reads. The reader goes down the same table, so a row that it has passed can decide about a later one.

using Node = LayoutNode;
using Element = MetaFileElement;
using Writer = KelSAX::ISAXWriter;
namespace Word = LayoutWord;

/// The attributes of one element on their way into its node.
struct Reading {
    Node& node;
    KelSAX::ISAXReader& reader;
    MetaFileReferences& references;
    std::optional<std::wstring> sources; ///< the half of the conditions that came last, until the other comes
};

// --- Which elements have an attribute ---

bool Value(Element const& element) { return !element.isContainer; }
template <eTypeLayoutNode... Types> bool ValueOf(Element const& element) {
    return Value(element) && ((element.node.m_type == Types) || ...);
}

bool Container(Element const& element) { return element.isContainer; }
bool List(Element const& element) { return Container(element) && element.node.m_isList; }
bool TransformList(Element const& element) { return List(element) && element.node.m_canBeTransformed; }
bool CategoryList(Element const& element) { return Container(element) && element.node.m_isCategoryList; }
bool PlainProfileList(Element const& element) {
    return Container(element) && element.node.m_isProfileList && !element.node.m_isCategoryList;
}

// Conditions stand on both elements of a list, but only on the inner one of a profile list.
bool ValueOrList(Element const& element) { return Value(element) || List(element); }

// --- How an attribute is written and read ---

struct Form {
    void (*write)(std::string_view word, Element const& element, Writer& writer);
    void (*read)(std::string_view word, Reading& reading);
};

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

template <auto Field> void Read(std::string_view word, Reading& reading) {
    auto& field = reading.node.*Field;
    using FieldType = std::decay_t<decltype(field)>;
    if constexpr (std::is_same_v<FieldType, std::vector<std::wstring>>) {
        std::wstring text;
        if (reading.reader.ReadAttribute(text, word)) {
            std::vector<std::wstring_view> const parts = Split(text);
            field.assign(parts.begin(), parts.end());
        }
    } else if constexpr (std::is_integral_v<FieldType> && !std::is_same_v<FieldType, bool>) {
        ReadNumber(field, word, reading.reader);
    } else {
        reading.reader.ReadAttribute(field, word);
    }
}

template <auto Field> void WriteAlways(std::string_view word, Element const& element, Writer& writer) {
    WriteField(word, element.node.*Field, writer);
}
template <auto Field> constexpr Form Always = {WriteAlways<Field>, Read<Field>};

template <auto Field> void WriteIfSet(std::string_view word, Element const& element, Writer& writer) {
    if (element.node.*Field != std::decay_t<decltype(element.node.*Field)>()) {
        WriteField(word, element.node.*Field, writer);
    }
}
/// Written where the field is true, isn't 0, holds something.
template <auto Field> constexpr Form IfSet = {WriteIfSet<Field>, Read<Field>};

template <auto Field> void WriteIfFalse(std::string_view word, Element const& element, Writer& writer) {
    if (!(element.node.*Field)) {
        WriteField(word, element.node.*Field, writer);
    }
}
/// Of flags that are true by default.
template <auto Field> constexpr Form IfFalse = {WriteIfFalse<Field>, Read<Field>};

template <auto Field> void WriteStreamed(std::string_view word, Element const& element, Writer& writer) {
    if (element.node.*Field) {
        writer.WriteAttribute(word, (MStreamTextOut<char>() << element.node.*Field).str());
    }
}
/// Two flags have always been printed by a stream, in lower case, which their readers compare with.
template <auto Field> constexpr Form Streamed = {WriteStreamed<Field>, Read<Field>};

template <auto Field> void ReadLimit(std::string_view word, Reading& reading) {
    if (reading.reader.ReadAttribute(reading.node.*Field, word)) {
        NoteUnlessValue(reading.node.*Field, reading.node.m_type, word, reading.reader);
    }
}
template <auto Field> constexpr Form Limit = {WriteIfSet<Field>, ReadLimit<Field>};

/// What an element is, and so what its type is, is read before its attributes are.
void ReadBefore(std::string_view, Reading&) {}

void WriteTypeOf(std::string_view, Element const& element, Writer& writer) {
    WriteType(&Word::TypeRow::inMetaFile, element.node, writer);
}
constexpr Form Type = {WriteTypeOf, ReadBefore};

void WriteListType(std::string_view word, Element const& element, Writer& writer) {
    writer.WriteAttribute(word, TransformList(element) ? Word::TransformListContainer : Word::ListContainer);
}
constexpr Form ListType = {WriteListType, ReadBefore};

/// Where nothing can be removed, it is told only to who wants to know all.
void WriteRemoving(std::string_view word, Element const& element, Writer& writer) {
    bool const any = element.node.m_userCanRemoveAnyElement;
    if (element.node.m_userCanAddRemove || (element.isWhole && !any)) {
        writer.WriteAttribute(word, any ? Word::RemoveAny : Word::RemoveOnlyLast);
    }
}
void ReadRemoving(std::string_view word, Reading& reading) {
    std::string text;
    if (!reading.reader.ReadAttribute(text, word)) {
        return;
    }
    if (text == Word::RemoveAny || text == Word::RemoveOnlyLast) {
        reading.node.m_userCanRemoveAnyElement = text == Word::RemoveAny;
    } else {
        NoteText(L"{0}=\"{1}\" is none of the words that it can be.", word, text, reading.reader);
    }
}
constexpr Form Removing = {WriteRemoving, ReadRemoving};

/// Inside a container the name of one item comes before the node's own. A list has it alone.
void WriteDisplayName(std::string_view word, Element const& element, Writer& writer) {
    bool const isNamedItem = IsContainer(element.node) && !element.node.m_nodeDisplayName.empty();
    WriteText(word, isNamedItem ? element.node.m_nodeDisplayName : element.node.m_displayName, writer);
}
void ReadDisplayName(std::string_view word, Reading& reading) {
    Node& node = reading.node;
    reading.reader.ReadAttribute(node.m_isList ? node.m_nodeDisplayName : node.m_displayName, word);
}
constexpr Form DisplayName = {WriteDisplayName, ReadDisplayName};

/// A distance without a word on its unit is one in the unit that a new distance has.
void WriteUnit(std::string_view word, Element const& element, Writer& writer) {
    if (!element.node.m_postfix.empty() || (element.isWhole && element.node.m_type == Distance)) {
        Write(word, element.node.m_postfix, writer);
    }
}
constexpr Form Unit = {WriteUnit, Read<&Node::m_postfix>};

/// An image is of no use without the way to stretch it, nor that without an image.
template <auto Field> void WriteImage(std::string_view word, Element const& element, Writer& writer) {
    Node const& node = element.node;
    bool const isOfUse = !node.m_imageDescription.empty() && !node.m_imageStretch.empty();
    static LayoutNodeDisplaySettings const defaults;
    if (isOfUse || (element.isWhole && node.*Field != defaults.*Field)) {
        Write(word, node.*Field, writer);
    }
}
template <auto Field> constexpr Form Image = {WriteImage<Field>, Read<Field>};

/// A node has one identifier, which both kinds of conditions refer to; a file may give it two.
void ReadIdentifier(std::string_view word, Reading& reading) {
    std::wstring identifier;
    if (reading.reader.ReadAttribute(identifier, word) && !identifier.empty()) {
        reading.references.AddIdentifier(identifier, reading.node, reading.reader);
        if (word == Word::VisibilityIdentifier || reading.node.m_identifier.empty()) {
            reading.node.m_identifier = std::move(identifier);
        }
    }
}
constexpr Form Identifier = {WriteIfSet<&Node::m_identifier>, ReadIdentifier};

std::wstring IdentifierOf(LayoutNodeSource const& source) {
    return source.m_source != nullptr ? source.m_source->m_identifier : std::wstring();
}
std::wstring const& ConditionOf(LayoutNodeSource const& source) { return source.m_value; }

/// One half of the conditions; the other half corresponds by position.
template <auto Field, auto TextOf>
void WriteSources(std::string_view word, Element const& element, Writer& writer) {
    if (!(element.node.*Field).empty()) {
        Write(word, Join(element.node.*Field, TextOf), writer);
    }
}
// The row of the sources comes first in the table and the one of the values next, which is what lets one hand
// on to the other.
void ReadSources(std::string_view word, Reading& reading) {
    std::wstring text;
    bool const isThere = reading.reader.ReadAttribute(text, word);
    reading.sources = isThere ? std::optional(std::move(text)) : std::nullopt;
}
template <auto Field> void ReadValues(std::string_view word, Reading& reading) {
    std::wstring values;
    bool const hasValues = reading.reader.ReadAttribute(values, word);
    if (reading.sources) {
        reading.references.AddConditions(reading.node, Field, std::move(*reading.sources), std::move(values),
                                         reading.reader);
    } else if (hasValues) {
        NoteText(L"{0}=\"{1}\" has no sources to belong to.", word, StringConversion::NativeToUtf8(values),
                 reading.reader);
    }
}
// A condition whose source a host has left null writes an empty identifier, so that positions still
// correspond.
template <auto Field> constexpr Form Identifiers = {WriteSources<Field, IdentifierOf>, ReadSources};
template <auto Field> constexpr Form Values = {WriteSources<Field, ConditionOf>, ReadValues<Field>};

// --- The catalogue ---

struct Attribute {
    std::string_view word;
    std::wstring_view what; ///< it is, for who counts
    bool (*isOf)(Element const& element);
    Form form;
};

constexpr Attribute Attributes[] = {
    {Word::ProcessorRequest, L"requests", ValueOf<String>, IfSet<&Node::m_requestName>},
    {Word::Type, L"types", Value, Type},
    {Word::Precision, L"precisions", ValueOf<Double, Distance>, Always<&Node::m_precision>},
    {Word::ProfileName, L"choices", ValueOf<OptionsFromProfiles>, Always<&Node::m_profileName>},
    {Word::ProcessorRequest, L"requests", ValueOf<OptionsFromProfiles>, IfSet<&Node::m_requestName>},
    {Word::TriggerPropertyName, L"requests", ValueOf<OptionsFromProfiles>,
     IfSet<&Node::m_triggerPropertyName>},
    {Word::FileFilter, L"file filters", ValueOf<FileAbsolute>, IfSet<&Node::m_fileFilter>},
    {Word::OptionsByDriverRequest, L"requests", ValueOf<StandardOptions>, IfSet<&Node::m_requestName>},
    {Word::VisibilityRequest, L"requests", Value, IfSet<&Node::m_visibilityRequest>},

    {Word::DisplayName, L"names", Value, DisplayName},
    {Word::Postfix, L"units", Value, Unit},
    {Word::Prefix, L"units", Value, IfSet<&Node::m_prefix>},
    {Word::Description, L"descriptions", Value, IfSet<&Node::m_description>},
    {Word::Expanded, L"looks", Value, IfSet<&Node::m_expanded>},
    {Word::HideParameterName, L"looks", Value, IfSet<&Node::m_hideName>},
    {Word::IsReadOnly, L"permissions", Value, IfSet<&Node::m_readOnly>},
    {Word::Visible, L"permissions", Value, IfFalse<&Node::m_visible>},
    {Word::AllowNull, L"limits", Value, IfSet<&Node::m_allowEmpty>},
    {Word::Max, L"limits", Value, Limit<&Node::m_max>},
    {Word::Min, L"limits", Value, Limit<&Node::m_min>},
    {Word::ValueUnique, L"limits", Value, IfSet<&Node::m_isValueUnique>},
    {Word::PropertyName, L"names", Value, IfSet<&Node::m_propName>},
    {Word::DisplayNameSharedSizeGroup, L"looks", Value, IfSet<&Node::m_displayNameSharedSizeGroup>},
    {Word::PostfixSharedSizeGroup, L"looks", Value, IfSet<&Node::m_postfixSharedSizeGroup>},
    {Word::DescriptionImage, L"descriptions", Value, Image<&Node::m_imageDescription>},
    {Word::DescriptionImageStretch, L"descriptions", Value, Image<&Node::m_imageStretch>},
    {Word::LicenseForEditorPaneVisibility, L"permissions", Value, IfSet<&Node::m_editorLicenseChecks>},
    {Word::VisibilityIdentifier, L"conditions", Value, Identifier},
    {Word::EditabilityIdentifier, L"conditions", Value, Identifier},
    {Word::DisableForParents, L"permissions", Value, Streamed<&Node::m_disableForParents>},
    {Word::DisableForSubParts, L"permissions", Value, Streamed<&Node::m_disableForSubParts>},
    {Word::ProfileEditingPolicy, L"permissions", Value, IfSet<&Node::m_profileEditingPolicy>},
    {Word::ShowOnlyPartsSelectedInTessra, L"looks", Value, IfFalse<&Node::m_showOnlyPartsSelectedInTessra>},

    {Word::DisplayName, L"names", Container, IfSet<&Node::m_containerDisplayName>},
    {Word::Description, L"descriptions", Container, IfSet<&Node::m_containerDescription>},
    {Word::Visible, L"permissions", Container, IfFalse<&Node::m_visible>},
    {Word::Type, L"types", List, ListType},
    {Word::PerformTransform, L"permissions", TransformList, Always<&Node::m_performTransform>},
    {Word::ProfilesXmlName, L"names", PlainProfileList, Always<&Node::m_nodeName>},
    {Word::CategoriesName, L"names", CategoryList, Always<&Node::m_nodeName>},

    {Word::VisibilitySource, L"conditions", ValueOrList, Identifiers<&Node::m_visibilitySources>},
    {Word::VisibleValue, L"conditions", ValueOrList, Values<&Node::m_visibilitySources>},
    {Word::EditabilitySource, L"conditions", ValueOrList, Identifiers<&Node::m_editabilitySources>},
    {Word::EditableValue, L"conditions", ValueOrList, Values<&Node::m_editabilitySources>},

    {Word::EnableMultiLine, L"looks", ValueOf<String>, IfSet<&Node::m_enableMultiLine>},
    {Word::Regex, L"patterns", ValueOf<String>, IfSet<&Node::m_regex>},
    {Word::RegexUserFriendly, L"patterns", ValueOf<String>, IfSet<&Node::m_regexUserFriendly>},
    {Word::MaxLength, L"limits", ValueOf<String>, IfSet<&Node::m_maxLength>},

    {Word::CanUserAddRemove, L"permissions", List, Always<&Node::m_userCanAddRemove>},
    {Word::CanUserSort, L"permissions", List, Always<&Node::m_userCanSort>},
    {Word::Multiplicity, L"limits", List, IfSet<&Node::m_multiplicity>},
    {Word::MultiplicityLimit, L"limits", List, IfSet<&Node::m_multiplicityMax>},
    {Word::MultiplicityLimitMessage, L"limits", List, IfSet<&Node::m_multiplicityMaxMessage>},
    {Word::MultiplicityMinLimit, L"limits", List, IfSet<&Node::m_multiplicityMin>},
    {Word::MultiplicityMinLimitMessage, L"limits", List, IfSet<&Node::m_multiplicityMinMessage>},
    {Word::RemovingType, L"permissions", List, Removing},
};

/// Whether no row above has the same word.
/// Worked out by the compiler: an attribute whose word several rows have counts once.
constexpr auto IsFirstOfWord = [] {
    std::array<bool, std::size(Attributes)> isFirst{};
    for (std::size_t i = 0; i < isFirst.size(); ++i) {
        isFirst[i] = true;
        for (std::size_t before = 0; before < i; ++before) {
            isFirst[i] = isFirst[i] && Attributes[before].word != Attributes[i].word;
        }
    }
    return isFirst;
}();

} // namespace

bool IsContainer(LayoutNode const& node) {
    return node.m_isList || node.m_isProfileList || node.m_isCategoryList;
}

void WriteAttributes(MetaFileElement const& element, Writer& writer) {
    for (Attribute const& attribute : Attributes) {
        if (attribute.isOf(element)) {
            attribute.form.write(attribute.word, element, writer);
        }
    }
}

void ReadAttributes(LayoutNode& node, bool isContainer, MetaFileReferences& references,
                    KelSAX::ISAXReader& reader) {
    if (!reader.HasAttributes()) {
        return;
    }
    MetaFileElement const element{node, isContainer};
    Reading reading{node, reader, references, std::nullopt};
    for (Attribute const& attribute : Attributes) {
        if (attribute.isOf(element)) {
            attribute.form.read(attribute.word, reading);
        }
    }
}

void CountPassedOver(KelSAX::ISAXReader& reader, std::initializer_list<std::string_view> read,
                     PassedOver& passedOver) {
    if (!reader.HasReport() || !reader.HasAttributes()) {
        return;
    }
    for (std::size_t i = 0; i < std::size(Attributes); ++i) {
        std::string_view const word = Attributes[i].word;
        bool const isRead = std::find(read.begin(), read.end(), word) != read.end();
        if (IsFirstOfWord[i] && reader.HasAttribute(word) && !isRead) {
            passedOver.Count(Attributes[i].what);
        }
    }
}

} // namespace Zantrel
