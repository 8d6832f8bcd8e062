// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sax/document_source.h"

#include <cstddef>
#include <cstdint>

namespace Zantrel::Sax {

/// A document up to so many bytes: it fails where there is one more, and says nothing of its own then.
class LimitedSource final : public DocumentSource {
public:
    /// The source must outlive this one.
    LimitedSource(DocumentSource& source, std::uint64_t limit) : m_source(source), m_left(limit) {}

    std::ptrdiff_t Read(char* into, std::size_t size) override;
    Io::Failure WhyItFailed() const override { return m_source.WhyItFailed(); }
    bool IsBeyond() const noexcept { return m_isBeyond; }

private:
    DocumentSource& m_source;
    std::uint64_t m_left;
    bool m_isBeyond = false;
};

} // namespace Zantrel::Sax
