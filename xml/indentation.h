// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/scan.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace Zantrel::Xml {

/// The line end and blanks that stood before a tag the last time. Nearly always the same stands before the
/// next one, and to expect it is faster than to search: the processor goes on before the comparison is
/// through. White space that isn't the expected one is so from then on; a document that is laid out in
/// another way costs a look at one block more for each text.
class Indentation {
public:
    /// The '<' behind the text at `at`, where that is white space shorter than a block; null if it is
    /// another. A block must be readable there, which it always is in the buffer.
    char const* Skip(char const* at) noexcept {
        Block const text(at);
        if (text.Equal(Block(m_text.data())).Others().First() > m_size)
            return at + m_size;
        std::size_t const size = (text.Equal(' ') | text.Equal('\n') | text.Equal('\t')).Others().First();
        if (size == 0 || size >= Block::Size || at[size] != '<')
            return nullptr;
        std::memcpy(m_text.data(), at, Block::Size);
        m_size = size;
        return at + size;
    }

private:
    std::array<char, Block::Size> m_text{'<'}; ///< with the '<'; what follows doesn't count
    /// Of the text without its '<': 0 at first, which no text in front of a tag can be.
    std::size_t m_size = 0;
};

} // namespace Zantrel::Xml
