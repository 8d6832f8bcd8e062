// SPDX-License-Identifier: Apache-2.0
#include "io/input_file.h"

#include "io/describe_failure.h"

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
    constexpr std::size_t Piece = 64 * 1024;
    std::vector<std::byte> content;
    for (;;) {
        std::size_t const size = content.size();
        content.resize(size + Piece);
        std::ptrdiff_t const got = file.Read(reinterpret_cast<char*>(content.data() + size), Piece);
        if (got < 0) {
            return false;
        }
        content.resize(size + static_cast<std::size_t>(got));
        if (got == 0) {
            bytes = std::move(content);
            return true;
        }
    }
}

} // namespace Zantrel::Io
