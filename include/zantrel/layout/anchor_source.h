// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

namespace Zantrel {

/// Knows whether the layout has ended in whose tree a layout's anchors stand: itself, or for a copy the
/// layout that was copied, at first hand. Any number of threads may copy one at a time.
class AnchorSource {
public:
    AnchorSource() : m_own(std::make_shared<char>()), m_source(m_own) {}
    AnchorSource(AnchorSource const& other) : m_own(std::make_shared<char>()), m_source(other.m_source) {}
    AnchorSource& operator=(AnchorSource const& other) noexcept {
        m_source = other.m_source;
        return *this;
    }

    bool HasEnded() const noexcept { return m_source.expired(); }

private:
    std::shared_ptr<char> m_own; ///< ends with the layout
    std::weak_ptr<char> m_source;
};

} // namespace Zantrel
