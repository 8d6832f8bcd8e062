// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/sax_writer.h>

#include "text/numbers.h"
#include "text/unicode.h"

namespace KelSAX {

// Wide texts are converted into one string that is kept, so that writing allocates nothing once it is long
// enough. A text that can't be converted becomes bytes that are no UTF-8, which WriteValue and its like
// refuse: the place that knows how to fail.

ISAXWriter::~ISAXWriter() = default;

bool ISAXWriter::HasFailed() const noexcept { return false; }

void ISAXWriter::WriteAttribute(std::string_view name, std::wstring_view value) {
    m_converted.clear();
    Zantrel::Text::AppendUtf8Unchecked(value, m_converted);
    WriteAttribute(name, std::string_view(m_converted));
}

void ISAXWriter::WriteValue(std::wstring_view value) {
    m_converted.clear();
    Zantrel::Text::AppendUtf8Unchecked(value, m_converted);
    WriteValue(std::string_view(m_converted));
}

void ISAXWriter::OpenElement(std::wstring_view tag) {
    m_converted.clear();
    Zantrel::Text::AppendUtf8Unchecked(tag, m_converted);
    OpenElement(std::string_view(m_converted));
}

void ISAXWriter::WriteIntegerValue(std::int64_t value) {
    char text[Zantrel::Text::NumberRoom];
    char const* const end = Zantrel::Text::PrintInteger(text, value);
    WriteValue(std::string_view(text, static_cast<std::size_t>(end - text)));
}

} // namespace KelSAX
