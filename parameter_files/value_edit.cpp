// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/value_edit.h>

#include "io/input_file.h"
#include "io/output_file.h"
#include "parameter_files/klvr_properties_read.h"
#include "parameter_files/parameter_node_read.h"
#include "parameter_files/value_elements.h"
#include "sax/escaping.h"
#include "sax/pieces_source.h"
#include "sax/report_texts.h"
#include "text/numbers.h"
#include "text/unicode.h"

#include <zantrel/database/value_type.h>
#include <zantrel/database/visit_value.h>
#include <zantrel/database/walk.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

// What keeps a change from doing harm is not how its place is found but that the result is read: token by
// token both documents must be the same but for the texts in question, and these must be what a database then
// has. So the search may err, and then the change isn't made.
//
// Nothing is held twice: the result is pieces of the file's bytes and of the new texts, and the databases,
// which tell where values stand, hold no long text.

namespace Zantrel {

namespace {

// In characters. A shorter one is never left out of a database, as it comes to its reader whole.
constexpr std::size_t LongText = 10000;

/// Fails with a sentence: what is changed in memory only needs no way back.
struct Refusal {
    std::wstring sentence;
    std::wstring path;
    std::error_code code = {}; ///< where it was the file
};

using Bytes = std::vector<std::byte>;
/// A document, one piece behind the other.
using Pieces = std::vector<std::string_view>;

Bytes BytesOf(std::wstring const& path) {
    Bytes bytes;
    if (!Io::ReadWholeFile(path, bytes)) {
        throw Refusal{L"Can't read \"" + path + L"\".", L""};
    }
    return bytes;
}

std::string_view TextOf(Bytes const& bytes) {
    return {reinterpret_cast<char const*>(bytes.data()), bytes.size()};
}

/// Places count characters, which are found here by the bytes of UTF-8. What isn't recognised as another
/// encoding is counted wrongly then, and found out by the comparison.
bool IsUtf16(std::string_view document) {
    return document.compare(0, 2, "\xFF\xFE") == 0 || document.compare(0, 2, "\xFE\xFF") == 0;
}

/// Turns places of a document into offsets of its bytes, in one pass over those that it is asked for.
class ByteOffsets {
public:
    explicit ByteOffsets(std::string_view document)
        : m_document(document), m_at(document.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0) {}

    /// Not before the one asked for last.
    std::size_t Of(Xml::Position place) {
        while (m_at < m_document.size() &&
               (m_here.line < place.line || (m_here.line == place.line && m_here.column < place.column))) {
            Pass();
        }
        return m_at;
    }

private:
    /// One character, or one line end.
    void Pass() {
        char const first = m_document[m_at++];
        if (first == '\r' || first == '\n') {
            if (first == '\r' && m_at < m_document.size() && m_document[m_at] == '\n') {
                ++m_at;
            }
            ++m_here.line;
            m_here.column = 1;
            return;
        }
        while (m_at < m_document.size() && (static_cast<unsigned char>(m_document[m_at]) & 0xC0) == 0x80) {
            ++m_at;
        }
        ++m_here.column;
    }

