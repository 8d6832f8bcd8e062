// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace Zantrel::Sax {

/// UTF-8 of a document or a host as a wide text to quote: cut with "..." when it is long, and each ill-formed
/// byte as U+FFFD.
std::wstring Excerpt(std::string_view utf8);

/// "sentence (path)", without the path when it is empty.
std::wstring WithPath(std::wstring_view sentence, std::wstring_view path);

} // namespace Zantrel::Sax
