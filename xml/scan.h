// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/blocks.h"

#include <cstddef>
#include <string_view>

/// The searches of the tokeniser, a block at a time. What holds for all without an end: they look at a buffer
/// of whole and allowed characters (InputBuffer), where a NUL stands at the end and nowhere else, and at
/// least BytesBehind readable bytes from it on. The NUL stops every one of them, so that none needs to
/// compare with an end, and a stop at the NUL tells the caller to read on.
namespace Zantrel::Xml {

inline constexpr std::size_t BytesBehind = 2 * Block::Size;

/// The ASCII characters that a name can begin with, and those that it can go on with; the last
/// are all others and whatever is beyond ASCII.
inline constexpr auto AsciiNameStarts = [](auto bytes) {
    return bytes.Between('a', 'z') | bytes.Between('A', 'Z') | bytes.Equal('_') | bytes.Equal(':');
};
inline constexpr auto AsciiNameBytes = [](auto bytes) {
    auto const letters = bytes.Between('a', 'z') | bytes.Between('A', 'Z') | bytes.Equal('_');
    return letters | bytes.Between('-', ':').Without(bytes.Equal('/')); // "-", ".", digits, ":"
};
inline constexpr auto AsciiNameBreaks = [](auto bytes) { return AsciiNameBytes(bytes).Others(); };

/// The next `byte`, or the NUL at the end.
inline char const* FindByte(char const* at, char byte) noexcept {
    return Find(at, [byte](Block block) { return block.Equal(byte) | block.Equal('\0'); });
}

/// Where character data may stop: at markup, a reference, a '>' that may end "]]>", the end.
inline constexpr auto TextStops = [](Block block) {
    return block.Equal('<') | block.Equal('&') | block.Equal('>') | block.Equal('\0');
};
inline char const* FindTextStop(char const* at) noexcept { return Find(at, TextStops); }

/// The next byte at which an attribute's value stops or isn't what it says: its quote, what must be replaced,
/// what may not stand there, and the end, which is below ' ' too.
inline char const* FindValueStop(char const* at, char quote) noexcept {
    return Find(at, [quote](Block block) {
        return block.Equal(quote) | block.Equal('<') | block.Equal('&') | block.Below(' ');
    });
}

/// The next byte that doesn't belong to a name, or isn't ASCII.
inline char const* SkipAsciiName(char const* at) noexcept { return Find(at, AsciiNameBreaks); }

// What nearly every tag and text of a leaf is made of is found by the one byte that ends it, and what else
// would end it is looked for beside that: the processor has the place early and goes on from there before it
// knows that nothing else came first.

/// The '>' behind the rest of an ASCII name; null where something else follows the name.
inline char const* FindEndOfPlainTag(char const* at) noexcept {
    for (;; at += Block::Size) {
        Block const block(at);
        if (auto const breaks = AsciiNameBreaks(block); breaks.Any()) {
            auto const place = block.Equal('>').First();
            return place == breaks.First() ? at + place : nullptr;
        }
    }
}

/// The '<' behind character data; null where that may stop before. Two blocks are looked at together: values
/// are seldom longer but of any length within, so that there is no loop whose end the processor would guess.
inline char const* FindEndOfPlainText(char const* at) noexcept {
    for (;; at += 2 * Block::Size) {
        Block const block(at), next(at + Block::Size);
        auto const stop = TextStops(block).FirstOfBoth(TextStops(next));
        if (stop < 2 * Block::Size) {
            auto const place = block.Equal('<').FirstOfBoth(next.Equal('<'));
            return place == stop ? at + place : nullptr;
        }
    }
}

/// Whether `name`, with a block of room behind it, stands at `at`; what follows it there plays no part. As no
/// name has a NUL, the first difference is at the end of the buffer at the latest.
inline bool IsAt(std::string_view name, char const* at) noexcept {
    for (std::size_t done = 0; done < name.size(); done += Block::Size) {
        auto const other = Block(at + done).Equal(Block(name.data() + done)).Others();
        if (other.Any())
            return done + other.First() >= name.size();
    }
    return true;
}

/// The first of [at, end) that isn't TAB, LF or a printable ASCII character. BytesBehind bytes must be
/// readable from `end` on. Four blocks are looked at together, since nearly none has anything else.
inline char const* SkipPlain(char const* at, char const* end) noexcept {
    auto const isOther = [](char const* bytes) {
        Block const block(bytes);
        return block.BelowOrNotAscii(' ').Without(block.Equal('\n') | block.Equal('\t'));
    };
    constexpr std::ptrdiff_t size = Block::Size;
    while (end - at >= 4 * size &&
           !((isOther(at) | isOther(at + size)) | (isOther(at + 2 * size) | isOther(at + 3 * size))).Any())
        at += 4 * size;
    for (; at < end; at += size)
        if (auto const found = isOther(at); found.Any()) {
            at += found.First();
            break;
        }
    return at < end ? at : end;
}

/// How often `byte` stands in [at, end), and nothing behind it is read. Compilers turn the inner loop into
/// blocks by themselves; a count of one byte can't overflow in it.
inline std::size_t CountByte(char const* at, char const* end, char byte) noexcept {
    constexpr std::ptrdiff_t chunk = 240;
    std::size_t count = 0;
    for (; end - at >= chunk; at += chunk) {
        unsigned char inChunk = 0;
        for (std::ptrdiff_t index = 0; index < chunk; ++index)
            inChunk = static_cast<unsigned char>(inChunk + (at[index] == byte));
        count += inChunk;
    }
    for (; at != end; ++at)
        count += *at == byte;
    return count;
}

} // namespace Zantrel::Xml
