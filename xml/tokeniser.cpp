// SPDX-License-Identifier: Apache-2.0
#include "xml/tokeniser.h"

#include "text/sentences.h"
#include "xml/declaration.h"
#include "xml/reference.h"

#include <algorithm>
#include <limits>

namespace Zantrel::Xml {

namespace {

/// The end of what may be delivered of a text that goes on with the next piece: without up to two brackets at
/// its end, which may be the beginning of "]]>".
char const* HoldBackBrackets(char const* begin, char const* end) noexcept {
    for (int count = 0; count < 2 && end != begin && end[-1] == ']'; ++count)
        --end;
    return end;
}

/// Whether what a '<' begins can be a start tag, be that well-formed or not.
bool MayBeginName(char byte) noexcept { return byte != '!' && byte != '?' && byte != '\0'; }

Fault FaultOf(InputState state) noexcept {
    switch (state) {
    case InputState::Open:
    case InputState::Complete:
    case InputState::ReadFailed:
        break;
    case InputState::NoEncoding:
        return Fault::NoEncoding;
    case InputState::IllFormed:
        return Fault::IllFormed;
    case InputState::Unpaired:
        return Fault::Unpaired;
    case InputState::Truncated:
        return Fault::Truncated;
    case InputState::NotAllowed:
        return Fault::NotAllowed;
    }
    return Fault::ReadFailed;
}

} // namespace

Tokeniser::Tokeniser(Io::ByteSource& source, std::size_t pieceSize, std::size_t maxDepth)
    : m_input(source, pieceSize), m_maxDepth(maxDepth), m_pieceSize(pieceSize),
      m_maxToken(std::numeric_limits<std::uint64_t>::max()), m_at(m_input.Begin()), m_token(m_at) {}

void Tokeniser::LimitTokens(std::uint64_t bytes) noexcept {
    m_maxToken = std::max<std::uint64_t>(bytes, m_pieceSize);
}

Position Tokeniser::Where() const noexcept { return m_input.PositionOf(m_token != nullptr ? m_token : m_at); }

Token Tokeniser::Next() {
    for (;;) {
        Token const token = m_stage == Stage::Content ? StepInContent() : StepElsewhere();
        if (token != Nothing)
            return token;
    }
}

// The line end and blanks that stand between two tags mostly are passed over without being delivered.
Token Tokeniser::NextTag() {
    Token token;
    do {
        if (char const* const end = m_stage == Stage::Content ? m_indentation.Skip(m_at) : nullptr)
            m_at = end;
        token = Next();
    } while (token == Token::Text);
    return token;
}

// Nothing is read here, so that the tag stays good; what doesn't fit is left for Next() to find.
bool Tokeniser::TakeLeaf() noexcept {
    if (m_stage == Stage::EmptyElement) {
        m_text = {};
        m_stage = StageAfterElement();
        return true;
    }
    char const* const text = m_at;
    char const* const stop = FindEndOfPlainText(text);
    if (stop == nullptr)
        return false;
    if (stop[1] != '/') {
        if (m_indentation.Skip(text) == stop && MayBeginName(stop[1]))
            m_at = stop;
        return false;
    }
    char const* const next = BehindUsualEndTag(m_name, stop);
    if (next == nullptr)
        return false;
    m_text = {text, stop};
    m_token = stop;
    m_at = next;
    m_stage = StageAfterElement();
    return true;
}

// As in TakeLeaf(), nothing is read here, and what doesn't fit is left as it was.
Plain Tokeniser::NextPlain() {
    bool const isFirst = m_stage == Stage::Opened;
    if (isFirst) {
        m_open.Push(m_name);
        m_stage = Stage::Content;
    }
    if (m_stage != Stage::Content)
        return Plain::None;
    char const* const skipped = m_indentation.Skip(m_at);
    char const* const tag = skipped != nullptr ? skipped : m_at;
    if (*tag != '<')
        return Plain::None;
    if (tag[1] == '/') {
        char const* const next = isFirst ? nullptr : BehindUsualEndTag(m_open.Innermost(), tag);
        if (next == nullptr)
            return Plain::None;
        m_at = tag;
        DeliverEnd(next);
        return Plain::End;
    }
    return StartPlain(tag);
}

inline Plain Tokeniser::StartPlain(char const* tag) noexcept {
    char const* const text = m_open.Depth() < m_maxDepth ? m_tag.ScanPlain(tag) : nullptr;
    char const* const stop = text != nullptr ? FindEndOfPlainText(text) : nullptr;
    if (stop == nullptr)
        return Plain::None;
    bool const isLeaf = stop[1] == '/';
    char const* next = stop;
    if (isLeaf)
        next = BehindUsualEndTag(m_tag.Name(), stop);
    else if ((text != stop && m_indentation.Skip(text) != stop) || !MayBeginName(stop[1]))
        next = nullptr;
    if (next == nullptr)
        return Plain::None;
    m_name = m_tag.Name();
    m_text = {text, stop};
    m_token = isLeaf ? stop : tag;
    m_at = next;
    m_stage = isLeaf ? Stage::Content : Stage::Opened;
    return isLeaf ? Plain::Leaf : Plain::Group;
}

// Nearly all of a document is decided here; what is seldom has functions of its own, so that this one stays
// small.
inline Token Tokeniser::StepInContent() {
    char const* const at = m_at;
    if (*at != '<') {
        if (char const* const end = m_indentation.Skip(at))
            return DeliverText(end, end);
        char const* const stop = FindTextStop(at);
        if (*stop != '<')
            return ReadText();
        return DeliverText(stop, stop);
    }
    if (at[1] == '/') {
        char const* const next = BehindUsualEndTag(m_open.Innermost(), at);
        return next != nullptr ? DeliverEnd(next) : ReadEndTag();
    }
    char const* const next = m_tag.ScanPlain(at);
    return next != nullptr ? DeliverStart(next) : StepAtMarkup();
}

inline char const* Tokeniser::BehindUsualEndTag(std::string_view name, char const* at) noexcept {
    char const* const end = at + 2;
    return IsAt(name, end) && end[name.size()] == '>' ? end + name.size() + 1 : nullptr;
}

Token Tokeniser::StepElsewhere() {
    switch (m_stage) {
    case Stage::Content:
        break;
    case Stage::Opened:
        m_open.Push(m_name);
        m_stage = Stage::Content;
        return Nothing;
    case Stage::EmptyElement:
        m_stage = StageAfterElement();
        return Token::EndTag;
    case Stage::Section:
        return ReadSection();
    case Stage::Prolog:
    case Stage::Epilog:
        return *m_at == '<' ? StepAtMarkup() : StepOutsideRoot();
    case Stage::Beginning:
        return Begin();
    case Stage::Ended:
        return Token::End;
    case Stage::Failed:
        break;
    }
    return Token::Error;
}

// Only "<?xml" and white space or a question mark begin a declaration, and only here.
Token Tokeniser::Begin() {
    constexpr std::string_view opening = "<?xml";
    m_stage = Stage::Prolog;
    if (Match(opening) < opening.size())
        return Nothing;
    if (m_at + opening.size() == m_input.End() && !ReadMore())
        return Fail(Fault::EndsInside, m_input.End(), "the XML declaration");
    // Otherwise it is an instruction such as <?xml-stylesheet?>.
    char const following = m_at[opening.size()];
    return following == '?' || IsSpace(following) ? ReadDeclaration() : Nothing;
}

Token Tokeniser::StepOutsideRoot() {
    m_at = SkipSpace(m_at);
    if (*m_at == '<')
        return Nothing;
    if (m_at != m_input.End())
        return Fail(Fault::TextOutsideRoot, m_at);
    if (ReadMore())
        return Nothing;
    if (m_stage == Stage::Prolog || m_input.State() != InputState::Complete)
        return Fail(Fault::NoRoot, m_at);
    m_token = m_at;
    m_stage = Stage::Ended;
    return Token::End;
}

Token Tokeniser::StepAtMarkup() {
    switch (m_at[1]) {
    case '/':
        return ReadEndTag();
    case '!':
        return PassMarkup();
    case '?':
        return PassInstruction();
    case '\0':
        return ReadMore() ? Nothing : Fail(Fault::EndsInside, m_input.End(), "a tag");
    default:
        return ReadStartTag();
    }
}

// "<!": which of the words it is may show only after more was read, and then the place in the buffer is
// another one; so each is matched from m_at, and the longest match says whether the document ends inside of
// one.
Token Tokeniser::PassMarkup() {
    constexpr std::string_view comment = "<!--";
    constexpr std::string_view documentType = "<!DOCTYPE";
    constexpr std::string_view section = "<![CDATA[";
    std::size_t matched = 0;
    auto const is = [this, &matched](std::string_view word) {
        matched = std::max(matched, Match(word));
        return matched == word.size();
    };

    if (is(comment))
        return PassComment();
    if (is(documentType))
        return Fail(Fault::DocumentType, m_at);
    if (is(section)) {
        if (m_stage != Stage::Content)
            return Fail(Fault::TextOutsideRoot, m_at);
        m_at += section.size();
        m_stage = Stage::Section;
        return Nothing;
    }
    if (m_at + matched == m_input.End())
        return Fail(Fault::EndsInside, m_input.End(), "a comment or CDATA section");
    return Fail(Fault::UnknownMarkup, m_at);
}

// Neither a comment nor an instruction is kept while it is read: m_at goes along, and whatever is behind it
// is dropped. Only the two or three characters that may be its end are looked at together.
Token Tokeniser::PassComment() {
    constexpr std::string_view opening = "<!--";
    constexpr std::string_view closing = "-->";
    m_at += opening.size();
    for (;;) {
        m_at = FindByte(m_at, '-');
        std::size_t const matched = Match(closing);
        if (matched == closing.size()) {
            m_at += matched;
            return Nothing;
        }
        if (m_at + matched == m_input.End()) {
            if (!ReadMore())
                return Fail(Fault::EndsInside, m_input.End(), "a comment");
        } else if (matched == 2) {
            return Fail(Fault::DashesInComment, m_at);
        } else {
            ++m_at;
        }
    }
}

Token Tokeniser::PassInstruction() {
    constexpr std::string_view construct = "a processing instruction";
    constexpr std::string_view closing = "?>";
    char const* const next = Scan([this](char const* at) { return ScanInstructionName(at); });
    if (next == nullptr)
        return FailWhereStopped(construct);

    m_at = next;
    for (;;) {
        m_at = FindByte(m_at, '?');
        std::size_t const matched = Match(closing);
        if (matched == closing.size()) {
            m_at += matched;
            return Nothing;
        }
        if (m_at + matched != m_input.End())
            ++m_at;
        else if (!ReadMore())
            return Fail(Fault::EndsInside, m_input.End(), construct);
    }
}

// "xml" alone is a declaration in the wrong place, and the same in another case is nothing at all.
char const* Tokeniser::ScanInstructionName(char const* at) {
    char const* const begin = at + 2;
    char const* const end = SkipName(begin);
    std::string_view const name(begin, end);
    if (name.empty())
        return m_stop.At(Fault::NoInstructionName, end);
    bool const isClosed = *end == '?';
    if (isClosed ? end[1] != '>' : !IsSpace(*end))
        return m_stop.At(Fault::MalformedInstruction, end + isClosed, name);
    if (name == "xml")
        return m_stop.At(Fault::MisplacedDeclaration, at);
    if (IsInAnyCase(name, "xml"))
        return m_stop.At(Fault::ReservedName, begin, name);
    return end;
}

Token Tokeniser::ReadDeclaration() {
    std::string_view encoding;
    char const* const next =
        Scan([this, &encoding](char const* at) { return ScanDeclaration(at, encoding, m_stop); });
    if (next == nullptr || (!encoding.empty() && !CheckEncoding(encoding, m_input.GetEncoding(), m_stop)))
        return FailWhereStopped("the XML declaration");
    m_at = next;
    return Nothing;
}

// Its text is delivered as it comes, and the stage says that the next step goes on inside.
Token Tokeniser::ReadSection() {
    constexpr std::string_view closing = "]]>";
    // Behind the end of the buffer stand NULs.
    char const* stop = FindByte(m_at, ']');
    while (*stop == ']' && (stop[1] != ']' || stop[2] != '>'))
        stop = FindByte(stop + 1, ']');

    bool const isClosed = *stop == ']';
    char const* const end = isClosed ? stop : HoldBackBrackets(m_at, stop);
    char const* const next = isClosed ? stop + closing.size() : end;
    if (isClosed)
        m_stage = Stage::Content;
    if (end != m_at)
        return DeliverText(end, next);
    m_at = next;
    return isClosed || ReadMore() ? Nothing : Fail(Fault::EndsInside, m_input.End(), "a CDATA section");
}

// What the fast path doesn't decide: a text that begins with a reference, one with a '>' in it, which must
// not end
// "]]>", and one that the buffer cuts. The part of it that is known is delivered, unless there is none yet.
Token Tokeniser::ReadText() {
    if (*m_at == '&')
        return ReadReference();
    char const* stop = FindTextStop(m_at);
    for (; *stop == '>'; stop = FindTextStop(stop + 1))
        if (stop - m_at >= 2 && stop[-1] == ']' && stop[-2] == ']')
            return Fail(Fault::SectionEndInText, stop - 2);

    // Brackets at the end of a piece wait: a '>' may follow them in the next one.
    char const* const end = *stop == '\0' ? HoldBackBrackets(m_at, stop) : stop;
    if (end != m_at)
        return DeliverText(end, end);
    return ReadMore() ? Nothing : Fail(Fault::NotClosed, m_input.End(), m_open.Innermost());
}

Token Tokeniser::ReadReference() {
    char32_t character = 0;
    char const* const next =
        Scan([this, &character](char const* at) { return ScanReference(at, character, m_stop); });
    if (next == nullptr)
        return FailWhereStopped("a reference");
    Token const token = DeliverText(next, next);
    m_text = {m_character.data(), Text::EncodeUtf8(character, m_character.data())};
    return token;
}

inline Token Tokeniser::DeliverText(char const* end, char const* next) noexcept {
    m_text = {m_at, end};
    m_token = m_at;
    m_at = next;
    return Token::Text;
}

// A fault inside of the tag goes before one of its place: the tag that isn't well-formed is told first.
Token Tokeniser::ReadStartTag() {
    char const* const next = Scan([this](char const* at) { return m_tag.Scan(at, m_stop); });
    if (next == nullptr)
        return FailWhereStopped("a start tag");
    if (m_stage == Stage::Epilog)
        return Fail(Fault::SecondRoot, m_at, m_tag.Name());
    return DeliverStart(next);
}

inline Token Tokeniser::DeliverStart(char const* next) {
    m_name = m_tag.Name();
    if (m_open.Depth() >= m_maxDepth)
        return Fail(Fault::TooDeep, m_at, m_name);
    m_stage = m_tag.IsEmptyElement() ? Stage::EmptyElement : Stage::Opened;
    m_token = m_at;
    m_at = next;
    return Token::StartTag;
}

// What isn't the usual end tag: one with white space, one that is cut, or a fault.
Token Tokeniser::ReadEndTag() {
    char const* const next = Scan([this](char const* at) { return ScanEndTag(at); });
    if (next == nullptr)
        return FailWhereStopped("an end tag");
    if (m_open.Depth() == 0)
        return Fail(Fault::NoStartTag, m_at, m_name);
    if (m_name != m_open.Innermost())
        return Fail(Fault::OtherEndTag, m_at, m_name, m_open.Innermost());
    return DeliverEnd(next);
}

char const* Tokeniser::ScanEndTag(char const* at) {
    char const* const begin = at + 2;
    char const* end = SkipName(begin);
    if (end == begin)
        return m_stop.At(Fault::NoTagName, *end == '\0' ? end : at);
    m_name = {begin, end};
    end = SkipSpace(end);
    return *end == '>' ? end + 1 : m_stop.At(Fault::MalformedEndTag, end, m_name);
}

inline Token Tokeniser::DeliverEnd(char const* next) noexcept {
    m_name = m_open.Pop();
    m_token = m_at;
    m_at = next;
    m_stage = StageAfterElement();
    return Token::EndTag;
}

inline Tokeniser::Stage Tokeniser::StageAfterElement() const noexcept {
    return m_open.Depth() == 0 ? Stage::Epilog : Stage::Content;
}

/// Calls a scan with m_at. It stops at the first character that doesn't fit, be that the NUL at the end of
/// the buffer; then this reads on and has it begin anew, so that no scan needs to know that a token can be
/// cut.
template <class Function> inline char const* Tokeniser::Scan(Function scan) {
    for (;;) {
        if (char const* const next = scan(m_at))
            return next;
        // Inside of the buffer a stop is final; at its end only when nothing can follow.
        if (m_stop.place != m_input.End() || m_input.State() != InputState::Open)
            return nullptr;
        if (static_cast<std::uint64_t>(m_input.End() - m_at) > m_maxToken)
            return m_stop.At(Fault::TooLong, m_at);
        m_token = nullptr;
        m_input.ReadAsMuchAgain(m_at);
    }
}

/// The token is lost, but neither the rest of the buffer nor its beginning at m_at.
bool Tokeniser::ReadMore() {
    m_token = nullptr;
    return m_input.ReadMore(m_at);
}

/// How many bytes of `word` stand at m_at, reading on where they are cut.
std::size_t Tokeniser::Match(std::string_view word) {
    std::size_t matched = 0;
    while (matched < word.size()) {
        if (m_at[matched] == word[matched])
            ++matched;
        else if (m_at + matched != m_input.End() || !ReadMore())
            break;
    }
    return matched;
}

/// `construct` is what the document ends inside of, if that is what stopped the scan.
Token Tokeniser::FailWhereStopped(std::string_view construct) {
    if (m_stop.place == m_input.End())
        return Fail(Fault::EndsInside, m_stop.place, construct);
    return Fail(m_stop.fault, m_stop.place, m_stop.word);
}

/// At the end of the buffer the input's own fault goes first.
Token Tokeniser::Fail(Fault fault, char const* place, std::string_view word, std::string_view otherWord) {
    if (place == m_input.End() && m_input.State() != InputState::Complete)
        m_errorText = Describe(FaultOf(m_input.State()), Text::CodePointText(m_input.Offender()), {});
    else
        m_errorText = Describe(fault, word, otherWord);
    m_token = place;
    m_stage = Stage::Failed;
    return Token::Error;
}

} // namespace Zantrel::Xml
