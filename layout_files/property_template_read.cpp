// SPDX-License-Identifier: Apache-2.0
#include "layout_files/property_template_read.h"

#include "layout_files/property_template_attributes.h"
#include "layout_files/read_values.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

using namespace Zantrel;
namespace Word = Zantrel::LayoutWord;

namespace {

/// A section and the node of the layout that its nodes go under. Null is the root.
struct Section {
    std::string_view word;
    ParameterLayout::pNode ParameterLayout::*node;
};

constexpr Section Sections[] = {
    {Word::MachineParameters, &ParameterLayout::m_profileEditor},
    {Word::BuildTicket, nullptr}, // so that its two sections are known there
    {Word::Defaults, &ParameterLayout::m_platformOptions},
    {Word::PartOverrides, &ParameterLayout::m_partConfigurator},
};

Section const* FindSection(std::string_view tag) {
    auto const* const section =
        std::find_if(std::begin(Sections), std::end(Sections),
                     [tag](Section const& candidate) { return candidate.word == tag; });
    return section != std::end(Sections) ? section : nullptr;
}

} // namespace

/// Elements that are none of the format are taken, and what they hold is read as if they weren't there.
bool ParameterLayoutIOPropertyTemplateRead::ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) {
    bool const isSection = IsAt(Root) && EnterSection(tag);
    bool const isInVersion = IsAt(&ParameterLayout::m_versionNode); // whose parts a file can't change
    if (!isSection && !isInVersion && tag == Word::PropertyNode) {
        return ReadPropertyNode(reader);
    }
    if (!isSection && reader.HasReport()) {
        reader.GetAttributes(); // go with the element
        if (!isInVersion) {
            reader.NoteDropped(
                L"The element means nothing in this place; what it holds is read as if it weren't there.");
        }
    }
    return true;
}

bool ParameterLayoutIOPropertyTemplateRead::EnterSection(std::string_view tag) {
    // No end tag of its own leads out of the version's node, and no writer makes such an element.
    if (IsNamed(&ParameterLayout::m_versionNode, tag)) {
        GoTo(&ParameterLayout::m_versionNode);
        return true;
    }
    Section const* const section = FindSection(tag);
    if (section != nullptr) {
        GoTo(section->node);
    }
    return section != nullptr;
}

bool ParameterLayoutIOPropertyTemplateRead::ReadPropertyNode(KelSAX::ISAXReader& reader) {
    std::wstring name;
    if (!reader.ReadAttribute(name, Word::Name)) {
        reader.NoteDropped(
            L"A node without a name was passed over; what it holds and what follows moves up.");
        return false;
    }
    eTypeLayoutNode const type = ReadType(reader);
    auto node = std::make_unique<LayoutNode>(nullptr, type, nullptr);
    node->m_name = std::move(name);
    if (type != Group) {
        reader.ReadAttribute(node->m_defaultValue, Word::Default);
        NoteUnlessValue(node->m_defaultValue, type, Word::Default, reader);
    }
    for (TextAttribute const& text : TextAttributes) {
        reader.ReadAttribute((*node).*text.field, text.word);
    }
    m_isWhole ? ReadWhole(*node, reader) : CountPassedOver(reader);
    if (reader.ReadAttribute(m_word, Word::ProfileList)) {
        // The format doesn't say how entries are called, and so they are called alike in all templates.
        node->SetProfile(true, L"Profile");
    }
    if (reader.ReadAttribute(m_word, Word::List)) { // after the profiles: of a node that is both this stays
        node->SetList(true, L"ListItem", std::wstring());
    }
    Add(std::move(node), reader);
    return true;
}

eTypeLayoutNode ParameterLayoutIOPropertyTemplateRead::ReadType(KelSAX::ISAXReader& reader) {
    if (!reader.ReadAttribute(m_word, Word::Type)) {
        return String;
    }
    bool const isChoice = m_isWhole && m_word == Word::Enum;
    return isChoice ? Options : TypeOf(&Word::TypeRow::inTemplate, m_word, reader);
}

void ParameterLayoutIOPropertyTemplateRead::ReadWhole(LayoutNode& node, KelSAX::ISAXReader& reader) {
    if (node.m_type == Double) {
        ReadNumber(node.m_precision, Word::Precision, reader);
    }
    std::wstring options;
    if (node.m_type == Options && reader.ReadAttribute(options, Word::Options)) {
        SetOptions(node, options);
    }
}

// Counted and told once at the end: a template of thousands of nodes would fill a report with one sentence.
void ParameterLayoutIOPropertyTemplateRead::CountPassedOver(KelSAX::ISAXReader& reader) {
    if (reader.HasReport() && reader.HasAttribute(Word::Precision)) {
        m_passedOver.Count(L"precisions");
    }
    if (reader.HasReport() && reader.HasAttribute(Word::Options)) {
        m_passedOver.Count(L"choices");
    }
}

void ParameterLayoutIOPropertyTemplateRead::ResolveReferences(KelSAX::ISAXReader&) {
    m_passedOver.Report(L"ReadWholeFile");
}

void ParameterLayoutIOPropertyTemplateRead::HandleEndTag(std::string_view tag) {
    if (tag == Word::PropertyNode) {
        GoUp(); // also where the start tag, without a name, made no node
    } else if (FindSection(tag) != nullptr) {
        GoTo(Root);
    }
}

bool ParameterLayoutIOPropertyTemplateValidityCheck::HandleTag(std::string const& tag,
                                                               KelSAX::ISAXReader& reader) {
    if (reader.GetDepth() == 0) {
        m_valid = tag == "KlvrPropertyTemplate "; // the blank, which no tag has, is what hosts rely on
    }
    return false;
}
