// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/prepared_tag.h>
#include <zantrel/sax/sax_persist.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/sax_writer.h>

#include "io/byte_sink.h"
#include "io/piece_size.h"
#include "sax/escaping.h"
#include "xml/depth_limit.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Sax {

/// Why a document can't be written. Each has its sentence in a table, in this order.
enum class WriteFault {
    None,
    Sink,
    NoName,
    PrefixNotDeclarable,
    AttributeTwice,
    AttributeTooLate,
    NoXmlCharacter,
    NoUtf8,
    NoComment,
    TooDeep,
    NotOpened,
    NotClosed,
    HandlerRefused,
    Refused,
};

/// Turns the calls of handlers into one document.
///
/// All that is written goes through one buffer to the sink. The first fault is kept, and everything after it
/// does nothing. End tags of open elements stand in one string: once warm, an element costs no allocation.
///
/// What holds between two calls:
/// - m_levels are the open elements from the root inwards, and m_open has the end tag of each and what an
///   attribute calls it, one behind the other. After a fault both stay as they were, for they are the path
///   that the report shows.
/// - m_startTag says what the start tag that was written last still takes. Its ">" is left out until
///   something follows, since nothing may, and then it becomes "/>".
/// - m_attributes holds the names of that tag's attributes, as many as there are strings in it; from then on
///   m_manyAttributes holds all of them, so that no number of attributes takes quadratic time.
/// - A line is broken and indented before a tag unless its parent has text: there white space would be
///   content. So an element has either a line for each child or all that it was given, exactly.
/// - Nothing reaches the buffer that the reader of this library would not read back as it was given: names,
///   characters and depth are checked when they come. The sink may have got a part of a document that fails.
///
/// Handlers close elements from destructors: CloseElement and all that it needs can neither throw nor
/// allocate.
class WriteDriver final : public KelSAX::ISAXWriter {
public:
    /// The sink must outlive the driver.
    explicit WriteDriver(Io::ByteSink& sink);

    /// Writes the whole document, once, and hands the last of it to the sink. False at the first fault, which
    /// FaultText and FaultPath then tell. What the handler throws goes through.
    bool Run(ISAXPersist const& handler, KelAM::SaxUtilities::WriteOptions const& options);

    bool SinkFailed() const noexcept { return m_fault == WriteFault::Sink; }
    /// What Run failed of, one sentence, unless it was the sink.
    std::wstring FaultText() const;
    /// The elements that were open then.
    std::wstring FaultPath() const;

    using ISAXWriter::OpenElement;
    using ISAXWriter::WriteAttribute;
    using ISAXWriter::WriteLeaf;
    using ISAXWriter::WriteValue;
    void WriteDoubleValue(double value, int precision, int reserved) override;
    void WriteAttribute(std::string_view name, std::string_view value) override;
    void WriteValue(std::string_view value) override;
    void OpenElement(std::string_view tag) override;
    void CloseElement() noexcept override;
    bool HasFailed() const noexcept override { return m_fault != WriteFault::None; }
    void OpenPrepared(KelSAX::PreparedTag const& tag) override;
    void WriteLeaf(KelSAX::PreparedTag const& tag, std::string_view text) override;
    void WriteDoubleLeaf(KelSAX::PreparedTag const& tag, double value, int precision) override;
    void WriteIntegerLeaf(KelSAX::PreparedTag const& tag, std::int64_t value) override;
    void WriteWideLeaf(KelSAX::PreparedTag const& tag, std::wstring_view text) override;
    void Refuse(std::wstring_view sentence) override;

private:
    static constexpr std::size_t BufferSize = Io::PieceSize;
    /// What stands before a tag at most, or is copied with one and overwritten by what follows.
    static constexpr std::size_t TagRoom = 128 + 2 * Xml::MaxDepth;
    /// Up to so many names are compared one by one, which is faster than any set.
    static constexpr std::size_t FewAttributes = 16;

    /// An element that is open.
    struct Level {
        std::size_t endBegin;  ///< in m_open, of the end tag
        std::size_t nameBegin; ///< likewise; the name goes on to where the next level's end tag begins
        bool hasText;
        bool hasChildren;
    };

