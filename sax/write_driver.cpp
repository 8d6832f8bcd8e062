// SPDX-License-Identifier: Apache-2.0
#include "sax/write_driver.h"

#include "sax/report_texts.h"
#include "text/enum_order.h"
#include "text/numbers.h"
#include "text/sentences.h"
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
};

static_assert(InEnumOrder(FaultPatterns, &FaultPattern::fault, WriteFault::HandlerRefused));

/// A line that is broken and indented for a tag at the depth that most keep within: two blanks a level.
constexpr std::string_view Line = "\n                                                                ";

/// One of a prepared tag's two, of which most are as short as is Readable.
char* CopyTag(std::string_view bytes, char* into) noexcept {
    constexpr std::size_t First = KelSAX::PreparedTag::Readable;
    std::memcpy(into, bytes.data(), First);
    if (bytes.size() > First) {
        std::memcpy(into + First, bytes.data() + First, bytes.size() - First);
    }
    return into + bytes.size();
}

char* Copy(std::string_view bytes, char* into) noexcept {
    std::memcpy(into, bytes.data(), bytes.size());
    return into + bytes.size();
}

} // namespace

WriteDriver::WriteDriver(Io::ByteSink& sink)
    : m_sink(sink), m_buffer(std::make_unique_for_overwrite<char[]>(BufferSize)) {}

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
    if (m_levels.size() > 1) {
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
    m_attributes[m_attributeCount] = name;
    ++m_attributeCount;
    return true;
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
    if (BeginElement(tag, {})) {
        Put('<');
        Put(tag);
    }
}

void WriteDriver::OpenPrepared(KelSAX::PreparedTag const& tag) {
    if (!tag.IsReady()) {
        ISAXWriter::OpenPrepared(tag);
    } else if (!HasFailed() && BeginElement(tag.Name(), tag.Attributes())) {
        Put(tag.Start());
    }
}

// All that can throw comes before the element counts as open, so that a tag that wasn't opened needs no
// closing. The tag before takes no attribute from then on, for its own are forgotten; those of a few go by
// their count.
bool WriteDriver::BeginElement(std::string_view name,
                               std::vector<KelSAX::PreparedTag::Attribute> const& attributes) {
    std::size_t const depth = m_levels.size();
    if (depth == Xml::MaxDepth) {
        Fail(WriteFault::TooDeep);
        return false;
    }
    if (m_startTag == StartTag::TakesAttributes) {
        m_startTag = StartTag::TakesContent;
    }
    m_attributeCount = 0;
    if (!m_manyAttributes.empty()) {
        m_manyAttributes.clear();
    }
    for (KelSAX::PreparedTag::Attribute const& attribute : attributes) {
        static_cast<void>(IsNewAttribute(attribute.name)); // they are: the tag is ready
    }
    m_names.reserve(m_names.size() + name.size());
    m_levels.push_back({m_names.size()});
    m_names.append(name);
    BeginTag(depth);
    m_startTag = StartTag::TakesAttributes;
    return true;
}

void WriteDriver::BeginTag(std::size_t depth) noexcept {
    CompleteStartTag();
    if (depth == 0 || !m_levels[depth - 1].hasText) {
        BreakLine(depth);
    }
    if (depth != 0) {
        m_levels[depth - 1].hasChildren = true;
    }
}

// Whatever is out of the ordinary goes the long way, which also says what is wrong with it.
void WriteDriver::WriteLeaf(KelSAX::PreparedTag const& tag, std::string_view text) {
    char* const at = !text.empty() && IsPlain(text) ? BeginLeaf(tag, text.size()) : nullptr;
    if (at != nullptr) {
        EndLeaf(tag, Copy(text, at));
    } else {
        ISAXWriter::WriteLeaf(tag, text);
    }
}

void WriteDriver::WriteDoubleLeaf(KelSAX::PreparedTag const& tag, double value, int precision) {
    if (char* const at = BeginLeaf(tag, Text::NumberRoom)) {
        EndLeaf(tag, Text::PrintDouble(at, value, precision));
    } else {
        ISAXWriter::WriteDoubleLeaf(tag, value, precision);
    }
}

