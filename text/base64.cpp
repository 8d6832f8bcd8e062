// SPDX-License-Identifier: Apache-2.0
#include "text/base64.h"

#include <array>
#include <cstdint>

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

std::string EncodeBase64(std::vector<std::byte> const& bytes) {
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

std::optional<std::vector<std::byte>> DecodeBase64(std::string_view text) {
    std::vector<std::byte> bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t group = 0;
    std::size_t inGroup = 0;
    std::size_t padding = 0;
    for (char const character : text) {
        std::uint8_t const meaning = Meanings[static_cast<unsigned char>(character)];
        if (meaning == Space) {
            continue;
        }
        if (meaning == Foreign || (padding != 0 && meaning != Padding)) {
            return std::nullopt;
        }
        padding += meaning == Padding;
        group = group << 6 | (meaning == Padding ? 0u : meaning);
        if (++inGroup < 4) {
            continue;
        }
        // A group ends the text when it has padding, of at most two characters, over bits that are zero.
        if (padding > 2 || (padding != 0 && (group & ((1u << (8 * padding)) - 1)) != 0)) {
            return std::nullopt;
        }
        for (std::size_t place = 0; place < 3 - padding; ++place) {
            bytes.push_back(static_cast<std::byte>(group >> (16 - 8 * place) & 0xFF));
        }
        group = 0;
        inGroup = 0;
    }
    if (inGroup != 0) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace Zantrel::Text
