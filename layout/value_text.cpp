// SPDX-License-Identifier: Apache-2.0
#include "layout/value_text.h"

#include <charconv>
#include <cstddef>
#include <locale>
#include <optional>
#include <sstream>

namespace Zantrel {

namespace {

template <class T> T Extract(std::wstring const& text) {
    std::wistringstream stream(text);
    T value{};
    stream >> value; // out of range this stores the nearest limit, which stays
    return value;
}

// What these decimal digits say is the same for the stream and for from_chars: a double of so many is rounded
// once, an integer can't be out of range.
constexpr std::size_t IntegerDigits = 9;
constexpr std::size_t DoubleDigits = 17;

/// The value of a text that is nothing but an optional "-", one to `maxDigits` digits and, if `T` may have
/// one, a "." with digits on either side. Everything else is left to the stream.
template <class T>
std::optional<T> ReadPlain(std::wstring const& text, std::size_t maxDigits, bool mayHavePoint) noexcept {
    char narrow[DoubleDigits + 2];
    std::size_t size = 0;
    std::size_t digits = 0;
    for (wchar_t const character : text) {
        bool const isDigit = character >= L'0' && character <= L'9';
        bool const isSign = character == L'-' && size == 0;
        bool const isPoint = character == L'.' && mayHavePoint && digits != 0;
        if (!(isDigit || isSign || isPoint) || digits + isDigit > maxDigits) {
            return std::nullopt;
        }
        mayHavePoint = mayHavePoint && !isPoint;
        digits += isDigit;
        narrow[size++] = static_cast<char>(character);
    }
    if (digits == 0 || narrow[size - 1] == '.') {
        return std::nullopt;
    }
    T value{};
    std::from_chars(narrow, narrow + size, value);
    return value;
}

} // namespace

ValueReader::ValueReader() : m_isClassic(std::locale() == std::locale::classic()) {}

std::int32_t ValueReader::ReadInteger(std::wstring const& text) const {
    std::optional<std::int32_t> const value =
        m_isClassic ? ReadPlain<std::int32_t>(text, IntegerDigits, false) : std::nullopt;
    return value ? *value : Extract<std::int32_t>(text);
}

double ValueReader::ReadDouble(std::wstring const& text) const {
    std::optional<double> const value =
        m_isClassic ? ReadPlain<double>(text, DoubleDigits, true) : std::nullopt;
    return value ? *value : Extract<double>(text);
}

} // namespace Zantrel
