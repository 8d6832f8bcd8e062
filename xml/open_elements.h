// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/scan.h"

#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

namespace Zantrel::Xml {

/// The names of the elements that are open, one behind the other. A name that fits in a block is copied and
/// compared as one, which is much faster than a few bytes are.
///
/// What holds: the innermost name ends at m_size, each other one where the next begins, and m_names has a
/// block of room behind m_size, so that a name can be loaded as a block from its beginning. What stands
/// behind a name, in the block that was copied, never counts. Memory grows with the deepest nesting and isn't
/// given back.
class OpenElements {
public:
    std::size_t Depth() const noexcept { return m_begins.size(); }
    /// There must be one. Good until the next Push.
    std::string_view Innermost() const noexcept {
        return {m_names.data() + m_begins.back(), m_size - m_begins.back()};
    }

    /// At least Block::Size bytes must be readable from the beginning of `name`.
    void Push(std::string_view name) {
        if (name.size() > Block::Size || m_size + 2 * Block::Size > m_names.size())
            return PushWithCare(name);
        m_begins.push_back(m_size);
        std::memcpy(m_names.data() + m_size, name.data(), Block::Size);
        m_size += name.size();
    }

    /// The name stays readable until the next Push.
    std::string_view Pop() noexcept {
        std::string_view const name = Innermost();
        m_size = m_begins.back();
        m_begins.pop_back();
        return name;
    }

    /// Whether [at, end) begins with the innermost name. Block::Size bytes must be readable behind `end`.
    /// What follows the name plays no part; the caller looks at that.
    bool InnermostIsAt(char const* at, char const* end) const noexcept {
        std::string_view const name = Innermost();
        if (name.size() > Block::Size)
            return IsAt(name, at, end);
        return Block(at).Equal(Block(name.data())).Others().First() >= name.size();
    }

private:
    /// For a name that doesn't fit in a block, and where there is no room for a block. When it throws,
    /// nothing was pushed.
    void PushWithCare(std::string_view name);
    /// As InnermostIsAt, for a name that doesn't fit in a block: nothing behind `end` is read.
    static bool IsAt(std::string_view name, char const* at, char const* end) noexcept;

    std::vector<char> m_names; ///< with at least a block behind m_size
    std::size_t m_size = 0;
    /// Where each name begins, from the root's on.
    std::vector<std::size_t> m_begins;
};

} // namespace Zantrel::Xml
