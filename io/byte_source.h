// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Zantrel::Io {

/// Where the bytes of a document come from.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// Puts up to `size` bytes into `into`. Gives their number, 0 at the end, a negative number when reading
    /// failed.
    virtual std::ptrdiff_t Read(char* into, std::size_t size) = 0;
};

} // namespace Zantrel::Io
