// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define ZANTREL_BLOCKS_SSE2
#endif

/// Bytes looked at several at a time. Byte, Word and Block (1, 8 and up to 16 bytes) answer the same
/// questions with Marks, one for each of their bytes, so that a class of bytes is written once, as a function
/// template over the three:
///
///     auto const isStop = [](auto bytes) { return bytes.Equal('<') | bytes.Below(' '); };
///
/// What holds for all of them: each answer is exact for each byte, also behind one that is marked; bounds are
/// ASCII; and a byte beyond ASCII is below nothing and between nothing, which only the ...OrNotAscii
/// questions and NotAscii say of it.
namespace Zantrel::Xml {

/// One byte, where a class is asked about a single character or made into a table.
class Byte {
public:
    static constexpr std::size_t Size = 1;

    /// What a question answers: for each byte whether it is marked. Marks are joined by |, taken away by
    /// Without and turned round by Others.
    class Marks {
    public:
        constexpr explicit Marks(bool isMarked) noexcept : m_isMarked(isMarked) {}
        friend constexpr Marks operator|(Marks a, Marks b) noexcept {
            return Marks(a.m_isMarked || b.m_isMarked);
        }
        constexpr Marks Without(Marks others) const noexcept {
            return Marks(m_isMarked && !others.m_isMarked);
        }
        constexpr Marks Others() const noexcept { return Marks(!m_isMarked); }
        constexpr bool Any() const noexcept { return m_isMarked; }

    private:
        bool m_isMarked;
    };

    constexpr explicit Byte(unsigned char byte) noexcept : m_byte(byte) {}

    /// The questions, which mean the same for Word and Block.
    constexpr Marks Equal(char byte) const noexcept {
        return Marks(m_byte == static_cast<unsigned char>(byte));
    }
    constexpr Marks Below(char bound) const noexcept {
        return Marks(m_byte < static_cast<unsigned char>(bound));
    }
    constexpr Marks NotAscii() const noexcept { return Marks(m_byte >= 0x80); }
    constexpr Marks BelowOrNotAscii(char bound) const noexcept { return Below(bound) | NotAscii(); }
    constexpr Marks Between(char first, char last) const noexcept {
        return Below(static_cast<char>(last + 1)).Without(Below(first));
    }

private:
    unsigned char m_byte;
};

/// Eight bytes in a number, the first one lowest. Additions that can't carry from one byte into the next keep
/// every answer exact; a mark is the top bit of its byte.
class Word {
public:
    static constexpr std::size_t Size = 8;

    class Marks {
    public:
        explicit Marks(std::uint64_t bits) noexcept : m_bits(bits & 0x8080808080808080u) {}
        /// As for Byte.
        friend Marks operator|(Marks a, Marks b) noexcept { return Marks(a.m_bits | b.m_bits); }
        Marks Without(Marks others) const noexcept { return Marks(m_bits & ~others.m_bits); }
        Marks Others() const noexcept { return Marks(~m_bits); }
        bool Any() const noexcept { return m_bits != 0; }
        /// The place of the first mark; Size or more where there is none.
        std::size_t First() const noexcept { return static_cast<std::size_t>(std::countr_zero(m_bits)) / 8; }
        /// The same for these and the marks of the Size bytes that follow; twice Size or more where there is
        /// none.
        std::size_t FirstOfBoth(Marks next) const noexcept { return Any() ? First() : Size + next.First(); }

    private:
        std::uint64_t m_bits;
    };

    /// Size bytes from `at` on must be readable; `at` needs no alignment.
    explicit Word(char const* at) noexcept {
        std::memcpy(&m_bytes, at, Size);
        if constexpr (std::endian::native == std::endian::big)
            for (std::size_t index = Size; index-- != 0;)
                m_bytes = m_bytes << 8 | static_cast<unsigned char>(at[index]);
    }

    /// The questions, as for Byte.
    Marks Equal(char byte) const noexcept { return Zeros(m_bytes ^ Each(byte)); }
    /// Byte by byte.
    Marks Equal(Word other) const noexcept { return Zeros(m_bytes ^ other.m_bytes); }
    Marks Below(char bound) const noexcept { return Marks(~(LowBits(bound) | m_bytes)); }
    Marks NotAscii() const noexcept { return Marks(m_bytes); }
    Marks BelowOrNotAscii(char bound) const noexcept { return Marks(~LowBits(bound) | m_bytes); }
    Marks Between(char first, char last) const noexcept {
        return Below(static_cast<char>(last + 1)).Without(Below(first));
    }

private:
    /// A number with `byte` in all its places.
    static std::uint64_t Each(char byte) noexcept {
        return 0x0101010101010101u * static_cast<unsigned char>(byte);
    }
    /// A byte's lower seven bits plus 7F have the top bit unless they are zero, and reach no other byte.
    static Marks Zeros(std::uint64_t bytes) noexcept {
        return Marks(~(((bytes & Each(0x7F)) + Each(0x7F)) | bytes));
    }
    /// The top bit of each byte whose lower seven bits are `bound` or more.
    std::uint64_t LowBits(char bound) const noexcept {
        return (m_bytes & Each(0x7F)) + Each(static_cast<char>(0x80 - bound));
    }

