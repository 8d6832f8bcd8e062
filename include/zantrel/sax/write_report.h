// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <string>

namespace Zantrel {

/// Why a write gave false. A writing function empties it at its start and fills it when it fails. Belongs to
/// one thread at a time.
class ZANTREL_EXPORT WriteReport {
public:
    std::wstring m_sentence; ///< the first cause, for a person; empty after a write that succeeded
    std::wstring m_path;     ///< the elements that were open, as ReadReport::Entry has it; may be empty

    /// "sentence (path)", without the path when there is none.
    std::wstring Format() const;
};

} // namespace Zantrel
