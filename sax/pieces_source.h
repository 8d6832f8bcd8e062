// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sax/read_driver.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace Zantrel::Sax {

/// A document that lies in memory in pieces, one behind the other, which are borrowed.
class PiecesSource final : public DocumentSource {
public:
    explicit PiecesSource(std::vector<std::string_view> pieces) : m_pieces(std::move(pieces)) {}

    std::ptrdiff_t Read(char* into, std::size_t size) override {
        while (m_at != m_pieces.size() && m_pieces[m_at].empty()) {
            ++m_at;
        }
        if (m_at == m_pieces.size()) {
            return 0;
        }
        std::size_t const taken = m_pieces[m_at].copy(into, size);
        m_pieces[m_at].remove_prefix(taken);
        return static_cast<std::ptrdiff_t>(taken);
    }
    Io::Failure WhyItFailed() const override { return {}; }

private:
    std::vector<std::string_view> m_pieces; ///< what is still to be read of each
    std::size_t m_at = 0;
};

} // namespace Zantrel::Sax
