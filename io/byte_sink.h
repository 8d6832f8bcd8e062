// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace Zantrel::Io {

/// Where the bytes of a document go. Belongs to the thread that writes.
class ByteSink {
public:
    virtual ~ByteSink() = default;
    /// Takes all bytes or gives false; how many it took then is not said, and nobody writes on. Never throws:
    /// elements are closed by destructors.
    virtual bool Write(std::string_view bytes) noexcept = 0;
};

} // namespace Zantrel::Io
