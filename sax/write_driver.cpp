// SPDX-License-Identifier: Apache-2.0
#include "sax/write_driver.h"

#include "sax/report_texts.h"
#include "text/enum_order.h"
#include "text/numbers.h"
#include "text/sentences.h"
#include "text/surrogates.h"
#include "text/unicode.h"
#include "text/utf8.h"
#include "xml/blocks.h"
#include "xml/depth_limit.h"
#include "xml/names.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace Zantrel::Sax {

namespace {

constexpr std::wstring_view InstanceNamespace = L"http://www.w3.org/2001/XMLSchema-instance";

struct FaultPattern {
    WriteFault fault;
    std::wstring_view pattern;
};

constexpr FaultPattern FaultPatterns[] = {
    {WriteFault::None, L""},
    {WriteFault::Sink, L"The document can't be written."},
    {WriteFault::NoName, L"\"{0}\" is no name that every XML reader takes."},
    {WriteFault::PrefixNotDeclarable, L"The namespace prefix \"{0}\" can't be declared."},
    {WriteFault::AttributeTwice, L"The attribute \"{0}\" is given twice."},
    {WriteFault::AttributeTooLate, L"The attribute \"{0}\" comes after the element's content."},
    {WriteFault::NoXmlCharacter, L"XML can't carry the character {0}."},
    {WriteFault::NoUtf8, L"The text \"{0}\" has a lone surrogate or is no UTF-8."},
    {WriteFault::NoComment, L"The header text \"{0}\" has \"--\" in it, which ends a comment."},
    {WriteFault::TooDeep, L"The elements are nested too deep to be read again."},
    {WriteFault::NotOpened, L"The handler closed an element that it had not opened."},
    {WriteFault::NotClosed, L"The handler left an element open."},
    {WriteFault::HandlerRefused, L"The handler refused to write."},
    {WriteFault::Refused, L""}, // it has said why
};

static_assert(InEnumOrder(FaultPatterns, &FaultPattern::fault, WriteFault::Refused));

/// So much of what an attribute calls an element that a path tells when it was cut.
constexpr std::size_t KeptOfName = LongestName + 1;

/// Of a text in content, by escaping.
constexpr std::size_t MostGrowth = 5;

/// A line that is broken and indented for a tag at the depth that most keep within.
constexpr std::string_view Line = "\n                               ";
/// How long that is at any depth: two blanks a level.
constexpr std::size_t LineSize(std::size_t depth) { return 1 + 2 * depth; }

/// One of a prepared tag's two. Writes up to Readable bytes behind it, too.
inline char* CopyTag(std::string_view bytes, char* into) noexcept {
    constexpr std::size_t Piece = KelSAX::PreparedTag::Readable;
    std::memcpy(into, bytes.data(), Piece); // nearly always all of it
    for (std::size_t done = Piece; done < bytes.size(); done += Piece) {
        std::memcpy(into + done, bytes.data() + done, Piece);
    }
    return into + bytes.size();
}

char* Copy(std::string_view bytes, char* into) noexcept {
    std::memcpy(into, bytes.data(), bytes.size());
    return into + bytes.size();
}

/// Copies all of Line in any case, since a known size is copied fastest.
char* BreakLine(char* into, std::size_t size) noexcept {
    std::memcpy(into, Line.data(), Line.size());
    if (size > Line.size()) {
        std::memset(into + Line.size(), ' ', size - Line.size());
    }
    return into + size;
}

/// Gives the end; null where XML can't carry the text.
char* CopyEscaped(std::string_view text, char* into) noexcept {
    auto const fault =
        PutEscaped(text, TextPlace::Content, [&into](std::string_view piece) { into = Copy(piece, into); });
    return fault.kind == TextFault::Kind::None ? into : nullptr;
}

/// The same for a wide text, character by character.
char* CopyEscaped(std::wstring_view text, char* into) noexcept {
    while (!text.empty()) {
        char32_t const code = Text::TakeCodePoint(text);
        if (!Xml::IsXmlCharacter(code)) {
            return nullptr;
        }
        bool const isEscaped = code < 0x80 && NeedsCare(Xml::Byte(static_cast<unsigned char>(code))).Any();
        into = isEscaped ? Copy(EscapeOf(static_cast<char>(code), TextPlace::Content), into)
                         : Text::EncodeUtf8(code, into);
    }
    return into;
}

/// Gives the end; null where the text isn't the same in a document. A block behind it is written, too: it
/// ends the search.
char* CopyPlain(std::wstring_view text, char* into) noexcept {
    if (Text::NarrowAscii(text, into) != text.size()) {
        return nullptr;
    }
    char* const end = into + text.size();
    std::memset(end, 0, Xml::Block::Size);
    return Xml::Find(into, NeedsCare) == end ? end : nullptr;
}

} // namespace

