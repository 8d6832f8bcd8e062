// SPDX-License-Identifier: Apache-2.0
#include "tests/conformance/two_readers.h"

#include "tests/formats/formats.h"
#include "tests/support/characters.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>

using namespace TestSupport;

namespace {

std::string_view Utf8(xmlChar const* text) { return reinterpret_cast<char const*>(text); }

/// What libxml2 makes of a document, in the same form; nothing where it refuses it.
std::string ReadByLibxml2(std::string_view document) {
    using TwoReaders::EventText;
    EventText events;
    xmlSAXHandler handler{};
    handler.startElement = [](void* to, xmlChar const* name, xmlChar const** attributes) {
        static_cast<EventText*>(to)->Start(Utf8(name));
        for (; attributes != nullptr && *attributes != nullptr; attributes += 2) {
            static_cast<EventText*>(to)->Attribute(Utf8(attributes[0]), Utf8(attributes[1]));
        }
    };
    handler.endElement = [](void* to, xmlChar const* name) { static_cast<EventText*>(to)->End(Utf8(name)); };
    handler.characters = [](void* to, xmlChar const* text, int size) {
        static_cast<EventText*>(to)->Text(Utf8(text).substr(0, static_cast<std::size_t>(size)));
    };
    xmlParserCtxtPtr const parser = xmlCreatePushParserCtxt(&handler, &events, nullptr, 0, nullptr);
    xmlCtxtUseOptions(parser, XML_PARSE_NOENT |
                                  XML_PARSE_HUGE); // without the first it leaves "&" in attributes as "&#38;"
    bool const isRead =
        xmlParseChunk(parser, document.data(), static_cast<int>(document.size()), 1) == XML_ERR_OK;
    xmlFreeParserCtxt(parser);
    return isRead ? events.Take() : "refused";
}

/// That all three readers find the same elements, attributes and texts in it.
void ExpectOneReading(std::string const& document) {
    std::string const events = TwoReaders::ReadByTokeniser(document, 4096).events;
    EXPECT_TRUE(events == TwoReaders::ReadByExpat(document).events) << document.substr(0, 20000);
    EXPECT_TRUE(events == ReadByLibxml2(document)) << document.substr(0, 20000);
}

} // namespace

TEST(OtherReaders, FindInEachFormatWhatOursFinds) {
    for (Format const& format : WrittenFormats()) {
        auto const subject = format.make();
        for (unsigned seed = 1; seed <= 50; ++seed) {
            SCOPED_TRACE(testing::Message() << format.name << ", seed " << seed);
            ExpectOneReading(WriteText(*subject->Generated(seed)));
        }
        subject->SetText(AllCharacters());
        ExpectOneReading(WriteText(*subject));
    }
}
