// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Xml {

/// Where the bytes of a document come from.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// Puts up to `size` bytes into `into`. Gives their number, 0 at the end, a negative number when reading failed.
    virtual std::ptrdiff_t Read(char* into, std::size_t size) = 0;
};

/// A place in a document, both counted from 1; a column is a character (code point), not a byte.
struct Position {
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

struct Attribute {
    std::string_view name;
    std::string_view value; ///< normalised, references replaced, UTF-8
};

enum class Token {
    StartTag, ///< Name(), Attributes(); an empty-element tag gives StartTag and EndTag
    EndTag,   ///< Name()
    Text,     ///< Text(): a piece of character data or CDATA; neighbouring pieces belong together
    End,      ///< the document ended and was well-formed
    Error,    ///< ErrorText(), Where(); every further Next() gives Error again
};

/// A pull tokeniser for XML 1.0 (fifth edition) without document types. Delivers narrow UTF-8 views that stay
/// valid until the next Next(). Comments and processing instructions are checked and passed over.
class Tokeniser {
public:
    explicit Tokeniser(ByteSource& source, std::size_t pieceSize = 64 * 1024, std::size_t maxDepth = 1024);
    ~Tokeniser();
    Tokeniser(Tokeniser const&) = delete;
    Tokeniser& operator=(Tokeniser const&) = delete;

    Token Next();

    std::string_view Name() const;
    std::vector<Attribute> const& Attributes() const;
    std::string_view Text() const;
    /// The first character of the current token, or the place of the error.
    Position Where() const;
    /// One sentence without a trailing line or place, for a person.
    std::string const& ErrorText() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace Zantrel::Xml
