// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "text/enum_order.h"

#include <zantrel/layout/node_type.h>
#include <zantrel/sax/sax_reader.h>

#include <span>
#include <string>
#include <string_view>

namespace Zantrel {

/// The word of a node type in a format.
struct TypeWord {
    eTypeLayoutNode type;
    std::string_view word; ///< empty: none is written
    bool isRead;           ///< false: the word is none of the reader's, or it stands for another type there
};

template <std::size_t Count> constexpr bool IsCompleteAndInOrder(TypeWord const (&words)[Count]) {
    return InEnumOrder(words, &TypeWord::type, StandardOptions);
}

/// Empty for a type that has no word.
std::string_view WordOf(std::span<TypeWord const> words, eTypeLayoutNode type);

/// The type of a word in a file; String for a word that the format doesn't know, which is noted on the
/// reader.
eTypeLayoutNode TypeOf(std::span<TypeWord const> words, std::string_view word, KelSAX::ISAXReader& reader);

} // namespace Zantrel
