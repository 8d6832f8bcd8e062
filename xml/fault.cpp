// SPDX-License-Identifier: Apache-2.0
#include "xml/fault.h"

#include "text/enum_order.h"
#include "text/sentences.h"

#include <cstddef>

namespace Zantrel::Xml {

namespace {

struct Sentence {
    Fault fault;
    std::string_view pattern; ///< {0} is the word, {1} the other word
};

// In the order of the faults, which is that of the document: input, characters, its end, prolog, markup,
// tags, text, references.
constexpr Sentence Sentences[] = {
    {Fault::ReadFailed, "Reading the document failed."},
    {Fault::NoEncoding, "The document is neither in UTF-8 nor in UTF-16 with a byte order mark."},
    {Fault::IllFormed, "This is not well-formed UTF-8."},
    {Fault::Unpaired, "This surrogate has no partner."},
    {Fault::Truncated, "The document ends inside a character."},
    {Fault::NotAllowed, "XML does not allow the character {0}."},
    {Fault::EndsInside, "The document ends inside {0}."},
    {Fault::NotClosed, "The document ends before the end tag of '{0}'."},
    {Fault::NoRoot, "The document has no root element."},
    {Fault::UnsupportedEncoding, "The encoding '{0}' is not supported, only UTF-8 and UTF-16 are."},
    {Fault::ContradictingEncoding, "The document says its encoding is '{0}', but it is another one."},
    {Fault::MalformedDeclaration, "The XML declaration is malformed."},
    {Fault::MisplacedDeclaration, "An XML declaration can only stand at the very beginning."},
    {Fault::DocumentType, "A document type is not accepted."},
    {Fault::UnknownMarkup, "'<!' begins neither a comment nor a CDATA section here."},
    {Fault::NoInstructionName, "'<?' must be followed by a name."},
    {Fault::ReservedName, "A processing instruction cannot have the name '{0}'."},
    {Fault::MalformedInstruction,
     "The processing instruction '{0}' needs white space or '?>' after its name."},
    {Fault::DashesInComment, "A comment cannot contain '--'."},
    {Fault::TextOutsideRoot, "There is text outside the root element."},
    {Fault::SecondRoot, "The document has a second root element, '{0}'."},
    {Fault::NoTagName, "'<' must be followed by a name, or be written as '&lt;'."},
    {Fault::NoTagEnd, "'/' must be followed by '>' here."},
    {Fault::NoAttribute, "The start tag '{0}' goes on with neither '>' nor white space and an attribute."},
    {Fault::NoEqualsSign, "The attribute '{0}' must be followed by '='."},
    {Fault::NoQuote, "The value of the attribute '{0}' must stand in quotes."},
    {Fault::LessThanInValue,
     "The value of the attribute '{0}' contains '<', which must be written as '&lt;'."},
    {Fault::AttributeTwice, "The attribute '{0}' is given twice."},
    {Fault::TooDeep, "The element '{0}' is nested too deep."},
    {Fault::TooLong, "The tag is too long."},
    {Fault::NoStartTag, "The end tag '{0}' has no start tag."},
    {Fault::OtherEndTag, "The end tag of '{1}' was expected, not that of '{0}'."},
    {Fault::MalformedEndTag, "The end tag '{0}' must be followed by '>'."},
    {Fault::SectionEndInText, "Text cannot contain ']]>', only ']]&gt;'."},
    {Fault::MalformedReference, "'&' must begin a reference, or be written as '&amp;'."},
    {Fault::MalformedNumber, "A character reference is a number between '&#' or '&#x' and ';'."},
    {Fault::NoCharacter, "XML does not allow the character '{0}'."},
    {Fault::UndefinedEntity, "The entity '{0}' is not defined."},
};

static_assert(InEnumOrder(Sentences, &Sentence::fault, Fault::UndefinedEntity));

} // namespace

std::string Describe(Fault fault, std::string_view word, std::string_view otherWord) {
    return Text::Fill(Sentences[static_cast<std::size_t>(fault)].pattern,
                      {Text::Shorten(word), Text::Shorten(otherWord)});
}

} // namespace Zantrel::Xml
