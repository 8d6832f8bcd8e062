// SPDX-License-Identifier: Apache-2.0
//
// Reads the same bytes with the tokeniser, whole and in pieces, and with libexpat: verdict and events must be
// equal but for what the two are meant to take differently.

#include "fuzz/target.h"
#include "tests/conformance/two_readers.h"
#include "text/surrogates.h"
#include "text/utf8.h"
#include "xml/names.h"

#include <algorithm>

namespace Fuzz {

namespace {

using TwoReaders::Reading;
using Zantrel::Text::IsHighSurrogate;
using Zantrel::Text::IsLowSurrogate;

std::string Told(char const* what, Reading const& ours, Reading const& theirs) {
    return what + ("\nours:   " + ours.error) + "\ntheirs: " + theirs.error + " (at byte " +
           std::to_string(theirs.errorByte) + ")";
}

enum class Form { Utf8, LittleEndian, BigEndian };

Form FormOf(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE")   ? Form::LittleEndian
           : bytes.starts_with("\xFE\xFF") ? Form::BigEndian
                                           : Form::Utf8;
}

char32_t UnitAt(std::string_view bytes, Form form, std::size_t at) {
    std::size_t const low = form == Form::LittleEndian ? 0 : 1;
    return static_cast<unsigned char>(bytes[at + low]) |
           static_cast<char32_t>(static_cast<unsigned char>(bytes[at + 1 - low])) << 8;
}

/// In UTF-16 libexpat takes a high surrogate with whatever follows it, and three signs of Latin-1 into names,
/// which no edition has there.
bool HasWhatLibexpatTakesInUtf16(std::string_view bytes) {
    Form const form = FormOf(bytes);
    bool isOpen = false;
    for (std::size_t at = 0; form != Form::Utf8 && at + 2 <= bytes.size(); at += 2) {
        char32_t const unit = UnitAt(bytes, form, at);
        if (IsLowSurrogate(unit) != isOpen || unit == 0xAA || unit == 0xB5 || unit == 0xBA)
            return true;
        isOpen = IsHighSurrogate(unit);
    }
    return isOpen;
}

/// libexpat also takes UTF-16 without a byte order mark, and two more encodings.
bool IsInAnotherEncoding(std::string_view bytes, Reading const& theirs) {
    if (bytes.substr(0, 2).find('\0') != bytes.npos)
        return true;
    std::string name = theirs.declaredEncoding;
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? char(c - 0x20) : c; });
    return name == "ISO-8859-1" || name == "US-ASCII";
}

/// libexpat knows the names of the fourth edition only.
bool StopsAtNameOfFifthEdition(std::string_view bytes, Reading const& theirs) {
    using namespace Zantrel::Xml;
    if (theirs.errorCode != XML_ERROR_INVALID_TOKEN || theirs.errorByte + 2 > bytes.size())
        return false;
    std::string character;
    char32_t code = 0;
    if (Form const form = FormOf(bytes); form == Form::Utf8) {
        char const* const at = bytes.data() + theirs.errorByte;
        auto const decoded = Zantrel::Text::DecodeUtf8(at, bytes.data() + bytes.size());
        code = decoded.code;
        character.assign(at, decoded.size);
    } else {
        code = UnitAt(bytes, form, theirs.errorByte);
        if (IsHighSurrogate(code) || IsLowSurrogate(code))
            return true; // the fourth edition has no name character beyond U+FFFF
        character.resize(4);
        character.resize(
            static_cast<std::size_t>(Zantrel::Text::EncodeUtf8(code, character.data()) - character.data()));
    }
    return IsNameStart(code) != IsPortableXmlName(character) ||
           IsNameCharacter(code) != IsPortableXmlName("a" + character);
}

} // namespace

std::string FaultOfTokeniser(std::string const& bytes, unsigned) {
    Reading const theirs = TwoReaders::ReadByExpat(bytes);
    Reading const whole = TwoReaders::ReadByTokeniser(bytes, bytes.size());
    std::size_t const pieceSize = 1 + std::hash<std::string_view>()(bytes) % 40;
    Reading const ours = TwoReaders::ReadByTokeniser(bytes, pieceSize);

    if (ours.isAccepted != whole.isAccepted || ours.error != whole.error ||
        ours.errorPosition.line != whole.errorPosition.line ||
        ours.errorPosition.column != whole.errorPosition.column) {
        return Told("the pieces make a difference", ours, whole);
    }
    if (ours.isAccepted && ours.events != whole.events) {
        return Told("the pieces change the events", ours, whole);
    }
    if (ours.isAccepted && !theirs.isAccepted) {
        return StopsAtNameOfFifthEdition(bytes, theirs) ? "" : Told("only we accept it", ours, theirs);
    }
    if (!ours.isAccepted && theirs.isAccepted) {
        return IsInAnotherEncoding(bytes, theirs) || HasWhatLibexpatTakesInUtf16(bytes)
                   ? ""
                   : Told("only libexpat accepts it", ours, theirs);
    }
    return ours.isAccepted && ours.events != theirs.events ? Told("the events differ", ours, theirs) : "";
}

} // namespace Fuzz
