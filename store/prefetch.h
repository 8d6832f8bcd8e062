// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Zantrel {

/// Says that what lies there is soon read, which then waits less for memory. Nothing is looked at now, so any
/// address will do.
inline void Prefetch([[maybe_unused]] void const* address) noexcept {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

} // namespace Zantrel
