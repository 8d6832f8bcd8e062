// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/system.h"

#include <string>
#include <string_view>

namespace Zantrel::Io {

/// One sentence that an operation on a file failed, with the path and the cause in the system's words, and
/// with what is to be said beside these.
std::wstring DescribeFailure(std::wstring_view action, std::wstring_view path, Error error,
                             std::wstring_view explanation = {});
/// The same for a path that no file can have.
std::wstring DescribeBadPath(std::wstring_view path);

} // namespace Zantrel::Io
