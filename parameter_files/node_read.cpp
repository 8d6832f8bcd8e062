// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/node_read.h"

#include "parameter_files/node_value_sax.h"
#include "text/unicode.h"

#include <zantrel/text/string_conversion.h>

#include <stdexcept>
#include <utility>

using namespace Zantrel;
namespace Word = Zantrel::ParameterFileWord;

namespace {

constexpr wchar_t const* WrongRoot = L"Wrong root tag-name.";

void ReadFlags(std::span<FlagAttribute const> flags, ParameterNode& node, KelSAX::ISAXReader& reader) {
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

NodeRead::NodeRead(ParameterNode const& node, std::shared_ptr<ParameterFileValidity> validity,
                   ReadFlagTables const& flags)
    : m_node(node), m_validity(std::move(validity)), m_flags(flags) {}

NodeRead::~NodeRead() {
    if (m_validity != nullptr && !m_isSeenWhole) {
        try {
            ReportMissing();
        } catch (...) { // no memory for a message; but a file that isn't valid is never told to be
            m_validity->Fail();
        }
    }
}

bool NodeRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (m_node.m_pNode == nullptr) { // a database without a layout of its own
        bool const isRoot = reader.GetDepth() == 0;
        if (isRoot && m_validity != nullptr) {
            m_validity->Report(WrongRoot);
        }
        return isRoot;
    }
    std::optional<bool> const taken = m_validity != nullptr ? CheckBeforeReading(tag, reader) : std::nullopt;
    return taken ? *taken : ReadElement(tag, reader);
}

// --- Entries and children ---

bool NodeRead::ReadEntry(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (!IsOnProfileList() && !IsOnList()) {
        return false;
    }
    if (IsOnProfileList() && tag == Word::Default) {
        ReadDefault(reader);
        return true;
    }
    if (!Text::EqualsUtf8(m_node.m_pNode->m_nodeName, tag)) {
        return false;
    }
    if (!m_node.IsValid()) {
        reader.NoteDropped(NoPlace);
    } else if (IsOnProfileList()) {
        ReadProfile(reader);
    } else {
        ReadItem(reader);
    }
    return true;
}

void NodeRead::ReadDefault(KelSAX::ISAXReader& reader) {
    ParameterNode profile = m_node.GetDefault();
    profile.m_pNode = m_node.m_pNode;
    ReadChildren(profile, reader);
}

void NodeRead::ReadProfile(KelSAX::ISAXReader& reader) {
    std::wstring name;
    reader.ReadAttribute(name, Word::Name);
    ParameterNode profile = m_node.AddProfile(name.c_str(), false);
    ReadFlags(m_flags.profile, profile, reader);
    ReadChildren(profile, reader);
}

void NodeRead::ReadItem(KelSAX::ISAXReader& reader) {
    ParameterNode item = m_node.AddListNode(false);
    ReadFlags(m_flags.item, item, reader);
    ReadValue(item, reader);
}

void NodeRead::ReadChild(LayoutNode const& child, KelSAX::ISAXReader& reader) {
    ParameterNode node = m_node.Get(&child);
    if (node.m_pNode == nullptr) {
        // Below a cursor without a bag. The layout still tells what stands here, so that it is passed over
        // piece by piece.
        node.m_pNode = &child;
        node.m_isContainer = child.m_isList || child.m_isProfileList;
    }
    ReadFlags(m_flags.node, node, reader);
    if (!child.m_isList && !child.m_isProfileList) {
        ReadValue(node, reader);
    } else {
        if (node.IsValid()) {
            node.Clear();
        }
        ReadChildren(node, reader);
    }
    if (m_validity != nullptr) {
        m_seenNodes.insert(&child);
    }
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
    reader.PushHandler(MakeHandler(node));
}

// --- Validity ---

/// The answer for the root, whose name is compared, and for what stands too deep, which is neither read nor
/// missed; nothing for an element to be read.
std::optional<bool> NodeRead::CheckBeforeReading(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (reader.GetDepth() == 0) {
        LayoutNode const* const parent = m_node.m_pNode->m_parent;
        bool const isRoot = parent == nullptr || Text::EqualsUtf8(parent->m_name, tag);
        if (!isRoot) {
            m_validity->Report(WrongRoot);
        }
        return isRoot;
    }
    if (reader.GetDepth() > m_validity->GetMaxDepth()) {
        m_isSeenWhole = true;
        return false;
    }
    return std::nullopt;
}

bool NodeRead::ReportInvalid(std::string_view tag) const { return Report(L"Invalid tag [", tag); }
bool NodeRead::ReportUnhandled(std::string_view tag) const { return Report(L"Unhandled tag [", tag); }

bool NodeRead::Report(std::wstring_view what, std::string_view tag) const {
    if (m_validity != nullptr) {
        std::wstring message(what);
        Text::AppendWide(tag, message);
        m_validity->Report(message + L"] in [" + m_node.m_pNode->m_name + L"]");
    }
    return false;
}

void NodeRead::ReportMissing() {
    // Asks the layout and not the cursor, so that what profiles and items hold may be missing too.
    if (m_node.m_pNode == nullptr || m_node.m_pNode->m_isList || m_node.m_pNode->m_isProfileList) {
        return;
    }
    for (LayoutNode const* const child : m_node.m_pNode->m_children) {
        if (child->m_writeToParameterFile && m_seenNodes.count(child) == 0) {
            m_validity->Report(L"Mandatory tag [" + child->m_name + L"] not found in [" +
                               m_node.m_pNode->m_name + L"]");
        }
    }
}
