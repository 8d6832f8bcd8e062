// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Zantrel::Io {

/// Where the bytes of a document come from. Belongs to the thread that reads.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// Puts up to `size` bytes into `into`, as many as it likes: the reader asks until the end. Gives their
    /// number, 0 at the end and from then on, a negative number when reading failed. It may write anything
    /// into the rest of the room, and it may throw, which ends the read.
    virtual std::ptrdiff_t Read(char* into, std::size_t size) = 0;
};

} // namespace Zantrel::Io
