// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_sink.h"
#include "io/system.h"

#include <string>
#include <string_view>

namespace Zantrel::Io {

/// Replaces a file as a whole or not at all.
///
/// The bytes go to a new file beside the target, which Commit moves over the target once they are safe on the
/// disk. Until then, and after any failure, the target is byte for byte as it was; without a Commit that gave
/// true the new file is gone when this object is. The target's permissions stay, a symbolic link is followed
/// and stays a link. (On Windows, which moves the target aside first, there is no file of its name for the
/// moment between the two moves.) A target that is no regular file (a pipe, a device) can't be replaced and
/// is written to directly.
class OutputFile : public ByteSink {
public:
    /// Once in an object's life. False when no file can have the path, when the target may not be written, or
    /// when no file can be made beside it. Throws std::system_error where the system has no random bits.
    bool Open(std::wstring const& path);
    /// After a failure nothing is written any more, and everything gives false.
    bool Write(std::string_view bytes) noexcept override;
    /// Puts what was written in the target's place. True when it stands there and is safe on the disk. Once,
    /// as the last call.
    bool Commit();

    /// Why one of them gave false, one sentence; empty before.
    std::wstring FailureText() const;

private:
    Error OpenBeside();
    /// Keeps the first error. Whether there is none.
    bool Check(Error error) noexcept;

    std::wstring m_path;
    bool m_badPath = false;
    Error m_error = 0;
    Target m_target;
    File m_file; ///< behind m_target, since what it has open must be closed before it can be removed
};

/// Replaces the file at `path` by these bytes, whole or not at all. False when that fails.
bool WriteWholeFile(std::wstring const& path, std::string_view bytes);

} // namespace Zantrel::Io
