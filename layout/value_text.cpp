// SPDX-License-Identifier: Apache-2.0
#include "layout/value_text.h"

#include "standard/decimal.h"
#include "standard/number_extraction.h"

#include <charconv>
#include <iterator>
#include <locale>
#include <optional>
#include <system_error>
#include <type_traits>

// What a wide stream with the global locale extracts is the rule, odd as it is: white space before the number
// is passed over, what follows it is ignored, a text that begins with no number gives 0, and one out of range
// the nearest limit. Making a stream costs several times what reading a number does, so a text that needs no
// judgement is read without one. That is right only where both give the same value: in the classic locale,
// where no digit is grouped, and for a text of which every character belongs to the number. Every other text
// takes the slow way, which stays the one definition.

namespace Zantrel {

namespace {

/// The value of a short text of digits, "-" and "." that is a number as a whole: these conversions and the
/// stream give the same one. The rest is left to the stream.
template <class T> std::optional<T> ReadPlain(std::wstring const& text) noexcept {
    char narrow[20];
    char* end = narrow;
    for (wchar_t const character : text) {
        bool const isPlain =
            (character >= L'0' && character <= L'9') || character == L'-' || character == L'.';
        if (!isPlain || end == std::end(narrow)) {
            return std::nullopt;
        }
        *end++ = static_cast<char>(character);
    }
    if constexpr (std::is_same_v<T, double>) {
        return Standard::ParseDecimal({narrow, end});
    } else {
        T value{};
        auto const [stop, error] = std::from_chars(narrow, end, value);
        return stop == end && error == std::errc() ? std::optional<T>(value) : std::nullopt;
    }
}

template <class T> T Read(std::wstring const& text, bool isClassic) {
    std::optional<T> const value = isClassic ? ReadPlain<T>(text) : std::nullopt;
    return value ? *value : Standard::ExtractNumber<T>(text);
}

} // namespace

ValueReader::ValueReader() : m_isClassic(std::locale() == std::locale::classic()) {}

std::int32_t ValueReader::ReadInteger(std::wstring const& text) const {
    return Read<std::int32_t>(text, m_isClassic);
}

double ValueReader::ReadDouble(std::wstring const& text) const { return Read<double>(text, m_isClassic); }

} // namespace Zantrel
