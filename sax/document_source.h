// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_source.h"

#include <string>

namespace Zantrel::Sax {

/// The bytes of one document.
class DocumentSource : public Io::ByteSource {
public:
    /// Why Read failed, one sentence; empty unless it did.
    virtual std::wstring FailureText() const = 0;
};

} // namespace Zantrel::Sax