WriteDriver::WriteDriver(Io::ByteSink& sink)
    : m_sink(sink), m_buffer(new char[BufferSize]), m_levels(new Level[Xml::MaxDepth]) {}

// The root is written as any element; the declaration and the comments before it stand in no element. Whether
// the handler has failed the write is asked before what it has left open, and both before the root is closed.
bool WriteDriver::Run(ISAXPersist const& handler, KelAM::SaxUtilities::WriteOptions const& options) {
    Put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    WriteHeaderText(options.m_firstHeaderText);
    WriteHeaderText(options.m_secondHeaderText);
    OpenElement(std::string_view(options.m_rootTag));
    for (KelAM::SaxUtilities::Namespace const& declared : options.m_namespaces) {
        DeclareNamespace(declared);
    }
    ReferToSchema(options);
    if (!HasFailed() && !handler.Write(*this)) {
        Fail(WriteFault::HandlerRefused);
    }
    if (m_depth > 1) {
        Fail(WriteFault::NotClosed);
    }
    if (HasFailed()) {
        return false;
    }
    EndElement();
    Put("\n");
    Flush();
    return !HasFailed();
}

// A comment can't escape anything, so what it can't hold is refused: two dashes, and what no document holds.
void WriteDriver::WriteHeaderText(std::wstring const& text) {
    if (text.empty()) {
        return;
    }
    std::string const utf8 = StringConversion::NativeToUtf8(text);
    if (utf8.find("--") != std::string::npos) {
        Fail(WriteFault::NoComment, utf8);
    }
    Put("\n<!-- ");
    PutChecked(utf8, TextPlace::Comment);
    Put(" -->");
}

// The prefix can be none that is reserved, and no prefix can be taken back by an empty namespace.
void WriteDriver::DeclareNamespace(KelAM::SaxUtilities::Namespace const& declared) {
    std::string const prefix = StringConversion::NativeToUtf8(declared.m_prefix);
    if (prefix.empty()) {
        WriteAttribute("xmlns", declared.m_uri);
    } else if (prefix.find(':') != std::string::npos || prefix == "xmlns" || declared.m_uri.empty()) {
        Fail(WriteFault::PrefixNotDeclarable, prefix);
    } else {
        WriteAttribute("xmlns:" + prefix, declared.m_uri);
    }
}

// The prefix "xsi" is declared unless the host has done so; one that it gave to another namespace is declared
// twice, which fails.
void WriteDriver::ReferToSchema(KelAM::SaxUtilities::WriteOptions const& options) {
    if (options.m_schemaNamespace.empty() || options.m_schemaFile.empty()) {
        return;
    }
    // The attribute is a list, so a blank in a path would end the path.
    std::wstring location = options.m_schemaNamespace + L' ';
    for (wchar_t const unit : options.m_schemaFile) {
        if (unit == L' ' || unit == L'%') {
            location.append(unit == L' ' ? L"%20" : L"%25");
        } else {
            location.push_back(unit);
        }
    }
    bool const isDeclared =
        std::any_of(options.m_namespaces.begin(), options.m_namespaces.end(), [](auto const& declared) {
            return declared.m_prefix == L"xsi" && declared.m_uri == InstanceNamespace;
        });
    if (!isDeclared) {
        WriteAttribute("xmlns:xsi", InstanceNamespace);
    }
    WriteAttribute("xsi:schemaLocation", location);
}

void WriteDriver::WriteDoubleValue(double value, int precision, int) {
    if (BeginText()) {
        char* const at = MakeRoom(Text::NumberRoom);
        m_used += static_cast<std::size_t>(Text::PrintDouble(at, value, precision) - at);
    }
}

