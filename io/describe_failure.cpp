// SPDX-License-Identifier: Apache-2.0
#include "io/describe_failure.h"

namespace Zantrel::Io {

std::wstring DescribeFailure(std::wstring_view action, std::wstring_view path, Error error) {
    return std::wstring(action).append(L" \"").append(path).append(L"\": ") + Describe(error) + L'.';
}

std::wstring DescribeBadPath(std::wstring_view path) {
    return std::wstring(L"No file can have the path \"").append(path).append(L"\".");
}

} // namespace Zantrel::Io
