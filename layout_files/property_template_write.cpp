// SPDX-License-Identifier: Apache-2.0
#include "layout_files/property_template_write.h"

#include "layout_files/layout_write.h"
#include "layout_files/property_template_attributes.h"

#include <zantrel/layout/resource_dictionary.h>
#include <zantrel/sax/tag_writer.h>

#include <deque>
#include <string>

using namespace Zantrel;
namespace Word = Zantrel::LayoutWord;

namespace {

/// One write of a layout. What is written stands in the element that is open.
class TemplateWrite {
public:
    TemplateWrite(ParameterLayout const& layout, bool profileListsOnly, KelSAX::ISAXWriter& writer)
        : m_layout(layout), m_profileListsOnly(profileListsOnly), m_writer(writer) {}

    void WriteSections();

private:
    void WriteDefaults();
    /// The level of the node is the one below the root of the layout that reads the file.
    void WriteChildren(LayoutNode const* node, std::size_t level);
    void WriteAttributes(LayoutNode const& node);
    void WriteMark(std::string_view word, bool isSet);
    void WriteTranslated(std::string_view word, std::wstring const& text);
    bool IsWanted(LayoutNode const& node);

    ParameterLayout const& m_layout;
    bool m_profileListsOnly;
    KelSAX::ISAXWriter& m_writer;
    std::deque<LayoutNode const*> m_path; ///< of the node last asked about; kept for its room
};

bool HasChildren(LayoutNode const* node) { return node != nullptr && node->Size() != 0; }

/// Whether writing the node puts anything into the open element: children, or its default, an attribute that
/// has to come before the first child.
bool HasContent(LayoutNode const* node) {
    return HasChildren(node) || (node != nullptr && !node->m_defaultValue.empty());
}

/// All sections are written, also those that are empty. The two inner blocks end an element where the one
/// beside it begins.
void TemplateWrite::WriteSections() {
    m_layout.CheckAnchors();
    {
        MSAXTagWriter const machine(m_writer, Word::MachineParameters);
        WriteChildren(m_layout.m_profileEditor, 1);
    }
    MSAXTagWriter const ticket(m_writer, Word::BuildTicket);
    {
        MSAXTagWriter const defaults(m_writer, Word::Defaults);
        WriteDefaults();
    }
    MSAXTagWriter const overrides(m_writer, Word::PartOverrides);
    WriteChildren(m_layout.m_partConfigurator, 1);
}

void TemplateWrite::WriteDefaults() {
    WriteChildren(m_layout.m_platformOptions, 2);
    if (!HasContent(m_layout.m_platformOptions) || HasChildren(m_layout.m_partOptions)) {
        WriteChildren(m_layout.m_partOptions, 2); // whose own default would come too late
    }
}

/// A child that isn't wanted takes along what stands below it.
void TemplateWrite::WriteChildren(LayoutNode const* node, std::size_t level) {
    if (node == nullptr) {
        return; // a host has emptied the handle
    }
    if (node->Size() == 0) {
        WriteText(Word::Default, node->m_defaultValue, m_writer);
    }
    ForEachChild(*node, m_writer, [this, level](LayoutNode const& child) {
        if (IsWanted(child)) {
            RefuseUnlessTaken(level + 1, m_writer);
            MSAXTagWriter const element(m_writer, Word::PropertyNode);
            WriteAttributes(child);
            WriteChildren(&child, level + 1);
        }
    });
}

/// Where a node stands is asked of its parents and not of the section that is written: an anchor may have
/// been given any node, and a copied subtree names parents elsewhere.
bool TemplateWrite::IsWanted(LayoutNode const& node) {
    LayoutNode const* const editor = m_layout.m_profileEditor;
    if (!m_profileListsOnly || node.m_isProfileList || editor == nullptr) {
        return true;
    }
    return !node.GetQueryPath(*editor, m_path) || m_path.empty();
}

void TemplateWrite::WriteAttributes(LayoutNode const& node) {
    m_writer.WriteAttribute(Word::Name, std::wstring_view(node.m_name));
    WriteType(&Word::TypeRow::inTemplate, node, m_writer);
    if (node.m_type == Double || node.m_type == Distance) {
        m_writer.WriteAttribute(Word::Precision, std::to_string(node.m_precision));
    }
    if (node.m_type == Options) {
        m_writer.WriteAttribute(Word::Options, std::wstring_view(Join(node.m_optionValues)));
    }
    WriteMark(Word::ProfileList, node.m_isProfileList);
    WriteMark(Word::List, node.m_isList);
    for (TextAttribute const& text : TextAttributes) {
        text.isTranslated ? WriteTranslated(text.word, node.*text.field)
                          : WriteText(text.word, node.*text.field, m_writer);
    }
}

/// The attribute is there or not: readers don't look at its text.
void TemplateWrite::WriteMark(std::string_view word, bool isSet) {
    if (isSet) {
        m_writer.WriteAttribute(word, std::string_view());
    }
}

/// In the one language of the format, or as it stands.
void TemplateWrite::WriteTranslated(std::string_view word, std::wstring const& text) {
    static std::wstring const language = L"en-US";
    ResourceDictionary const* const dictionary = m_layout.GetResourceDictionary();
    std::wstring const* const translation =
        dictionary != nullptr && !text.empty() ? dictionary->GetTranslation(text, language) : nullptr;
    if (translation != nullptr) {
        m_writer.WriteAttribute(word, std::wstring_view(*translation)); // also an empty one
    } else {
        WriteText(word, text, m_writer);
    }
}

} // namespace

bool ParameterLayoutIOPropertyTemplateWrite::Write(KelSAX::ISAXWriter& writer) const {
    TemplateWrite(*m_layout, m_profileListsOnly, writer).WriteSections();
    return true;
}
