// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/files/native_path.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Zantrel::Files {

/// Where the bytes of a document go.
class ByteSink {
public:
    virtual ~ByteSink() = default;
    /// Takes all bytes or gives false. Never throws: elements are closed by destructors.
    virtual bool Write(std::string_view bytes) noexcept = 0;
};

/// Replaces a file as a whole or not at all.
///
/// The bytes go to a new file beside the target, which Commit moves over the target once they are safe on the
/// disk. Until then, and after any failure, the target is byte for byte as it was; without a Commit that gave
/// true the new file is gone when this object is. The target's permissions stay, a symbolic link is followed
/// and stays a link. A target that is no regular file (a pipe, a device) can't be replaced and is written to
/// directly.
class OutputFile : public ByteSink {
public:
    OutputFile() = default;
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    ~OutputFile() override;

    bool Open(std::wstring const& path);
    bool Write(std::string_view bytes) noexcept override;
    bool Commit();

    /// Why one of them gave false, one sentence; empty before.
    std::wstring FailureText() const;

private:
    bool Fail(int systemError) noexcept;
    void CloseAndForget() noexcept;

    std::wstring m_path;
    bool m_badPath = false;
    int m_error = 0;
#ifdef _WIN32
    bool OpenBeside();

    NativePath m_target;
    NativePath m_temporary; ///< empty when written to directly
    bool m_targetExists = false;
    void* m_handle = nullptr;
#else
    bool OpenDirectly(NativePath const& path);
    bool OpenFolder(NativePath const& target);
    bool OpenBeside();

    int m_folder = -1; ///< of the target, so that a folder renamed meanwhile does no harm
    int m_descriptor = -1;
    NativePath m_name;      ///< of the target in its folder
    NativePath m_temporary; ///< of the new file in it; empty when written to directly
#endif
};

/// Replaces the file at `path` by these bytes, whole or not at all.
bool WriteWholeFile(std::wstring const& path, std::string_view bytes);

} // namespace Zantrel::Files
