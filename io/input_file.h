// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_source.h"
#include "io/describe_failure.h"
#include "io/system.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Zantrel::Io {

/// A file to read from its start to its end, as a source of bytes. What another writes into it meanwhile may
/// be seen or not; one that is replaced as a whole (OutputFile) is read on as it was.
class InputFile : public ByteSource {
public:
    /// Once in an object's life. False when no file can have the path, or it can't be opened or is a folder.
    bool Open(std::wstring const& path);
    std::ptrdiff_t Read(char* into, std::size_t size) override;

    /// Why Open or Read failed; empty before.
    Failure const& WhyItFailed() const noexcept { return m_failure; }

private:
    std::wstring m_path;
    Failure m_failure;
    File m_file;
};

/// Puts the bytes of the file at `path` into `bytes`. False, and `bytes` stays as it was, when it can't be
/// read to its end. The size isn't asked for: what has none beforehand, such as a pipe, is read alike.
bool ReadWholeFile(std::wstring const& path, std::vector<std::byte>& bytes);

} // namespace Zantrel::Io
