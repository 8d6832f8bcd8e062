// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_source.h"
#include "xml/position.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace Zantrel::Xml {

/// What the bytes are in, whatever the document says of it.
enum class Encoding { Utf8, Utf16LittleEndian, Utf16BigEndian };

/// Whether there is more to read, and if not, why.
enum class InputState { Open, Complete, ReadFailed, NoEncoding, IllFormed, Unpaired, Truncated, NotAllowed };

/// The part of a document that is being looked at, as UTF-8 that needs no further check: well-formed, allowed
/// characters only, each line end one LF. What is wrong with the input ends it, so that whoever reads on
/// finds the characters before the fault first.
///
/// What holds between all calls:
/// - [Begin(), End()) is whole characters. What is known of a character that the last piece has cut waits in
///   m_raw and is put in front of the next piece.
/// - A NUL stands at End() and nowhere before it, as XML has no such character; BytesBehind bytes from End()
///   on are readable and zero. Every search relies on the one and every block on the other.
/// - A CR at the end of a piece has become an LF already, and m_afterCarriageReturn has an LF at the
///   beginning of the next piece dropped.
/// - m_capacity has room for one more piece behind End() whenever one is read, however much it grows by being
///   transcoded: a byte of UTF-16 becomes at most one and a half of UTF-8.
/// - State() other than Open is final, and what had been read before can still be looked at.
/// Time is linear in the document: each byte is checked once, and moved a bounded number of times on average,
/// since a move is paid for either by what is dropped or by the doubling of the room.
class InputBuffer {
public:
    /// Reads nothing yet. The source must outlive the buffer.
    InputBuffer(Io::ByteSource& source, std::size_t pieceSize);

    /// What may be looked at now; both change whenever more is read.
    char const* Begin() const noexcept { return m_bytes.get(); }
    char const* End() const noexcept { return m_end; }

    /// Reads at least one more character; false where there is none, and State() says why. What stands before
    /// `keep` is dropped, and `keep` follows its character; every other pointer into the buffer is lost. What
    /// the source throws goes through, and the input ends there, as it does where memory runs out for what it
    /// gave. Where it runs out before, nothing has changed.
    bool ReadMore(char const*& keep);
    /// Reads until twice as much follows `keep`, or all there is. A token that is scanned anew after each
    /// such call is scanned in linear time, whatever the size of the pieces.
    void ReadAsMuchAgain(char const*& keep);

    /// Open until the source has said that it ends, or something was wrong.
    InputState State() const noexcept { return m_state; }
    /// The character that is not allowed, in that state.
    char32_t Offender() const noexcept { return m_offender; }
    Encoding GetEncoding() const noexcept { return m_encoding; }

    /// The place of a byte of the buffer; bytes before the last one asked for can't be asked for any more.
    Position PositionOf(char const* at) const noexcept;

private:
    /// Room for one piece behind the end.
    void MakeRoom(char const*& keep);
    /// Reads and accepts one piece, of which nothing may be left.
    void ReadPiece();
    /// One piece of the source; 0 at its end and when it failed.
    std::size_t ReadBytes(char* into);
    /// Reads the first bytes and takes what they are, a byte order mark aside.
    void DetectEncoding();
    /// Each reads one piece in its encoding, and sets the state where there is none.
    void ReadUtf8();
    void ReadUtf16();
    /// All whole characters of m_raw become UTF-8.
    void Transcode();
    /// Checks what stands behind the end and makes it part of the buffer, as far as it is right.
    void Accept(char* at, char* end);
    /// The size of a character; 0 where it is cut or is a fault, which the state then says.
    std::size_t CheckCharacter(char const* at, char const* end);
    /// Puts the NULs there.
    void SetEnd(char* end) noexcept;
    /// The source has failed: what it wrote behind the end isn't taken.
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

    /// Positions are counted from the last one asked for, so that counting is linear, too.
    mutable char const* m_counted; ///< m_position is its place
    mutable Position m_position;
};

} // namespace Zantrel::Xml
