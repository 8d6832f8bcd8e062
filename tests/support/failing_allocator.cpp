// SPDX-License-Identifier: Apache-2.0
#include "tests/support/failing_allocator.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <malloc.h>

namespace {

constexpr std::size_t Never = std::numeric_limits<std::size_t>::max();

std::size_t SizeOf(void* memory) noexcept {
#ifdef _WIN32
    return _msize(memory);
#else
    return malloc_usable_size(memory);
#endif
}

#if defined(__SANITIZE_ADDRESS__)
#define ZANTREL_MEMORY_IS_WATCHED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZANTREL_MEMORY_IS_WATCHED
#endif
#endif

/// What was not written yet, or is gone, so that who reads it gets nothing that could pass for something.
void Spoil([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) noexcept {
#ifndef ZANTREL_MEMORY_IS_WATCHED // by a sanitiser, which has marks of its own there
    std::memset(memory, 0xDB, std::min(size, std::size_t(4096)));
#endif
}

struct ThreadState {
    std::ptrdiff_t live = 0, bytes = 0, peak = 0;
    std::size_t untilFailure = Never;
    bool goesOn = false;
    bool happened = false;
};
thread_local ThreadState state;

void* Allocate(std::size_t size) noexcept {
    if (state.untilFailure == 0) {
        state.happened = true;
        state.untilFailure = state.goesOn ? 0 : Never;
        return nullptr;
    }
    if (state.untilFailure != Never) {
        --state.untilFailure;
    }
    void* const memory = std::malloc(size != 0 ? size : 1);
    if (memory != nullptr) {
        ++state.live;
        state.bytes += static_cast<std::ptrdiff_t>(SizeOf(memory));
        state.peak = std::max(state.peak, state.bytes);
        Spoil(memory, size);
    }
    return memory;
}

void* AllocateOrThrow(std::size_t size) {
    void* const memory = Allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void Free(void* memory) noexcept {
    if (memory != nullptr) {
        --state.live;
        state.bytes -= static_cast<std::ptrdiff_t>(SizeOf(memory));
        Spoil(memory, SizeOf(memory));
    }
    std::free(memory);
}

} // namespace

// All forms but those for aligned memory, so that each pair meets whatever else replaces them.
void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, std::nothrow_t const&) noexcept { Free(memory); }
void operator delete[](void* memory, std::nothrow_t const&) noexcept { Free(memory); }

namespace TestSupport {

std::ptrdiff_t LiveAllocations() noexcept { return state.live; }

MemoryPeak::MemoryPeak() noexcept : m_before(state.bytes) { state.peak = state.bytes; }

std::size_t MemoryPeak::Bytes() const noexcept { return static_cast<std::size_t>(state.peak - m_before); }

AllocationFailure::AllocationFailure(std::size_t nth, Times times) noexcept {
    state.untilFailure = nth;
    state.goesOn = times == Times::FromThenOn;
    state.happened = false;
}

AllocationFailure::~AllocationFailure() { state.untilFailure = Never; }

bool AllocationFailure::Happened() const noexcept { return state.happened; }

} // namespace TestSupport
