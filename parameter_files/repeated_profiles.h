// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/write_report.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel {

/// The profiles of a file that were written with the content of an earlier one, whose name they have.
class RepeatedProfiles {
public:
    void Count(std::wstring_view path) {
        if (m_count++ == 0) {
            m_first = path;
        }
    }
    /// The sentence about them, or nothing where there are none.
    std::vector<std::wstring> Notes() const;

private:
    std::uint64_t m_count = 0;
    std::wstring m_first;
};

/// Adds the notes to the report, where one is given, of a write that succeeded, and gives whether it did. It
/// can't fail any more, and so where memory runs out they are lost.
bool ConcludeWrite(bool succeeded, std::vector<std::wstring> const& notes, WriteReport* report) noexcept;

} // namespace Zantrel
