// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/prepared_tag.h>

#include "sax/escaping.h"
#include "text/unicode.h"
#include "xml/names.h"

#include <algorithm>

namespace KelSAX {

namespace {

constexpr std::size_t FewAttributes = 16;

/// With bytes that are no UTF-8 in place of what can't be converted, which no place takes.
std::string Converted(std::wstring_view text) {
    std::string utf8;
    Zantrel::Text::AppendUtf8Unchecked(text, utf8);
    return utf8;
}

} // namespace

// The end tag comes first, since the start tag grows with its attributes. Zeros follow, so that a writer may
// copy in whole pieces of Readable bytes.
PreparedTag::PreparedTag(std::string_view name) {
    if (!Zantrel::Xml::IsPortableXmlName(name)) {
        m_bytes = name;
        return;
    }
    m_endSize = name.size() + 3;
    m_startSize = name.size() + 1;
    m_bytes.reserve(m_endSize + m_startSize + Readable);
    m_bytes.append("</").append(name).append("><").append(name).append(Readable, '\0');
}

PreparedTag::PreparedTag(std::wstring_view name) : PreparedTag(std::string_view(Converted(name))) {}

void PreparedTag::AddAttribute(std::string_view name, std::wstring_view value) {
    AddAttribute(name, std::string_view(Converted(value)));
}

// Not ready is also what has one attribute twice, and more of them than are worth comparing, which the writer
// then takes one by one. The parts are kept in any case: they say what is wrong.
void PreparedTag::AddAttribute(std::string_view name, std::string_view value) {
    using namespace Zantrel::Sax;
    bool const isNew = m_attributes.size() < FewAttributes &&
                       std::none_of(m_attributes.begin(), m_attributes.end(),
                                    [name](Attribute const& attribute) { return attribute.name == name; });
    m_attributes.push_back({std::string(name), std::string(value)});
    name = m_attributes.back().name; // what was given may be a text of this tag, which moves
    value = m_attributes.back().value;
    if (!IsReady()) {
        return;
    }
    m_bytes.resize(m_endSize + m_startSize);
    m_bytes.append(" ").append(name).append("=\"");
    TextFault const fault =
        PutEscaped(value, TextPlace::Attribute, [this](std::string_view piece) { m_bytes.append(piece); });
    m_bytes.append("\"");
    m_startSize = m_bytes.size() - m_endSize;
    m_bytes.append(Readable, '\0');
    if (!isNew || !Zantrel::Xml::IsPortableXmlName(name) || fault.kind != TextFault::Kind::None) {
        // No longer ready: only the name is left, and the writer says what is wrong with the rest.
        m_bytes = std::string(Name());
        m_endSize = m_startSize = 0;
    }
}

} // namespace KelSAX
