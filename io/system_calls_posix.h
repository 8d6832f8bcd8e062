// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/system.h"

#include <cerrno>

/// What the files for POSIX systems share.
namespace Zantrel::Io {

inline int Descriptor(File const& file) noexcept { return static_cast<int>(file.Handle()); }

template <class Call> auto RepeatWhenInterrupted(Call const& call) noexcept {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// The error of a call that gives a negative number when it fails.
template <class Call> Error ErrorOf(Call const& call) noexcept {
    return RepeatWhenInterrupted(call) < 0 ? errno : 0;
}

} // namespace Zantrel::Io
