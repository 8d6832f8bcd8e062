// SPDX-License-Identifier: Apache-2.0
#include "io/input_file.h"

#include "text/byte_pieces.h"

namespace Zantrel::Io {

// What went wrong is put into words at once: the path and the system's number are both at hand only here.
bool InputFile::Open(std::wstring const& path) {
    m_path = path;
    auto const native = ToNativePath(path);
    if (!native) {
        m_failure = DescribeBadPath(path);
        return false;
    }
    Error const error = m_file.OpenToRead(*native);
    if (error != 0) {
        m_failure = DescribeFailure(L"Can't open", path, error);
    }
    return error == 0;
}

std::ptrdiff_t InputFile::Read(char* into, std::size_t size) {
    std::size_t got = 0;
    if (Error const error = m_file.Read(into, size, got)) {
        m_failure = DescribeFailure(L"Can't read", m_path, error);
        return -1;
    }
    return static_cast<std::ptrdiff_t>(got);
}

// Into bytes of its own, so that a failure half way leaves the caller's as they were.
bool ReadWholeFile(std::wstring const& path, std::vector<std::byte>& bytes) {
    InputFile file;
    if (!file.Open(path)) {
        return false;
    }
    // No size is asked for beforehand, which pipes and devices don't tell and which may change meanwhile.
    std::vector<std::byte> piece(std::size_t(64) * 1024);
    Text::BytePieces content;
    for (;;) {
        std::ptrdiff_t const got = file.Read(reinterpret_cast<char*>(piece.data()), piece.size());
        if (got < 0) {
            return false;
        }
        content.Append(std::span(piece).first(static_cast<std::size_t>(got)));
        if (got == 0) {
            bytes = content.Join();
            return true;
        }
    }
}

} // namespace Zantrel::Io
