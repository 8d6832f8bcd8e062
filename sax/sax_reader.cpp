// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/sax_reader.h>

#include "text/numbers.h"
#include "text/unicode.h"

namespace KelSAX {

namespace {

template <class T> bool Take(std::optional<T> const& parsed, T& value) {
    if (parsed) {
        value = *parsed;
    }
    return parsed.has_value();
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
    auto const text = FindAttribute(name);
    if (text) {
        value.clear();
        Zantrel::Text::AppendWide(*text, value);
    }
    return text.has_value();
}

bool ISAXReader::ReadAttribute(bool& value, std::string_view name) {
    auto const text = FindAttribute(name);
    if (!text || Take(Zantrel::Text::ParseBool(*text), value)) {
        return text.has_value();
    }
    ReportUnparsedAttribute(name, L"flag");
    return false;
}

bool ISAXReader::ReadValue(std::wstring& value) const {
    auto const text = FindText();
    if (text) {
        value.clear();
        Zantrel::Text::AppendWide(*text, value);
    }
    return text.has_value();
}

bool ISAXReader::ReadValue(double& value) {
    auto const text = FindText();
    if (!text || Take(Zantrel::Text::ParseDouble(*text), value)) {
        return text.has_value();
    }
    ReportUnparsedText(L"number");
    return false;
}

bool ISAXReader::ReadValue(std::int32_t& value) {
    auto const text = FindText();
    if (!text || Take(Zantrel::Text::ParseInteger(*text), value)) {
        return text.has_value();
    }
    ReportUnparsedText(L"32-bit integer");
    return false;
}

bool ISAXReader::ReadValue(bool& value) {
    auto const text = FindText();
    if (!text || Take(Zantrel::Text::ParseBool(*text), value)) {
        return text.has_value();
    }
    ReportUnparsedText(L"flag");
    return false;
}

std::string_view ISAXReader::GetText() const { return FindText().value_or(std::string_view()); }

void ISAXReader::NoteDropped(std::wstring_view sentence) { ReportDropped(sentence); }

void ISAXReader::Refuse(std::wstring_view sentence) { RefuseDocument(sentence); }

bool ISAXReader::HasReport() const { return false; }

void ISAXReader::ReportUnparsedText(std::wstring_view) {}

void ISAXReader::ReportUnparsedAttribute(std::string_view, std::wstring_view) {}

void ISAXReader::ReportDropped(std::wstring_view) {}

void ISAXReader::RefuseDocument(std::wstring_view) {}

} // namespace KelSAX
