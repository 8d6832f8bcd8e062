// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_write.h"

#include "layout_files/layout_write.h"
#include "layout_files/meta_file_attributes.h"
#include "sax/report_texts.h"
#include "text/sentences.h"

#include <zantrel/layout/resource_dictionary.h>
#include <zantrel/sax/tag_writer.h>
#include <zantrel/text/string_conversion.h>

using namespace Zantrel;
namespace Word = Zantrel::LayoutWord;

namespace {

void WriteOptions(LayoutNode const& node, KelSAX::ISAXWriter& writer) {
    MSAXTagWriter const options(writer, Word::Options);
    for (std::size_t i = 0; i < node.m_optionValues.size(); ++i) {
        MSAXTagWriter const option(writer, Word::Option);
        if (i < node.m_optionDisplayNames.size()) { // a host may have given fewer
            WriteText(Word::DisplayName, node.m_optionDisplayNames[i], writer);
        }
        writer.WriteValue(std::wstring_view(node.m_optionValues[i]));
    }
}

void WriteTranslations(PersistentProperties const& languages, KelSAX::ISAXWriter& writer) {
    for (auto const& [language, property] : languages) {
        auto const* const text = PropertyCast<std::wstring>(property);
        if (text != nullptr && !text->IsDeleted()) {
            MSAXTagWriter const translation(writer, Word::Translation);
            writer.WriteAttribute(Word::Language, std::wstring_view(language));
            writer.WriteValue(std::wstring_view(text->m_value));
        }
    }
}

void WriteDictionary(ResourceDictionary const& dictionary, KelSAX::ISAXWriter& writer) {
    MSAXTagWriter const element(writer, Word::ResourceDictionary);
    for (auto const& [key, property] : dictionary) {
        auto const* const languages = PropertyCast<PersistentProperties>(property);
        if (languages != nullptr && !languages->IsDeleted()) {
            MSAXTagWriter const entry(writer, Word::Entry);
            writer.WriteAttribute(Word::Key, std::wstring_view(key));
            WriteTranslations(languages->m_value, writer);
        }
    }
}

/// Before a tag is made of the name: readers take what is in front of a colon for a prefix.
void RefusePrefix(std::wstring const& name, KelSAX::ISAXWriter& writer) {
    if (name.find(L':') != name.npos) {
        writer.Refuse(Text::Fill(L"\"{0}\" has a colon, in front of which stands a prefix and no name.",
                                 {Sax::Excerpt(StringConversion::NativeToUtf8(name))}));
    }
}

bool IsBlank(std::wstring const& text) { return text.find_first_not_of(L" \t\r\n") == text.npos; }

} // namespace

bool ParameterLayoutIOMetaFileWrite::Write(KelSAX::ISAXWriter& writer) const {
    RefusePrefix(m_layout->m_name, writer);
    WriteNode(*m_layout, 0, writer);
    ResourceDictionary const* const dictionary = m_layout->GetResourceDictionary();
    if (m_isWhole && dictionary != nullptr && dictionary->begin() != dictionary->end()) {
        WriteDictionary(*dictionary, writer);
    }
    return true;
}

/// A container's element holds the one element of what it contains, and that one has the children.
void ParameterLayoutIOMetaFileWrite::WriteNode(LayoutNode const& node, std::size_t level,
                                               KelSAX::ISAXWriter& writer) const {
    if (!IsContainer(node)) {
        WriteValueNode(node, level, writer);
        return;
    }
    WriteAttributes({node, true, m_isWhole}, writer);
    RefusePrefix(node.m_nodeName, writer);
    MSAXTagWriter const item(writer, std::wstring_view(node.m_nodeName));
    WriteValueNode(node, level, writer);
}

void ParameterLayoutIOMetaFileWrite::WriteValueNode(LayoutNode const& node, std::size_t level,
                                                    KelSAX::ISAXWriter& writer) const {
    WriteAttributes({node, false, m_isWhole}, writer);
    // A default of a node with children is told only to who wants to know all, and of a group to nobody: it
    // would come back as a number.
    if (node.Size() == 0 || (m_isWhole && node.m_type != Group && !IsBlank(node.m_defaultValue))) {
        writer.WriteValue(std::wstring_view(node.m_defaultValue));
    }
    ForEachChild(node, writer, [&](LayoutNode const& child) {
        if (&child != m_layout->m_categoryOption.GetNode()) { // each read makes it anew
            RefuseUnlessTaken(level + 1, writer);
            RefusePrefix(child.m_name, writer);
            MSAXTagWriter const element(writer, std::wstring_view(child.m_name));
            WriteNode(child, level + 1, writer);
        }
    });
    if (node.m_type == Options) {
        WriteOptions(node, writer);
    }
}
