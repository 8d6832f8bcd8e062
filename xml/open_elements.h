// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/scan.h"

#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

namespace Zantrel::Xml {

/// The names of the elements that are open, one behind the other. They are copied and compared in blocks,
/// which is much faster than byte by byte or by a function that takes any size.
///
/// What holds: the innermost name ends at m_size, each other one where the next begins, and m_names has a
/// block of room behind m_size, so that a name's last block can be loaded as a whole. What stands behind a
/// name, in the block that was copied, never counts. Memory grows with the deepest nesting and isn't given
/// back.
class OpenElements {
public:
    std::size_t Depth() const noexcept { return m_begins.size(); }
    /// There must be one. Good until the next Push.
    std::string_view Innermost() const noexcept {
        return {m_names.data() + m_begins.back(), m_size - m_begins.back()};
    }

    /// Block::Size bytes must be readable behind `name`. When it throws, nothing was pushed.
    void Push(std::string_view name) {
        if (m_size + name.size() + Block::Size > m_names.size())
            MakeRoom(name.size());
        m_begins.push_back(m_size);
        for (std::size_t done = 0; done < name.size(); done += Block::Size)
            std::memcpy(m_names.data() + m_size + done, name.data() + done, Block::Size);
        m_size += name.size();
    }

    /// The name stays readable until the next Push.
    std::string_view Pop() noexcept {
        std::string_view const name = Innermost();
        m_size = m_begins.back();
        m_begins.pop_back();
        return name;
    }

private:
    void MakeRoom(std::size_t size);

    std::vector<char> m_names; ///< with at least a block behind m_size
    std::size_t m_size = 0;
    /// Where each name begins, from the root's on.
    std::vector<std::size_t> m_begins;
};

} // namespace Zantrel::Xml
