// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_write.h"

#include "layout_files/meta_file_attributes.h"
#include "layout_files/meta_file_words.h"

#include <zantrel/sax/tag_writer.h>

using namespace Zantrel;
namespace Word = Zantrel::MetaFileWord;

namespace {

void WriteOptions(LayoutNode const& node, KelSAX::ISAXWriter& writer) {
    MSAXTagWriter const options(writer, Word::Options);
    for (std::size_t i = 0; i < node.m_optionValues.size(); ++i) {
        MSAXTagWriter const option(writer, Word::Option);
        if (i < node.m_optionDisplayNames.size() && !node.m_optionDisplayNames[i].empty()) {
            writer.WriteAttribute(Word::DisplayName, std::wstring_view(node.m_optionDisplayNames[i]));
        }
        writer.WriteValue(std::wstring_view(node.m_optionValues[i]));
    }
}

} // namespace

bool ParameterLayoutIOMetaFileWrite::Write(KelSAX::ISAXWriter& writer) const {
    WriteNode(*m_layout, writer);
    return true;
}

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
    if (node.Size() == 0) {
        writer.WriteValue(std::wstring_view(node.m_defaultValue));
    }
    // A host's tree may go on for long below what can be written.
    for (std::size_t i = 0; i < node.Size() && !writer.HasFailed(); ++i) {
        LayoutNode const& child = node.At(i);
        if (&child != m_layout->m_categoryOption.GetNode()) { // each read makes it anew
            MSAXTagWriter const element(writer, std::wstring_view(child.m_name));
            WriteNode(child, writer);
        }
    }
    if (node.m_type == Options) {
        WriteOptions(node, writer);
    }
}
