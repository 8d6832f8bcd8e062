// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>

#include <zantrel/macros_away.h>

namespace Zantrel {

/// How much a read takes of a document that nobody vouches for. None is set at first. A read that comes to
/// more than a limit ends there, before what is beyond it is kept: it gives false, and its report has an
/// entry (ReadReport::Kind::RefusedDocument) that names the limit, the number and the place.
///
/// docs/limits.md says what each is for, and which values are generous.
struct ReadLimits {
    ReadLimits() = default;

    static constexpr std::uint64_t None = std::numeric_limits<std::uint64_t>::max();

    std::uint64_t m_bytes = None; ///< of the document, as they come from the file or stream
    /// Bytes of the text of one element, an attachment's base64 too, and of one start tag with its
    /// attributes.
    std::uint64_t m_textBytes = None;
    std::uint64_t m_elements = None;  ///< of the document
    std::uint64_t m_depth = None;     ///< the root has depth 1; 1,024 is never exceeded
    std::uint64_t m_listItems = None; ///< of one list of a parameter file
    std::uint64_t m_profiles = None;  ///< of one profile list of a parameter file, the default aside
    /// Of the texts that one read adds to its report. Of what a validity check misses, which it knows only
    /// when the read is over, the rest is counted instead.
    std::uint64_t m_reportBytes = None;
    /// Whether a second profile of one name in one list is beyond the limits, too. A file without such is
    /// written back in about its own size; with them it can be far larger.
    bool m_refusesSameProfiles = false;
};

} // namespace Zantrel

#include <zantrel/macros_back.h>
