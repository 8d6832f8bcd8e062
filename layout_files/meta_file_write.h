// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/sax_persist.h>

#include <cstddef>

/// Writes a layout, which is borrowed, as the content of the root of a meta file. `isWhole` adds what only
/// the reader of whole layouts takes: the dictionary, and what else the format has a place for.
///
/// The element of a node is opened by whoever writes the node above, under the node's name. A container's
/// holds one element more, named after its entries, which has all else that the node is: the node is written
/// there as if it were no container. Reading takes the pair for one node again.
class ParameterLayoutIOMetaFileWrite : public ISAXPersistHelper {
public:
    explicit ParameterLayoutIOMetaFileWrite(Zantrel::ParameterLayout const& layout, bool isWhole = false)
        : m_layout(&layout), m_isWhole(isWhole) {}
    bool Write(KelSAX::ISAXWriter& writer) const override;

private:
    // What is written stands in the element that is open. The level of a node is the one below the root.
    void WriteNode(Zantrel::LayoutNode const& node, std::size_t level, KelSAX::ISAXWriter& writer) const;
    void WriteValueNode(Zantrel::LayoutNode const& node, std::size_t level, KelSAX::ISAXWriter& writer) const;

    Zantrel::ParameterLayout const* m_layout;
    bool m_isWhole;
};
