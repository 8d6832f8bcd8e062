// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/sax_reader.h>

#include "text/numbers.h"
#include "text/unicode.h"

namespace KelSAX {

namespace Text = Zantrel::Text;

namespace {

/// Parses an element's text or an attribute, where there is one, into the target; calls `report` when that
/// isn't possible. The text comes by reference: to copy it as a whole right after it was written in parts
/// would make the processor wait, which was a fifth of the time of a read.
template <class T, class Report>
bool Take(std::optional<std::string_view> const& text, std::optional<T> (*parse)(std::string_view) noexcept,
          T& value, Report const& report) {
    if (!text) {
        return false;
    }
    std::optional<T> const parsed = parse(*text);
    if (parsed) {
        value = *parsed;
    } else {
        report();
    }
    return parsed.has_value();
}

/// Text is taken as it is, into the memory that the target has.
bool Take(std::optional<std::string_view> const& text, std::wstring& value) {
    if (text) {
        value.clear();
        Text::AppendWide(*text, value);
    }
    return text.has_value();
}

} // namespace

ISAXReader::~ISAXReader() = default;

bool ISAXReader::ReadAttribute(std::string& value, std::string_view name) {
    auto const text = FindAttribute(name);
    if (text) {
        value.assign(*text);
    }
    return text.has_value();
}

bool ISAXReader::ReadAttribute(std::wstring& value, std::string_view name) {
    return Take(FindAttribute(name), value);
}

bool ISAXReader::ReadAttribute(bool& value, std::string_view name) {
    return Take(FindAttribute(name), Text::ParseBool, value, [&] { ReportUnparsedAttribute(name, L"flag"); });
}

bool ISAXReader::ReadValue(std::wstring& value) const { return Take(FindText(), value); }

bool ISAXReader::ReadValue(double& value) {
    return Take(FindText(), Text::ParseDouble, value, [this] { ReportUnparsedText(L"number"); });
}

bool ISAXReader::ReadValue(std::int32_t& value) {
    return Take(FindText(), Text::ParseInteger, value, [this] { ReportUnparsedText(L"32-bit integer"); });
}

bool ISAXReader::ReadValue(bool& value) {
    return Take(FindText(), Text::ParseBool, value, [this] { ReportUnparsedText(L"flag"); });
}

std::string_view ISAXReader::GetText() const { return FindText().value_or(std::string_view()); }

void ISAXReader::NoteDropped(std::wstring_view sentence) { ReportDropped(sentence); }

void ISAXReader::Refuse(std::wstring_view sentence) { RefuseDocument(sentence); }

// A host may have a reader of its own, which has no report and knows nothing beforehand.
bool ISAXReader::HasReport() const { return false; }

bool ISAXReader::HasAttributes() const { return true; }

void ISAXReader::ReportUnparsedText(std::wstring_view) {}

void ISAXReader::ReportUnparsedAttribute(std::string_view, std::wstring_view) {}

void ISAXReader::ReportDropped(std::wstring_view) {}

void ISAXReader::RefuseDocument(std::wstring_view) {}

Zantrel::ReadReport::Entry ISAXReader::GetPlace() const { return {}; }

Zantrel::ReadLimits const& ISAXReader::GetLimits() const {
    static constexpr Zantrel::ReadLimits none;
    return none;
}

} // namespace KelSAX
