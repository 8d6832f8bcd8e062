// SPDX-License-Identifier: Apache-2.0
#include <zantrel/io/mfile.h>

#include "io/input_file.h"
#include "io/output_file.h"

#include <cstring>
#include <stdexcept>

namespace {

// Byte by byte, so that neither the order nor the alignment of numbers in memory matters.
template <class Unsigned> void WriteLittleEndian(MFile& file, Unsigned value) {
    std::byte bytes[sizeof(Unsigned)];
    for (std::size_t place = 0; place < sizeof(Unsigned); ++place) {
        bytes[place] = static_cast<std::byte>(value >> (8 * place) & 0xFF);
    }
    file.Write(bytes, sizeof bytes);
}

template <class Unsigned> Unsigned ReadLittleEndian(MFile& file) {
    std::byte bytes[sizeof(Unsigned)];
    file.Read(bytes, sizeof bytes);
    Unsigned value = 0;
    for (std::size_t place = 0; place < sizeof(Unsigned); ++place) {
        value |= std::to_integer<Unsigned>(bytes[place]) << (8 * place);
    }
    return value;
}

} // namespace

void MFile::Write(void const* data, std::size_t size) {
    if (size != 0) {
        auto const* const first = static_cast<std::byte const*>(data);
        m_bytes.insert(m_bytes.end(), first, first + size);
    }
}

void MFile::Read(void* into, std::size_t size) {
    if (size > GetRemaining()) {
        throw std::runtime_error("The binary data ends too early.");
    }
    if (size != 0) {
        std::memcpy(into, m_bytes.data() + m_position, size);
        m_position += size;
    }
}

void MFile::WriteUnsigned8(std::uint8_t value) { Write(&value, 1); }

void MFile::WriteUnsigned32(std::uint32_t value) { WriteLittleEndian(*this, value); }

void MFile::WriteUnsigned64(std::uint64_t value) { WriteLittleEndian(*this, value); }

std::uint8_t MFile::ReadUnsigned8() {
    std::uint8_t value = 0;
    Read(&value, 1);
    return value;
}

std::uint32_t MFile::ReadUnsigned32() { return ReadLittleEndian<std::uint32_t>(*this); }

std::uint64_t MFile::ReadUnsigned64() { return ReadLittleEndian<std::uint64_t>(*this); }

void MFile::SetPosition(std::size_t position) {
    if (position > m_bytes.size()) {
        throw std::out_of_range("The position lies behind the end of the binary data.");
    }
    m_position = position;
}

bool MFile::ReadFromFile(std::wstring const& path) {
    if (!Zantrel::Io::ReadWholeFile(path, m_bytes)) {
        return false;
    }
    Rewind();
    return true;
}

bool MFile::WriteToFile(std::wstring const& path) const {
    return Zantrel::Io::WriteWholeFile(path, {reinterpret_cast<char const*>(m_bytes.data()), m_bytes.size()});
}