    std::uint64_t m_bytes = 0;
};

#if defined(ZANTREL_BLOCKS_SSE2)

/// Sixteen bytes in a register. A mark is all the bits of its byte.
class Block {
public:
    static constexpr std::size_t Size = 16;

    class Marks {
    public:
        explicit Marks(__m128i bytes) noexcept : m_bytes(bytes) {}
        friend Marks operator|(Marks a, Marks b) noexcept {
            return Marks(_mm_or_si128(a.m_bytes, b.m_bytes));
        }
        Marks Without(Marks others) const noexcept {
            return Marks(_mm_andnot_si128(others.m_bytes, m_bytes));
        }
        Marks Others() const noexcept { return Marks(_mm_xor_si128(m_bytes, _mm_set1_epi8(-1))); }
        bool Any() const noexcept { return Bits() != 0; }
        /// The place of the first mark; Size or more where there is none.
        std::size_t First() const noexcept { return static_cast<std::size_t>(std::countr_zero(Bits())); }
        std::size_t FirstOfBoth(Marks next) const noexcept {
            return static_cast<std::size_t>(std::countr_zero(Bits() | next.Bits() << Size));
        }

    private:
        unsigned Bits() const noexcept { return static_cast<unsigned>(_mm_movemask_epi8(m_bytes)); }

        __m128i m_bytes;
    };

    /// Size bytes from `at` on must be readable; `at` needs no alignment.
    explicit Block(char const* at) noexcept { std::memcpy(&m_bytes, at, Size); }

    Marks Equal(char byte) const noexcept { return Marks(_mm_cmpeq_epi8(m_bytes, _mm_set1_epi8(byte))); }
    /// Byte by byte.
    Marks Equal(Block other) const noexcept { return Marks(_mm_cmpeq_epi8(m_bytes, other.m_bytes)); }
    /// Signed comparison puts bytes beyond ASCII below; they are taken away again.
    Marks Below(char bound) const noexcept { return BelowOrNotAscii(bound).Without(NotAscii()); }
    Marks NotAscii() const noexcept { return Marks(_mm_cmplt_epi8(m_bytes, _mm_setzero_si128())); }
    /// The comparison is signed, which takes bytes beyond ASCII for the lowest.
    Marks BelowOrNotAscii(char bound) const noexcept {
        return Marks(_mm_cmplt_epi8(m_bytes, _mm_set1_epi8(bound)));
    }
    Marks Between(char first, char last) const noexcept {
        return Above(static_cast<char>(first - 1)).Without(Above(last));
    }

private:
    Marks Above(char bound) const noexcept { return Marks(_mm_cmpgt_epi8(m_bytes, _mm_set1_epi8(bound))); }

    __m128i m_bytes;
};

#else
/// Where there are no such registers a block is a word, and what is said of Block::Size holds with 8.
using Block = Word;
#endif

/// A class of bytes as a table, for where bytes come one at a time.
template <class Property> constexpr std::array<bool, 256> MakeTable(Property property) noexcept {
    std::array<bool, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte)
        table[byte] = property(Byte(static_cast<unsigned char>(byte))).Any();
    return table;
}
/// Made while compiling, once for each class of bytes.
template <class Property> inline constexpr std::array<bool, 256> TableOf = MakeTable(Property());

/// The first byte from `at` on that `property` marks. There is no end: one of the bytes must be marked, a NUL
/// mostly, and Block::Size bytes be readable behind it.
template <class Property> inline char const* Find(char const* at, Property property) noexcept {
    for (;; at += Block::Size) {
        auto const found = property(Block(at));
        if (found.Any())
            return at + found.First();
    }
}

/// The first byte of [at, end) that `property`, which must have no state, marks; `end` if there is none.
/// Nothing behind `end` is read.
template <class Property>
inline char const* Find(char const* at, char const* end, Property property) noexcept {
    for (; end - at >= static_cast<std::ptrdiff_t>(Block::Size); at += Block::Size)
        if (auto const found = property(Block(at)); found.Any())
            return at + found.First();
    for (; end - at >= static_cast<std::ptrdiff_t>(Word::Size); at += Word::Size)
        if (auto const found = property(Word(at)); found.Any())
            return at + found.First();
    while (at != end && !TableOf<Property>[static_cast<unsigned char>(*at)])
        ++at;
    return at;
}

} // namespace Zantrel::Xml