char* WriteDriver::BeginLeaf(KelSAX::PreparedTag const& tag, std::size_t textSize) noexcept {
    std::size_t const depth = m_levels.size();
    std::size_t const size =
        Line.size() + tag.Start().size() + 1 + textSize + tag.End().size() + KelSAX::PreparedTag::Readable;
    bool const fits = depth < Line.size() / 2 && size < BufferSize;
    if (!fits || depth == 0 || !tag.IsReady() || HasFailed()) {
        return nullptr;
    }
    CompleteStartTag();
    char* at = MakeRoom(size);
    Level& parent = m_levels.back();
    parent.hasChildren = true;
    if (!parent.hasText) {
        std::memcpy(at, Line.data(), Line.size()); // all of it, since a known size is copied fastest
        at += 1 + 2 * depth;
    }
    at = CopyTag(tag.Start(), at);
    *at = '>';
    return at + 1;
}

void WriteDriver::EndLeaf(KelSAX::PreparedTag const& tag, char* at) noexcept {
    m_used = static_cast<std::size_t>(CopyTag(tag.End(), at) - m_buffer.get());
}

// The root was not opened by the handler.
void WriteDriver::CloseElement() noexcept {
    if (m_levels.size() > 1) {
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
    Level const& level = m_levels.back();
    if (m_startTag != StartTag::Complete) {
        Put("/>");
    } else {
        if (level.hasChildren && !level.hasText) {
            BreakLine(m_levels.size() - 1);
        }
        Put('<');
        Put('/');
        Put(NameOf(m_levels.size() - 1));
        Put('>');
    }
    m_startTag = StartTag::Complete;
    m_names.resize(level.nameBegin);
    m_levels.pop_back();
}

/// Whether text can follow.
bool WriteDriver::BeginText() noexcept {
    if (m_levels.empty()) {
        Fail(WriteFault::NotOpened);
    }
    if (HasFailed()) {
        return false;
    }
    CompleteStartTag();
    m_levels.back().hasText = true;
    return true;
}

void WriteDriver::CompleteStartTag() noexcept {
    if (m_startTag != StartTag::Complete) {
        Put('>');
        m_startTag = StartTag::Complete;
    }
}

void WriteDriver::BreakLine(std::size_t depth) noexcept {
    std::size_t blanks = 2 * depth;
    std::size_t const first = std::min(blanks, Line.size() - 1);
    Put(Line.substr(0, 1 + first));
    // Deeper than the line is long, which hardly any document is.
    for (blanks -= first; blanks != 0; blanks -= 2) {
        Put("  ");
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

std::string_view WriteDriver::NameOf(std::size_t level) const noexcept {
    std::size_t const begin = m_levels[level].nameBegin;
    std::size_t const end = level + 1 < m_levels.size() ? m_levels[level + 1].nameBegin : m_names.size();
    return std::string_view(m_names).substr(begin, end - begin);
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
    if (!HasFailed() && !m_sink.Write(bytes)) {
        Fail(WriteFault::Sink);
    }
}

void WriteDriver::Flush() noexcept {
    if (!HasFailed() && !m_sink.Write({m_buffer.get(), m_used})) {
        Fail(WriteFault::Sink);
    }
    m_used = 0;
}

void WriteDriver::Fail(WriteFault fault) noexcept {
    if (!HasFailed()) {
        m_fault = fault;
    }
}

void WriteDriver::Fail(WriteFault fault, std::string_view subject) {
    if (!HasFailed()) {
        m_fault = fault;
        m_subject = subject;
    }
}

std::wstring WriteDriver::FaultText() const {
    return Text::Fill(FaultPatterns[static_cast<std::size_t>(m_fault)].pattern, {Excerpt(m_subject)});
}

// Nothing is closed after a fault, so these are the elements that were open then.
std::wstring WriteDriver::FaultPath() const {
    std::wstring path;
    for (std::size_t level = 0; level < m_levels.size(); ++level) {
        path.append(level != 0 ? L"/" : L"");
        Text::AppendWide(NameOf(level), path);
    }
    return path;
}

} // namespace Zantrel::Sax
