// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/passed_over.h"

#include <zantrel/layout/layout_node.h>
#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/sax_writer.h>

#include <initializer_list>
#include <string_view>

namespace Zantrel {

class MetaFileReferences;

/// One of the elements of a node.
struct MetaFileElement {
    LayoutNode const& node;
    bool isContainer;     ///< the outer one of two
    bool isWhole = false; ///< also with what no other reader than that of whole layouts asks for
};

/// Whether a meta file has two elements for the node: the container, and in it the one for what it contains.
bool IsContainer(LayoutNode const& node);

/// Writes the attributes of the element.
void WriteAttributes(MetaFileElement const& element, KelSAX::ISAXWriter& writer);

/// Takes those of the element being handled. What the node is, by its type and as a container, must be known;
/// it decides which attributes the element can have, and no other is asked for. What isn't there leaves the
/// node as it is. Identifiers and conditions go to `references`, which sees to them at the end.
void ReadAttributes(LayoutNode& node, bool isContainer, MetaFileReferences& references,
                    KelSAX::ISAXReader& reader);

/// Counts what the element being handled has of these attributes beside those that its reader has `read`. The
/// report of the read, if one is attached, calls none of them unknown.
void CountPassedOver(KelSAX::ISAXReader& reader, std::initializer_list<std::string_view> read,
                     PassedOver& passedOver);

} // namespace Zantrel