    std::string_view m_document;
    std::size_t m_at;
    Xml::Position m_here;
};

/// Bytes to exchange, and the element that they stand in.
struct Patch {
    std::size_t begin, end;
    std::string bytes;
    Xml::Position element = {};
};

/// Behind the ">" of the start tag that begins at `at`; a tag that was read ends.
std::size_t EndOfStartTag(std::string_view document, std::size_t at) {
    for (char quote = '\0'; at < document.size(); ++at) {
        char const c = document[at];
        if (quote != '\0') {
            quote = c == quote ? '\0' : quote;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            return at + 1;
        }
    }
    return at;
}

std::string Escaped(ValueText const& value) {
    std::string utf8, escaped;
    bool const isText = Text::AppendUtf8(value.text, utf8);
    auto const put = [&escaped](std::string_view piece) { escaped += piece; };
    if (!isText || Sax::PutEscaped(utf8, Sax::TextPlace::Content, put).kind != Sax::TextFault::Kind::None) {
        throw Refusal{L"The text holds what XML can't carry.", value.path};
    }
    return escaped;
}

Patch PatchOf(std::string_view document, std::size_t begin, std::size_t end, ValueText const& value) {
    std::size_t const inside = EndOfStartTag(document, begin);
    // The tag gets an end of its own; its attributes stay as they are, byte for byte.
    if (document[inside - 2] == '/') { // an empty-element tag
        std::size_t const tag = begin + 1;
        std::string const name(document.substr(tag, document.find_first_of(" \t\r\n/>", tag) - tag));
        return {inside - 2, inside, '>' + Escaped(value) + "</" + name + '>', {}};
    }
    if (end < inside || document.find('<', inside) != end) {
        throw Refusal{L"The element holds more than a text.", value.path};
    }
    return {inside, end, Escaped(value), {}};
}

/// The values to change, by path; of several for one the last.
using Wanted = std::map<std::wstring, ValueText const*, std::less<>>;

/// In the order of the document.
std::vector<Patch> PatchesOf(std::string_view document, Wanted const& wanted,
                             ParameterDatabase const& database, ParameterFileFormat format) {
    std::vector<std::wstring> paths;
    for (auto const& [path, value] : wanted) {
        paths.push_back(path);
    }
    std::vector<ValueElement> const elements =
        FindElements(document, WaysOf(database, paths, format), paths.size());
    std::vector<std::pair<ValueElement, ValueText const*>> ordered;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        ValueText const& value = *wanted.find(paths[i])->second;
        if (!elements[i].isFound || !elements[i].isPlain) {
            throw Refusal{elements[i].isFound ? L"The element holds more than a text."
                                              : L"The file has no element for it.",
                          value.path};
        }
        ordered.push_back({elements[i], &value});
    }
    // So that offsets are counted in one pass and what is between is taken once.
    std::sort(ordered.begin(), ordered.end(), [](auto const& left, auto const& right) {
        auto const &one = left.first.begin, &other = right.first.begin;
        return std::pair(one.line, one.column) < std::pair(other.line, other.column);
    });
    ByteOffsets offsets(document);
    std::vector<Patch> patches;
    for (auto const& [element, value] : ordered) {
        std::size_t const begin = offsets.Of(element.begin), end = offsets.Of(element.end);
        patches.push_back(PatchOf(document, begin, end, *value));
        patches.back().element = element.begin;
    }
    return patches;
}

Pieces Patched(std::string_view document, std::vector<Patch> const& patches) {
    Pieces result;
    std::size_t taken = 0;
    for (Patch const& patch : patches) {
        result.push_back(document.substr(taken, patch.begin - taken));
        result.push_back(patch.bytes);
        taken = patch.end;
    }
    result.push_back(document.substr(taken));
    return result;
}

template <class Handler>
bool ReadBy(Handler handler, Pieces const& document, bool withLongTexts, ReadReport& report) {
    if (!withLongTexts) {
        handler.LeaveOutLongTexts();
    }
    Sax::PiecesSource source(document);
    return Sax::ReadDriver(source, handler, &report).Run();
}

void Read(ParameterDatabase& database, Pieces const& document, ParameterFileFormat format,
          bool withLongTexts = false) {
    ReadReport report;
    ParameterNode const editor = database.GetProfileEditor();
    bool const isRead = format == ParameterFileFormat::Machine
                            ? ReadBy(ParameterNodeReadKlvrProperties(editor), document, withLongTexts, report)
                            : ReadBy(ParameterNodeRead(editor), document, withLongTexts, report);
    if (!isRead) {
        throw Refusal{report.m_entries.empty() ? L"The document can't be read."
                                               : report.m_entries.back().sentence,
                      L""};
    }
}

std::map<std::wstring, ParameterNode> LeavesOf(ParameterDatabase& database, Wanted const& wanted) {
    std::map<std::wstring, ParameterNode> leaves;
    for (Walk<ParameterNode> walk(database.GetProfileEditor(), SameNames::FirstOnly); walk.Next();) {
        if (walk.IsLeaf() && walk.Node().IsValid() && wanted.find(walk.Path()) != wanted.end()) {
            leaves.emplace(walk.Path(), walk.Node());
        }
    }
    return leaves;
}

// Whether a text, all of it, is this value.
bool Says(std::wstring const& text, std::wstring const& value) { return text == value; }
template <class T> bool Says(std::wstring const& text, T const& value) {
    std::string utf8;
    Text::AppendUtf8Unchecked(text, utf8);
    if constexpr (std::is_same_v<T, double>) {
        std::optional<double> const number = Text::ParseDouble(utf8);
        return number && (*number == value || (std::isnan(*number) && std::isnan(value)));
    } else if constexpr (std::is_same_v<T, std::int32_t>) {
        return Text::ParseInteger(utf8) == value;
    } else if constexpr (std::is_same_v<T, bool>) {
        return Text::ParseBool(utf8) == value;
    } else {
        return false;
    }
}

/// That a database has each text as the value.
void RequireValues(ParameterDatabase& database, Wanted const& wanted) {
    auto const leaves = LeavesOf(database, wanted);
    for (auto const& [path, value] : wanted) {
        auto const leaf = leaves.find(path);
        if (leaf == leaves.end()) {
            throw Refusal{L"The layout has no such value, or the file no such entry.", path};
        }
        std::wstring const& text = value->text;
        bool isSaid = false;
        VisitValue(leaf->second, [&](auto const& held) { isSaid = Says(text, held); });
        if (!isSaid) {
            throw Refusal{L"Read back, the value isn't \"" + text + L"\".", path};
        }
    }
}

/// One of two documents that are gone through side by side.
class Tokens {
public:
    explicit Tokens(Pieces const& document) : m_source(document), m_tokeniser(m_source) { Next(); }

