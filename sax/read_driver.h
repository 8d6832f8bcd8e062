// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/read_report.h>
#include <zantrel/sax/sax_persist.h>
#include <zantrel/sax/sax_reader.h>

#include "sax/limit_texts.h"
#include "sax/limited_source.h"
#include "sax/plain_handler.h"
#include "xml/tokeniser.h"

#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Zantrel::Sax {

/// Turns the tokens of one document into calls on handlers.
///
/// A start tag is held back until the next start or end tag has come, so that the handler finds the element's
/// text complete. An element without children that the tokeniser has as a whole, as nearly all are, is
/// delivered at once, and what its handler sees are views of the document. Of any other one attributes and
/// text are copied, since the tokeniser forgets them. All buffers are kept from element to element: once
/// warm, an element costs no allocation.
///
/// What holds between two tokens:
/// - m_open[1] to m_open[m_depth] are the open elements, from the root inwards. Each has been delivered but
///   the innermost one, which may be held back (Stage::Held): then m_heldText and m_heldAttributes are its
///   own.
/// - An element's end goes to the handler that got its start, or to nobody if nobody did.
/// - m_pushed owns what handlers have pushed, each once, in the order of pushing; the last ones, from
///   pushedBefore of the innermost element on, are those that it has pushed itself, and end with it. Whatever
///   ends the read, the destructor ends the rest, inner ones first.
/// - Each of m_open stays where it is: a tag that was handed out is good until its element ends.
/// Only while HandleTag runs (Stage::Handled) is there an element that can be asked; at any other time the
/// questions have the answers of an element without anything.
///
/// A report changes nothing in what is read, but for the limits that it carries: places are kept for it only,
/// and texts are built for it only. Limits are looked at with a report only, before anything is built or kept
/// of what is beyond them; so the fast path, which has none, knows nothing of them.
class ReadDriver final : public KelSAX::ISAXReader {
public:
    /// All three must outlive the driver; `report` may be null.
    ReadDriver(DocumentSource& source, ISAXPersist& root, ReadReport* report);
    ~ReadDriver() override;

    /// Reads the whole document, once. False at an error, which goes to the report, and when a handler
    /// refused the document. What a handler throws goes through.
    bool Run();

    void PushHandler(ISAXPersist* handler) override;
    std::map<std::string, std::string> const& GetAttributes() override;
    std::string const& GetAncestorTag(std::size_t level) override;
    std::size_t GetDepth() const override;
    bool HasReport() const override { return m_report != nullptr; }
    bool HasAttributes() const override { return m_stage == Stage::Handled && !m_attributes.empty(); }
    ReadReport::Entry GetPlace() const override { return EntryOf(ReadReport::Kind::DroppedValue); }
    ReadLimits const& GetLimits() const override { return m_limits; }

protected:
    std::optional<std::string_view> FindText() const override;
    std::optional<std::string_view> FindAttribute(std::string_view name) const override;
    void ReportUnparsedText(std::wstring_view expected) override;
    void ReportUnparsedAttribute(std::string_view name, std::wstring_view expected) override;
    void ReportDropped(std::wstring_view sentence) override;
    void RefuseDocument(std::wstring_view sentence) override;

private:
    /// An element that is open.
    struct Element {
        std::string tag;
        std::string name;                ///< that an attribute gives it; known only with a report
        ISAXPersist* receiver = nullptr; ///< got its start and gets its end; null when nobody does
        ISAXPersist* receiverOfChildren = nullptr;
        PlainHandler* plainReceiver = nullptr; ///< receiverOfChildren, if it is one
        bool isGroup = false;                  ///< taken by HandleGroup
        std::size_t pushedBefore = 0;          ///< how many of m_pushed belong to elements further out
    };

    enum class Stage { None, Held, Handled }; ///< of the element whose start tag came last

