// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Text {

/// Standard base64 (RFC 4648) with padding, in one line.
std::string EncodeBase64(std::vector<std::byte> const& bytes);

/// White space between the characters is passed over; nothing when the rest is no base64.
std::optional<std::vector<std::byte>> DecodeBase64(std::string_view text);

} // namespace Zantrel::Text