    Xml::Token Kind() const { return m_kind; }
    bool IsElement(Xml::Position begin) const {
        Xml::Position const here = m_tokeniser.Where();
        return m_kind == Xml::Token::StartTag && here.line == begin.line && here.column == begin.column;
    }
    /// Goes on behind what both are at. False where that isn't the same.
    bool PassWith(Tokens& other) {
        // Texts come in pieces that end elsewhere in each.
        std::size_t const length = std::min(m_text.size(), other.m_text.size());
        bool const isSame = m_kind == other.m_kind &&
                            m_text.substr(0, length) == other.m_text.substr(0, length) &&
                            (m_kind == Xml::Token::Text || IsSameTag(other));
        Pass(length);
        other.Pass(length);
        return isSame;
    }
    void PassText() {
        while (m_kind == Xml::Token::Text) {
            Next();
        }
    }

private:
    void Next() {
        m_kind = m_tokeniser.Next();
        m_text = m_kind == Xml::Token::Text ? m_tokeniser.Text() : std::string_view();
    }
    void Pass(std::size_t length) {
        m_text.remove_prefix(length);
        if (m_text.empty()) {
            Next();
        }
    }
    bool IsSameTag(Tokens const& other) const {
        auto const &mine = m_tokeniser.Attributes(), &others = other.m_tokeniser.Attributes();
        return m_tokeniser.Name() == other.m_tokeniser.Name() &&
               (m_kind == Xml::Token::EndTag ||
                std::equal(mine.begin(), mine.end(), others.begin(), others.end(),
                           [](Xml::Attribute const& one, Xml::Attribute const& another) {
                               return one.name == another.name && one.value == another.value;
                           }));
    }

