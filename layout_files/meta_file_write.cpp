// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_write.h"

#include "layout_files/layout_write.h"
#include "layout_files/meta_file_attributes.h"

#include <zantrel/sax/tag_writer.h>

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

} // namespace

bool ParameterLayoutIOMetaFileWrite::Write(KelSAX::ISAXWriter& writer) const {
    WriteNode(*m_layout, writer);
    return true;
}

/// A container's element holds the one element of what it contains, and that one has the children.
void ParameterLayoutIOMetaFileWrite::WriteNode(LayoutNode const& node, KelSAX::ISAXWriter& writer) const {
    if (!IsContainer(node)) {
        WriteValueNode(node, writer);
        return;
    }
    WriteContainerAttributes(node, writer);
    MSAXTagWriter const item(writer, std::wstring_view(node.m_nodeName));
    WriteValueNode(node, writer);
}

void ParameterLayoutIOMetaFileWrite::WriteValueNode(LayoutNode const& node,
                                                    KelSAX::ISAXWriter& writer) const {
    WriteValueAttributes(node, writer);
    // A default of a node with children stays behind: the element has no text beside them.
    if (node.Size() == 0) {
        writer.WriteValue(std::wstring_view(node.m_defaultValue));
    }
    ForEachChild(node, writer, [&](LayoutNode const& child) {
        if (&child != m_layout->m_categoryOption.GetNode()) { // each read makes it anew
            MSAXTagWriter const element(writer, std::wstring_view(child.m_name));
            WriteNode(child, writer);
        }
    });
    if (node.m_type == Options) {
        WriteOptions(node, writer);
    }
}
