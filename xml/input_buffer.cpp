// SPDX-License-Identifier: Apache-2.0
#include "xml/input_buffer.h"

#include "text/surrogates.h"
#include "text/utf8.h"
#include "xml/names.h"
#include "xml/scan.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace Zantrel::Xml {

namespace {

bool IsContinuation(char byte) noexcept { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

} // namespace

// Up to three bytes may be left over from the piece before, of a character that it has cut.
InputBuffer::InputBuffer(Io::ByteSource& source, std::size_t pieceSize)
    : m_source(source), m_pieceSize(std::max<std::size_t>(pieceSize, 1)),
      m_room(m_pieceSize + m_pieceSize / 2 + 8), m_capacity(2 * m_room),
      m_bytes(new char[m_capacity + BytesBehind]), m_end(m_bytes.get()), m_counted(m_end) {
    SetEnd(m_end);
}

bool InputBuffer::ReadMore(char const*& keep) {
    if (m_state != InputState::Open)
        return false;
    MakeRoom(keep);
    char const* const before = m_end;
    try {
        while (m_end == before && m_state == InputState::Open)
            ReadPiece();
    } catch (...) {
        Fail();
        throw;
    }
    return m_end != before;
}

void InputBuffer::ReadAsMuchAgain(char const*& keep) {
    auto const size = m_end - keep;
    while (m_end - keep < 2 * size && ReadMore(keep)) {
    }
}

// Moving no more than what is dropped, and doubling otherwise, keeps the copying linear for tokens of any
// size.
void InputBuffer::MakeRoom(char const*& keep) {
    auto const dropped = static_cast<std::size_t>(keep - m_bytes.get());
    auto const kept = static_cast<std::size_t>(m_end - keep);
    if (dropped < kept && m_capacity - (dropped + kept) >= m_room)
        return;

    // Counted now, for the bytes in front of it go.
    PositionOf(keep);
    if (dropped >= kept) {
        std::memcpy(m_bytes.get(), keep, kept);
    } else {
        std::unique_ptr<char[]> larger(new char[2 * m_capacity + BytesBehind]);
        std::memcpy(larger.get(), keep, kept);
        m_bytes = std::move(larger);
        m_capacity *= 2;
    }
    keep = m_counted = m_bytes.get();
    SetEnd(m_bytes.get() + kept);
}

void InputBuffer::ReadPiece() {
    if (!m_detected)
        DetectEncoding();
    else if (m_encoding == Encoding::Utf8)
        ReadUtf8();
    else
        ReadUtf16();
}

/// One piece of the source; 0 at the end and after a failure. A source that says it gave more than it was
/// asked for has failed, too.
std::size_t InputBuffer::ReadBytes(char* into) {
    auto const count = m_source.Read(into, m_pieceSize);
    if (count >= 0 && static_cast<std::size_t>(count) <= m_pieceSize)
        return static_cast<std::size_t>(count);
    Fail();
    return 0;
}

/// Whatever was written behind the end is not taken.
void InputBuffer::Fail() noexcept {
    SetEnd(m_end);
    m_state = InputState::ReadFailed;
}

// Three bytes tell: a mark of UTF-8, which is dropped, or one of UTF-16. A NUL among the first two is UTF-16
// without a mark, or UTF-32. Everything else is UTF-8 until it turns out not to be. A document of fewer bytes
// must be told alike, and may come byte by byte.
void InputBuffer::DetectEncoding() {
    std::size_t size = 0;
    while (size < 3) {
        std::size_t const count = ReadBytes(m_end + size);
        if (count == 0)
            break;
        size += count;
    }
    if (m_state != InputState::Open)
        return;

    m_detected = true;
    std::string_view const bytes(m_end, size);
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        m_encoding = bytes[0] == '\xFF' ? Encoding::Utf16LittleEndian : Encoding::Utf16BigEndian;
        m_raw.assign(m_end + 2, m_end + size);
        Transcode();
    } else if (bytes.substr(0, 2).find('\0') != std::string_view::npos) {
        SetEnd(m_end);
        m_state = InputState::NoEncoding;
    } else if (size == 0) {
        m_state = InputState::Complete;
    } else {
        Accept(m_end + (bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0), m_end + size);
    }
}

// The piece goes straight behind the end, with room in front of it for what is left of the piece before.
// Nothing is taken from m_raw before the source has answered, since it may throw.
void InputBuffer::ReadUtf8() {
    char* const to = m_end + m_raw.size();
    std::size_t const size = ReadBytes(to);
    if (size != 0) {
        std::copy(m_raw.begin(), m_raw.end(), m_end);
        m_raw.clear();
        Accept(m_end, to + size);
    } else if (m_state == InputState::Open) {
        SetEnd(m_end);
        m_state = m_raw.empty() ? InputState::Complete : InputState::Truncated;
    }
}