    Sax::PiecesSource m_source;
    Xml::Tokeniser m_tokeniser;
    Xml::Token m_kind = Xml::Token::End;
    std::string_view m_text; ///< what is left of the token
};

/// That to a reader of both documents nothing differs but the texts of those elements.
void RequireOnlyThese(Pieces const& before, Pieces const& after, std::vector<Patch> const& patches) {
    Tokens one(before), other(after);
    auto patch = patches.begin();
    bool isSame = true;
    while (isSame && one.Kind() != Xml::Token::End) {
        bool const isPatched = patch != patches.end() && one.IsElement(patch->element);
        isSame = one.Kind() != Xml::Token::Error && one.PassWith(other);
        if (isPatched) {
            one.PassText();
            other.PassText();
            ++patch;
        }
    }
    if (!isSame || other.Kind() != Xml::Token::End || patch != patches.end()) {
        throw Refusal{L"Read back, other values differ, too.", L""};
    }
}

void Write(Pieces const& document, std::wstring const& target, WriteReport* report) {
    Io::OutputFile out(report != nullptr && report->m_mayWriteInPlace);
    bool isWritten = out.Open(target);
    for (std::string_view const piece : document) {
        isWritten = isWritten && out.Write(piece);
    }
    if (!isWritten || !out.Commit()) {
        Io::Failure const failure = out.WhyItFailed();
        throw Refusal{failure.sentence, L"", failure.code};
    }
    if (report != nullptr) {
        report->m_notes = out.Notes();
    }
}

bool IsLong(ValueText const& value) { return value.text.size() > LongText; }

void Edit(ParameterLayout const& layout, std::wstring const& path, std::vector<ValueText> const& values,
          std::wstring const& target, ParameterFileFormat format, WriteReport* report) {
    Wanted wanted;
    for (ValueText const& value : values) {
        wanted[value.path] = &value;
    }
    Bytes const bytes = BytesOf(path);
    std::string_view const document = TextOf(bytes);
    if (IsUtf16(document)) {
        throw Refusal{L"The file is in UTF-16.", L""};
    }
    std::vector<Patch> patches;
    {
        ParameterDatabase before(&layout);
        Read(before, {document}, format);
        patches = PatchesOf(document, wanted, before, format);
    }
    Pieces const result = Patched(document, patches);
    {
        ParameterDatabase after(&layout);
        Read(after, result, format, std::any_of(values.begin(), values.end(), &IsLong));
        RequireValues(after, wanted);
    }
    RequireOnlyThese({document}, result, patches);
    // Only now is a file touched, and it is replaced as a whole.
    Write(result, target, report);
}

bool EditOrReport(ParameterLayout const& layout, std::wstring const& path,
                  std::vector<ValueText> const& values, std::wstring const& target,
                  ParameterFileFormat format, WriteReport* report) {
    Sax::Restart(report);
    try {
        Edit(layout, path, values, target, format, report);
        return true;
    } catch (Refusal& refusal) {
        if (report != nullptr) {
            report->m_sentence = std::move(refusal.sentence);
            report->m_path = std::move(refusal.path);
            report->m_error = refusal.code;
        }
        return false;
    }
}

std::vector<ValuePlace> Find(ParameterLayout const& layout, std::wstring const& path,
                             std::vector<std::wstring> const& paths, ParameterFileFormat format) {
    std::vector<ValuePlace> places(paths.size());
    try {
        Bytes const bytes = BytesOf(path);
        std::string_view const document = TextOf(bytes);
        ParameterDatabase database(&layout);
        Read(database, {document}, format);
        std::vector<ValueElement> const elements =
            FindElements(document, WaysOf(database, paths, format), paths.size());
        for (std::size_t i = 0; i < paths.size(); ++i) {
            if (elements[i].isFound) {
                places[i] = {elements[i].begin.line, elements[i].begin.column};
            }
        }
    } catch (Refusal const&) { // no file, no places
    }
    return places;
}

} // namespace

bool EditValueTexts(ParameterLayout const& layout, std::wstring const& path,
                    std::vector<ValueText> const& values, std::wstring const& target, WriteReport* report) {
    return EditOrReport(layout, path, values, target, ParameterFileFormat::Generic, report);
}

std::vector<ValuePlace> FindValuePlaces(ParameterLayout const& layout, std::wstring const& path,
                                        std::vector<std::wstring> const& paths) {
    return Find(layout, path, paths, ParameterFileFormat::Generic);
}

bool KlvrProperties::EditValueTexts(ParameterLayout const& layout, std::wstring const& path,
                                    std::vector<ValueText> const& values, std::wstring const& target,
                                    WriteReport* report) {
    return EditOrReport(layout, path, values, target, ParameterFileFormat::Machine, report);
}

std::vector<ValuePlace> KlvrProperties::FindValuePlaces(ParameterLayout const& layout,
                                                        std::wstring const& path,
                                                        std::vector<std::wstring> const& paths) {
    return Find(layout, path, paths, ParameterFileFormat::Machine);
}

} // namespace Zantrel
