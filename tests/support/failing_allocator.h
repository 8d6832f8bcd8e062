// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <new>

/// Replaces operator new of the test program, to let allocations fail and to count them. All of it concerns
/// the calling thread alone.
namespace TestSupport {

/// Allocations of this thread minus its deallocations.
std::ptrdiff_t LiveAllocations() noexcept;

/// The most memory that this thread has had at once since this was made, beyond what it had then. One at a
/// time.
class MemoryPeak {
public:
    MemoryPeak() noexcept;
    std::size_t Bytes() const noexcept;

private:
    std::ptrdiff_t m_before;
};

/// While it lives, the allocation number `nth`, counted from 0, throws std::bad_alloc, and with FromThenOn
/// each one after it too. One at a time.
class AllocationFailure {
public:
    enum class Times { Once, FromThenOn };

    explicit AllocationFailure(std::size_t nth, Times times = Times::Once) noexcept;
    AllocationFailure(AllocationFailure const&) = delete;
    AllocationFailure& operator=(AllocationFailure const&) = delete;
    ~AllocationFailure();

    bool Happened() const noexcept;
};

/// Fails the test when its scope ends with more or fewer allocations alive than it began with.
class LeakCheck {
public:
    LeakCheck() = default;
    LeakCheck(LeakCheck const&) = delete;
    LeakCheck& operator=(LeakCheck const&) = delete;
    ~LeakCheck() { EXPECT_EQ(LiveAllocations(), m_before) << "allocations alive at the end of the scope"; }

private:
    std::ptrdiff_t m_before = LiveAllocations();
};

/// Calls `action` with its first allocation failing, then with its second, until it gets through without a
/// failure, and after each call `check(nth, completed)`. Gives the number of failures.
template <class Action, class Check>
std::size_t FailEachAllocation(Action action, Check check,
                               AllocationFailure::Times times = AllocationFailure::Times::Once) {
    for (std::size_t nth = 0;; ++nth) {
        bool completed = false;
        bool happened = false;
        {
            AllocationFailure const failure(nth, times);
            try {
                action();
                completed = true;
            } catch (std::bad_alloc const&) {
            }
            happened = failure.Happened();
        }
        check(nth, completed);
        if (!happened) {
            return nth;
        }
    }
}

/// The same for an action that leaves nothing behind: neither completing nor failing may leak.
template <class Action>
std::size_t FailEachAllocation(Action action,
                               AllocationFailure::Times times = AllocationFailure::Times::Once) {
    action(); // what is made once for the whole program is made now
    std::ptrdiff_t const before = LiveAllocations();
    return FailEachAllocation(
        action,
        [before](std::size_t nth, bool) {
#if defined(_LIBCPP_VERSION) && _LIBCPP_VERSION < 16000
            // Its vectors leak their memory where the copy of an element throws.
            std::ptrdiff_t const live = std::min(LiveAllocations(), before);
#else
            std::ptrdiff_t const live = LiveAllocations();
#endif
            EXPECT_EQ(live, before) << "leaked when allocation " << nth << " failed";
        },
        times);
}

} // namespace TestSupport
