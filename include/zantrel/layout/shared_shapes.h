// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#if !defined(__wasm__) || defined(__STDCPP_THREADS__)
#include <mutex>
#endif
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

#if !defined(__wasm__) || defined(__STDCPP_THREADS__)
    using Mutex = std::mutex;
    using Lock = std::lock_guard<std::mutex>;
#else // there are no threads, and the standard library has nothing for them
    struct Mutex {};
    struct Lock {
        explicit Lock(Mutex&) noexcept {}
    };
#endif

    std::shared_ptr<LayoutShapes const> Get() const {
        [[maybe_unused]] Lock const lock(m_mutex);
        return m_shapes;
    }
    /// What was noted before lives on where a database uses it.
    void Set(std::shared_ptr<LayoutShapes const> shapes) {
        [[maybe_unused]] Lock const lock(m_mutex);
        m_shapes.swap(shapes);
    }

    mutable Mutex m_mutex;
    std::shared_ptr<LayoutShapes const> m_shapes;
};

} // namespace Zantrel
