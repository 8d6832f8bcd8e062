// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Zantrel::Xml {

/// What can be wrong with a document. Each has its sentence in a table, and the order is that of the table. A
/// person reads the sentence; nothing else depends on which fault it is.
/// The first ones are those of the input; the others go about in the order in which a document is read.
enum class Fault : std::uint8_t {
    ReadFailed,
    NoEncoding,
    IllFormed,
    Unpaired,
    Truncated,
    NotAllowed,
    EndsInside,
    NotClosed,
    NoRoot,
    UnsupportedEncoding,
    ContradictingEncoding,
    MalformedDeclaration,
    MisplacedDeclaration,
    DocumentType,
    UnknownMarkup,
    NoInstructionName,
    ReservedName,
    MalformedInstruction,
    DashesInComment,
    TextOutsideRoot,
    SecondRoot,
    NoTagName,
    NoTagEnd,
    NoAttribute,
    NoEqualsSign,
    NoQuote,
    LessThanInValue,
    AttributeTwice,
    TooDeep,
    TooLong,
    NoStartTag,
    OtherEndTag,
    MalformedEndTag,
    SectionEndInText,
    MalformedReference,
    MalformedNumber,
    NoCharacter,
    UndefinedEntity,
};

/// Where and why a scan stopped, and the word it stopped at if that says more. Views into the buffer: they
/// are good until more is read. A scan that stops at the NUL at the end of the buffer says nothing about the
/// document yet, unless nothing follows.
struct Stop {
    Fault fault = Fault::ReadFailed;
    char const* place = nullptr;
    std::string_view word = {};

    /// Notes it and gives the null that a scan gives then. `which` is what the sentence quotes, mostly a
    /// name; the fault is told at `where`.
    std::nullptr_t At(Fault what, char const* where, std::string_view which = {}) noexcept {
        fault = what;
        place = where;
        word = which;
        return nullptr;
    }
};

/// The fault as one sentence, with the words it speaks of. Long words are shortened. The words may point
/// anywhere; none is kept.
std::string Describe(Fault fault, std::string_view word, std::string_view otherWord);

} // namespace Zantrel::Xml
