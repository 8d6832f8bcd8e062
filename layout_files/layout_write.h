// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/vocabulary.h"

#include <zantrel/layout/layout_node.h>
#include <zantrel/sax/sax_writer.h>

#include <cstddef>
#include <string>
#include <string_view>

/// What the writers of layout files share.
namespace Zantrel {

/// The texts that `textOf` gives of the entries, with ";" between them. A ";" inside of one isn't escaped.
template <class Entries, class TextOf> std::wstring Join(Entries const& entries, TextOf textOf) {
    std::wstring joined;
    for (auto const& entry : entries) {
        joined += textOf(entry);
        joined += L';';
    }
    if (!joined.empty()) {
        joined.pop_back();
    }
    return joined;
}

template <class Texts> std::wstring Join(Texts const& texts) {
    return Join(texts, [](std::wstring const& text) -> std::wstring const& { return text; });
}

/// Writes an attribute, or nothing where the text is empty.
void WriteText(std::string_view word, std::wstring_view text, KelSAX::ISAXWriter& writer);

/// Writes the attribute that says of which type the node is, in the words of one of the files. A type without
/// a word there, and a host's number that is no type, get none.
void WriteType(LayoutWord::TypeWord LayoutWord::TypeRow::*file, LayoutNode const& node,
               KelSAX::ISAXWriter& writer);

/// Refuses the write of a node that would stand so many levels below the root of the layout that reads the
/// file, where that is too deep to be taken.
void RefuseUnlessTaken(std::size_t level, KelSAX::ISAXWriter& writer);

/// Gives `writeChild` the children in list order until the write fails: a host's tree may go on for long
/// below what can be written.
template <class WriteChild>
void ForEachChild(LayoutNode const& node, KelSAX::ISAXWriter const& writer, WriteChild writeChild) {
    for (std::size_t i = 0; i < node.Size() && !writer.HasFailed(); ++i) {
        writeChild(node.At(i));
    }
}

} // namespace Zantrel
