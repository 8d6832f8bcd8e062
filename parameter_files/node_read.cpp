// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/node_read.h"

#include "parameter_files/node_value_sax.h"
#include "text/unicode.h"

#include <zantrel/text/string_conversion.h>

// The document is read beside the layout. A handler stands on one place of it and takes each of its elements
// in two steps: Recognise says what the element is there, by the grammar of the format and without touching
// the database, and HandleTag then reads it. Between the two a watch hears of it, so that no reading function
// knows whether the file is being checked.
//
// Whatever a document holds, nothing is read outside of the place that its handler stands on, and a place
// without a bag (below a cursor on nothing) is read beside the layout like any other and only noted: so each
// thing that is lost has its own entry in the report. An element that isn't taken leaves its children to the
// same handler, one level deeper, where those that fit are taken as if they stood here.

namespace Zantrel {

namespace Word = ParameterFileWord;
using Kind = FileElement::Kind;

namespace {

void ReadFlags(std::span<FlagAttribute const> flags, ParameterNode& node, KelSAX::ISAXReader& reader) {
    if (flags.empty() || !reader.HasAttributes()) { // as nearly all elements have none
        return;
    }
    for (FlagAttribute const& flag : flags) {
        bool value = false;
        if (!reader.ReadAttribute(value, flag.word)) {
            continue;
        }
        if (CanHave(node, flag.bearers)) {
            (node.*flag.set)(value);
        } else if (reader.HasReport()) {
            reader.NoteDropped(L"The node can't have the flag " + StringConversion::Utf8ToNative(flag.word) +
                               L".");
        }
    }
}

} // namespace

NodeRead::NodeRead(ParameterNode const& node, ParameterFileGrammar const& grammar,
                   ParameterFileValidity* validity)
    : m_node(node), m_grammar(grammar),
      m_watch(validity != nullptr ? std::make_unique<ElementWatch>(*validity, node.m_pNode) : nullptr) {}

NodeRead::NodeRead(ParameterNode const& node, NodeRead const& parent)
    : m_node(node), m_grammar(parent.m_grammar),
      m_watch(parent.m_watch != nullptr ? parent.m_watch->Below(*node.m_pNode) : nullptr) {}

bool NodeRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    FileElement const element = Recognise(tag, reader);
    bool const isRoot = reader.GetDepth() == 0;
    if (m_watch != nullptr && !m_watch->Admits(element, tag, reader.GetDepth())) {
        return isRoot;
    }
    switch (element.kind) {
    case Kind::Default:
        ReadDefault(reader);
        return true;
    case Kind::Entry:
        ReadEntry(reader);
        return true;
    case Kind::Parameter:
        ReadParameter(*element.child, reader);
        return true;
    case Kind::Nameless:
        reader.NoteDropped(L"A property without a name was passed over.");
        return false;
    case Kind::Unknown:
        if (!isRoot) { // which may have any name
            NoteUnknown(reader);
        }
        return isRoot;
    case Kind::Unhandled:
        return false;
    }
    return false;
}

// What an element is

FileElement NodeRead::Recognise(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (m_node.m_pNode == nullptr) { // a database without a layout of its own
        return {Kind::Unhandled};
    }
    if (IsOnProfileList() && tag == Word::Default) {
        return {Kind::Default};
    }
    if ((IsOnProfileList() || IsOnList()) && Text::EqualsUtf8(m_node.m_pNode->m_nodeName, tag)) {
        return {Kind::Entry};
    }
    return RecogniseParameter(tag, reader);
}

FileElement NodeRead::RecogniseParameter(std::string const& tag, KelSAX::ISAXReader& reader) {
    bool const isNamedByAttribute = m_grammar.NamesParametersByAttribute();
    // Of a node that is both, the elements are those of a profile list.
    bool const mayBeParameter =
        isNamedByAttribute ? tag == m_grammar.parameterTag : IsOnProfileList() || !IsOnList();
    if (!mayBeParameter) {
        return {Kind::Unhandled};
    }
    if (isNamedByAttribute && !reader.ReadAttribute(m_name, Word::Name)) {
        return {Kind::Nameless};
    }
    // Fast where documents keep the layout's order.
    LayoutNode const* const child =
        m_node.m_pNode->FindChildUtf8(isNamedByAttribute ? m_name : tag, m_childHint);
    return {child != nullptr ? Kind::Parameter : Kind::Unknown, child};
}

void NodeRead::NoteUnknown(KelSAX::ISAXReader& reader) const {
    // Where the tag is the name, the report hears it as that of an element that was not taken.
    if (m_grammar.NamesParametersByAttribute() && reader.HasReport()) {
        reader.NoteDropped(L"The parameter \"" + StringConversion::Utf8ToNative(m_name) +
                           L"\" is not known here and was passed over.");
    }
}

// Reading it

void NodeRead::ReadDefault(KelSAX::ISAXReader& reader) {
    ParameterNode profile = m_node.GetDefault();
    profile.m_pNode = m_node.m_pNode;
    ReadChildren(profile, reader);
}

void NodeRead::ReadEntry(KelSAX::ISAXReader& reader) {
    if (!m_node.IsValid()) {
        reader.NoteDropped(NoPlace);
    } else if (IsOnProfileList()) {
        std::wstring name;
        reader.ReadAttribute(name, Word::Name);
        ParameterNode profile = m_node.AddProfile(name.c_str(), false);
        ReadFlags(m_grammar.profileFlags, profile, reader);
        ReadChildren(profile, reader);
    } else {
        ParameterNode item = m_node.AddListNode(false);
        ReadFlags(m_grammar.itemFlags, item, reader);
        ReadValue(item, reader);
    }
}

void NodeRead::ReadParameter(LayoutNode const& child, KelSAX::ISAXReader& reader) {
    bool const isContainer = child.m_isList || child.m_isProfileList;
    ParameterNode node = m_node.Get(&child);
    if (node.m_pNode == nullptr) { // below a cursor without a bag
        node.m_pNode = &child;
        node.m_isContainer = isContainer;
    }
    ReadFlags(m_grammar.parameterFlags, node, reader);
    if (!isContainer) {
        ReadValue(node, reader);
        return;
    }
    if (node.IsValid()) {
        node.Clear();
    }
    ReadChildren(node, reader);
}

void NodeRead::ReadValue(ParameterNode const& node, KelSAX::ISAXReader& reader) {
    VisitValueType(node.m_pNode->m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, NoValue>) {
            ReadChildren(node, reader);
        } else {
            ReadLeafValue<T>(node, reader);
        }
    });
}

void NodeRead::ReadChildren(ParameterNode const& node, KelSAX::ISAXReader& reader) {
    NoteStrayText(reader);
    reader.PushHandler(new NodeRead(node, *this));
}

} // namespace Zantrel
