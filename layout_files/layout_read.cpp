// SPDX-License-Identifier: Apache-2.0
#include "layout_files/layout_read.h"

#include "layout_files/depth_limit.h"
#include "sax/report_texts.h"
#include "text/unicode.h"

#include <zantrel/sax/sax_utilities.h>
#include <zantrel/text/string_conversion.h>

// What the readers of both formats share: a place in the layout that follows the tags of the document. It is
// never nowhere: a handle that a host has emptied leads to the root. How deep the place lies is counted on
// the way, so that refusing what is too deep costs no walk for each element.

namespace Zantrel {

LayoutRead::LayoutRead(ParameterLayout& layout) : m_layout(layout), m_currentNode(&layout) {}

void LayoutRead::SetDefaults() { GoTo(Root); }

bool LayoutRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (reader.GetDepth() != 0) {
        return ReadElement(tag, reader);
    }
    std::string_view localName;
    KelAM::SaxUtilities::XMLNamespaceHandler().ResolveTag(tag, localName, nullptr); // of any namespace
    m_layout.m_name = StringConversion::Utf8ToNative(localName);
    ReadRoot(reader);
    return true;
}

void LayoutRead::ReadRoot(KelSAX::ISAXReader&) {}

/// The option to choose a category, which no writer of this library writes, since each read makes it anew.
void LayoutRead::InitAfterLoading() { m_layout.AddCategoryNodeIfNeeded(); }

LayoutNode* LayoutRead::NodeOf(Anchor anchor) const {
    return anchor != Root ? (m_layout.*anchor).GetNode() : &m_layout;
}

bool LayoutRead::IsAt(Anchor anchor) const { return m_currentNode == NodeOf(anchor); }

bool LayoutRead::IsNamed(Anchor anchor, std::string_view tag) const {
    return anchor != Root && NodeOf(anchor) != nullptr && Text::EqualsUtf8(NodeOf(anchor)->m_name, tag);
}

/// The level is that of the anchor's node in the tree and not in the document: a host's anchor may stand
/// anywhere.
void LayoutRead::GoTo(Anchor anchor) {
    SetCurrent(NodeOf(anchor));
    m_level = 0;
    // The limit also ends the walk where a host's copies of subtrees have made a ring of parents.
    for (LayoutNode const* node = m_currentNode;
         node != &m_layout && node != nullptr && m_level < MaxNodeLevel; node = node->m_parent) {
        ++m_level;
    }
}

void LayoutRead::GoTo(Place place) {
    m_currentNode = place.node;
    m_level = place.level;
}

void LayoutRead::GoUp() {
    if (m_currentNode != &m_layout) {
        SetCurrent(m_currentNode->m_parent);
        // It may count less than there are steps, where GoTo has stopped at the limit.
        m_level -= m_level != 0 ? 1 : 0;
    }
}

void LayoutRead::SetCurrent(LayoutNode* node) { m_currentNode = node != nullptr ? node : &m_layout; }

bool LayoutRead::Add(std::unique_ptr<LayoutNode> node, KelSAX::ISAXReader& reader) {
    if (m_level >= MaxNodeLevel) {
        reader.Refuse(L"The parameters are nested more than " + std::to_wstring(MaxNodeLevel) +
                      L" levels deep; the layout is not taken.");
        return false;
    }
    m_currentNode->AppendNode(node.release());
    m_currentNode = m_currentNode->Back();
    ++m_level;
    return true;
}

/// Some words are only written: a row says for each format whether its word is read.
eTypeLayoutNode LayoutRead::TypeOf(LayoutWord::TypeWord LayoutWord::TypeRow::*file, std::string_view word,
                                   KelSAX::ISAXReader& reader) {
    for (LayoutWord::TypeRow const& known : LayoutWord::Types) {
        if ((known.*file).isRead && (known.*file).word == word) {
            return known.type;
        }
    }
    if (reader.HasReport()) {
        reader.NoteDropped(L"The type \"" + Sax::Excerpt(word) +
                           L"\" is not known here; the parameter becomes a text.");
    }
    return String;
}

} // namespace Zantrel
