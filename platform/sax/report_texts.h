// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace Zantrel::Sax {

/// Whether the rows of a table stand in the order of the enumeration that they explain, none left out.
template <class Row, std::size_t Count, class Enum>
constexpr bool InEnumOrder(Row const (&rows)[Count], Enum Row::*key, Enum last) {
    for (std::size_t index = 0; index < Count; ++index) {
        if (rows[index].*key != static_cast<Enum>(index)) {
            return false;
        }
    }
    return Count == static_cast<std::size_t>(last) + 1;
}

/// `pattern` with "{0}", "{1}", ... replaced by `parts`.
std::wstring Fill(std::wstring_view pattern, std::initializer_list<std::wstring_view> parts);

/// UTF-8 as a wide text to quote, cut with "..." when it is long.
std::wstring Excerpt(std::string_view utf8);

/// "sentence (path)", without the path when it is empty.
std::wstring WithPath(std::wstring_view sentence, std::wstring_view path);

} // namespace Zantrel::Sax
