// SPDX-License-Identifier: Apache-2.0
#include "io/describe_failure.h"

namespace Zantrel::Io {

std::wstring DescribeFailure(std::wstring_view action, std::wstring_view path, Error error,
                             std::wstring_view explanation) {
    std::wstring text = std::wstring(action).append(L" \"").append(path).append(L"\": ") + Describe(error);
    if (!explanation.empty()) {
        text.append(L" (").append(explanation).append(L")");
    }
    return text + L'.';
}

std::wstring DescribeBadPath(std::wstring_view path) {
    return std::wstring(L"No file can have the path \"").append(path).append(L"\".");
}

} // namespace Zantrel::Io
