// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_source.h"
#include "io/system.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Zantrel::Io {

/// A file to read from its start to its end, as a source of bytes.
class InputFile : public ByteSource {
public:
    /// False when the path can't be opened or is a folder.
    bool Open(std::wstring const& path);
    std::ptrdiff_t Read(char* into, std::size_t size) override;

    /// Why Open or Read failed, one sentence; empty before.
    std::wstring const& FailureText() const noexcept { return m_failure; }

private:
    std::wstring m_path;
    std::wstring m_failure;
    File m_file;
};

/// Puts the bytes of the file at `path` into `bytes`. False, and `bytes` stays as it was, when it can't be
/// read.
bool ReadWholeFile(std::wstring const& path, std::vector<std::byte>& bytes);

} // namespace Zantrel::Io
