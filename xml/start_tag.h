// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/fault.h"
#include "xml/lexemes.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Xml {

/// One attribute of the tag that was scanned last.
/// The name is a view of the document, in the case it has there.
struct Attribute {
    std::string_view name;
    std::string_view value; ///< normalised, references replaced, UTF-8
};

/// A start tag or empty-element tag, as views into what was scanned, or into itself where a value isn't what
/// the document says.
///
/// A tag is scanned as a whole or not at all: one that the buffer cuts is scanned anew from its '<' when
/// there is more, and nothing of the attempt before counts. Names and values are good until the next Scan,
/// and as long as the bytes stay where they are. Values with references or white space to replace are put one
/// behind the other into m_values, and known by their places in it until the tag has ended, since it moves as
/// it grows. Once warm, a tag costs no allocation.
class StartTag {
public:
    /// Scans a tag as most are, in ASCII and without attributes. Gives the place behind it, or null where
    /// Scan has to look.
    char const* ScanPlain(char const* at) noexcept {
        if (!TableOf<decltype(AsciiNameStarts)>[static_cast<unsigned char>(at[1])])
            return nullptr;
        char const* const end = FindEndOfPlainTag(at + 1);
        if (end == nullptr)
            return nullptr;
        m_name = {at + 1, end};
        m_attributes.clear();
        m_isEmptyElement = false;
        return end + 1;
    }

    /// Scans the tag whose '<' is at `at`. Gives the place behind it, or null and why it stopped.
    /// The views stand in the buffer or in this tag. Throws std::bad_alloc; the tag may then be scanned
    /// anew.
    char const* Scan(char const* at, Stop& stop);

    std::string_view Name() const noexcept { return m_name; }
    std::vector<Attribute> const& Attributes() const noexcept { return m_attributes; }
    /// Whether it stands for an end tag as well, as in "<a/>".
    bool IsEmptyElement() const noexcept { return m_isEmptyElement; }

private:
    /// A value in m_values.
    struct NormalisedValue {
        std::size_t attribute;
        std::size_t begin;
        std::size_t size;
    };

    // Each gives the place behind what it scanned, or null and why it stopped.
    /// From behind the name to the end of the tag.
    char const* ScanAttributes(char const* at, Stop& stop);
    /// One attribute, which is added even where its value isn't complete yet: the scan then begins anew.
    char const* ScanAttribute(char const* at, Stop& stop);
    /// Goes on from where the value differs from what it stands for, up to its quote.
    char const* NormaliseValue(char const* at, char quote, Stop& stop);
    /// Turns places in m_values into views, when it moves no more.
    void PlaceNormalisedValues() noexcept;
    /// Whether all names differ.
    bool CheckNames(Stop& stop);
    /// The same by sorting, where comparing each with each would be quadratic.
    bool CheckManyNames(Stop& stop);

    std::string_view m_name;
    std::vector<Attribute> m_attributes;
    bool m_isEmptyElement = false;
    std::vector<NormalisedValue> m_normalised;
    std::string m_values;
    std::vector<std::string_view>
        m_sortedNames; ///< of the last tag with many attributes, kept for its memory
};

} // namespace Zantrel::Xml
