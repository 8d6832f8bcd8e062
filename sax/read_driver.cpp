// SPDX-License-Identifier: Apache-2.0
#include "sax/read_driver.h"

#include "sax/report_texts.h"
#include "text/enum_order.h"
#include "text/numbers.h"
#include "text/sentences.h"
#include "text/unicode.h"

#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <iterator>

namespace Zantrel::Sax {

namespace {

using Kind = ReadReport::Kind;

/// What is longer is offered to its handler in pieces.
constexpr std::size_t LongText = std::size_t(64) * 1024;

struct KindText {
    Kind kind;
    std::wstring_view pattern;
};

// Those that are a part alone come as a whole sentence from whoever knows more.
constexpr KindText KindTexts[] = {
    {Kind::CannotRead, L"{0}"},
    {Kind::DocumentError, L"{0}"},
    {Kind::RefusedDocument, L"{0}"},
    {Kind::UntakenElement, L"The element \"{0}\" is not known here and was passed over."},
    {Kind::UnparsedText, L"The text \"{0}\" is no {1} and was passed over."},
    {Kind::UnparsedAttribute, L"The attribute {0}=\"{1}\" is no {2} and counts as absent."},
    {Kind::DroppedValue, L"{0}"},
    {Kind::UntakenAttribute, L"The attribute {0}=\"{1}\" is not known here and was passed over."},
    {Kind::PassedOver, L"{0}"},
};

static_assert(InEnumOrder(KindTexts, &KindText::kind, Kind::PassedOver));

/// What XML itself has attributes for, and the reference to a schema: no handler's matter.
bool IsReserved(std::string_view attribute) {
    constexpr std::string_view Prefixes[] = {"xmlns:", "xml:", "xsi:"};
    return attribute == "xmlns" ||
           std::any_of(std::begin(Prefixes), std::end(Prefixes), [attribute](std::string_view prefix) {
               return attribute.substr(0, prefix.size()) == prefix;
           });
}

// Asked once for each handler and not for each element: the cast costs as much as a leaf.
PlainHandler* PlainOf(ISAXPersist* handler) { return dynamic_cast<PlainHandler*>(handler); }

} // namespace

ReadDriver::ReadDriver(DocumentSource& source, ISAXPersist& root, ReadReport* report)
    : m_limits(report != nullptr ? report->m_limits : ReadLimits()), m_source(source, m_limits.m_bytes),
      m_tokeniser(m_source), m_root(root), m_report(report) {
    m_tokeniser.LimitTokens(m_limits.m_textBytes);
    m_open.push_back(std::make_unique<Element>());
    m_open.front()->receiverOfChildren = &root;
}

ReadDriver::~ReadDriver() { DestroyPushed(0); }

// An element that isn't delivered as it begins is so by whatever tag comes next: a start, then it has
// children, or its own end. Between the elements there are only texts that are nobody's.
bool ReadDriver::Run() {
    // Before the first byte is read: what turns out to be no XML leaves the defaults, too.
    m_root.SetDefaults();
    for (;;) {
        switch (m_stage == Stage::Held ? m_tokeniser.Next() : m_tokeniser.NextTag()) {
        case Xml::Token::StartTag:
            if (!Deliver(true) || !Begin() || !DeliverPlain()) {
                return false;
            }
            break;
        case Xml::Token::Text:
            if (!HoldText()) {
                return false;
            }
            break;
        case Xml::Token::EndTag:
            if (!Deliver(false)) {
                return false;
            }
            End();
            if (!DeliverPlain()) {
                return false;
            }
            break;
        case Xml::Token::End:
            m_root.ResolveReferences(*this);
            if (m_isRefused) {
                return false;
            }
            m_root.InitAfterLoading();
            return true;
        case Xml::Token::Error:
            ReportError();
            return false;
        }
    }
}

// A report knows the place of each tag, for which the tokeniser would have to stop at it.
bool ReadDriver::DeliverPlain() {
    bool isGoingOn = true;
    while (isGoingOn && m_report == nullptr) {
        switch (m_tokeniser.NextPlain()) {
        case Xml::Plain::Leaf:
            isGoingOn = Deliver(true) && DeliverLeaf();
            break;
        case Xml::Plain::Group:
            isGoingOn = Deliver(true);
            Open();
            m_heldText.clear();
            m_heldAttributes.clear();
            break;
        case Xml::Plain::End:
            End();
            break;
        case Xml::Plain::None:
            return true;
        }
    }
    return isGoingOn;
}

// In one step where the receiver takes leaves of this name; otherwise as any element, by HandleTag.
bool ReadDriver::DeliverLeaf() {
    PlainHandler* const receiver = Innermost().plainReceiver;
    if (receiver != nullptr && receiver->HandleLeaf(m_tokeniser.Name(), m_tokeniser.Text())) {
        return true;
    }
    Open();
    return DeliverWhole();
}

// A group that its receiver walks into itself has no handler of its own: none is made, pushed or ended.
bool ReadDriver::DeliverGroup() {
    Element const& parent = *m_open[m_depth - 1];
    Element& element = Innermost();
    element.isGroup = parent.plainReceiver != nullptr && parent.plainReceiver->HandleGroup(element.tag);
    if (element.isGroup) {
        element.receiver = element.receiverOfChildren = parent.receiverOfChildren;
        element.plainReceiver = parent.plainReceiver;
        element.pushedBefore = m_pushed.size();
        m_stage = Stage::None;
    }
    return element.isGroup;
}

// A leaf that lies whole in the input is delivered at once. Any other element is held until the tag behind
// it tells whether it has children.
bool ReadDriver::Begin() {
    if (m_report != nullptr && !IsStartWithinLimits()) {
        return false;
    }
    Open();
    if (m_tokeniser.TakeLeaf()) {
        return DeliverWhole();
    }
    Hold();
    return true;
}

bool ReadDriver::IsStartWithinLimits() {
    m_textBytes = 0;
    ++m_elements;
    struct Count {
        Limit limit;
        std::uint64_t number, most;
    };
    Count const counts[] = {
        {Limit::Text, m_tokeniser.TagSize(), m_limits.m_textBytes},
        {Limit::Elements, m_elements, m_limits.m_elements},
        {Limit::Depth, m_depth + 1, m_limits.m_depth},
    };
    for (Count const& count : counts) {
        if (count.number > count.most) {
            return RefuseBeyond(count.limit, count.most, m_tokeniser.Where());
        }
    }
    return true;
}

// At the element and not where the piece begins, which depends on how the document comes.
bool ReadDriver::IsTextWithinLimits(std::size_t more) {
    if (m_report == nullptr) {
        return true;
    }
    m_textBytes += more;
    return m_textBytes <= m_limits.m_textBytes || RefuseBeyond(Limit::Text, m_limits.m_textBytes, m_place);
}

bool ReadDriver::RefuseBeyond(Limit limit, std::uint64_t number, Xml::Position place) {
    m_isRefused = true;
    ReadReport::Entry entry = EntryOf(Kind::RefusedDocument);
    entry.line = place.line;
    entry.column = place.column;
    entry.sentence = BeyondLimit(limit, number);
    m_report->Add(std::move(entry));
    return false;
}

void ReadDriver::Open() {
    // Elements that were open before are used again, for the memory of their names.
    if (m_open.size() == m_depth + 1) {
        m_open.push_back(std::make_unique<Element>());
    }
    ++m_depth;
    std::string& tag = Innermost().tag; // by the two calls that are inlined, other than those that assign
    tag.resize(m_tokeniser.Name().size());
    m_tokeniser.Name().copy(tag.data(), tag.size());
    m_stage = Stage::Held;
    m_hasAttributeMap = false;
    if (m_report != nullptr) {
        m_place = m_tokeniser.Where();
        m_isReported = false;
        NameInnermost();
    }
}

// Paths in reports call profiles and items by name, which stands in an attribute that is gone by the time of
// a fault.
void ReadDriver::NameInnermost() {
    std::string& name = Innermost().name;
    name.clear();
    for (Xml::Attribute const& attribute : m_tokeniser.Attributes()) {
        if (NamesElements(attribute.name)) {
            name = Text::Shorten(attribute.value, LongestName);
            return;
        }
    }
}

bool ReadDriver::DeliverWhole() {
    m_text = m_tokeniser.Text();
    m_attributes = m_tokeniser.Attributes();
    bool const isGoingOn = IsTextWithinLimits(m_text.size()) && Handle();
    if (isGoingOn) {
        End();
    }
    return isGoingOn;
}

// The tokeniser's views end with its next step, so what is held is copied. Most elements have nothing.
void ReadDriver::Hold() {
    m_heldText.clear();
    m_heldAttributes = m_tokeniser.Attributes();
    if (m_heldAttributes.empty()) {
        return;
    }
    std::size_t size = 0;
    for (Xml::Attribute const& attribute : m_heldAttributes) {
        size += attribute.name.size() + attribute.value.size();
    }
    m_heldAttributeText.clear();
    m_heldAttributeText.reserve(size); // so that it stays where it is
    for (Xml::Attribute& attribute : m_heldAttributes) {
        for (std::string_view* part : {&attribute.name, &attribute.value}) {
            std::size_t const begin = m_heldAttributeText.size();
            m_heldAttributeText.append(*part);
            *part = std::string_view(m_heldAttributeText).substr(begin);
        }
    }
}

/// Of an element whose text goes on.
bool ReadDriver::HoldText() {
    if (!IsTextWithinLimits(m_tokeniser.Text().size())) {
        return false;
    }
    m_heldText.append(m_tokeniser.Text());
    // Offered before it is whole, so that an attachment of gigabytes is never held as one text.
    if (m_heldText.size() > LongText) {
        ISAXPersist* const receiver = m_open[m_depth - 1]->receiverOfChildren;
        if (receiver != nullptr && receiver->HandleTextPiece(Innermost().tag, m_heldText)) {
            m_heldText.clear();
        }
    }
    return true;
}

// White space in front of a child is layout and no text; in a leaf it is what the document says.
bool ReadDriver::Deliver(bool hasChildren) {
    if (m_stage != Stage::Held) {
        return true;
    }
    bool const isPlain = hasChildren && m_report == nullptr && m_heldText.empty() && m_heldAttributes.empty();
    if (isPlain && DeliverGroup()) {
        return true;
    }
    m_text = m_heldText;
    m_attributes = m_heldAttributes;
    if (hasChildren && Text::Trim(m_text).empty()) {
        m_text = {};
    }
    return Handle();
}

// The receivers are set before the handler is called, since it pushes while it handles.
bool ReadDriver::Handle() {
    m_stage = Stage::Handled;
    Element& element = Innermost();
    element.receiver = m_open[m_depth - 1]->receiverOfChildren;
    element.receiverOfChildren = element.receiver;
    // The root comes by HandleTag always, and so the document has no such receiver.
    element.plainReceiver = m_depth == 1 ? PlainOf(&m_root) : m_open[m_depth - 1]->plainReceiver;
    element.isGroup = false;
    // What is pushed from here on goes when this element ends.
    element.pushedBefore = m_pushed.size();
    if (m_report != nullptr) {
        m_isAsked.assign(m_attributes.size(), false);
    }
    bool const isTaken = element.receiver != nullptr && element.receiver->HandleTag(element.tag, *this);
    if (m_report != nullptr && !m_isRefused) {
        ReportUntaken(isTaken);
    }
    m_stage = Stage::None;
    return !m_isRefused;
}

// The root may go untaken: a format whose handler reads children only says nothing of it.
void ReadDriver::ReportUntaken(bool isTaken) {
    if (!isTaken) {
        if (m_depth > 1 && !m_isReported) {
            Report(Kind::UntakenElement, {ShownAs(Kind::UntakenElement, Innermost().tag)});
        }
        return;
    }
    for (std::size_t i = 0; i < m_attributes.size(); ++i) {
        Xml::Attribute const& attribute = m_attributes[i];
        if (!m_isAsked[i] && !IsReserved(attribute.name)) {
            Report(Kind::UntakenAttribute, {ShownAs(Kind::UntakenAttribute, attribute.name),
                                            ShownAs(Kind::UntakenAttribute, attribute.value)});
        }
    }
}

// Handlers that the element pushed end after the call: the receiver may use them in it.
void ReadDriver::End() {
    Element& element = Innermost();
    if (element.isGroup) {
        element.plainReceiver->HandleGroupEnd();
    } else if (element.receiver != nullptr) {
        element.receiver->HandleEndTag(element.tag);
    }
    DestroyPushed(element.pushedBefore);
    // The tag was handed out as good until the element's end, so it goes last.
    --m_depth;
}

void ReadDriver::DestroyPushed(std::size_t keep) noexcept {
    while (m_pushed.size() > keep) {
        // Off the list first: a destructor may push.
        std::unique_ptr<ISAXPersist> const last = std::move(m_pushed.back());
        m_pushed.pop_back();
    }
}

// Owned from the first moment, so that it ends also when it can't be kept. One that is pushed once more, or
// the root itself, has its owner already, and gets the children all the same.
void ReadDriver::PushHandler(ISAXPersist* handler) {
    bool const hasOwner = handler == nullptr || handler == &m_root ||
                          std::any_of(m_pushed.begin(), m_pushed.end(),
                                      [handler](auto const& other) { return other.get() == handler; });
    if (!hasOwner) {
        std::unique_ptr<ISAXPersist> pushed(handler);
        m_pushed.push_back(std::move(pushed));
    }
    Innermost().receiverOfChildren = handler;
    Innermost().plainReceiver = PlainOf(handler);
}

// Most handlers ask for attributes by name; the map is made for those that want all, once an element.
std::map<std::string, std::string> const& ReadDriver::GetAttributes() {
    if (m_stage != Stage::Handled) {
        static std::map<std::string, std::string> const none;
        return none;
    }
    m_isAsked.assign(m_isAsked.size(), true);
    if (!m_hasAttributeMap) {
        m_attributeMap.clear();
        for (Xml::Attribute const& attribute : m_attributes) {
            m_attributeMap.emplace(attribute.name, attribute.value);
        }
        m_hasAttributeMap = true;
    }
    return m_attributeMap;
}

std::string const& ReadDriver::GetAncestorTag(std::size_t level) {
    static std::string const none;
    return level < m_depth ? m_open[m_depth - level]->tag : none;
}

std::size_t ReadDriver::GetDepth() const { return m_depth != 0 ? m_depth - 1 : 0; }

std::optional<std::string_view> ReadDriver::FindText() const {
    return m_stage == Stage::Handled ? std::optional<std::string_view>(m_text) : std::nullopt;
}

// A search from the front: few elements have more than a handful, and the map above is there for the others.
std::optional<std::string_view> ReadDriver::FindAttribute(std::string_view name) const {
    if (m_stage == Stage::Handled) {
        for (Xml::Attribute const& attribute : m_attributes) {
            if (attribute.name == name) {
                if (m_report != nullptr) {
                    m_isAsked[static_cast<std::size_t>(&attribute - m_attributes.data())] = true;
                }
                return attribute.value;
            }
        }
    }
    return std::nullopt;
}

void ReadDriver::ReportUnparsedText(std::wstring_view expected) {
    if (m_report != nullptr) {
        Report(Kind::UnparsedText, {ShownAs(Kind::UnparsedText, m_text), expected});
    }
}

void ReadDriver::ReportUnparsedAttribute(std::string_view name, std::wstring_view expected) {
    if (m_report != nullptr) {
        std::string_view const text = FindAttribute(name).value_or(std::string_view());
        Report(Kind::UnparsedAttribute,
               {ShownAs(Kind::UnparsedAttribute, name), ShownAs(Kind::UnparsedAttribute, text), expected});
    }
}

void ReadDriver::ReportDropped(std::wstring_view sentence) { Report(Kind::DroppedValue, {sentence}); }

void ReadDriver::RefuseDocument(std::wstring_view sentence) {
    // Only noted here: the handler is still running, and Deliver ends the read behind it.
    m_isRefused = true;
    Report(Kind::RefusedDocument, {sentence});
}

// Of a source that failed the tokeniser only knows that it did.
void ReadDriver::ReportError() {
    if (m_source.IsBeyond() || m_tokeniser.HasMetLongToken()) {
        bool const isLong = m_tokeniser.HasMetLongToken();
        RefuseBeyond(isLong ? Limit::Text : Limit::Bytes, isLong ? m_limits.m_textBytes : m_limits.m_bytes,
                     m_tokeniser.Where());
    } else if (m_report != nullptr) {
        Io::Failure const failure = m_source.WhyItFailed();
        if (failure.sentence.empty()) {
            Report(Kind::DocumentError, {StringConversion::Utf8ToNative(m_tokeniser.ErrorText())});
        } else {
            Report(Kind::CannotRead, {failure.sentence}, failure.code);
        }
    }
}

ReadReport::Entry ReadDriver::EntryOf(Kind kind) const {
    ReadReport::Entry entry;
    entry.kind = kind;
    if (m_report != nullptr && m_report->HasRoomFor(kind)) {
        // While an element is handled, the tokeniser stands behind its text already.
        Xml::Position const place = m_stage == Stage::Handled ? m_place : m_tokeniser.Where();
        entry.line = place.line;
        entry.column = place.column;
        entry.path = PathOf(m_depth, [this](std::size_t level) {
            return PathStep{m_open[level + 1]->tag, m_open[level + 1]->name};
        });
    }
    return entry;
}

std::wstring ReadDriver::ShownAs(Kind kind, std::string_view text) const {
    return m_report->HasRoomFor(kind) ? Excerpt(text) : std::wstring();
}

// An entry that has no room costs no text, only the count.
void ReadDriver::Report(Kind kind, std::initializer_list<std::wstring_view> parts, std::error_code code) {
    if (m_report == nullptr) {
        return;
    }
    m_isReported = true;
    ReadReport::Entry entry = EntryOf(kind);
    entry.error = code;
    if (m_report->HasRoomFor(kind)) {
        entry.sentence = Text::Fill(KindTexts[static_cast<std::size_t>(kind)].pattern, parts);
    }
    if (kind <= Kind::RefusedDocument || IsReportWithinLimits(entry)) {
        m_report->Add(std::move(entry));
    }
}

// The first that is beyond it ends the read, when its handler returns; what that still has to say is gone.
bool ReadDriver::IsReportWithinLimits(ReadReport::Entry const& entry) {
    bool const wasWithin = m_reportedBytes <= m_limits.m_reportBytes;
    m_reportedBytes += (entry.path.size() + entry.sentence.size()) * sizeof(wchar_t);
    bool const isWithin = m_reportedBytes <= m_limits.m_reportBytes;
    if (wasWithin && !isWithin) {
        RefuseBeyond(Limit::Report, m_limits.m_reportBytes, {entry.line, entry.column});
    }
    return isWithin;
}

} // namespace Zantrel::Sax
