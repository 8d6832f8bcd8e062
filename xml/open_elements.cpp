// SPDX-License-Identifier: Apache-2.0
#include "xml/open_elements.h"

#include <algorithm>

namespace Zantrel::Xml {

// A name of any size, and where the room ends. All that can throw comes before the first change that counts.
void OpenElements::PushWithCare(std::string_view name) {
    std::size_t const end = m_size + name.size();
    if (end + 2 * Block::Size > m_names.size())
        m_names.resize(2 * (end + 2 * Block::Size));
    m_begins.push_back(m_size);
    std::ranges::copy(name, m_names.begin() + static_cast<std::ptrdiff_t>(m_size));
    m_size = end;
}

bool OpenElements::IsAt(std::string_view name, char const* at, char const* end) noexcept {
    return std::string_view(at, end).starts_with(name);
}

} // namespace Zantrel::Xml
