// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "text/byte_pieces.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Text {

/// Standard base64 (RFC 4648) with padding, in one line: four characters for three bytes, and empty for none.
/// The texts of pieces whose sizes are multiples of three make up the text of the whole.
std::string EncodeBase64(std::span<std::byte const> bytes);

/// The bytes of a base64 text that comes in pieces of any size. White space (blank, TAB, LF, CR) is passed
/// over wherever it stands. Time is linear in the text, and memory in the bytes: once they are as many as
/// count, no more than a piece of BytePieces stands beside them.
class Base64Decoder {
public:
    void Add(std::string_view text);
    /// The bytes; nothing where the text is no base64: another character, padding that is missing, too long
    /// or not at the end, or bits behind the last byte that are not zero. To be called once.
    std::optional<std::vector<std::byte>> Finish();

private:
    /// Four characters, unless one of them stands for no bits.
    bool AddGroup(char const* characters);
    /// False at a fault.
    bool AddCharacter(char character);
    void PutBytes(std::uint32_t group, std::size_t count);

    BytePieces m_bytes;
    std::vector<std::byte> m_decoded; ///< of the piece that is being added
    std::uint32_t m_group = 0;
    std::size_t m_inGroup = 0;
    std::size_t m_padding = 0;
    bool m_isGood = true;
};

/// The same of a text that is there as a whole.
std::optional<std::vector<std::byte>> DecodeBase64(std::string_view text);

} // namespace Zantrel::Text
