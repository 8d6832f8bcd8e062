// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <mutex>
#include <utility>

namespace Zantrel {

class LayoutShapes;

/// A layout's note of what its databases have worked out from it, for the next one; what it holds is theirs.
/// It plays no part in what the layout says: a copy of a layout begins without. Databases on several threads
/// may use it at once.
class SharedShapes {
public:
    SharedShapes() = default;
    SharedShapes(SharedShapes const&) noexcept {}
    /// Nothing: what is noted here isn't the source's.
    SharedShapes& operator=(SharedShapes const&) noexcept { return *this; }

private:
    friend class LayoutShapes;

    std::shared_ptr<LayoutShapes const> Get() const {
        std::lock_guard const lock(m_lock);
        return m_shapes;
    }
    /// What was noted before lives on where a database uses it.
    void Set(std::shared_ptr<LayoutShapes const> shapes) {
        std::lock_guard const lock(m_lock);
        m_shapes.swap(shapes);
    }

    mutable std::mutex m_lock;
    std::shared_ptr<LayoutShapes const> m_shapes;
};

} // namespace Zantrel
