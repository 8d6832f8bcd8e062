// SPDX-License-Identifier: Apache-2.0
#include "sax/limited_source.h"

#include <algorithm>

namespace Zantrel::Sax {

// What the limit allows is given whole before anything fails, so that a read ends at the same place whatever
// the size of the pieces; only one more byte tells whether the document ended just there.
std::ptrdiff_t LimitedSource::Read(char* into, std::size_t size) {
    std::uint64_t const allowed = std::min<std::uint64_t>(size, std::max<std::uint64_t>(m_left, 1));
    std::ptrdiff_t const count = m_source.Read(into, static_cast<std::size_t>(allowed));
    if (count > 0 && m_left == 0) {
        m_isBeyond = true;
        return -1;
    }
    m_left -= static_cast<std::uint64_t>(std::max<std::ptrdiff_t>(count, 0));
    return count;
}

} // namespace Zantrel::Sax