void WriteDriver::WriteAttribute(std::string_view name, std::string_view value) {
    if (HasFailed()) {
        return;
    }
    if (!Xml::IsPortableXmlName(name)) {
        return Fail(WriteFault::NoName, name);
    }
    if (m_startTag != StartTag::TakesAttributes) {
        return Fail(WriteFault::AttributeTooLate, name);
    }
    if (!IsNewAttribute(name)) {
        return Fail(WriteFault::AttributeTwice, name);
    }
    Put(' ');
    Put(name);
    Put("=\"");
    PutChecked(value, TextPlace::Attribute);
    Put('"');
    KeepName(name, value);
}

// Comparing is fastest for the few names that most tags have; the strings are kept for the next tag.
bool WriteDriver::IsNewAttribute(std::string_view name) {
    if (m_attributeCount == FewAttributes) {
        if (m_manyAttributes.empty()) {
            m_manyAttributes.insert(m_attributes.begin(), m_attributes.end());
        }
        return m_manyAttributes.emplace(name).second;
    }
    auto const end = m_attributes.begin() + static_cast<std::ptrdiff_t>(m_attributeCount);
    if (std::find(m_attributes.begin(), end, name) != end) {
        return false;
    }
    KeepAttribute(name);
    return true;
}

// Most elements that follow each other have the same ones.
void WriteDriver::KeepAttribute(std::string_view name) {
    std::string& kept = m_attributes[m_attributeCount];
    if (kept != name) {
        kept = name;
    }
    ++m_attributeCount;
}

void WriteDriver::WriteValue(std::string_view value) {
    if (!value.empty()) {
        if (BeginText()) {
            PutChecked(value, TextPlace::Content);
        }
    } else if (m_startTag == StartTag::TakesAttributes) {
        m_startTag =
            StartTag::TakesContent; // an attribute after an empty value is a fault as after any other
    }
}

void WriteDriver::OpenElement(std::string_view tag) {
    if (HasFailed()) {
        return;
    }
    if (!Xml::IsPortableXmlName(tag)) {
        return Fail(WriteFault::NoName, tag);
    }
    if (char* const end = BeginElement(tag.size() + 3, {})) {
        *Copy(tag, Copy("</", end)) = '>';
        Put('<');
        Put(tag);
    }
}

void WriteDriver::OpenPrepared(KelSAX::PreparedTag const& tag) {
    if (!tag.IsReady()) {
        return ISAXWriter::OpenPrepared(tag);
    }
    char* const end = HasFailed() ? nullptr : BeginElement(tag.End().size(), tag.Attributes());
    if (end != nullptr) {
        CopyTag(tag.End(), end);
        PutTag(tag.Start(), 0);
        for (KelSAX::PreparedTag::Attribute const& attribute : tag.Attributes()) {
            KeepName(attribute.name, attribute.value);
        }
    }
}

// All that can throw comes before the element counts as open, so that a tag that wasn't opened needs no
// closing. The tag before takes no attribute from then on, for its own are forgotten; those of a few go by
// their count.
char* WriteDriver::BeginElement(std::size_t endSize,
                                std::vector<KelSAX::PreparedTag::Attribute> const& attributes) {
    if (m_depth == Xml::MaxDepth) {
        Fail(WriteFault::TooDeep);
        return nullptr;
    }
    if (m_startTag == StartTag::TakesAttributes) {
        m_startTag = StartTag::TakesContent;
    }
    m_attributeCount = 0;
    if (!m_manyAttributes.empty()) {
        m_manyAttributes.clear();
    }
    for (KelSAX::PreparedTag::Attribute const& attribute : attributes) {
        KeepAttribute(attribute.name);
    }
    std::size_t const room = endSize + KeptOfName + KelSAX::PreparedTag::Readable;
    if (m_open.size() < m_openUsed + room) {
        m_open.resize(2 * m_open.size() + room);
    }
    WrittenTo(BeginTag());
    if (m_depth != 0) {
        Innermost().hasChildren = true;
    }
    char* const end = m_open.data() + m_openUsed;
    m_levels[m_depth++] = {m_openUsed, m_openUsed + endSize, false, false};
    m_openUsed += endSize;
    SetLeafLine();
    m_startTag = StartTag::TakesAttributes;
    return end;
}

// A line is broken only where no text stands beside the element: white space would be part of it.
inline char* WriteDriver::BeginTag() noexcept {
    char* at = MakeRoom(TagRoom);
    if (m_startTag != StartTag::Complete) {
        *at++ = '>';
    }
    bool const isInText = m_depth != 0 && Innermost().hasText;
    return isInText ? at : BreakLine(at, LineSize(m_depth));
}

