// SPDX-License-Identifier: Apache-2.0
#include "fuzz/target.h"
#include "text/base64.h"
#include "text/guid.h"
#include "text/numbers.h"

#include <zantrel/store/external_properties.h>
#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <span>

namespace Fuzz {

namespace {

using namespace Zantrel::Text;

std::string FaultOfBase64(std::string const& text) {
    auto const bytes = std::as_bytes(std::span(text));
    auto const back = DecodeBase64(EncodeBase64(bytes));
    if (!back || !std::equal(back->begin(), back->end(), bytes.begin(), bytes.end())) {
        return "base64 of any bytes";
    }
    Base64Decoder inPieces;
    for (std::size_t at = 0, size = 1; at < text.size(); at += size++) {
        inPieces.Add(std::string_view(text).substr(at, size));
    }
    auto const decoded = DecodeBase64(text);
    if (inPieces.Finish() != decoded) {
        return "base64 in pieces";
    }
    std::string dense = text;
    std::erase_if(dense, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
    return decoded && EncodeBase64(*decoded) != dense ? "base64 of what was decoded" : "";
}

/// The number as the C library has it, of a text that both take.
bool IsAsElsewhere(std::string const& text, double value) {
    bool const isPlain = text.find_first_not_of("+-.0123456789eE") == text.npos;
    return !isPlain || std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr)) ==
                           std::bit_cast<std::uint64_t>(value);
}

std::string FaultOfNumbers(std::string const& text) {
    char room[NumberRoom];
    if (auto const value = ParseDouble(text)) {
        auto const again = ParseDouble({room, PrintDouble(room, *value, 17)});
        bool const isSame = again && (std::isnan(*value) ? std::isnan(*again)
                                                         : std::bit_cast<std::uint64_t>(*again) ==
                                                               std::bit_cast<std::uint64_t>(*value));
        if (!isSame || !IsAsElsewhere(std::string(Trim(text)), *value)) {
            return "a double";
        }
    }
    if (auto const value = ParseInteger(text)) {
        if (ParseInteger({room, PrintInteger(room, *value)}) != value || ParseDouble(text) != *value) {
            return "an integer";
        }
    }
    return ParseBool(text) == ParseBool(' ' + text + '\n') ? "" : "a flag";
}

std::string FaultOfIdentifiers(std::wstring const& text) {
    KelAM::ExternalPropertyID const id(text), again(id.FormatGuid(true, true));
    bool const isGuid = !FindGuid(text).empty();
    return id == again && (isGuid || id.FormatGuid(true, false) == text) ? "" : "an identifier";
}

} // namespace

std::string FaultOfTexts(std::string const& bytes, unsigned) {
    std::wstring const wide = StringConversion::Utf8ToNative(bytes);
    if (StringConversion::Utf8ToNative(StringConversion::NativeToUtf8(wide)) != wide) {
        return "a wide text";
    }
    for (auto const& fault : {FaultOfBase64(bytes), FaultOfNumbers(bytes), FaultOfIdentifiers(wide)}) {
        if (!fault.empty()) {
            return fault;
        }
    }
    return "";
}

} // namespace Fuzz
