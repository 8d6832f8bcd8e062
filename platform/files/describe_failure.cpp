// SPDX-License-Identifier: Apache-2.0
#include "platform/files/describe_failure.h"

namespace Zantrel::Files {

std::wstring DescribeFailure(std::wstring_view action, std::wstring_view path, System::Error error) {
    return std::wstring(action).append(L" \"").append(path).append(L"\": ") + System::Describe(error) + L'.';
}

std::wstring DescribeBadPath(std::wstring_view path) {
    return std::wstring(L"No file can have the path \"").append(path).append(L"\".");
}

} // namespace Zantrel::Files
