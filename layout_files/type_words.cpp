// SPDX-License-Identifier: Apache-2.0
#include "layout_files/type_words.h"

#include "sax/report_texts.h"

namespace Zantrel {

std::string_view WordOf(std::span<TypeWord const> words, eTypeLayoutNode type) {
    auto const index = static_cast<std::size_t>(type);
    return index < words.size() ? words[index].word : std::string_view();
}

eTypeLayoutNode TypeOf(std::span<TypeWord const> words, std::string_view word, KelSAX::ISAXReader& reader) {
    for (TypeWord const& known : words) {
        if (known.isRead && known.word == word) {
            return known.type;
        }
    }
    if (reader.HasReport()) {
        reader.NoteDropped(L"The type \"" + Sax::Excerpt(word) +
                           L"\" is not known here; the parameter becomes a text.");
    }
    return String;
}

} // namespace Zantrel