// All that a leaf must ask is answered here, once for each element that opens or closes: zero: the long way.
void WriteDriver::SetLeafLine() noexcept {
    bool const takesLeaves = m_depth != 0 && !Innermost().hasText && m_depth < Xml::MaxDepth && !HasFailed();
    m_leafLine = takesLeaves ? LineSize(m_depth) : 0;
}

// Room for the whole leaf is made at once, so that nothing behind this has to flush.
inline char* WriteDriver::BeginLeaf(KelSAX::PreparedTag const& tag, std::size_t textSize) noexcept {
    std::size_t const size = TagRoom + tag.Start().size() + textSize + tag.End().size();
    bool const isTooLong = size > BufferSize - m_used && size > BufferSize;
    if (m_leafLine == 0 || isTooLong || !tag.IsReady()) {
        return nullptr;
    }
    char* at = MakeRoom(size);
    if (m_startTag != StartTag::Complete) {
        *at++ = '>';
    }
    at = CopyTag(tag.Start(), BreakLine(at, m_leafLine));
    *at = '>';
    return at + 1;
}

inline void WriteDriver::EndLeaf(KelSAX::PreparedTag const& tag, char* at) noexcept {
    WrittenTo(CopyTag(tag.End(), at));
    m_startTag = StartTag::Complete;
    Innermost().hasChildren = true;
}

// Whatever is out of the ordinary goes the long way, which also says what is wrong with it.
void WriteDriver::WriteLeaf(KelSAX::PreparedTag const& tag, std::string_view text) {
    bool const isShort = !text.empty() && text.size() < BufferSize / (2 * MostGrowth);
    char* const at = isShort ? BeginLeaf(tag, MostGrowth * text.size()) : nullptr;
    char* const end = at != nullptr ? CopyEscaped(text, at) : nullptr;
    if (end != nullptr) {
        EndLeaf(tag, end);
    } else {
        ISAXWriter::WriteLeaf(tag, text);
    }
}

// Nearly every text is plain ASCII and is narrowed in blocks; a character that isn't starts it anew.
void WriteDriver::WriteWideLeaf(KelSAX::PreparedTag const& tag, std::wstring_view text) {
    bool const isShort = !text.empty() && text.size() < BufferSize / (2 * MostGrowth);
    char* const at = isShort ? BeginLeaf(tag, MostGrowth * text.size() + Xml::Block::Size) : nullptr;
    char* end = at != nullptr ? CopyPlain(text, at) : nullptr;
    if (at != nullptr && end == nullptr) {
        end = CopyEscaped(text, at);
    }
    if (end != nullptr) {
        EndLeaf(tag, end);
    } else {
        ISAXWriter::WriteWideLeaf(tag, text);
    }
}

void WriteDriver::WriteIntegerLeaf(KelSAX::PreparedTag const& tag, std::int64_t value) {
    if (char* const at = BeginLeaf(tag, Text::NumberRoom)) {
        EndLeaf(tag, Text::PrintInteger(at, value));
    } else {
        ISAXWriter::WriteIntegerLeaf(tag, value);
    }
}

void WriteDriver::WriteDoubleLeaf(KelSAX::PreparedTag const& tag, double value, int precision) {
    if (char* const at = BeginLeaf(tag, Text::NumberRoom)) {
        EndLeaf(tag, Text::PrintDouble(at, value, precision));
    } else {
        ISAXWriter::WriteDoubleLeaf(tag, value, precision);
    }
}

// The root was not opened by the handler.
void WriteDriver::CloseElement() noexcept {
    if (m_depth > 1) {
        EndElement();
    } else {
        Fail(WriteFault::NotOpened);
    }
}

// The root's own end, too, which is not the handler's to close. What it says stands before the first fault
// only.
void WriteDriver::EndElement() noexcept {
    if (HasFailed()) {
        return;
    }
    std::string_view const end = EndTagOf(--m_depth);
    Level const& level = m_levels[m_depth];
    if (m_startTag != StartTag::Complete) {
        Put("/>");
    } else {
        PutTag(end, level.hasChildren && !level.hasText ? LineSize(m_depth) : 0);
    }
    m_startTag = StartTag::Complete;
    m_openUsed = level.endBegin;
    SetLeafLine();
}

