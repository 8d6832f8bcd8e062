// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/io/path.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// A binary stream in memory: bytes, written at the end, and a position to read from. Belongs to one thread
/// at a time.
class ZANTREL_EXPORT MFile {
public:
    /// No bytes.
    MFile() = default;
    /// Takes the bytes over; the position stands at the first of them.
    explicit MFile(std::vector<std::byte> bytes) noexcept : m_bytes(std::move(bytes)) {}

    /// Appends `size` bytes, wherever the position stands. `data` may be null when there are none, and must
    /// not point into this stream.
    void Write(void const* data, std::size_t size);
    /// Takes the next `size` bytes. Throws std::runtime_error when there are fewer; the position then stays.
    void Read(void* into, std::size_t size);

    /// Numbers, little-endian on every platform, as Write and Read take and throw.
    void WriteUnsigned8(std::uint8_t value);
    void WriteUnsigned32(std::uint32_t value);
    void WriteUnsigned64(std::uint64_t value);
    std::uint8_t ReadUnsigned8();
    std::uint32_t ReadUnsigned32();
    std::uint64_t ReadUnsigned64();

    /// All bytes, good until the stream changes.
    std::vector<std::byte> const& GetBytes() const noexcept { return m_bytes; }
    /// Where the next Read takes from, in bytes from the beginning.
    std::size_t GetPosition() const noexcept { return m_position; }
    /// How many bytes are left to read.
    std::size_t GetRemaining() const noexcept { return m_bytes.size() - m_position; }
    /// Throws std::out_of_range beyond the end.
    void SetPosition(std::size_t position);
    /// Back to the first byte. The bytes stay as they are.
    void Rewind() noexcept { m_position = 0; }

    /// Replaces the bytes by those of a file and rewinds. False, and nothing changes, when it can't be read.
    bool ReadFromFile(std::wstring const& path);
    /// The same for a path of the standard library, as Zantrel::WidePath has it.
    template <class Path, Zantrel::IfPath<Path> = 0> bool ReadFromFile(Path const& path) {
        return ReadFromFile(Zantrel::WidePath(path));
    }
    /// Replaces the file as a whole, as docs/saving.md has it, and never writes it in place. False, and the
    /// file stays as it was, when it can't be written.
    bool WriteToFile(std::wstring const& path) const;
    /// The same for a path of the standard library.
    template <class Path, Zantrel::IfPath<Path> = 0> bool WriteToFile(Path const& path) const {
        return WriteToFile(Zantrel::WidePath(path));
    }

private:
    std::vector<std::byte> m_bytes;
    std::size_t m_position = 0;
};
