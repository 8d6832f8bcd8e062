// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_source.h"
#include "io/piece_size.h"
#include "xml/depth_limit.h"
#include "xml/fault.h"
#include "xml/indentation.h"
#include "xml/input_buffer.h"
#include "xml/open_elements.h"
#include "xml/start_tag.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Xml {

enum class Token : int {
    StartTag, ///< Name(), Attributes(); an empty-element tag gives StartTag and EndTag
    EndTag,   ///< Name()
    Text,  ///< Text(): a piece of character data or CDATA, never empty; neighbouring pieces belong together
    End,   ///< the document ended and was well-formed; every further Next() gives End again
    Error, ///< ErrorText(), Where(); every further Next() gives Error again
};

/// What NextPlain() has met, each without attributes.
enum class Plain : int {
    None,  ///< something else
    Leaf,  ///< a whole element without children, as after TakeLeaf()
    Group, ///< a StartTag with nothing but white space before a child, which is passed over
    End,   ///< an EndTag
};

/// A pull tokeniser for XML 1.0 (fifth edition) without document types. Delivers narrow UTF-8 views that stay
/// valid until the next Next(). Comments and processing instructions are checked and passed over.
///
/// Memory grows with the depth and with the longest tag, not with texts, comments or the document. Time is
/// linear in the document, whatever the size of its tokens and of the pieces it comes in. A tokeniser belongs
/// to one thread at a time.
///
/// What holds between two steps: m_at is where the document goes on, and nothing before it is asked for
/// again, except the current token, whose views stay good because nothing is read as long as it is current.
/// Reading on moves the buffer, takes m_at along and drops the token. Nothing is delivered before it is known
/// to be right: a tag when its '>' has been found, a text up to the next thing that could end it; so that an
/// error never takes anything back. m_stage says what may come next, and only Content is asked about in the
/// fast path.
class Tokeniser {
public:
    /// Asks `source`, which must outlive the tokeniser, for `pieceSize` bytes at a time. An element nested
    /// deeper than `maxDepth` is an error; the root has depth 1.
    explicit Tokeniser(Io::ByteSource& source, std::size_t pieceSize = Io::PieceSize,
                       std::size_t maxDepth = MaxDepth);
    Tokeniser(Tokeniser const&) = delete;
    Tokeniser& operator=(Tokeniser const&) = delete;

    /// A tag that is cut is read on only up to so many bytes, or up to one piece where that is more; a longer
    /// one is an error at its beginning, which HasMetLongToken() tells from others. At first there is no such
    /// limit.
    void LimitTokens(std::uint64_t bytes) noexcept;
    bool HasMetLongToken() const noexcept { return m_stop.fault == Fault::TooLong; }

    /// What the source throws goes through, and Next() gives Error from then on. After std::bad_alloc it does
    /// the same, or takes the step once more.
    Token Next();
    /// As Next(), without texts.
    Token NextTag();
    /// Right behind a StartTag, the same in one step as Next() would give in two: true where nothing but a
    /// text and the end tag follow, and lie in the buffer. Text() is then the element's, and may be empty;
    /// Name() and Attributes() stay good, and Where() is that of the end tag. Otherwise Next() gives what
    /// follows, without white space that stands right before a child.
    bool TakeLeaf() noexcept;

    /// The next start or end tag in one step, where nothing but white space stands before it and it is as
    /// most are. Only right behind a StartTag, and then there is no End, or where texts are nobody's. With
    /// None the token before is gone, and Next() gives what it would have given without this.
    Plain NextPlain();

