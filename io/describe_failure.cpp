// SPDX-License-Identifier: Apache-2.0
#include "io/describe_failure.h"

namespace Zantrel::Io {

Failure DescribeFailure(std::wstring_view action, std::wstring_view path, Error error,
                        std::wstring_view explanation) {
    std::wstring text = std::wstring(action).append(L" \"").append(path).append(L"\": ") + Describe(error);
    if (!explanation.empty()) {
        text.append(L" (").append(explanation).append(L")");
    }
    return {text + L'.', std::error_code(error, std::system_category())};
}

Failure DescribeBadPath(std::wstring_view path) {
    return {std::wstring(L"No file can have the path \"").append(path).append(L"\"."),
            std::make_error_code(std::errc::invalid_argument)};
}

} // namespace Zantrel::Io
