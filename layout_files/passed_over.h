// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/read_report.h>

#include <cstdint>
#include <map>
#include <string_view>

namespace Zantrel {

/// What a reader of layouts leaves to another one, counted by what it is: there is too much of it in any file
/// to name each place.
class PassedOver {
public:
    /// Counts for that report, which may be null.
    explicit PassedOver(ReadReport* report) : m_report(report) {}

    /// One more of `what`, a text that stays. Nothing without a report.
    void Count(std::wstring_view what) {
        if (m_report != nullptr) {
            ++m_counts[what];
        }
    }
    /// Adds the one entry of the file, where there was anything. `taker` is the function that takes it.
    void Report(std::wstring_view taker) const;

private:
    ReadReport* m_report;
    std::map<std::wstring_view, std::uint64_t> m_counts;
};

} // namespace Zantrel