    /// Of the start or end tag; an end tag that empty-element syntax stands for has the same. Good until the
    /// next Next().
    std::string_view Name() const noexcept { return m_name; }
    /// Of the start tag, in the document's order, no name twice. Good until the next Next().
    std::vector<Attribute> const& Attributes() const noexcept { return m_tag.Attributes(); }
    /// The bytes of the start tag as UTF-8, right behind it.
    std::size_t TagSize() const noexcept { return static_cast<std::size_t>(m_at - m_token); }
    /// References replaced, line ends normalised. Good until the next Next().
    std::string_view Text() const noexcept { return m_text; }
    /// The first character of the current token, or the place of the error.
    Position Where() const noexcept;
    /// One sentence without a trailing line or place, for a person; empty before an error.
    std::string const& ErrorText() const noexcept { return m_errorText; }

private:
    /// Where the document goes on: what may stand at m_at.
    enum class Stage : std::uint8_t {
        Beginning,
        Prolog,
        Opened, ///< behind a start tag: its element isn't in m_open yet, and never gets there if it is a leaf
        Content,
        Section,
        EmptyElement,
        Epilog,
        Ended,
        Failed
    };

    /// What a step gives that passed over something that isn't delivered. (An std::optional is written in two
    /// parts and read as one, which costs more than all else in a step.)
    static constexpr Token Nothing{-1};

    // Each step either delivers a token, or passes over something and gives Nothing, or fails. Those named
    // Pass deliver none; those named Read may. What is seldom isn't inlined, so that it leaves the registers
    // to the rest.
    Token StepInContent();
    [[gnu::noinline]] Token StepElsewhere();
    /// NextPlain() for the start tag at `tag`.
    Plain StartPlain(char const* tag) noexcept;
    Token StepOutsideRoot();
    [[gnu::noinline]] Token StepAtMarkup();
    Token Begin();
    Token PassMarkup();
    Token PassComment();
    Token PassInstruction();
    Token ReadDeclaration();
    Token ReadSection();
    [[gnu::noinline]] Token ReadText();
    Token ReadReference();
    Token ReadStartTag();
    [[gnu::noinline]] Token ReadEndTag();
    /// Makes [m_at, end) the current text, behind which the document goes on at `next`.
    Token DeliverText(char const* end, char const* next) noexcept;
    /// The place behind the end tag of `name`, where its "</" is at `at` and the rest stands in the buffer
    /// without white space; null otherwise.
    static char const* BehindUsualEndTag(std::string_view name, char const* at) noexcept;
    /// Opens the element of m_tag, behind which the document goes on at `next`.
    Token DeliverStart(char const* next);
    /// Closes the innermost element.
    Token DeliverEnd(char const* next) noexcept;

    // A scan takes the place where its token begins and gives the one behind it. It has no state of its own,
    // so that it can begin anew when more has been read, and it leaves in m_stop why it stopped.
    template <class Function> char const* Scan(Function scan);
    char const* ScanInstructionName(char const* at);
    char const* ScanEndTag(char const* at);

    /// Drops the token and reads; m_at stays at its character. False where there is no more.
    bool ReadMore();
    /// How many bytes of the word stand at m_at; reads on where the buffer cuts them.
    std::size_t Match(std::string_view word);
    /// Behind the root's end only comments and instructions may come.
    Stage StageAfterElement() const noexcept;
    /// With what the last scan has left in m_stop, or for the end of the document inside of `construct`.
    Token FailWhereStopped(std::string_view construct);
    /// Ends the document. Where the input itself was at fault just there, that is told instead.
    Token Fail(Fault fault, char const* place, std::string_view word = {}, std::string_view otherWord = {});

    // m_at is apart from m_token: as neighbours they are written as one by some compilers, and reading one of
    // them right after it then has to wait.
    InputBuffer m_input;
    std::size_t const m_maxDepth;
    std::size_t const m_pieceSize;
    std::uint64_t m_maxToken;
    char const* m_at; ///< where the next token begins
    Stage m_stage = Stage::Beginning;
    std::string_view m_name;
    std::string_view m_text;
    char const* m_token; ///< the current token; null while there is none
    Indentation m_indentation;
    OpenElements m_open;
    StartTag m_tag;
    /// The character that a reference stood for, while it is the current text.
    std::array<char, 4> m_character{};
    Stop m_stop;
    std::string m_errorText;
};

} // namespace Zantrel::Xml
