// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_source.h"
#include "io/describe_failure.h"

namespace Zantrel::Sax {

/// The bytes of one document.
class DocumentSource : public Io::ByteSource {
public:
    /// Why Read failed; empty unless it did.
    virtual Io::Failure WhyItFailed() const = 0;
};

} // namespace Zantrel::Sax
