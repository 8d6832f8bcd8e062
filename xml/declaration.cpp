// SPDX-License-Identifier: Apache-2.0
#include "xml/declaration.h"

#include "xml/lexemes.h"

#include <algorithm>
#include <cstddef>

// The declaration is three settings in a fixed order, of which the first must be there. Each is tried in turn
// at the same place; one that isn't there leaves the place to the next one, and what is no setting at all is
// found by whoever expects the end.
namespace Zantrel::Xml {

namespace {

bool IsLetter(char byte) noexcept {
    char const lower = ToLower(byte);
    return lower >= 'a' && lower <= 'z';
}

bool IsInValue(char byte) noexcept {
    return IsLetter(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.' || byte == '_';
}

/// The value of `name`, which without a value is null.
struct Setting {
    std::string_view name;
    std::string_view value = {};

    bool IsGiven() const noexcept { return value.data() != nullptr; }
};

std::nullptr_t StopAt(char const* place, Stop& stop) noexcept {
    return stop.At(Fault::MalformedDeclaration, place);
}

/// Gives the place behind the setting, `at` itself where something else follows, or null and why it stopped.
/// A word that is cut by the end of the buffer stops the scan, which then begins anew with more.
char const* ScanSetting(char const* at, Setting& setting, Stop& stop) noexcept {
    char const* const begin = SkipSpace(at);
    char const* end = begin;
    for (char const letter : setting.name) {
        if (*end != letter)
            return *end != '\0' ? at : StopAt(end, stop);
        ++end;
    }
    if (begin == at)
        return StopAt(at, stop);
    end = SkipSpace(end);
    if (*end != '=')
        return StopAt(end, stop);
    end = SkipSpace(end + 1);
    char const quote = *end;
    if (quote != '"' && quote != '\'')
        return StopAt(end, stop);
    char const* const value = ++end;
    while (IsInValue(*end))
        ++end;
    if (*end != quote)
        return StopAt(end, stop);
    setting.value = {value, end};
    return end + 1;
}

} // namespace

// The name of an encoding begins with a letter; "standalone" has two values, and promises nothing either
// where there are no document types. Any version is taken: it promises nothing that the characters of the
// document don't show.
char const* ScanDeclaration(char const* at, std::string_view& encoding, Stop& stop) noexcept {
    Setting settings[] = {{"version"}, {"encoding"}, {"standalone"}};
    auto const& [version, encodingSetting, standalone] = settings;
    at += std::string_view("<?xml").size();
    for (Setting& setting : settings) {
        at = ScanSetting(at, setting, stop);
        if (at == nullptr)
            return nullptr;
        if (!version.IsGiven())
            return StopAt(SkipSpace(at), stop);
    }
    encoding = encodingSetting.value;
    if (encodingSetting.IsGiven() && !IsLetter(*encoding.data()))
        return StopAt(encoding.data(), stop);
    if (standalone.IsGiven() && standalone.value != "yes" && standalone.value != "no")
        return StopAt(standalone.value.data(), stop);
    at = SkipSpace(at);
    if (*at != '?' || *++at != '>')
        return StopAt(at, stop);
    return at + 1;
}

// Without a mark the bytes are taken for UTF-8, so a document that says UTF-16 and has none contradicts
// itself. The name with a byte order is taken where that is the order.
bool CheckEncoding(std::string_view name, Encoding actual, Stop& stop) noexcept {
    auto const is = [name](std::string_view lowerCase) { return IsInAnyCase(name, lowerCase); };
    bool const fits =
        actual == Encoding::Utf8
            ? is("utf-8")
            : is("utf-16") || is(actual == Encoding::Utf16LittleEndian ? "utf-16le" : "utf-16be");
    if (fits)
        return true;
    bool const isKnown = is("utf-8") || is("utf-16") || is("utf-16le") || is("utf-16be");
    stop.At(isKnown ? Fault::ContradictingEncoding : Fault::UnsupportedEncoding, name.data(), name);
    return false;
}

} // namespace Zantrel::Xml
