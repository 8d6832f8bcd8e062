// SPDX-License-Identifier: Apache-2.0
#include "text/guid.h"

#include <algorithm>

namespace Zantrel::Text {

namespace {

bool IsHexDigit(wchar_t unit) noexcept {
    return (unit >= L'0' && unit <= L'9') || (unit >= L'a' && unit <= L'f') || (unit >= L'A' && unit <= L'F');
}

std::wstring_view WithoutBraces(std::wstring_view text) noexcept {
    bool const isBraced =
        text.size() == RandomGuidPattern.size() + 2 && text.front() == L'{' && text.back() == L'}';
    return isBraced ? text.substr(1, RandomGuidPattern.size()) : text;
}

/// Whether the text is as long as the pattern, has dashes where that has them, and elsewhere what is wanted.
template <class Predicate> bool Fits(std::wstring_view text, Predicate isWanted) noexcept {
    return std::equal(
        text.begin(), text.end(), RandomGuidPattern.begin(), RandomGuidPattern.end(),
        [isWanted](wchar_t unit, wchar_t place) { return place == L'-' ? unit == L'-' : isWanted(unit); });
}

} // namespace

std::wstring_view FindGuid(std::wstring_view text) noexcept {
    std::wstring_view const inner = WithoutBraces(text);
    return Fits(inner, IsHexDigit) ? inner : std::wstring_view();
}

bool HasGuidShape(std::wstring_view text) noexcept {
    return Fits(WithoutBraces(text), [](wchar_t) { return true; });
}

} // namespace Zantrel::Text
