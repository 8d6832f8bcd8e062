// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_sink.h"
#include "io/describe_failure.h"
#include "io/system.h"

#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Io {

/// Replaces a file as a whole or not at all.
///
/// The bytes go to a new file beside the target, which Commit moves over the target once they are safe on the
/// disk. Until then, and after any failure, the target is byte for byte as it was; without a Commit that gave
/// true the new file is gone when this object is. The target's permissions stay or become narrower, and so do
/// its access control list and attributes where the system lets them; a symbolic link is followed and stays a
/// link. (On Windows, which moves the target aside first, there is no file of its name for the moment between
/// the two moves.) A target that is no regular file (a pipe, a device) can't be replaced and is written to
/// directly.
class OutputFile : public ByteSink {
public:
    /// With `mayWriteInPlace` a file that may be written and not replaced is written over by Commit: the
    /// bytes are kept in memory until then, and only a failure while they are written over leaves a part.
    explicit OutputFile(bool mayWriteInPlace = false) noexcept : m_mayWriteInPlace(mayWriteInPlace) {}

    /// Once in an object's life. False when no file can have the path, when the target may not be written, or
    /// when no file can be made beside it.
    bool Open(std::wstring const& path);
    /// After a failure nothing is written any more, and everything gives false.
    bool Write(std::string_view bytes) noexcept override;
    /// Puts what was written in the target's place. True when it stands there and is safe on the disk, but
    /// for what Notes tells. Once, as the last call.
    bool Commit();

    /// Why one of them gave false; empty before.
    Failure WhyItFailed() const;
    /// What isn't as it should be after a Commit that gave true, a sentence each; none where memory runs out,
    /// since then nothing fails any more.
    std::vector<std::wstring> Notes() const noexcept;

private:
    Error OpenBeside();
    Error Replace();
    Error WriteInPlace();
    /// Keeps the first error. Whether there is none.
    bool Check(Error error) noexcept;

    std::wstring m_path;
    bool m_badPath = false;
    bool m_mayWriteInPlace;
    bool m_isOpen = false;
    bool m_isInPlace = false;
    bool m_hasBegunInPlace = false; ///< the target holds a part until all is written
    Error m_error = 0;
    std::string m_bytes; ///< kept for writing in place
    Target m_target;
    File m_file; ///< behind m_target, since what it has open must be closed before it can be removed
};

/// Replaces the file at `path` by these bytes, whole or not at all. False when that fails.
bool WriteWholeFile(std::wstring const& path, std::string_view bytes);

} // namespace Zantrel::Io
