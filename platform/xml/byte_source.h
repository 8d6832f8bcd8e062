// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace Zantrel::Xml {

/// Where the bytes of a document come from.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// Puts up to `size` bytes into `into`. Gives their number, 0 at the end, a negative number when reading
    /// failed.
    virtual std::ptrdiff_t Read(char* into, std::size_t size) = 0;
};

/// A place in a document, both counted from 1; a column is a character (code point), not a byte.
struct Position {
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

} // namespace Zantrel::Xml
