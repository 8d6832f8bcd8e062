// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace KelSAX {

/// The tags of elements that a document has many of: a name, and the attributes that all of them have alike,
/// checked, converted and escaped once. ISAXWriter::OpenPrepared and its like write them.
///
/// Any name and any attribute is taken. With one that XML can't carry the tag isn't ready, and a write fails
/// where it is used, as it does where the parts are given to OpenElement and WriteAttribute. Owns all its
/// texts. Throws std::bad_alloc, after which the tag is only good to be ended. Several threads may use one
/// that none of them changes.
class ZANTREL_EXPORT PreparedTag {
public:
    /// As it was given, in UTF-8 and not escaped.
    struct Attribute {
        std::string name;
        std::string value;
    };

    /// The name in UTF-8, or wide and converted here.
    explicit PreparedTag(std::string_view name);
    explicit PreparedTag(std::wstring_view name);

    /// Behind those that it has.
    void AddAttribute(std::string_view name, std::string_view value);
    void AddAttribute(std::string_view name, std::wstring_view value);

    std::string_view Name() const noexcept {
        return IsReady() ? std::string_view(m_bytes.data() + 2, m_endSize - 3) : std::string_view(m_bytes);
    }
    std::vector<Attribute> const& Attributes() const noexcept { return m_attributes; }

    /// Whether XML can carry all of it and it has 16 attributes at most: more are written one by one.
    /// Start and End are empty where it can't.
    bool IsReady() const noexcept { return m_endSize != 0; }
    /// The bytes of the start tag without the `>` at its end, as in `<name key="value"`. Good until the tag
    /// is changed, as is End.
    std::string_view Start() const noexcept { return {m_bytes.data() + m_endSize, m_startSize}; }
    /// The bytes of the end tag, as in `</name>`.
    std::string_view End() const noexcept { return {m_bytes.data(), m_endSize}; }
    /// Where the tag is ready, Start and End may be read in pieces of so many bytes, of which the last one
    /// goes on behind the end: a known number is copied fastest.
    static constexpr std::size_t Readable = 32;

private:
    std::vector<Attribute> m_attributes;
    std::string m_bytes; ///< End, Start, and what else is Readable; the name alone when not ready
    std::size_t m_endSize = 0;
    std::size_t m_startSize = 0;
};

} // namespace KelSAX
