// SPDX-License-Identifier: Apache-2.0
#include "layout_files/layout_write.h"

#include "layout_files/depth_limit.h"

#include <iterator>
#include <string>

namespace Zantrel {

void WriteText(std::string_view word, std::wstring_view text, KelSAX::ISAXWriter& writer) {
    if (!text.empty()) {
        writer.WriteAttribute(word, text);
    }
}

/// A number that is no type, which a host may have cast, and a type without a word in the format are written
/// as no type at all.
void WriteType(LayoutWord::TypeWord LayoutWord::TypeRow::*file, LayoutNode const& node,
               KelSAX::ISAXWriter& writer) {
    auto const index = static_cast<std::size_t>(node.m_type);
    if (index < std::size(LayoutWord::Types) && !(LayoutWord::Types[index].*file).word.empty()) {
        writer.WriteAttribute(LayoutWord::Type, (LayoutWord::Types[index].*file).word);
    }
}

/// The write fails instead of making a file that no reader takes: whoever writes still has the layout.
void RefuseUnlessTaken(std::size_t level, KelSAX::ISAXWriter& writer) {
    if (level > MaxNodeLevel) {
        writer.Refuse(L"The nodes are nested more than " + std::to_wstring(MaxNodeLevel) +
                      L" levels deep; no reader takes such a layout.");
    }
}

} // namespace Zantrel