    /// What the start tag that came last still takes. Its ">" is written when something follows.
    enum class StartTag { TakesAttributes, TakesContent, Complete };

    Level& Innermost() noexcept { return m_levels[m_depth - 1]; }

    /// The first fault is kept; later ones are its consequences.
    void Fail(WriteFault fault) noexcept;
    /// `subject` is what the sentence quotes.
    void Fail(WriteFault fault, std::string_view subject);

    // The parts of Run, which write on the root.
    void WriteHeaderText(std::wstring const& text);
    void DeclareNamespace(KelAM::SaxUtilities::Namespace const& declared);
    void ReferToSchema(KelAM::SaxUtilities::WriteOptions const& options);
    /// Closes the innermost element, be it the root.
    void EndElement() noexcept;
    /// Opens an element up to the bytes of its tag. Gives the place of its end tag of `endSize` bytes, behind
    /// which PreparedTag::Readable more may be written; null when the element is too deep.
    char* BeginElement(std::size_t endSize, std::vector<KelSAX::PreparedTag::Attribute> const& attributes);
    /// The place of a tag behind what comes before any. That stands in the buffer from then on, but nothing
    /// counts as written before m_used says so.
    char* BeginTag() noexcept;
    /// The place for the text of a leaf, of at most `textSize` bytes, with its start tag before it; null when
    /// it can't go out in one go. Nothing has happened before EndLeaf, which takes the end of the text.
    char* BeginLeaf(KelSAX::PreparedTag const& tag, std::size_t textSize) noexcept;
    void EndLeaf(KelSAX::PreparedTag const& tag, char* at) noexcept;
    /// After a change of what is open.
    void SetLeafLine() noexcept;
    /// Keeps the name; false when the start tag has it.
    bool IsNewAttribute(std::string_view name);
    /// Keeps one of the first few, which the start tag hasn't.
    void KeepAttribute(std::string_view name);
    /// Whether text may follow; from then on the element has no line for each child.
    bool BeginText() noexcept;
    /// Writes the ">" that is still due, if one is.
    void CompleteStartTag() noexcept;
    /// Escapes what XML asks for in that place, or fails.
    void PutChecked(std::string_view text, TextPlace place);
    std::string_view EndTagOf(std::size_t level) const noexcept;
    /// Keeps what the attribute calls the innermost element, if it is one that does; for the path.
    void KeepName(std::string_view attribute, std::string_view value) noexcept;
    std::string_view TagOf(std::size_t level) const noexcept;
    std::string_view NameOf(std::size_t level) const noexcept;

    // Into the buffer, unchecked. After a failed sink they write nowhere, without harm.
    void Put(std::string_view bytes) noexcept;
    /// Behind a line of that size; 0: none. Of the bytes so many may be read as PreparedTag says.
    void PutTag(std::string_view bytes, std::size_t line) noexcept;
    void Put(char byte) noexcept {
        *MakeRoom(1) = byte;
        ++m_used;
    }
    /// The place of `size` bytes in the buffer, which are at most all of it.
    char* MakeRoom(std::size_t size) noexcept {
        if (size > BufferSize - m_used) {
            Flush();
        }
        return m_buffer.get() + m_used;
    }
    void WrittenTo(char const* at) noexcept { m_used = static_cast<std::size_t>(at - m_buffer.get()); }
    void Flush() noexcept;
    void Send(std::string_view bytes) noexcept;

    Io::ByteSink& m_sink;
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_used = 0;

    std::string m_open; ///< longer than what stands in it
    std::size_t m_openUsed = 0;
    std::unique_ptr<Level[]> m_levels; ///< as many as may be open, of which m_depth are
    std::size_t m_depth = 0;
    /// Of the line before a leaf's tag; 0 where none is written in one go: there is text, or a fault, or no
    /// element is open, or as many as may be.
    std::size_t m_leafLine = 0;
    StartTag m_startTag = StartTag::Complete;
    std::array<std::string, FewAttributes> m_attributes; ///< names in the start tag
    std::size_t m_attributeCount = 0;
    std::set<std::string, std::less<>> m_manyAttributes; ///< all names, once they don't fit

    WriteFault m_fault = WriteFault::None;
    std::string m_subject;
    std::wstring m_refusal;
};

} // namespace Zantrel::Sax
