// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/sax/read_limits.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

namespace Zantrel {

/// What a read tells its caller beyond true and false. Given to a reading function, it collects what went
/// wrong and what was passed over, in document order. It also carries the limits of the read. Belongs to one
/// thread at a time.
///
/// Nothing empties it: a report that is given to a second read keeps the entries of the first in front. Take
/// a new one for each file, or clear m_entries between them. (A WriteReport is emptied by each write.)
class ZANTREL_EXPORT ReadReport {
public:
    /// The first three make a read fail; the others tell what was passed over in a read that goes on.
    enum class Kind {
        CannotRead,        ///< the file or stream can't be opened or read
        DocumentError,     ///< the document is not well-formed, or not of the kind that is taken
        RefusedDocument,   ///< refused by the reader of its format, or beyond a limit of the read
        UntakenElement,    ///< an element below the root that no handler took
        UnparsedText,      ///< an element's text that is no value of the wanted type
        UnparsedAttribute, ///< the same of an attribute, which then counts as absent
        DroppedValue,      ///< a value or flag that what it was read for can't have
        UntakenAttribute,  ///< an attribute that no handler asked for, of an element that one took
        PassedOver,        ///< what another function would take, counted; one entry a file, without a place
        MissingElement,    ///< at an element of a file that is checked: a child that must be there isn't
    };

    /// One thing to tell. It owns its texts, so it may be kept beyond the read and the report. They are short
    /// whatever a document holds: what they quote is cut with "...".
    ///
    /// The path has the names of the elements from the root on, as in `Root/Child/Leaf`, and of an element
    /// with an attribute "Name", "uuid" or "Key" its value, as in `Root/Property "Speed"/Property "Limit"`.
    /// Of more than 16 elements it has the first and the last eight with "..." between them.
    struct Entry {
        Kind kind = Kind::DocumentError;
        std::uint64_t line = 0;   ///< from 1; 0 when the entry has no place in a document
        std::uint64_t column = 0; ///< from 1, in characters
        std::wstring path;        ///< of the element in question; empty where there is none
        std::wstring sentence;    ///< for a person, quotes the text in question
        std::error_code error;    ///< of CannotRead of a file, as WriteReport::m_error has it
    };

    /// In document order, read by read: the last one of a read that failed is its cause.
    std::vector<Entry> m_entries;
    /// How many entries are kept. The kinds that make a read fail are kept beyond it, so that the cause is
    /// never lost.
    std::size_t m_limit = 10000;
    /// No entry is kept once the texts of those that are take so many bytes, but for the same kinds.
    std::size_t m_byteLimit = std::size_t(16) << 20;
    /// How many entries were not kept.
    std::uint64_t m_leftOut = 0;
    /// What each read that gets the report keeps to. Looked at when a read begins.
    ReadLimits m_limits;

    /// Keeps the entry, or counts it as left out. A host may add entries of its own.
    void Add(Entry entry);
    /// Whether Add would keep an entry of this kind. Saves building its texts in vain.
    bool HasRoomFor(Kind kind) const noexcept;

    /// "line:column: sentence (path)", without the parts that the entry doesn't have.
    /// Throws std::bad_alloc only.
    static std::wstring Format(Entry const& entry);

private:
    std::size_t m_bytes = 0; ///< of the texts of m_entries, unless the host has emptied it
};

} // namespace Zantrel
