// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <string>
#include <system_error>
#include <vector>

namespace Zantrel {

/// What a write tells its caller beyond true and false, and what it may do for it. A writing function empties
/// it at its start, but for the host's leave. Belongs to one thread at a time.
class ZANTREL_EXPORT WriteReport {
public:
    std::wstring m_sentence; ///< what made it fail, for a person; empty after a write that succeeded
    std::wstring m_path;     ///< the elements that were open, as ReadReport::Entry has it; may be empty
    /// The system's error where it was the file that couldn't be written, or std::errc::invalid_argument of a
    /// path that no file can have; none where the document was to blame, and of streams. Compare it with
    /// std::errc::no_space_on_device and the others, which mean the same on every system.
    std::error_code m_error;

    /// After a write that succeeded, a sentence for each thing that isn't as it should be, or may not be what
    /// was meant: profiles of a parameter file that share their name with an earlier one; owner, access
    /// control list, extended attributes or hard links of the old file that the new one couldn't take over,
    /// a folder that couldn't be flushed, so that a power loss may bring the old file back, and a file that
    /// was written in place. Mostly empty.
    std::vector<std::wstring> m_notes;

    /// Set by the host, off by default: whether a file that may be written but can't be replaced may be
    /// written over where it stands. That is so where its folder takes no new file (read-only, or without the
    /// right), and of a file that is mounted by itself, as into a container. The document is held in memory
    /// until it is complete, so that one which can't be written still leaves the file as it was; but a full
    /// disk, a kill or a power loss while it is written over leaves a part of it, and a reader may see one.
    bool m_mayWriteInPlace = false;

    /// "sentence (path)", without the path when there is none; after a write that succeeded the notes, each
    /// on a line.
    std::wstring Format() const;
};

} // namespace Zantrel
