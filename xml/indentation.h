// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/scan.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace Zantrel::Xml {

/// The line end and blanks that stood before a tag the last time. Nearly always the same stands before the
/// next one, and to expect it is faster than to search: the processor goes on before the comparison is
/// through. A text that isn't the expected one is searched as any other, so a document that is laid out in
/// another way costs one comparison more for each text.
class Indentation {
public:
    /// The '<' behind the text at `at`, which doesn't begin with one; null if that text is another. A block
    /// must be readable there, which it always is in the buffer.
    char const* Skip(char const* at) const noexcept {
        bool const isSame = Block(at).Equal(Block(m_text.data())).Others().First() > m_size;
        return isSame ? at + m_size : nullptr;
    }

    /// Keeps the text from `at` to the '<' at `end`, if it is one.
    /// A text that is longer than a block, or no indentation, leaves what was kept before.
    void Keep(char const* at, char const* end) noexcept {
        auto const size = static_cast<std::size_t>(end - at);
        if (*at != '\n' || size >= Block::Size)
            return;
        std::memcpy(m_text.data(), at, Block::Size);
        m_size = size;
    }

private:
    std::array<char, Block::Size> m_text{'<'}; ///< with the '<'; what follows doesn't count
    /// Of the text without its '<': 0 at first, which no text in front of a tag can be.
    std::size_t m_size = 0;
};

} // namespace Zantrel::Xml
