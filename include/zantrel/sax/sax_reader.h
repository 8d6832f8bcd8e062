// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/sax/read_report.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

class ISAXPersist;

namespace KelSAX {

/// What a handler sees of the element whose start tag it is handling. Names, attributes and texts are UTF-8.
///
/// Attributes and text stay readable, as often as wanted and in any order, until HandleTag returns; outside
/// of HandleTag there are none, and every Read... gives false. A reader belongs to the thread that reads.
class ZANTREL_EXPORT ISAXReader {
public:
    ISAXReader() = default;
    ISAXReader(ISAXReader const&) = delete;
    ISAXReader& operator=(ISAXReader const&) = delete;
    virtual ~ISAXReader();

    /// The attribute `name`. False, and `value` stays as it was, when the element has no such attribute.
    bool ReadAttribute(std::string& value, std::string_view name);
    bool ReadAttribute(std::wstring& value, std::string_view name);
    /// The same for "true", "false", "True", "False", "1", "0", with white space at the ends. An attribute
    /// with any other text counts as absent and goes to the read's report.
    bool ReadAttribute(bool& value, std::string_view name);
    /// The attribute `name` without a copy; good until HandleTag returns. Nothing when there is none, and
    /// outside of HandleTag.
    virtual std::optional<std::string_view> FindAttribute(std::string_view name) const = 0;
    /// Whether there is an attribute `name`, whatever it says.
    bool HasAttribute(std::string_view name) const { return FindAttribute(name).has_value(); }
    /// Says that the element may have these attributes though the handler has no use for them. The read's
    /// report names each attribute of an element taken that no handler has asked for, by any of the functions
    /// here. Costs nothing without a report.
    template <class Names> void KnowAttributes(Names const& names) const {
        if (HasReport()) {
            for (std::string_view const name : names) {
                static_cast<void>(FindAttribute(name));
            }
        }
    }
    void KnowAttributes(std::initializer_list<std::string_view> names) const {
        KnowAttributes<std::initializer_list<std::string_view>>(names);
    }

    /// The element's text: its character data up to the first child element. Exact for an element without
    /// children; empty when it is white space only and children follow.
    bool ReadValue(std::wstring& value) const;
    /// The text as one number or flag, white space at its ends aside, whatever the locale. False when it is
    /// none or out of range: `value` stays as it was, and the text goes to the read's report. Numbers: an
    /// optional sign, decimal digits, and for a double a point, an exponent, or "INF" and "NaN" in any case.
    /// Flags: as for attributes.
    bool ReadValue(double& value);
    bool ReadValue(std::int32_t& value);
    bool ReadValue(bool& value);
    template <class T,
              class = std::enable_if_t<!std::is_same_v<T, std::wstring> && !std::is_same_v<T, double> &&
                                       !std::is_same_v<T, std::int32_t> && !std::is_same_v<T, bool>>>
    bool ReadValue(T&) const {
        static_assert(sizeof(T) == 0,
                      "read into std::int32_t, double, bool or std::wstring; an integer parameter is a "
                      "std::int32_t on every platform");
        return false;
    }

    /// The element's text as UTF-8, without a copy; good until HandleTag returns, and empty outside of it.
    std::string_view GetText() const;

    /// Says in one sentence that something of this element was read and could not be kept. Changes nothing in
    /// what is read, and does nothing unless a report is attached to the read.
    void NoteDropped(std::wstring_view sentence);
    /// Ends the read, which gives false although the document is well-formed, when HandleTag returns; the
    /// report hears the sentence. Handlers hear nothing more.
    void Refuse(std::wstring_view sentence);

    /// Gives `handler` the children of the element being handled. The reader owns it from here on, also when
    /// this throws, and deletes it when that element ends. Of several the last gets the children. Null:
    /// nobody gets them.
    virtual void PushHandler(ISAXPersist* handler) = 0;
    /// All attributes by name, namespace declarations among them; all count as asked for. Good until
    /// HandleTag returns.
    virtual std::map<std::string, std::string> const& GetAttributes() = 0;
    /// The name of the element `level` levels up: 0 is the element itself, 1 its parent. Empty above the
    /// root. Good until that element ends.
    virtual std::string const& GetAncestorTag(std::size_t level) = 0;
    /// 0 while the root is handled, 1 for its children, and so on.
    virtual std::size_t GetDepth() const = 0;

    /// Whether a report is attached, so that a note's sentence is worth building.
    virtual bool HasReport() const;
    /// Whether the element has attributes, so that it is worth asking for several. True when it isn't known.
    virtual bool HasAttributes() const;

protected:
    /// The text behind the functions above; nothing while no element is being handled.
    virtual std::optional<std::string_view> FindText() const = 0;

    /// What the report is to hear of; `expected` is a word such as "number". The inherited ones do nothing.
    virtual void ReportUnparsedText(std::wstring_view expected);
    virtual void ReportUnparsedAttribute(std::string_view name, std::wstring_view expected);
    virtual void ReportDropped(std::wstring_view sentence);
    virtual void RefuseDocument(std::wstring_view sentence);

public:
    /// The entry of a dropped value at the element being handled, without a sentence: for who can tell only
    /// later whether something is to be said of it, and then adds it to the report. Empty where no report is
    /// attached.
    virtual Zantrel::ReadReport::Entry GetPlace() const;
    /// What the read keeps to. What can be counted without a handler is counted already; a handler that
    /// meets more than its share of the rest refuses. None is set where no report is attached.
    virtual Zantrel::ReadLimits const& GetLimits() const;
};

} // namespace KelSAX
