// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace Zantrel {

/// Numbers from texts, each as a wide stream with the global locale extracts it into a variable that is 0.
/// Looks at the global locale once, when constructed, for which all threads share a counter: whoever reads
/// many texts keeps one reader.
class ValueReader {
public:
    ValueReader();

    /// Digits up to the first character that isn't one; out of range the nearest limit. Never throws but
    /// std::bad_alloc.
    std::int32_t ReadInteger(std::wstring const& text) const;
    double ReadDouble(std::wstring const& text) const;

private:
    bool m_isClassic; ///< the global locale was the classic one: plain numbers need no stream
};

} // namespace Zantrel
