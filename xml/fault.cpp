// SPDX-License-Identifier: Apache-2.0
#include "xml/fault.h"

#include "text/enum_order.h"

#include <cstddef>

namespace Zantrel::Xml {

namespace {

// One letter stands for a word, so that a sentence can name them in its own order.
constexpr char FirstWord = '@';
constexpr char SecondWord = '$';

struct Sentence {
    Fault fault;
    std::string_view text;
};

constexpr Sentence Sentences[] = {
    {Fault::ReadFailed, "Reading the document failed."},
    {Fault::NoEncoding, "The document is neither in UTF-8 nor in UTF-16 with a byte order mark."},
    {Fault::IllFormed, "This is not well-formed UTF-8."},
    {Fault::Unpaired, "This surrogate has no partner."},
    {Fault::Truncated, "The document ends inside a character."},
    {Fault::NotAllowed, "XML does not allow the character @."},
    {Fault::EndsInside, "The document ends inside @."},
    {Fault::NotClosed, "The document ends before the end tag of '@'."},
    {Fault::NoRoot, "The document has no root element."},
    {Fault::UnsupportedEncoding, "The encoding '@' is not supported, only UTF-8 and UTF-16 are."},
    {Fault::ContradictingEncoding, "The document says its encoding is '@', but it is another one."},
    {Fault::MalformedDeclaration, "The XML declaration is malformed."},
    {Fault::MisplacedDeclaration, "An XML declaration can only stand at the very beginning."},
    {Fault::DocumentType, "A document type is not accepted."},
    {Fault::UnknownMarkup, "'<!' begins neither a comment nor a CDATA section here."},
    {Fault::NoInstructionName, "'<?' must be followed by a name."},
    {Fault::ReservedName, "A processing instruction cannot have the name '@'."},
    {Fault::MalformedInstruction, "The processing instruction '@' needs white space or '?>' after its name."},
    {Fault::DashesInComment, "A comment cannot contain '--'."},
    {Fault::TextOutsideRoot, "There is text outside the root element."},
    {Fault::SecondRoot, "The document has a second root element, '@'."},
    {Fault::NoTagName, "'<' must be followed by a name, or be written as '&lt;'."},
    {Fault::NoTagEnd, "'/' must be followed by '>' here."},
    {Fault::NoAttribute, "The start tag '@' goes on with neither '>' nor white space and an attribute."},
    {Fault::NoEqualsSign, "The attribute '@' must be followed by '='."},
    {Fault::NoQuote, "The value of the attribute '@' must stand in quotes."},
    {Fault::LessThanInValue, "The value of the attribute '@' contains '<', which must be written as '&lt;'."},
    {Fault::AttributeTwice, "The attribute '@' is given twice."},
    {Fault::TooDeep, "The element '@' is nested too deep."},
    {Fault::NoStartTag, "The end tag '@' has no start tag."},
    {Fault::OtherEndTag, "The end tag of '$' was expected, not that of '@'."},
    {Fault::MalformedEndTag, "The end tag '@' must be followed by '>'."},
    {Fault::SectionEndInText, "Text cannot contain ']]>', only ']]&gt;'."},
    {Fault::MalformedReference, "'&' must begin a reference, or be written as '&amp;'."},
    {Fault::MalformedNumber, "A character reference is a number between '&#' or '&#x' and ';'."},
    {Fault::NoCharacter, "XML does not allow the character '@'."},
    {Fault::UndefinedEntity, "The entity '@' is not defined."},
};

static_assert(InEnumOrder(Sentences, &Sentence::fault, Fault::UndefinedEntity));

constexpr std::size_t LongestWord = 80;

void AppendWord(std::string& text, std::string_view word) {
    if (word.size() <= LongestWord) {
        text += word;
        return;
    }
    std::size_t size = LongestWord;
    while ((static_cast<unsigned char>(word[size]) & 0xC0) == 0x80)
        --size;
    text.append(word.substr(0, size)).append("...");
}

} // namespace

std::string Describe(Fault fault, std::string_view word, std::string_view otherWord) {
    std::string text;
    for (char const letter : Sentences[static_cast<std::size_t>(fault)].text) {
        if (letter == FirstWord)
            AppendWord(text, word);
        else if (letter == SecondWord)
            AppendWord(text, otherWord);
        else
            text += letter;
    }
    return text;
}

} // namespace Zantrel::Xml