/// Whether text can follow.
bool WriteDriver::BeginText() noexcept {
    if (m_depth == 0) {
        Fail(WriteFault::NotOpened);
    }
    if (HasFailed()) {
        return false;
    }
    CompleteStartTag();
    Innermost().hasText = true;
    m_leafLine = 0;
    return true;
}

void WriteDriver::CompleteStartTag() noexcept {
    if (m_startTag != StartTag::Complete) {
        Put('>');
        m_startTag = StartTag::Complete;
    }
}

// A fault may leave a part of the text in the buffer: the document is lost anyway.
void WriteDriver::PutChecked(std::string_view text, TextPlace place) {
    TextFault const fault = PutEscaped(text, place, [this](std::string_view piece) { Put(piece); });
    if (fault.kind == TextFault::Kind::NoUtf8) {
        Fail(WriteFault::NoUtf8, text);
    } else if (fault.kind == TextFault::Kind::NoXmlCharacter) {
        Fail(WriteFault::NoXmlCharacter, Text::CodePointText(fault.character));
    }
}

// The end tags of all open elements lie one behind the other, each followed by its element's name in paths.
std::string_view WriteDriver::EndTagOf(std::size_t level) const noexcept {
    Level const& at = m_levels[level];
    return {m_open.data() + at.endBegin, at.nameBegin - at.endBegin};
}

std::string_view WriteDriver::TagOf(std::size_t level) const noexcept {
    std::string_view const end = EndTagOf(level);
    return end.substr(2, end.size() - 3);
}

// There is room for it since the element was opened.
void WriteDriver::KeepName(std::string_view attribute, std::string_view value) noexcept {
    bool const isFirst = m_openUsed == Innermost().nameBegin;
    if (isFirst && NamesElements(attribute) && !HasFailed()) {
        m_openUsed += value.copy(m_open.data() + m_openUsed, KeptOfName);
    }
}

std::string_view WriteDriver::NameOf(std::size_t level) const noexcept {
    std::size_t const begin = m_levels[level].nameBegin;
    std::size_t const end = level + 1 < m_depth ? m_levels[level + 1].endBegin : m_openUsed;
    return {m_open.data() + begin, end - begin};
}

// With TagRoom kept for what CopyTag and BreakLine write beyond their ends.
void WriteDriver::PutTag(std::string_view bytes, std::size_t line) noexcept {
    if (bytes.size() < BufferSize - TagRoom) {
        WrittenTo(CopyTag(bytes, BreakLine(MakeRoom(TagRoom + bytes.size()), line)));
    } else {
        WrittenTo(BreakLine(MakeRoom(TagRoom), line));
        Put(bytes);
    }
}

// What is larger than the buffer goes past it.
void WriteDriver::Put(std::string_view bytes) noexcept {
    if (bytes.empty()) {
        return;
    }
    if (bytes.size() <= BufferSize) {
        std::memcpy(MakeRoom(bytes.size()), bytes.data(), bytes.size());
        m_used += bytes.size();
        return;
    }
    Flush();
    Send(bytes);
}

void WriteDriver::Flush() noexcept {
    Send({m_buffer.get(), m_used});
    m_used = 0;
}

void WriteDriver::Send(std::string_view bytes) noexcept {
    if (!HasFailed() && !m_sink.Write(bytes)) {
        Fail(WriteFault::Sink);
    }
}

// The first fault is the one to tell: what follows is often its consequence.
void WriteDriver::Fail(WriteFault fault) noexcept {
    if (!HasFailed()) {
        m_fault = fault;
        m_leafLine = 0;
    }
}

void WriteDriver::Fail(WriteFault fault, std::string_view subject) {
    if (!HasFailed()) {
        Fail(fault);
        m_subject = subject;
    }
}

void WriteDriver::Refuse(std::wstring_view sentence) {
    if (!HasFailed()) {
        m_refusal = sentence;
        Fail(WriteFault::Refused);
    }
}

std::wstring WriteDriver::FaultText() const {
    if (m_fault == WriteFault::Refused) {
        return m_refusal;
    }
    return Text::Fill(FaultPatterns[static_cast<std::size_t>(m_fault)].pattern, {Excerpt(m_subject)});
}

// Nothing is closed after a fault, so these are the elements that were open then.
std::wstring WriteDriver::FaultPath() const {
    return PathOf(m_depth, [this](std::size_t level) { return PathStep{TagOf(level), NameOf(level)}; });
}

} // namespace Zantrel::Sax
