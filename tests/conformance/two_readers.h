// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/memory_source.h"
#include "xml/tokeniser.h"

#include <expat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The tokeniser and libexpat, read into the same form so that they can be compared.
namespace TwoReaders {

/// What a reader makes of a document. Events are one text: a start is "(name", with "@name=value" for each
/// attribute, an end is ")name", and a text without the borders of its pieces is "'text"; NULs between them.
struct Reading {
    bool isAccepted = false;
    std::string events;
    std::string error;
    Zantrel::Xml::Position errorPosition; ///< of the tokeniser only
    // Of libexpat only:
    XML_Error errorCode = XML_ERROR_NONE;
    std::size_t errorByte = 0;
    std::string declaredEncoding;
};

class EventText {
public:
    void Start(std::string_view name) { Add('(', name); }
    void Attribute(std::string_view name, std::string_view value) {
        Add('@', name);
        m_text.append(1, '=').append(value);
    }
    void End(std::string_view name) { Add(')', name); }
    void Text(std::string_view text) {
        if (!m_isText)
            Add('\'', {});
        m_isText = true;
        m_text += text;
    }
    std::string Take() { return std::move(m_text); }

private:
    void Add(char kind, std::string_view name) {
        m_isText = false;
        m_text.append(1, '\0').append(1, kind).append(name);
    }

    std::string m_text;
    bool m_isText = false;
};

inline Reading ReadByTokeniser(std::string_view bytes, std::size_t pieceSize) {
    using Zantrel::Xml::Token;
    TestSupport::MemorySource source(bytes);
    // libexpat has no limit to the depth.
    Zantrel::Xml::Tokeniser tokeniser(source, pieceSize, SIZE_MAX);
    Reading reading;
    EventText events;
    for (;;) {
        switch (tokeniser.Next()) {
        case Token::StartTag:
            events.Start(tokeniser.Name());
            for (auto const& [name, value] : tokeniser.Attributes())
                events.Attribute(name, value);
            continue;
        case Token::EndTag:
            events.End(tokeniser.Name());
            continue;
        case Token::Text:
            events.Text(tokeniser.Text());
            continue;
        case Token::End:
            reading.isAccepted = true;
            break;
        case Token::Error:
            reading.error = tokeniser.ErrorText();
            reading.errorPosition = tokeniser.Where();
            break;
        }
        reading.events = events.Take();
        return reading;
    }
}

namespace Expat {

struct Context {
    XML_Parser parser;
    Reading reading;
    EventText events;
};

inline Context& Of(void* data) { return *static_cast<Context*>(data); }

inline void Start(void* data, XML_Char const* name, XML_Char const** attributes) {
    Of(data).events.Start(name);
    for (; *attributes != nullptr; attributes += 2)
        Of(data).events.Attribute(attributes[0], attributes[1]);
}
inline void End(void* data, XML_Char const* name) { Of(data).events.End(name); }
inline void Text(void* data, XML_Char const* text, int size) {
    Of(data).events.Text({text, static_cast<std::size_t>(size)});
}
inline void Declaration(void* data, XML_Char const*, XML_Char const* encoding, int) {
    Of(data).reading.declaredEncoding = encoding != nullptr ? encoding : "";
}
inline void DocumentType(void* data, XML_Char const*, XML_Char const*, XML_Char const*, int) {
    XML_StopParser(Of(data).parser, XML_FALSE);
}

} // namespace Expat

/// Document types are refused.
inline Reading ReadByExpat(std::string_view bytes) {
    XML_Parser const parser = XML_ParserCreate(nullptr);
    Expat::Context context{parser, {}, {}};
    XML_SetUserData(parser, &context);
    XML_SetElementHandler(parser, Expat::Start, Expat::End);
    XML_SetCharacterDataHandler(parser, Expat::Text);
    XML_SetXmlDeclHandler(parser, Expat::Declaration);
    XML_SetStartDoctypeDeclHandler(parser, Expat::DocumentType);
    Reading& reading = context.reading;
    reading.isAccepted = XML_Parse(parser, bytes.data(), static_cast<int>(bytes.size()), 1) == XML_STATUS_OK;
    reading.events = context.events.Take();
    if (!reading.isAccepted) {
        reading.errorCode = XML_GetErrorCode(parser);
        reading.error = XML_ErrorString(reading.errorCode);
        reading.errorByte = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser));
    }
    XML_ParserFree(parser);
    return reading;
}

} // namespace TwoReaders
