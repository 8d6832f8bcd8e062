// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace KelSAX {

class PreparedTag;

/// What a handler writes the element that is open through. Names and texts are UTF-8, or wide and converted
/// here through a buffer that is kept, so that writing a leaf allocates nothing.
///
/// What XML can't carry (most control characters, lone surrogates, ill-formed UTF-8, a name that is no XML
/// name, an attribute given twice or after content, more than 1,024 elements in each other) makes the whole
/// write fail; the calls after it do nothing. A writer belongs to the thread that writes, and is good until
/// the handler's Write returns. Views are read during the call only.
class ZANTREL_EXPORT ISAXWriter {
public:
    ISAXWriter() = default;
    ISAXWriter(ISAXWriter const&) = delete;
    ISAXWriter& operator=(ISAXWriter const&) = delete;
    virtual ~ISAXWriter();

    /// Writes a number as text of the open element, with `precision` significant digits, whatever the locale;
    /// 17 read back bit for bit. "INF", "-INF" and "NaN" for what is not finite. `reserved` is 0.
    virtual void WriteDoubleValue(double value, int precision, int reserved) = 0;
    /// Adds an attribute to the element opened last, which must not have content or children yet.
    virtual void WriteAttribute(std::string_view name, std::string_view value) = 0;
    /// Adds text to the open element, escaped as XML requires.
    virtual void WriteValue(std::string_view value) = 0;
    /// Opens a child of the open element. MSAXTagWriter calls these two in pairs.
    virtual void OpenElement(std::string_view tag) = 0;
    virtual void CloseElement() noexcept = 0;
    /// Whether the write has failed already. A handler that walks a deep tree may stop then.
    virtual bool HasFailed() const noexcept;

    /// OpenElement with the name and WriteAttribute with each attribute of the tag, but cheaper. All that
    /// these would refuse fails the write. The tag is read during the call only.
    virtual void OpenPrepared(PreparedTag const& tag);
    /// A whole element with nothing but text in one go: OpenPrepared, WriteValue, CloseElement.
    virtual void WriteLeaf(PreparedTag const& tag, std::string_view text);
    /// The same with WriteDoubleValue.
    virtual void WriteDoubleLeaf(PreparedTag const& tag, double value, int precision);
    /// The same with WriteIntegerValue, and WriteLeaf with a wide text; these give WriteLeaf the text in
    /// UTF-8.
    virtual void WriteIntegerLeaf(PreparedTag const& tag, std::int64_t value);
    virtual void WriteWideLeaf(PreparedTag const& tag, std::wstring_view text);

    /// Makes the write fail, for the reason that the sentence tells its report. The inherited one does
    /// nothing, and then Write has to answer false.
    virtual void Refuse(std::wstring_view sentence);

    void WriteAttribute(std::string_view name, std::wstring_view value);
    void WriteValue(std::wstring_view value);
    void OpenElement(std::wstring_view tag);
    /// In plain decimal.
    void WriteIntegerValue(std::int64_t value);
    void WriteLeaf(PreparedTag const& tag, std::wstring_view text);

private:
    std::string m_converted;
};

} // namespace KelSAX
