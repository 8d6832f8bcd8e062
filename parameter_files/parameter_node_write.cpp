// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/parameter_node_write.h"

#include "database/entries.h"
#include "parameter_files/node_value_sax.h"
#include "parameter_files/vocabulary.h"
#include "store/bag_access.h"

#include <zantrel/sax/tag_writer.h>

using namespace Zantrel;
namespace Word = Zantrel::ParameterFileWord;

namespace {

using Filtering = ParameterDatabaseIOFiltering;

void WriteNode(ParameterNode const& node, Filtering const& filtering, KelSAX::ISAXWriter& writer);

void WriteFlag(FlagAttribute const& flag, ParameterNode const& node, KelSAX::ISAXWriter& writer) {
    if ((node.*flag.get)() != flag.ordinary) {
        writer.WriteAttribute(flag.word, std::string_view(flag.ordinary ? "false" : "true"));
    }
}

void WriteProfiles(ParameterNode const& list, Filtering const& filtering, KelSAX::ISAXWriter& writer) {
    WriteFlag(Flag::DisableAddRemove, list, writer); // ReadOnly and Hidden are read here, but never written
    if (filtering.m_exportDefaultParameters && list.IsValid()) {
        MSAXTagWriter element(writer, Word::Default);
        WriteNode(list.GetDefault(), Filtering(), writer); // the filter doesn't reach into a "Default"
    }
    VisitProfiles(list, [&](std::wstring const& name, ParameterNode const& profile) {
        MSAXTagWriter element(writer, std::wstring_view(list.m_pNode->m_nodeName));
        writer.WriteAttribute(Word::Name, std::wstring_view(name));
        WriteNode(profile, filtering, writer);
    });
}

void WriteItems(ParameterNode const& list, KelSAX::ISAXWriter& writer) {
    WriteFlag(Flag::ReadOnly, list, writer); // a list's DisableAddRemove is read, but never written
    WriteFlag(Flag::Hidden, list, writer);
    VisitItems(list, [&](ParameterNode const& item) {
        MSAXTagWriter element(writer, std::wstring_view(list.m_pNode->m_nodeName));
        WriteNode(item, Filtering(), writer); // the filter doesn't reach into items
    });
}

/// A bag with a value alone, as nearly every leaf is, has no flags to look for.
bool HasValueAlone(ParameterNode const& node) {
    return node.IsValid() && BagAccess::FindSole(*node.m_pProperties) != nullptr;
}

void WriteContent(ParameterNode const& node, Filtering const& filtering, KelSAX::ISAXWriter& writer) {
    LayoutNode const& layout = *node.m_pNode;
    if (!HasValueAlone(node)) {
        WriteFlag(Flag::ReadOnly, node, writer);
        WriteFlag(Flag::Hidden, node, writer);
    }
    if (layout.m_isProfileList) {
        WriteFlag(Flag::NameReadOnly, node, writer);
        WriteFlag(Flag::CanBeDeleted, node, writer);
        WriteFlag(Flag::UserDefaultProfile, node, writer);
    }
    if (layout.Size() == 0) {
        WriteNodeValue(node, writer);
    }
    for (std::size_t i = 0; i < layout.Size(); ++i) {
        LayoutNode const& childLayout = layout.At(i);
        ParameterNode const child = node.Get(&childLayout);
        bool const isGeneral = childLayout.m_name == Word::GenericParameters;
        if (isGeneral && (!filtering.m_exportGeneralParameters || child.GetHidden())) {
            continue;
        }
        MSAXTagWriter element(writer, std::wstring_view(childLayout.m_name));
        WriteNode(child, filtering, writer);
    }
}

void WriteNode(ParameterNode const& node, Filtering const& filtering, KelSAX::ISAXWriter& writer) {
    if (node.m_pNode == nullptr || writer.HasFailed()) {
        return; // nothing of the layout stands here, or nothing more can be written
    }
    if (node.m_isContainer && node.m_pNode->m_isProfileList) {
        WriteProfiles(node, filtering, writer);
    } else if (node.m_isContainer && node.m_pNode->m_isList) {
        WriteItems(node, writer);
    } else {
        WriteContent(node, filtering, writer);
    }
}

} // namespace

bool ParameterNodeWrite::Write(KelSAX::ISAXWriter& writer) const {
    WriteNode(m_node, m_filtering, writer);
    return true;
}
