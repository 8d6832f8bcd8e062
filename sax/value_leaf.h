// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/sax_writer.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace Zantrel::Sax {

/// As many digits as it takes to read back the same bits.
inline constexpr int DoubleDigits = 17;

/// With a capital, as the documents have it; readers take both spellings.
constexpr std::string_view BoolWord(bool value) { return value ? "True" : "False"; }

/// Writes a plain value and the element around it in one go.
inline void WriteLeaf(KelSAX::PreparedTag const& tag, std::int32_t value, KelSAX::ISAXWriter& writer) {
    writer.WriteIntegerLeaf(tag, value);
}
inline void WriteLeaf(KelSAX::PreparedTag const& tag, double value, KelSAX::ISAXWriter& writer) {
    writer.WriteDoubleLeaf(tag, value, DoubleDigits);
}
inline void WriteLeaf(KelSAX::PreparedTag const& tag, bool value, KelSAX::ISAXWriter& writer) {
    writer.WriteLeaf(tag, BoolWord(value));
}
inline void WriteLeaf(KelSAX::PreparedTag const& tag, std::wstring const& value, KelSAX::ISAXWriter& writer) {
    writer.WriteWideLeaf(tag, value);
}

} // namespace Zantrel::Sax
