// SPDX-License-Identifier: Apache-2.0
#include "platform/files/native_path.h"

#ifdef _WIN32
#include "platform/files/windows_api.h"
#endif
#include "platform/text/unicode.h"

#include <system_error>

namespace Zantrel::Files {

#ifdef _WIN32
namespace {

/// Beyond MAX_PATH only the extended form is taken, and that one neither relative nor with "/".
NativePath ExtendWhenLong(NativePath path) {
    constexpr std::size_t LongestShort = 240; // leaves room for a temporary sibling's name
    std::wstring full(32768, L'\0');
    DWORD const size =
        ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    full.resize(size < full.size() ? size : 0);
    if (full.size() <= LongestShort || full.compare(0, 4, L"\\\\?\\") == 0 ||
        full.compare(0, 4, L"\\\\.\\") == 0) {
        return path;
    }
    return full.compare(0, 2, L"\\\\") == 0 ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

} // namespace
#endif

std::optional<NativePath> ToNativePath(std::wstring_view path) {
    std::string utf8;
    if (path.empty() || path.find(L'\0') != std::wstring_view::npos || !Text::AppendUtf8(path, utf8)) {
        return std::nullopt;
    }
#ifdef _WIN32
    return ExtendWhenLong(NativePath(path));
#else
    return utf8;
#endif
}

std::wstring DescribeFailure(std::wstring_view action, std::wstring_view path, int systemError) {
    std::string cause = std::system_category().message(systemError);
    cause.resize(cause.find_last_not_of(". \r\n") + 1); // some systems end theirs like a line of output
    std::wstring sentence(action);
    sentence.append(L" \"").append(path).append(L"\": ");
    Text::AppendWide(cause, sentence);
    return sentence.append(L".");
}

std::wstring DescribeBadPath(std::wstring_view path) {
    return std::wstring(L"No file can have the path \"").append(path).append(L"\".");
}

} // namespace Zantrel::Files
