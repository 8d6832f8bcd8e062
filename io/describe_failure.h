// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/system.h"

#include <string>
#include <string_view>
#include <system_error>

namespace Zantrel::Io {

/// Why an operation failed.
struct Failure {
    std::wstring sentence; ///< empty where nothing failed
    std::error_code code;  ///< what the system said, where it was asked
};

/// That an operation on a file failed, with the path and the cause in the system's words, and with what is to
/// be said beside these.
Failure DescribeFailure(std::wstring_view action, std::wstring_view path, Error error,
                        std::wstring_view explanation = {});
/// The same for a path that no file can have.
Failure DescribeBadPath(std::wstring_view path);

} // namespace Zantrel::Io