    Element& Innermost() { return *m_open[m_depth]; }
    /// Opens the element of the tokeniser's start tag, and delivers and ends it where the tokeniser has all
    /// of it. False when its handler refused the document, or a limit does.
    bool Begin();
    /// Counts the tokeniser's start tag, in a read with a report.
    bool IsStartWithinLimits();
    /// Counts more text of the innermost element.
    bool IsTextWithinLimits(std::size_t more);
    /// Refuses the document; false for the caller to give.
    bool RefuseBeyond(Limit limit, std::uint64_t number, Xml::Position place);
    /// Opens the element of the tokeniser's start tag.
    void Open();
    /// Keeps what an attribute calls it, for paths.
    void NameInnermost();
    /// Delivers what comes next, as far as it is plain and nobody asks for places. False when a handler
    /// refused the document.
    bool DeliverPlain();
    /// The element of the tokeniser, of which it has all and which isn't opened yet.
    bool DeliverLeaf();
    /// Whether the handler takes the innermost element, held back without text and attributes, as a group.
    bool DeliverGroup();
    /// Delivers and ends the element that was opened last, of which the tokeniser has all.
    bool DeliverWhole();
    /// Keeps what the tokeniser will forget of the start tag.
    void Hold();
    /// Keeps a piece of its text, unless its handler takes it. False when that is too much.
    bool HoldText();
    /// Delivers the element that is held back, if one is. False when its handler refused the document.
    bool Deliver(bool hasChildren);
    /// Calls the handler of the innermost element, whose text and attributes are set. False when it refused.
    bool Handle();
    /// That nobody took the innermost element, or some of its attributes.
    void ReportUntaken(bool isTaken);
    /// Closes the innermost element.
    void End();
    /// The last ones first, down to so many.
    void DestroyPushed(std::size_t keep) noexcept;
    /// What stopped the tokeniser: the source's own words, where it was the source.
    void ReportError();
    /// Without a sentence; without all else, too, where the report would not keep it.
    ReadReport::Entry EntryOf(ReadReport::Kind kind) const;
    /// A text of the document as part of a sentence, where the report, which there is, would keep that.
    std::wstring ShownAs(ReadReport::Kind kind, std::string_view text) const;
    /// False when the entry would be beyond the limit of what is reported.
    bool IsReportWithinLimits(ReadReport::Entry const& entry);
    /// `parts` fill the sentence of that kind. Does nothing without a report.
    void Report(ReadReport::Kind kind, std::initializer_list<std::wstring_view> parts,
                std::error_code code = {});

    ReadLimits const m_limits;
    LimitedSource m_source;
    Xml::Tokeniser m_tokeniser;
    ISAXPersist& m_root;
    ReadReport* m_report;

    /// The document, whose child is the root, then m_depth elements that are open; the others are kept for
    /// their memory.
    std::vector<std::unique_ptr<Element>> m_open;
    std::size_t m_depth = 0;
    /// Owned in the order of pushing, each once.
    std::vector<std::unique_ptr<ISAXPersist>> m_pushed;

    // Counted with a report only.
    std::uint64_t m_elements = 0;
    std::uint64_t m_reportedBytes = 0;
    std::uint64_t m_textBytes = 0; ///< of the innermost element

    /// What follows is of the element whose start tag came last.
    Stage m_stage = Stage::None;
    std::string_view m_text;
    std::span<Xml::Attribute const> m_attributes;
    std::string m_heldText;
    /// Views into m_heldAttributeText.
    std::vector<Xml::Attribute> m_heldAttributes;
    std::string m_heldAttributeText;
    std::map<std::string, std::string> m_attributeMap; ///< made when asked for
    bool m_hasAttributeMap = false;
    Xml::Position m_place;               ///< of the start tag, known only with a report
    mutable std::vector<bool> m_isAsked; ///< for each attribute, with a report
    bool m_isRefused = false;
    bool m_isReported = false; ///< that something of the element was lost
};

} // namespace Zantrel::Sax
