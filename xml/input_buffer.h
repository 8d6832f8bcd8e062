// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_source.h"
#include "xml/position.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace Zantrel::Xml {

enum class Encoding { Utf8, Utf16LittleEndian, Utf16BigEndian };

/// Whether there is more to read, and if not, why.
enum class InputState { Open, Complete, ReadFailed, NoEncoding, IllFormed, Unpaired, Truncated, NotAllowed };

/// The part of a document that is being looked at, as UTF-8 that needs no further check: well-formed, allowed
/// characters only, each line end one LF. What is wrong with the input ends it, so that whoever reads on
/// finds the characters before the fault first.
class InputBuffer {
public:
    InputBuffer(Io::ByteSource& source, std::size_t pieceSize);

    /// A NUL stands at End(), and only there, and at least Block::Size readable bytes follow.
    char const* Begin() const noexcept { return m_bytes.get(); }
    char const* End() const noexcept { return m_end; }

    /// Reads at least one more character; false where there is none, and State() says why. What stands before
    /// `keep` is dropped, and `keep` follows its character; every other pointer into the buffer is lost.
    bool ReadMore(char const*& keep);
    /// Reads until twice as much follows `keep`, or all there is. A token that is scanned anew after each
    /// such call is scanned in linear time, whatever the size of the pieces.
    void ReadAsMuchAgain(char const*& keep);

    InputState State() const noexcept { return m_state; }
    /// The character that is not allowed, in that state.
    char32_t Offender() const noexcept { return m_offender; }
    Encoding GetEncoding() const noexcept { return m_encoding; }

    /// The place of a byte of the buffer; bytes before the last one asked for can't be asked for any more.
    Position PositionOf(char const* at) const noexcept;

private:
    void MakeRoom(char const*& keep);
    void ReadPiece();
    std::size_t ReadBytes(char* into);
    void DetectEncoding();
    void ReadUtf8();
    void ReadUtf16();
    void Transcode();
    void Accept(char* at, char* end);
    std::size_t CheckCharacter(char const* at, char const* end);
    void SetEnd(char* end) noexcept;
    void Fail() noexcept;

    Io::ByteSource& m_source;
    std::size_t const m_pieceSize;
    std::size_t const m_room; ///< the most that one piece can become
    std::size_t m_capacity;
    std::unique_ptr<char[]> m_bytes;
    char* m_end;
    InputState m_state = InputState::Open;
    bool m_detected = false;
    bool m_afterCarriageReturn = false;
    Encoding m_encoding = Encoding::Utf8;
    char32_t m_offender = 0;
    std::vector<char>
        m_raw; ///< bytes not taken yet: the beginning of a character, or what UTF-16 is transcoded from

    mutable char const* m_counted; ///< m_position is its place
    mutable Position m_position;
};

} // namespace Zantrel::Xml
