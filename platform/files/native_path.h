// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Zantrel::Files {

#ifdef _WIN32
using NativePath = std::wstring;
#else
using NativePath = std::string;
#endif

/// The path as the system takes it: on Windows the wide text, elsewhere its bytes as UTF-8, whatever the
/// locale. Nothing when no file can have this path: at a lone surrogate, a NUL, or when it is empty.
std::optional<NativePath> ToNativePath(std::wstring_view path);

/// One sentence that an operation on a file failed, with the path and the cause in the system's words.
std::wstring DescribeFailure(std::wstring_view action, std::wstring_view path, int systemError);
/// The same for a path that ToNativePath refuses.
std::wstring DescribeBadPath(std::wstring_view path);

} // namespace Zantrel::Files
