// SPDX-License-Identifier: Apache-2.0
#include "text/base64.h"

#include <algorithm>
#include <array>

// Four characters of six bits each are a group of three bytes. Decoding keeps the bits of the group that is
// begun, and how many of its characters were padding: after the first padding nothing but more of it may
// come, to the end of that group, which is then the last. What a shorter group can't fill must be zero, so
// that each sequence of bytes has one text only.
namespace Zantrel::Text {

namespace {

constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t Space = 64;
constexpr std::uint8_t Padding = 65;
constexpr std::uint8_t Foreign = 66;

/// For each byte its six bits, or one of the three kinds above.
constexpr std::array<std::uint8_t, 256> MakeMeanings() {
    std::array<std::uint8_t, 256> meanings{};
    meanings.fill(Foreign);
    for (std::size_t bits = 0; bits < Alphabet.size(); ++bits) {
        meanings[static_cast<unsigned char>(Alphabet[bits])] = static_cast<std::uint8_t>(bits);
    }
    for (char const space : {' ', '\t', '\n', '\r'}) {
        meanings[static_cast<unsigned char>(space)] = Space;
    }
    meanings[static_cast<unsigned char>('=')] = Padding;
    return meanings;
}

constexpr std::array<std::uint8_t, 256> Meanings = MakeMeanings();

} // namespace

std::string EncodeBase64(std::span<std::byte const> bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t index = 0; index < bytes.size(); index += 3) {
        std::size_t const taken = bytes.size() - index < 3 ? bytes.size() - index : 3;
        std::uint32_t group = 0;
        for (std::size_t place = 0; place < 3; ++place) {
            group = group << 8 | (place < taken ? std::to_integer<std::uint32_t>(bytes[index + place]) : 0u);
        }
        for (std::size_t place = 0; place < 4; ++place) {
            text.push_back(place <= taken ? Alphabet[group >> (18 - 6 * place) & 0x3F] : '=');
        }
    }
    return text;
}

// In strides that decode into one buffer, which is kept.
void Base64Decoder::Add(std::string_view text) {
    constexpr std::size_t Stride = std::size_t(64) * 1024;
    for (; m_isGood && !text.empty(); text.remove_prefix(std::min(text.size(), Stride))) {
        m_decoded.clear();
        for (std::string_view left = text.substr(0, Stride); m_isGood && !left.empty();) {
            if (m_inGroup == 0 && m_padding == 0 && left.size() >= 4 && AddGroup(left.data())) {
                left.remove_prefix(4);
            } else {
                m_isGood = AddCharacter(left.front());
                left.remove_prefix(1);
            }
        }
        m_bytes.Append(m_decoded);
    }
}

bool Base64Decoder::AddGroup(char const* characters) {
    std::uint32_t kinds = 0;
    std::uint32_t group = 0;
    for (std::size_t place = 0; place < 4; ++place) {
        std::uint32_t const meaning = Meanings[static_cast<unsigned char>(characters[place])];
        kinds |= meaning;
        group = group << 6 | meaning;
    }
    if (kinds >= Space) {
        return false;
    }
    PutBytes(group, 3);
    return true;
}

bool Base64Decoder::AddCharacter(char character) {
    std::uint8_t const meaning = Meanings[static_cast<unsigned char>(character)];
    if (meaning == Space) {
        return true;
    }
    if (meaning == Foreign || (m_padding != 0 && meaning != Padding)) {
        return false;
    }
    m_padding += meaning == Padding;
    m_group = m_group << 6 | (meaning == Padding ? 0u : meaning);
    if (++m_inGroup < 4) {
        return true;
    }
    // A group ends the text when it has padding, of at most two characters, over bits that are zero.
    if (m_padding > 2 || (m_padding != 0 && (m_group & ((1u << (8 * m_padding)) - 1)) != 0)) {
        return false;
    }
    PutBytes(m_group, 3 - m_padding);
    m_group = 0;
    m_inGroup = 0;
    return true;
}

void Base64Decoder::PutBytes(std::uint32_t group, std::size_t count) {
    for (std::size_t place = 0; place < count; ++place) {
        m_decoded.push_back(static_cast<std::byte>(group >> (16 - 8 * place) & 0xFF));
    }
}

std::optional<std::vector<std::byte>> Base64Decoder::Finish() {
    if (!m_isGood || m_inGroup != 0) {
        return std::nullopt;
    }
    return m_bytes.Join();
}

std::optional<std::vector<std::byte>> DecodeBase64(std::string_view text) {
    Base64Decoder decoder;
    decoder.Add(text);
    return decoder.Finish();
}

} // namespace Zantrel::Text
