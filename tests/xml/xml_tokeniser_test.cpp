// SPDX-License-Identifier: Apache-2.0
#include "xml/tokeniser.h"

#include "tests/support/failing_allocator.h"
#include "tests/support/memory_source.h"
#include "text/surrogates.h"
#include "text/utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <regex>
#include <stdexcept>
#include <string>
#include <string_view>

using namespace Zantrel::Xml;

namespace {

using namespace std::string_literals;

constexpr std::size_t Whole = 64 * 1024;

/// Gives `bytes`, then what `atEnd` gives, and scribbles where it was given room.
class Source : public TestSupport::MemorySource {
public:
    explicit Source(
        std::string_view bytes, std::function<std::ptrdiff_t()> atEnd = [] { return 0; })
        : MemorySource(bytes), m_atEnd(std::move(atEnd)) {}
    std::ptrdiff_t Read(char* into, std::size_t size) override {
        std::memset(into, '\r', size);
        std::ptrdiff_t const count = MemorySource::Read(into, size);
        return count != 0 ? count : m_atEnd();
    }

private:
    std::function<std::ptrdiff_t()> m_atEnd;
};

std::string PlaceOf(Tokeniser const& tokeniser) {
    auto const [line, column] = tokeniser.Where();
    return std::to_string(line) + ":" + std::to_string(column);
}

/// What is delivered, in a form of its own: "<a b=[1]>" for a start, "</a>" for an end, texts joined; an
/// error is "!line:column sentence" and replaces all else. Leaves are taken in one step where they can be, if
/// wanted.
std::string Read(Tokeniser& tokeniser, bool takesLeaves = false) {
    std::string events;
    for (;;) {
        switch (tokeniser.Next()) {
        case Token::StartTag:
            events.append("<").append(tokeniser.Name());
            for (auto const& [name, value] : tokeniser.Attributes())
                events.append(" ").append(name).append("=[").append(value).append("]");
            events += ">";
            if (takesLeaves && tokeniser.TakeLeaf())
                events.append(tokeniser.Text()).append("</").append(tokeniser.Name()).append(">");
            break;
        case Token::EndTag:
            events.append("</").append(tokeniser.Name()).append(">");
            break;
        case Token::Text:
            events += tokeniser.Text();
            break;
        case Token::End:
            return events;
        case Token::Error:
            return "!" + PlaceOf(tokeniser) + " " + tokeniser.ErrorText();
        }
    }
}

std::string Read(std::string_view document, std::size_t pieceSize = Whole, std::size_t maxDepth = MaxDepth) {
    Source source(document);
    Tokeniser tokeniser(source, pieceSize, maxDepth);
    return Read(tokeniser);
}

/// Without what taking leaves may pass over: white space in front of a child.
std::string WithoutLayout(std::string const& events) {
    return std::regex_replace(events, std::regex("[ \\n\\t]+<(?!/)"), "<");
}

std::string InUtf16(std::string_view utf8, bool isLittleEndian) {
    std::string bytes;
    auto const put = [&](char32_t unit) {
        char const low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
        bytes.append(1, isLittleEndian ? low : high).append(1, isLittleEndian ? high : low);
    };
    put(0xFEFF);
    for (char const *at = utf8.data(), *const end = at + utf8.size(); at != end;) {
        auto const character = Zantrel::Text::DecodeUtf8(at, end);
        bool const isPair = character.code >= 0x10000;
        put(isPair ? Zantrel::Text::HighSurrogateOf(character.code) : character.code);
        if (isPair)
            put(Zantrel::Text::LowSurrogateOf(character.code));
        at += character.size;
    }
    return bytes;
}

struct Case {
    std::string document, expected;
};

/// However the document is cut.
void ExpectRead(std::initializer_list<Case> cases) {
    for (auto const& [document, expected] : cases)
        for (std::size_t const pieceSize : std::initializer_list<std::size_t>{Whole, 1, 2, 3, 4, 5, 20}) {
            EXPECT_EQ(Read(document, pieceSize), expected) << document << "\nin pieces of " << pieceSize;
            Source source(document);
            Tokeniser tokeniser(source, pieceSize);
            EXPECT_EQ(WithoutLayout(Read(tokeniser, true)), WithoutLayout(expected)) << document;
        }
}

struct Refusal {
    std::string sentence;
    std::vector<std::string> documents; ///< of ASCII; a "^", which is taken out, marks the place of the error
};

void ExpectRefused(std::initializer_list<Refusal> refusals) {
    for (auto const& [sentence, documents] : refusals)
        for (std::string document : documents) {
            std::string const before = document.substr(0, document.find('^'));
            document.erase(before.size(), 1);
            auto const line = 1 + std::count(before.begin(), before.end(), '\n');
            std::size_t const column = before.size() - (before.rfind('\n') + 1) + 1;
            ExpectRead(
                {{document, "!" + std::to_string(line) + ":" + std::to_string(column) + " " + sentence}});
        }
}

/// Also in each encoding.
void ExpectReadInEachEncoding(std::initializer_list<Case> cases) {
    for (auto const& [document, expected] : cases)
        ExpectRead({{document, expected},
                    {"\xEF\xBB\xBF" + document, expected},
                    {InUtf16(document, true), expected},
                    {InUtf16(document, false), expected}});
}

TEST(XmlTokeniser, ReadsADocumentAlikeInEachEncoding) {
    ExpectReadInEachEncoding({
        // elements, attributes and text
        {"<a/>", "<a></a>"},
        {" \n<a> <b>x</b >y<c />\t</a\n>\n ", "<a> <b>x</b>y<c></c>\t</a>"},
        {"<a>\n  <b/>\n  <b/>\n <b/>\n  x<b/>\n  </a>",
         "<a>\n  <b></b>\n  <b></b>\n <b></b>\n  x<b></b>\n  </a>"},
        {"<a b='1' c = \"2\"\n\td='\"'/>", "<a b=[1] c=[2] d=[\"]></a>"},
        {"<:a.b-c_1 \u00E9\u4E2D='\u20AC'>\U0001F600</:a.b-c_1>",
         "<:a.b-c_1 \u00E9\u4E2D=[\u20AC]>\U0001F600</:a.b-c_1>"},
        {"<a_name_longer_than_a_block_of_sixteen\u00B7></a_name_longer_than_a_block_of_sixteen\u00B7>",
         "<a_name_longer_than_a_block_of_sixteen\u00B7></a_name_longer_than_a_block_of_sixteen\u00B7>"},
        {"<a>a text, longer than a block, with > and ] and ]] but no end of a section</a>",
         "<a>a text, longer than a block, with > and ] and ]] but no end of a section</a>"},
        {"<sixteen_bytes_ab><b>text of sixteen_</b><c> a text of thirty-two bytes.... "
         "</c></sixteen_bytes_ab>",
         "<sixteen_bytes_ab><b>text of sixteen_</b><c> a text of thirty-two bytes.... "
         "</c></sixteen_bytes_ab>"},
        // comments and instructions are passed over
        {"<a>\n <!-- -->x</a>", "<a>\n x</a>"},
        {"<a> <?p?>\t</a>", "<a> \t</a>"},
        {"<!--><a>-&x;- --><a>1<!---->2<!-- - -->3</a><!-- -->", "<a>123</a>"},
        {"<?xml-stylesheet <a> ?? ?><a>1<?p >?>2<?q\n?></a><?r?>", "<a>12</a>"},
        // references are replaced
        {"<a b='&lt;&gt;&amp;&apos;&quot;'>&lt;&gt;&amp;&apos;&quot;</a>", "<a b=[<>&'\"]><>&'\"</a>"},
        {"<a b='&#65;-&#x20aC;'>&#x10FFFF;-&#0000000000000065;</a>", "<a b=[A-\u20AC]>\U0010FFFF-A</a>"},
        {"<a>]]&gt;</a>", "<a>]]></a>"},
        // sections are text
        {"<a>1<![CDATA[<&>]]]]><![CDATA[]]>2</a>", "<a>1<&>]]2</a>"},
        {"<a><![CDATA[]]]]]><![CDATA[> ]]></a>", "<a>]]]> </a>"},
        // line ends are normalised
        {"<a>1\r\n2\r3\n\r4\r\r\n5&#13;\n6</a>\r", "<a>1\n2\n3\n\n4\n\n5\r\n6</a>"},
        {"<a><![CDATA[\r\n\r]]></a>", "<a>\n\n</a>"},
        {"<a\r\nb='1'\r/>", "<a b=[1]></a>"},
        // white space in values is normalised
        {"<a b='1\t2\n3\r\n4\r5  6'/>", "<a b=[1 2 3 4 5  6]></a>"},
        {"<a b='&#9;&#10;&#13;&#32;'/>", "<a b=[\t\n\r ]></a>"},
        {"<a b='1\t' c='2' d='&lt;3' e='4'/>", "<a b=[1 ] c=[2] d=[<3] e=[4]></a>"},
        // characters that XML doesn't allow
        {"<a>\x01</a>", "!1:4 XML does not allow the character U+0001."},
        {"<a>\0</a>"s, "!1:4 XML does not allow the character U+0000."},
        {"<a b='\x1F'/>", "!1:7 XML does not allow the character U+001F."},
        {"<!--\uFFFE--><a/>", "!1:5 XML does not allow the character U+FFFE."},
        {"<a/>\uFFFF", "!1:5 XML does not allow the character U+FFFF."},
        // the end of the document inside of something
        {"<!-- -->", "!1:9 The document has no root element."},
        {"<a>\n<b>x]]", "!2:7 The document ends before the end tag of 'b'."},
        {"<a><", "!1:5 The document ends inside a tag."},
        {"<a b='&lt;", "!1:11 The document ends inside a start tag."},
        {"<a></a", "!1:7 The document ends inside an end tag."},
        {"<a>&l", "!1:6 The document ends inside a reference."},
        {"<a><![CDATA[]]", "!1:15 The document ends inside a CDATA section."},
        {"<a><![CD", "!1:9 The document ends inside a comment or CDATA section."},
        {"<a><!-- --", "!1:11 The document ends inside a comment."},
        {"<?p ?", "!1:6 The document ends inside a processing instruction."},
        {"<?xml version='1.0'?", "!1:21 The document ends inside the XML declaration."},
    });
}

TEST(XmlTokeniser, TakesTheEncodingThatTheBytesAreIn) {
    std::string const utf16 = "<?xml version='1.0' encoding='utf-16'?><a/>";
    std::string const none = "!1:1 The document is neither in UTF-8 nor in UTF-16 with a byte order mark.";
    std::string const other = "!1:31 The document says its encoding is 'utf-16";
    std::string const unpaired = "!1:4 This surrogate has no partner.", begin = InUtf16("<a>", true);
    ExpectRead({
        {"", "!1:1 The document has no root element."},
        {"<?xml version='1.0'?><a/>", "<a></a>"},
        {"<?xml version=\"1.0\" encoding='utf-8' standalone = \"yes\" ?>\n<a/>", "<a></a>"},
        {"\xEF\xBB\xBF<?xml version='1.1' standalone='no'?><a/>", "<a></a>"},
        {InUtf16("<?xml version='1.0' encoding='UTF-16'?><a/>", true), "<a></a>"},
        {InUtf16("<?xml version='1.0' encoding='utf-16be'?><a/>", false), "<a></a>"},
        {"<?xml version='1.0' encoding='Zaz09.-_'?><a/>",
         "!1:31 The encoding 'Zaz09.-_' is not supported, only UTF-8 and UTF-16 are."},
        {utf16, other + "', but it is another one."},
        {"\xEF\xBB\xBF" + utf16, other + "', but it is another one."},
        {InUtf16("<?xml version='1.0' encoding='utf-16LE'?><a/>", false),
         other + "LE', but it is another one."},
        {InUtf16("<a/>", true).substr(2), none},
        {InUtf16("<a/>", false).substr(2), none},
        {begin + "\x3D\xD8<\0/\0a\0>\0"s, unpaired},
        {begin + "\x3D\xD8", unpaired},
        {begin + "\x3D\xD8\0\xE0"s, unpaired},
        {begin + "\0\xDC\0\xDC"s, unpaired},
        {begin + "\0\xDE</a>"s, unpaired},
        {begin + "<", "!1:4 The document ends inside a character."},
        {"<a>\xE2\x82", "!1:4 The document ends inside a character."},
    });
    for (std::string const bytes :
         {"\x80", "\xC0\x80", "\xC1\xBF", "\xC3<", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xE2\x82<",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"})
        ExpectRead({{"<a>\n\u00E9" + bytes + "</a>", "!2:2 This is not well-formed UTF-8."},
                    {"<a b='" + bytes + "'/>", "!1:7 This is not well-formed UTF-8."},
                    {"<a/><!--" + bytes + "-->", "!1:9 This is not well-formed UTF-8."}});
}

TEST(XmlTokeniser, RefusesWhatIsNotWellFormedAndSaysWhere) {
    ExpectRefused({
        // markup
        {"'<' must be followed by a name, or be written as '&lt;'.", {"<a>^< b/></a>", "<a>^</ a>"}},
        {"'<!' begins neither a comment nor a CDATA section here.", {"<a>^<!b></a>"}},
        {"A document type is not accepted.", {"^<!DOCTYPE a><a/>"}},
        {"A comment cannot contain '--'.", {"<a><!-- ^-- --></a>", "<a><!-- ^---></a>"}},
        {"'<?' must be followed by a name.", {"<a><?^ p?></a>"}},
        {"The processing instruction 'p' needs white space or '?>' after its name.",
         {"<a><?p^+?></a>", "<a><?p?^+?></a>"}},
        {"A processing instruction cannot have the name 'xMl'.", {"<a><?^xMl ?></a>"}},
        {"Text cannot contain ']]>', only ']]&gt;'.", {"<a>^]]></a>"}},
        // tags
        {"The start tag 'a' goes on with neither '>' nor white space and an attribute.",
         {"<a^+/>", "<a b='1'^c='2'/>", "<a ^1='1'/>"}},
        {"The attribute 'b' must be followed by '='.", {"<a b^/>"}},
        {"The value of the attribute 'b' must stand in quotes.", {"<a b=^1/>"}},
        {"The value of the attribute 'b' contains '<', which must be written as '&lt;'.", {"<a b='^<'/>"}},
        {"'/' must be followed by '>' here.", {"<a /^ >"}},
        {"The end tag 'a' must be followed by '>'.", {"<a></a ^b>"}},
        {"The attribute 'b' is given twice.", {"<a b='1' c='2' ^b='3'/>"}},
        {"The attribute 'c' is given twice.",
         {"<a\n a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' k='' l='' m='' n='' o='' p='' q=''\n  e='' "
          "^c=''/>"}},
        // nesting
        {"The end tag of 'b' was expected, not that of 'a'.", {"<a>\n <b>\n^</a>"}},
        {"The end tag of 'a' was expected, not that of 'ab'.", {"<a>^</ab>"}},
        {"The end tag of 'ab' was expected, not that of 'a'.", {"<ab>^</a>"}},
        {"The end tag of 'longer_than_a_block_a' was expected, not that of 'longer_than_a_block_b'.",
         {"<longer_than_a_block_a>^</longer_than_a_block_b>"}},
        {"The end tag of 'sixteen_bytes_ab' was expected, not that of 'sixteen_bytes_abc'.",
         {"<sixteen_bytes_ab>^</sixteen_bytes_abc>"}},
        {"The end tag 'a' has no start tag.", {"<a/>^</a>"}},
        {"The document has a second root element, 'b'.", {"<a/>\n^<b/>"}},
        {"There is text outside the root element.", {"^x<a/>", "<a/>^&lt;", "^<![CDATA[]]><a/>"}},
        // references
        {"'&' must begin a reference, or be written as '&amp;'.", {"<a>x ^& y</a>", "<a b='^&lt'/>"}},
        {"The entity 'nbsp' is not defined.", {"<a>^&nbsp;</a>"}},
        {"The entity 'LT' is not defined.", {"<a>^&LT;</a>"}},
        {"A character reference is a number between '&#' or '&#x' and ';'.",
         {"<a>^&#;</a>", "<a>^&#1A;</a>", "<a>^&#X41;</a>"}},
        {"XML does not allow the character '&#0;'.", {"<a>^&#0;</a>"}},
        {"XML does not allow the character '&#xD800;'.", {"<a>^&#xD800;</a>"}},
        {"XML does not allow the character '&#xFFFF;'.", {"<a b='^&#xFFFF;'/>"}},
        {"XML does not allow the character '&#4294967361;'.", {"<a>^&#4294967361;</a>"}},
        // the declaration
        {"The XML declaration is malformed.",
         {"<?xml ^?><a/>", "<?xml ^encoding='UTF-8'?><a/>", "<?xml version='1.0'^encoding='UTF-8'?><a/>",
          "<?xml version='1.0' standalone='yes' ^encoding='UTF-8'?><a/>",
          "<?xml version='1.0' standalone='^Yes'?><a/>", "<?xml version='1.0' encoding='^'?><a/>",
          "<?xml version='1^ 0'?><a/>", "<?xml version=^1.0?><a/>", "<?xml version ^'1.0'?><a/>",
          "<?xml version='1.0'^><a/>"}},
        {"An XML declaration can only stand at the very beginning.", {" ^<?xml version='1.0'?><a/>"}},
    });
    std::string const b(79, 'b');
    ExpectRead({{"<a>&" + b + "\u00E9ccc;</a>", "!1:4 The entity '" + b + "...' is not defined."}});
}

TEST(XmlTokeniser, KnowsThePlaceOfEachToken) {
    std::string const document = "\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!--\n\u00E9--><a\r>\u00E9&lt;\n<b "
                                 "c='&#10;\n'/><![CDATA[x]]></a>\n";
    for (std::size_t const pieceSize : std::initializer_list<std::size_t>{Whole, 1, 7}) {
        Source source(document);
        Tokeniser tokeniser(source, pieceSize);
        std::string places = PlaceOf(tokeniser);
        Token last = Token::End;
        for (Token token = tokeniser.Next(); token != Token::End; token = tokeniser.Next()) {
            ASSERT_NE(token, Token::Error) << tokeniser.ErrorText();
            if (token != Token::Text || last != Token::Text)
                places.append(" ").append(PlaceOf(tokeniser));
            EXPECT_EQ(PlaceOf(tokeniser), PlaceOf(tokeniser));
            last = token;
        }
        EXPECT_EQ(places + " " + PlaceOf(tokeniser), "1:1 3:5 4:2 5:1 5:1 6:13 6:17 7:1")
            << "in pieces of " << pieceSize;
        EXPECT_EQ(tokeniser.Next(), Token::End); // it stays there
    }
}

TEST(XmlTokeniser, GoesAsDeepAsItIsToldAndNeedsNoStackForIt) {
    EXPECT_EQ(Read("<a><b><c/><d></d></b></a>", Whole, 3), "<a><b><c></c><d></d></b></a>");
    for (char const* document : {"<a><b><c><d/></c></b></a>", "<a><b><c><d></d></c></b></a>"})
        EXPECT_EQ(Read(document, Whole, 3), "!1:10 The element 'd' is nested too deep.");
    constexpr std::size_t depth = 1'000'000;
    std::string starts, ends;
    for (std::size_t level = 0; level < depth; ++level)
        starts += "<a>", ends += "</a>";
    EXPECT_TRUE(Read(starts + "<!---->" + ends, Whole, depth) == starts + ends);
}

TEST(XmlTokeniser, ReportsASourceThatFailsOrThrowsOrGivesMoreThanItWasAskedFor) {
    using Answer = std::ptrdiff_t();
    Answer* const answers[] = {[] { return std::ptrdiff_t(-1); }, [] { return std::ptrdiff_t(Whole) + 1; },
                               []() -> std::ptrdiff_t { throw std::runtime_error("lost"); }};
    for (Answer* const answer : answers)
        for (std::string_view const document :
             {"", "<", "<a", "<a>", "<a b='", "<a>x", "<a>\xC3", "<a><!--", "<a/>", "\xFF\xFE<"}) {
            Source source(document, answer);
            Tokeniser tokeniser(source);
            if (answer == answers[2]) {
                EXPECT_THROW(Read(tokeniser), std::runtime_error) << document;
            }
            std::string const read = Read(tokeniser);
            EXPECT_TRUE(read.ends_with(" Reading the document failed.")) << document;
            EXPECT_TRUE(document != "<a>" || read.starts_with("!1:4 ")) << read;
            EXPECT_EQ(tokeniser.Next(), Token::Error);
        }
}

// Time that grew with the square of a token's size would take hours here.
TEST(XmlTokeniser, ReadsTokensOfAnySizeByteByByte) {
    constexpr std::size_t size = 1'000'000;
    std::string const many(size, 'x');
    std::string attributes;
    for (std::size_t count = 0; count < size / 10; ++count)
        attributes += " a" + std::to_string(count) + "=''";
    for (std::string const& document :
         {"<a>" + many + "</a>", "<" + many + "></" + many + ">", "<a " + many + "='" + many + "'/>",
          "<a b='\t" + many + "'/>", "<a><!--" + many + "--><?" + many + " " + many + "?></a>",
          "<a><![CDATA["s + std::string(size, ']') + "]]></a>", "<a" + attributes + "/>"})
        EXPECT_NE(Read(document, 1)[0], '!') << document.substr(0, 20);
}

TEST(XmlTokeniser, AllocatesNothingOnceWarm) {
    std::string const child = "<b c='1' d='&lt;'>text &amp; more<!-- --><![CDATA[x]]><e/></b>\n";
    std::string document = "<a>" + child;
    for (int count = 0; count < 10'000; ++count)
        document += child;
    document += "</a>";
    Source source(document);
    Tokeniser tokeniser(source);
    for (int count = 0; count < 10; ++count)
        tokeniser.Next();
    TestSupport::AllocationFailure const failure(0, TestSupport::AllocationFailure::Times::FromThenOn);
    Token token = Token::Text;
    EXPECT_NO_THROW(do token = tokeniser.Next(); while (token != Token::End && token != Token::Error));
    EXPECT_EQ(token, Token::End);
}

TEST(XmlTokeniser, LosesNoMemoryAndNoEventsWhereMemoryRunsOut) {
    for (std::string const& document : {"<a "s + std::string(100, 'b') + "='&lt;'>\xE2\x82\xAC</a>",
                                        InUtf16("<a b='&lt;'>\u20AC</a>", true)}) {
        std::string const events = Read(document);
        TestSupport::FailEachAllocation([&] {
            Source source(document);
            Tokeniser tokeniser(source, 5);
            Token first = Token::Error;
            try {
                first = tokeniser.Next();
            } catch (std::bad_alloc const&) {
                std::string const rest = Read(tokeniser);
                EXPECT_TRUE(rest == events || rest.ends_with(" Reading the document failed.")) << rest;
                throw;
            }
            EXPECT_EQ(first, Token::StartTag);
            EXPECT_NE(Read(tokeniser)[0], '!');
        });
    }
}

} // namespace
