// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define ZANTREL_SCAN_SSE2
#endif

/// Skipping over text a block of bytes at a time. The searches below have no end: they rely on a NUL that
/// stops them, and on Block::Size readable bytes behind it.
namespace Zantrel::Xml {

#if defined(ZANTREL_SCAN_SSE2)

/// The bytes of a block that have some property.
class Marks {
public:
    explicit Marks(__m128i bytes) noexcept : m_bytes(bytes) {}

    friend Marks operator|(Marks a, Marks b) noexcept { return Marks(_mm_or_si128(a.m_bytes, b.m_bytes)); }
    friend Marks operator&(Marks a, Marks b) noexcept { return Marks(_mm_and_si128(a.m_bytes, b.m_bytes)); }
    Marks Without(Marks others) const noexcept { return Marks(_mm_andnot_si128(others.m_bytes, m_bytes)); }
    Marks Others() const noexcept { return Marks(_mm_xor_si128(m_bytes, _mm_set1_epi8(-1))); }

    bool Any() const noexcept { return Bits() != 0; }
    std::size_t First() const noexcept { return static_cast<std::size_t>(std::countr_zero(Bits())); }

private:
    unsigned Bits() const noexcept { return static_cast<unsigned>(_mm_movemask_epi8(m_bytes)); }

    __m128i m_bytes;
};

class Block {
public:
    static constexpr std::size_t Size = 16;

    explicit Block(char const* at) noexcept { std::memcpy(&m_bytes, at, Size); }

    Marks Equal(char byte) const noexcept { return Marks(_mm_cmpeq_epi8(m_bytes, _mm_set1_epi8(byte))); }
    Marks Equal(Block other) const noexcept { return Marks(_mm_cmpeq_epi8(m_bytes, other.m_bytes)); }
    Marks Below(char bound) const noexcept { return BelowOrNotAscii(bound).Without(NotAscii()); }
    Marks NotAscii() const noexcept { return Marks(_mm_cmplt_epi8(m_bytes, _mm_setzero_si128())); }
    /// A signed comparison finds both at once.
    Marks BelowOrNotAscii(char bound) const noexcept {
        return Marks(_mm_cmplt_epi8(m_bytes, _mm_set1_epi8(bound)));
    }
    Marks Between(char first, char last) const noexcept {
        Marks const fromFirst(_mm_cmpgt_epi8(m_bytes, _mm_set1_epi8(static_cast<char>(first - 1))));
        return fromFirst & BelowOrNotAscii(static_cast<char>(last + 1));
    }

private:
    __m128i m_bytes;
};

#else

/// The bytes of a block that have some property: the top bit of each.
class Marks {
public:
    explicit Marks(std::uint64_t bits) noexcept : m_bits(bits & 0x8080808080808080u) {}

    friend Marks operator|(Marks a, Marks b) noexcept { return Marks(a.m_bits | b.m_bits); }
    friend Marks operator&(Marks a, Marks b) noexcept { return Marks(a.m_bits & b.m_bits); }
    Marks Without(Marks others) const noexcept { return Marks(m_bits & ~others.m_bits); }
    Marks Others() const noexcept { return Marks(~m_bits); }

    bool Any() const noexcept { return m_bits != 0; }
    std::size_t First() const noexcept { return static_cast<std::size_t>(std::countr_zero(m_bits)) / 8; }

private:
    std::uint64_t m_bits;
};

/// Additions that can't carry from one byte into the next make every answer exact, not only the first one.
class Block {
public:
    static constexpr std::size_t Size = 8;

    explicit Block(char const* at) noexcept {
        std::memcpy(&m_bytes, at, Size);
        // The first byte must be the lowest.
        if constexpr (std::endian::native == std::endian::big)
            for (std::size_t index = Size; index-- != 0;)
                m_bytes = m_bytes << 8 | static_cast<unsigned char>(at[index]);
    }

    Marks Equal(char byte) const noexcept { return Zeros(m_bytes ^ Each(byte)); }
    Marks Equal(Block other) const noexcept { return Zeros(m_bytes ^ other.m_bytes); }
    Marks Below(char bound) const noexcept { return Marks(~(LowBits(bound) | m_bytes)); }
    Marks NotAscii() const noexcept { return Marks(m_bytes); }
    Marks BelowOrNotAscii(char bound) const noexcept { return Marks(~LowBits(bound) | m_bytes); }
    Marks Between(char first, char last) const noexcept {
        return Below(static_cast<char>(last + 1)).Without(Below(first));
    }

private:
    static std::uint64_t Each(char byte) noexcept {
        return 0x0101010101010101u * static_cast<unsigned char>(byte);
    }
    static Marks Zeros(std::uint64_t bytes) noexcept {
        return Marks(~(((bytes & Each(0x7F)) + Each(0x7F)) | bytes));
    }
    /// The top bit of each byte whose lower seven bits are `bound` or more.
    std::uint64_t LowBits(char bound) const noexcept {
        return (m_bytes & Each(0x7F)) + Each(static_cast<char>(0x80 - bound));
    }

    std::uint64_t m_bytes = 0;
};

#endif

template <class Property> inline char const* Find(char const* at, Property property) noexcept {
    for (;; at += Block::Size) {
        Marks const found = property(Block(at));
        if (found.Any())
            return at + found.First();
    }
}

/// The next `byte`, or the NUL at the end.
inline char const* FindByte(char const* at, char byte) noexcept {
    return Find(at, [byte](Block block) { return block.Equal(byte) | block.Equal('\0'); });
}

/// The next byte at which character data may stop.
inline char const* FindTextStop(char const* at) noexcept {
    return Find(at, [](Block block) {
        return block.Equal('<') | block.Equal('&') | block.Equal('>') | block.Equal('\0');
    });
}

/// The next byte at which an attribute's value stops or isn't what it says.
inline char const* FindValueStop(char const* at, char quote) noexcept {
    return Find(at, [quote](Block block) {
        return block.Equal(quote) | block.Equal('<') | block.Equal('&') | block.Below(' ');
    });
}

/// The next byte that doesn't belong to a name, or isn't ASCII.
inline char const* SkipAsciiName(char const* at) noexcept {
    return Find(at, [](Block block) {
        Marks const letters = block.Between('a', 'z') | block.Between('A', 'Z') | block.Equal('_');
        Marks const others = block.Between('-', ':').Without(block.Equal('/'));
        return (letters | others).Others();
    });
}

/// The first of [at, end) that isn't TAB, LF or a printable ASCII character.
inline char const* SkipPlain(char const* at, char const* end) noexcept {
    for (; at < end; at += Block::Size) {
        Block const block(at);
        Marks const found = block.BelowOrNotAscii(' ').Without(block.Equal('\n') | block.Equal('\t'));
        if (found.Any()) {
            at += found.First();
            break;
        }
    }
    return at < end ? at : end;
}

/// Compilers turn the inner loop into blocks by themselves.
inline std::size_t CountByte(char const* at, char const* end, char byte) noexcept {
    constexpr std::ptrdiff_t chunk = 64;
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
