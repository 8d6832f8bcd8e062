// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Text {

/// Standard base64 (RFC 4648) with padding, in one line: four characters for three bytes, and empty for none.
std::string EncodeBase64(std::vector<std::byte> const& bytes);

/// The bytes of a base64 text, in which white space (blank, TAB, LF, CR) is passed over wherever it stands.
/// Nothing where the rest is no base64: another character, padding that is missing, too long or not at the
/// end, or bits behind the last byte that are not zero. Time and memory are linear in the text.
std::optional<std::vector<std::byte>> DecodeBase64(std::string_view text);

} // namespace Zantrel::Text
