// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/klvr_properties_write.h"

#include "database/entries.h"
#include "parameter_files/node_value_sax.h"
#include "parameter_files/vocabulary.h"

#include <zantrel/sax/tag_writer.h>

using namespace Zantrel;
namespace Word = Zantrel::ParameterFileWord;

namespace {

using Options = KlvrProperties::WriteOptions;

void WriteNode(ParameterNode const& node, Options const& options, KelSAX::ISAXWriter& writer);

void WriteProfiles(ParameterNode const& list, Options const& options, KelSAX::ISAXWriter& writer) {
    if (!options.m_profileListsOnly && list.IsValid()) {
        MSAXTagWriter const element(writer, Word::Default);
        WriteNode(list.GetDefault(), options, writer);
    }
    // The words are the format's, also where the layout's entries have another name, by which they are read.
    VisitProfiles(list, [&](std::wstring const& name, ParameterNode const& profile) {
        MSAXTagWriter const element(writer, Word::Profile);
        writer.WriteAttribute(Word::Name, std::wstring_view(name));
        WriteNode(profile, options, writer);
    });
}

void WriteItems(ParameterNode const& list, Options const& options, KelSAX::ISAXWriter& writer) {
    VisitItems(list, [&](ParameterNode const& item) {
        MSAXTagWriter const element(writer, Word::Instance);
        WriteNode(item, options, writer);
    });
}

void WriteChildren(ParameterNode const& node, Options const& options, KelSAX::ISAXWriter& writer) {
    for (LayoutNode const* const childLayout : node.m_pNode->m_children) {
        ParameterNode const child = node.Get(childLayout);
        bool const isWanted =
            !options.m_profileListsOnly || (childLayout->m_isProfileList && child.m_isContainer);
        if (!isWanted) {
            continue;
        }
        MSAXTagWriter const element(writer, Word::Property);
        writer.WriteAttribute(Word::Name, std::wstring_view(childLayout->m_name));
        writer.WriteAttribute(Word::Type, Word::WordOf(childLayout->m_type));
        if (childLayout->m_isProfileList) {
            writer.WriteAttribute(Word::ProfileList, std::string_view());
        }
        WriteNode(child, options, writer);
    }
}

void WriteNode(ParameterNode const& node, Options const& options, KelSAX::ISAXWriter& writer) {
    if (node.m_pNode == nullptr || writer.HasFailed()) {
        return; // nothing of the layout stands here, or nothing more can be written
    }
    if (node.m_isContainer && node.m_pNode->m_isProfileList) {
        WriteProfiles(node, options, writer);
    } else if (node.m_isContainer && node.m_pNode->m_isList) {
        if (!options.m_profileListsOnly) {
            WriteItems(node, options, writer);
        }
    } else if (node.m_pNode->Size() == 0) {
        WriteNodeValue(node, writer);
    } else {
        WriteChildren(node, options, writer);
    }
}

} // namespace

bool ParameterNodeWriteKlvrProperties::Write(KelSAX::ISAXWriter& writer) const {
    WriteNode(m_node, *m_options, writer);
    return true;
}