void InputBuffer::ReadUtf16() {
    std::size_t const left = m_raw.size();
    m_raw.resize(left + m_pieceSize);
    std::size_t const size = ReadBytes(m_raw.data() + left);
    m_raw.resize(left + size);
    if (size != 0)
        Transcode();
    else if (m_state == InputState::Open)
        m_state = left == 0 ? InputState::Complete : left == 1 ? InputState::Truncated : InputState::Unpaired;
}

// Takes all whole characters off m_raw. A low surrogate alone, or a high one that something else follows,
// ends the input behind the characters before it, so it may only be told once those have been accepted.
void InputBuffer::Transcode() {
    std::size_t const low = m_encoding == Encoding::Utf16LittleEndian ? 0 : 1;
    auto const unit = [this, low](std::size_t at) -> char32_t {
        return static_cast<unsigned char>(m_raw[at + low]) |
               static_cast<char32_t>(static_cast<unsigned char>(m_raw[at + 1 - low])) << 8;
    };

    char* out = m_end;
    bool unpaired = false;
    std::size_t at = 0;
    while (at + 2 <= m_raw.size()) {
        char32_t code = unit(at);
        if (Text::IsHighSurrogate(code)) {
            if (at + 4 > m_raw.size())
                break;
            char32_t const second = unit(at + 2);
            unpaired = !Text::IsLowSurrogate(second);
            code = Text::JoinSurrogates(code, second);
            at += 2;
        } else {
            unpaired = Text::IsLowSurrogate(code);
        }
        if (unpaired)
            break;
        out = Text::EncodeUtf8(code, out);
        at += 2;
    }
    m_raw.erase(m_raw.begin(), m_raw.begin() + static_cast<std::ptrdiff_t>(at));
    Accept(m_end, out);
    if (unpaired && m_state == InputState::Open)
        m_state = InputState::Unpaired;
}

/// Checks [at, end), which stands at m_end or behind it, and makes it part of the buffer. Bytes are taken to
/// `out`, which never gets ahead of `at`: a CR and LF become one, and all else keeps its size. Plain
/// characters go in blocks; where nothing was dropped yet they stay in place.
void InputBuffer::Accept(char* at, char* end) {
    // The searches below go by blocks, and look for a LF behind a CR that comes last.
    std::memset(end, 0, BytesBehind);
    char* out = m_end;
    auto const take = [&at, &out](std::size_t size) {
        if (out != at)
            std::memmove(out, at, size);
        at += size;
        out += size;
    };

    if (m_afterCarriageReturn && at != end) {
        m_afterCarriageReturn = false;
        at += *at == '\n';
    }
    while (at != end) {
        take(static_cast<std::size_t>(SkipPlain(at, end) - at));
        if (*at == '\r') {
            *at = '\n';
            take(1);
            m_afterCarriageReturn = at == end;
            at += *at == '\n';
        } else if (at != end) {
            std::size_t const size = CheckCharacter(at, end);
            if (size == 0)
                break;
            take(size);
        }
    }
    SetEnd(out);
}

/// The size of the character at `at`; 0 where it isn't complete yet, or is a fault.
std::size_t InputBuffer::CheckCharacter(char const* at, char const* end) {
    auto const character = Text::DecodeUtf8(at, end);
    if (character.incomplete) {
        m_raw.assign(at, end);
    } else if (character.size == 0) {
        m_state = InputState::IllFormed;
    } else if (!IsXmlCharacter(character.code)) {
        m_state = InputState::NotAllowed;
        m_offender = character.code;
        return 0;
    }
    return character.size;
}

void InputBuffer::SetEnd(char* end) noexcept {
    m_end = end;
    std::memset(m_end, 0, BytesBehind);
}

Position InputBuffer::PositionOf(char const* at) const noexcept {
    if (auto const lines = CountByte(m_counted, at, '\n'); lines != 0) {
        m_position.line += lines;
        m_position.column = 1;
        m_counted = at;
        while (m_counted[-1] != '\n')
            --m_counted;
    }
    m_position.column += static_cast<std::uint64_t>(
        std::count_if(m_counted, at, [](char byte) { return !IsContinuation(byte); }));
    m_counted = at;
    return m_position;
}

} // namespace Zantrel::Xml
