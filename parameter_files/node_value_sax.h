// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "database/value_type.h"

#include <zantrel/database/parameter_node.h>
#include <zantrel/layout/layout_node.h>
#include <zantrel/platform/sax_reader.h>
#include <zantrel/platform/sax_writer.h>

namespace Zantrel {

/// A cursor whose value is read and written in place.
struct ValueCursor : ParameterNode {
    explicit ValueCursor(ParameterNode const& node) : ParameterNode(node) {}
    using ParameterNode::_FindReference;
};

/// Said of what a file holds for a cursor that has no bag, or no value of the layout's type.
inline constexpr std::wstring_view NoPlace = L"The database has no place for this; it was passed over.";

/// Takes the text of the element into the value of a leaf. What has no place to go is noted on the reader.
template <class T> void ReadLeafValue(ParameterNode const& leaf, KelSAX::ISAXReader& reader);

/// Writes the value of a leaf as content of the open element; nothing where the leaf has no value. False when
/// it can't be written.
bool WriteNodeValue(ParameterNode const& leaf, KelSAX::ISAXWriter& writer);

/// Notes the text of an element that should hold elements only.
void NoteStrayText(KelSAX::ISAXReader& reader);

/// Gives the children of the element to a new `Handler` on the cursor.
template <class Handler> void ReadNodeChildren(ParameterNode const& node, KelSAX::ISAXReader& reader) {
    NoteStrayText(reader);
    reader.PushHandler(new Handler(node));
}

/// Reads the element as the content of a node that is no container, or of one item of a list: a leaf's value
/// at once, the children of a group by a new `Handler` on the cursor.
template <class Handler> void ReadNodeValue(ParameterNode const& node, KelSAX::ISAXReader& reader) {
    VisitValueType(node.m_pNode->m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, NoValue>) {
            ReadNodeChildren<Handler>(node, reader);
        } else {
            ReadLeafValue<T>(node, reader);
        }
    });
}

} // namespace Zantrel
