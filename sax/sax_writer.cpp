// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/sax_writer.h>

#include <zantrel/sax/prepared_tag.h>
#include <zantrel/sax/tag_writer.h>

#include "text/numbers.h"
#include "text/unicode.h"

#include <utility>

namespace KelSAX {

namespace {

/// Room for a number, with what was printed into it.
struct PrintedInteger {
    explicit PrintedInteger(std::int64_t value) : end(Zantrel::Text::PrintInteger(text, value)) {}
    std::string_view View() const noexcept { return {text, static_cast<std::size_t>(end - text)}; }

    char text[Zantrel::Text::NumberRoom];
    char const* end;
};

} // namespace

// Wide texts are converted into one string that is kept, so that writing allocates nothing once it is long
// enough. A text that can't be converted becomes bytes that are no UTF-8, which WriteValue and its like
// refuse: the place that knows how to fail.

ISAXWriter::~ISAXWriter() = default;

bool ISAXWriter::HasFailed() const noexcept { return false; }

void ISAXWriter::Refuse(std::wstring_view) {}

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

void ISAXWriter::WriteIntegerValue(std::int64_t value) { WriteValue(PrintedInteger(value).View()); }

void ISAXWriter::WriteLeaf(PreparedTag const& tag, std::wstring_view text) { WriteWideLeaf(tag, text); }

// What follows is all that a writer of a host's own needs to take prepared tags, and it is how the driver
// takes what has no ready bytes.

void ISAXWriter::OpenPrepared(PreparedTag const& tag) {
    OpenElement(tag.Name());
    try {
        for (PreparedTag::Attribute const& attribute : tag.Attributes()) {
            WriteAttribute(attribute.name, std::string_view(attribute.value));
        }
    } catch (...) {
        CloseElement(); // nothing is open where opening throws
        throw;
    }
}

void ISAXWriter::WriteLeaf(PreparedTag const& tag, std::string_view text) {
    MSAXTagWriter const element(*this, tag);
    WriteValue(text);
}

void ISAXWriter::WriteDoubleLeaf(PreparedTag const& tag, double value, int precision) {
    MSAXTagWriter const element(*this, tag);
    WriteDoubleValue(value, precision, 0);
}

void ISAXWriter::WriteWideLeaf(PreparedTag const& tag, std::wstring_view text) {
    // Out of the way of what a writer of the host's converts while it opens the element.
    std::string converted = std::move(m_converted);
    converted.clear();
    Zantrel::Text::AppendUtf8Unchecked(text, converted);
    WriteLeaf(tag, std::string_view(converted));
    m_converted = std::move(converted);
}

void ISAXWriter::WriteIntegerLeaf(PreparedTag const& tag, std::int64_t value) {
    WriteLeaf(tag, PrintedInteger(value).View());
}

} // namespace KelSAX
