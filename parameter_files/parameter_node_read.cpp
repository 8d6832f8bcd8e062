// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/parameter_node_read.h"

#include "parameter_files/node_value_sax.h"
#include "parameter_files/vocabulary.h"
#include "platform/text/unicode.h"

#include <zantrel/platform/string_conversion.h>

#include <stdexcept>

using namespace Zantrel;
namespace Word = Zantrel::ParameterFileWord;

namespace {

// The attributes that an element is read for, in this order. A profile's "Hidden" is written and not read,
// and a "Default" has no attributes for the reader: files rely on neither.
constexpr FlagAttribute NodeFlags[] = {Flag::DisableAddRemove, Flag::ReadOnly, Flag::Hidden};
constexpr FlagAttribute ProfileFlags[] = {Flag::NameReadOnly, Flag::CanBeDeleted, Flag::UserDefaultProfile,
                                          Flag::ReadOnly};
constexpr FlagAttribute ItemFlags[] = {Flag::ReadOnly, Flag::Hidden};

template <std::size_t N>
void ReadFlags(FlagAttribute const (&flags)[N], ParameterNode& node, KelSAX::ISAXReader& reader) {
    for (FlagAttribute const& flag : flags) {
        bool value = false;
        if (!reader.ReadAttribute(value, flag.word)) {
            continue;
        }
        try {
            (node.*flag.set)(value);
        } catch (std::runtime_error const&) { // a flag that this node can't have
            if (reader.HasReport()) {
                reader.NoteDropped(L"The node can't have the flag " +
                                   StringConversion::Utf8ToNative(flag.word) + L".");
            }
        }
    }
}

} // namespace

ParameterNodeRead::ParameterNodeRead(ParameterNode const& node) : m_node(node) {
    m_filtering.m_exportGeneralParameters = false;
}

bool ParameterNodeRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (m_node.m_pNode == nullptr) { // a database without a layout
        return reader.GetDepth() == 0;
    }
    LayoutNode const& node = *m_node.m_pNode;
    if (m_node.m_isContainer && node.m_isProfileList) {
        if (tag == Word::Default) {
            ReadDefault(reader);
            return true;
        }
        if (Text::EqualsUtf8(node.m_nodeName, tag)) {
            ReadProfile(reader);
            return true;
        }
    } else if (m_node.m_isContainer && node.m_isList) {
        bool const isItem = Text::EqualsUtf8(node.m_nodeName, tag);
        if (isItem) {
            ReadItem(reader);
        }
        return isItem;
    }
    if (LayoutNode const* child = node.FindChildUtf8(tag, m_childHint)) {
        ReadChild(*child, reader);
        return true;
    }
    return reader.GetDepth() == 0; // the root element, whatever its name
}

void ParameterNodeRead::ReadDefault(KelSAX::ISAXReader& reader) {
    ParameterNode profile = m_node.GetDefault();
    profile.m_pNode = m_node.m_pNode;
    ReadNodeChildren<ParameterNodeRead>(profile, reader);
}

void ParameterNodeRead::ReadProfile(KelSAX::ISAXReader& reader) {
    std::wstring name;
    reader.ReadAttribute(name, Word::Name);
    if (!m_node.IsValid()) {
        reader.NoteDropped(NoPlace);
        return;
    }
    ParameterNode profile = m_node.AddProfile(name.c_str(), false);
    ReadFlags(ProfileFlags, profile, reader);
    ReadNodeChildren<ParameterNodeRead>(profile, reader);
}

void ParameterNodeRead::ReadItem(KelSAX::ISAXReader& reader) {
    if (!m_node.IsValid()) {
        reader.NoteDropped(NoPlace);
        return;
    }
    ParameterNode item = m_node.AddListNode(false);
    ReadFlags(ItemFlags, item, reader);
    ReadNodeValue<ParameterNodeRead>(item, reader);
}

void ParameterNodeRead::ReadChild(LayoutNode const& child, KelSAX::ISAXReader& reader) {
    ParameterNode node = m_node.Get(&child);
    if (node.m_pNode == nullptr) {
        // Below a cursor without a bag. The layout still tells what stands here, so that it is passed over
        // piece by piece.
        node.m_pNode = &child;
        node.m_isContainer = child.m_isList || child.m_isProfileList;
    }
    if (child.m_name == Word::GenericParameters) {
        m_filtering.m_exportGeneralParameters = true;
    }
    ReadFlags(NodeFlags, node, reader);
    if (!child.m_isList && !child.m_isProfileList) {
        ReadNodeValue<ParameterNodeRead>(node, reader);
        return;
    }
    if (node.IsValid()) {
        node.Clear();
    }
    ReadNodeChildren<ParameterNodeRead>(node, reader);
}
