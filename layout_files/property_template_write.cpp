// SPDX-License-Identifier: Apache-2.0
#include "layout_files/property_template_write.h"

#include "layout_files/join.h"
#include "layout_files/property_template_words.h"

#include <zantrel/layout/resource_dictionary.h>
#include <zantrel/sax/tag_writer.h>

#include <deque>

using namespace Zantrel;
namespace Word = Zantrel::PropertyTemplateWord;

namespace {

void WriteText(std::string_view word, std::wstring const& text, KelSAX::ISAXWriter& writer) {
    if (!text.empty()) {
        writer.WriteAttribute(word, std::wstring_view(text));
    }
}

void WriteType(LayoutNode const& node, KelSAX::ISAXWriter& writer) {
    std::string_view const type = WordOf(Word::Types, node.m_type);
    if (!type.empty()) {
        writer.WriteAttribute(Word::Type, type);
    }
    if (node.m_type == Double || node.m_type == Distance) {
        writer.WriteAttribute(Word::Precision, std::to_string(node.m_precision));
    }
    if (node.m_type == Options) {
        writer.WriteAttribute(Word::Options, std::wstring_view(Join(node.m_optionValues)));
    }
}

bool HasChildren(LayoutNode const* node) { return node != nullptr && node->Size() != 0; }

bool HasContent(LayoutNode const* node) {
    return HasChildren(node) || (node != nullptr && !node->m_defaultValue.empty());
}

void WriteMark(std::string_view word, bool isSet, KelSAX::ISAXWriter& writer) {
    if (isSet) {
        writer.WriteAttribute(word, std::string_view());
    }
}

} // namespace

bool ParameterLayoutIOPropertyTemplateWrite::Write(KelSAX::ISAXWriter& writer) const {
    {
        MSAXTagWriter const machine(writer, Word::MachineParameters);
        WriteChildren(m_layout->m_profileEditor, writer);
    }
    MSAXTagWriter const ticket(writer, Word::BuildTicket);
    {
        MSAXTagWriter const defaults(writer, Word::Defaults);
        WriteChildren(m_layout->m_platformOptions, writer);
        if (!HasContent(m_layout->m_platformOptions) || HasChildren(m_layout->m_partOptions)) {
            WriteChildren(m_layout->m_partOptions, writer); // whose own default would come too late
        }
    }
    MSAXTagWriter const overrides(writer, Word::PartOverrides);
    WriteChildren(m_layout->m_partConfigurator, writer);
    return true;
}

void ParameterLayoutIOPropertyTemplateWrite::WriteChildren(LayoutNode const* node,
                                                           KelSAX::ISAXWriter& writer) const {
    if (node == nullptr) {
        return; // a host has emptied the handle
    }
    if (node->Size() == 0) {
        WriteText(Word::Default, node->m_defaultValue, writer);
    }
    // A host's tree may go on for long below what can be written.
    for (std::size_t i = 0; i < node->Size() && !writer.HasFailed(); ++i) {
        LayoutNode const& child = node->At(i);
        if (IsWanted(child)) {
            MSAXTagWriter const element(writer, Word::PropertyNode);
            WriteAttributes(child, writer);
            WriteChildren(&child, writer);
        }
    }
}

bool ParameterLayoutIOPropertyTemplateWrite::IsWanted(LayoutNode const& node) const {
    LayoutNode const* const editor = m_layout->m_profileEditor;
    if (!m_profileListsOnly || node.m_isProfileList || editor == nullptr) {
        return true;
    }
    std::deque<LayoutNode const*> path;
    return !node.GetQueryPath(*editor, path) || path.empty();
}

void ParameterLayoutIOPropertyTemplateWrite::WriteAttributes(LayoutNode const& node,
                                                             KelSAX::ISAXWriter& writer) const {
    writer.WriteAttribute(Word::Name, std::wstring_view(node.m_name));
    WriteType(node, writer);
    WriteMark(Word::ProfileList, node.m_isProfileList, writer);
    WriteMark(Word::List, node.m_isList, writer);
    WriteTranslated(Word::DisplayName, node.m_displayName, writer);
    WriteTranslated(Word::DisplayNameContainer, node.m_containerDisplayName, writer);
    WriteText(Word::PropertyName, node.m_propName, writer);
    WriteText(Word::ProfileName, node.m_profileName, writer);
}

/// In the one language of the format, or as it stands.
void ParameterLayoutIOPropertyTemplateWrite::WriteTranslated(std::string_view word, std::wstring const& text,
                                                             KelSAX::ISAXWriter& writer) const {
    static std::wstring const language = L"en-US";
    ResourceDictionary const* const dictionary = m_layout->GetResourceDictionary();
    std::wstring const* const translation =
        dictionary != nullptr && !text.empty() ? dictionary->GetTranslation(text, language) : nullptr;
    if (translation != nullptr) {
        writer.WriteAttribute(word, std::wstring_view(*translation)); // also an empty one
    } else {
        WriteText(word, text, writer);
    }
}
