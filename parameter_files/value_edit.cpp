// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/value_edit.h>

#include "io/input_file.h"
#include "io/output_file.h"
#include "parameter_files/value_elements.h"
#include "sax/escaping.h"
#include "text/numbers.h"
#include "text/unicode.h"

#include <zantrel/database/value_type.h>
#include <zantrel/database/visit_value.h>
#include <zantrel/database/walk.h>
#include <zantrel/parameter_files/generic_parameter_file.h>
#include <zantrel/parameter_files/machine_parameters_file.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <sstream>
#include <type_traits>
#include <utility>

// What keeps a change from doing harm is not how its place is found but that the result is read: two
// databases, of the file as it was and as it would be, must be equal once the values in question are the
// same. So the search may err, and then the change isn't made.

namespace Zantrel {

namespace {

/// Fails with a sentence: what is changed in memory only needs no way back.
struct Refusal {
    std::wstring sentence;
    std::wstring path;
};

/// What tells the two formats apart here; all else knows neither.
struct FormatFunctions {
    ParameterFileFormat format;
    bool (*read)(ParameterDatabase& database, std::basic_istream<char>& in, ReadReport* report);
};
constexpr FormatFunctions Generic{ParameterFileFormat::Generic, &ReadStream};
constexpr FormatFunctions Machine{ParameterFileFormat::Machine, &KlvrProperties::ReadStream};

std::string BytesOf(std::wstring const& path) {
    std::vector<std::byte> bytes;
    if (!Io::ReadWholeFile(path, bytes)) {
        throw Refusal{L"Can't read \"" + path + L"\".", L""};
    }
    return std::string(reinterpret_cast<char const*>(bytes.data()), bytes.size());
}

/// Places count characters, which are found here by the bytes of UTF-8. What isn't recognised as another
/// encoding is counted wrongly then, and found out by the comparison.
bool IsUtf16(std::string const& document) {
    return document.compare(0, 2, "\xFF\xFE") == 0 || document.compare(0, 2, "\xFE\xFF") == 0;
}

/// Turns places of a document into offsets of its bytes, in one pass over those that it is asked for.
class ByteOffsets {
public:
    explicit ByteOffsets(std::string const& document)
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

    std::string const& m_document;
    std::size_t m_at;
    Xml::Position m_here;
};

/// Bytes to exchange.
struct Patch {
    std::size_t begin, end;
    std::string bytes;
};

/// Behind the ">" of the start tag that begins at `at`; a tag that was read ends.
std::size_t EndOfStartTag(std::string const& document, std::size_t at) {
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

Patch PatchOf(std::string const& document, std::size_t begin, std::size_t end, ValueText const& value) {
    std::size_t const inside = EndOfStartTag(document, begin);
    // The tag gets an end of its own; its attributes stay as they are, byte for byte.
    if (document[inside - 2] == '/') { // an empty-element tag
        std::size_t const tag = begin + 1;
        std::string const name = document.substr(tag, document.find_first_of(" \t\r\n/>", tag) - tag);
        return {inside - 2, inside, '>' + Escaped(value) + "</" + name + '>'};
    }
    if (end < inside || document.find('<', inside) != end) {
        throw Refusal{L"The element holds more than a text.", value.path};
    }
    return {inside, end, Escaped(value)};
}

/// The values to change, by path; of several for one the last.
using Wanted = std::map<std::wstring, ValueText const*, std::less<>>;

std::string Patched(std::string const& document, Wanted const& wanted, ParameterDatabase const& database,
                    ParameterFileFormat format) {
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
    // In the order of the document, so that offsets are counted in one pass and what is between is copied
    // once.
    std::sort(ordered.begin(), ordered.end(), [](auto const& left, auto const& right) {
        auto const &one = left.first.begin, &other = right.first.begin;
        return std::pair(one.line, one.column) < std::pair(other.line, other.column);
    });
    ByteOffsets offsets(document);
    std::string result;
    std::size_t copied = 0;
    for (auto const& [element, value] : ordered) {
        std::size_t const begin = offsets.Of(element.begin), end = offsets.Of(element.end);
        Patch const patch = PatchOf(document, begin, end, *value);
        result.append(document, copied, patch.begin - copied).append(patch.bytes);
        copied = patch.end;
    }
    return result.append(document, copied);
}

void Read(ParameterDatabase& database, std::string const& document, FormatFunctions const& functions) {
    std::istringstream in(document);
    ReadReport report;
    if (!functions.read(database, in, &report)) {
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

/// Gives `leaf` the value of `model`, which the text must say.
void TakeValue(ParameterNode& leaf, ParameterNode const& model, ValueText const& wanted) {
    bool isTaken = false;
    VisitValue(model, [&](auto const& value) {
        using T = std::decay_t<decltype(value)>;
        isTaken = Says(wanted.text, value);
        if constexpr (std::is_same_v<T, std::wstring>) {
            leaf.SetValueFromText(value); // makes it where there is none
        } else {
            leaf.SetValue(value);
        }
    });
    if (!isTaken) {
        throw Refusal{L"Read back, the value isn't \"" + wanted.text + L"\".", wanted.path};
    }
}

/// `before` is the database of the document as it was; afterwards it has the new values.
void RequireOnlyThese(ParameterDatabase& before, ParameterDatabase& after, Wanted const& wanted) {
    auto leaves = LeavesOf(before, wanted), changed = LeavesOf(after, wanted);
    for (auto const& [path, value] : wanted) {
        auto const leaf = leaves.find(path), model = changed.find(path);
        if (leaf == leaves.end() || model == changed.end()) {
            throw Refusal{L"The layout has no such value, or the file no such entry.", path};
        }
        TakeValue(leaf->second, model->second, *value);
    }
    if (!before.IsEqual(after)) {
        throw Refusal{L"Read back, other values differ, too.", L""};
    }
}

void Edit(ParameterLayout const& layout, std::wstring const& path, std::vector<ValueText> const& values,
          std::wstring const& target, FormatFunctions const& functions) {
    Wanted wanted;
    for (ValueText const& value : values) {
        wanted[value.path] = &value;
    }
    std::string const document = BytesOf(path);
    if (IsUtf16(document)) {
        throw Refusal{L"The file is in UTF-16.", L""};
    }
    // Both come from text, so that whatever a read makes of the rest of the file is the same in both.
    ParameterDatabase before(&layout), after(&layout);
    Read(before, document, functions);
    std::string const result = Patched(document, wanted, before, functions.format);
    Read(after, result, functions);
    RequireOnlyThese(before, after, wanted);
    // Only now is a file touched, and it is replaced as a whole.
    Io::OutputFile out;
    if (!out.Open(target) || !out.Write(result) || !out.Commit()) {
        throw Refusal{out.FailureText(), L""};
    }
}

bool EditOrReport(ParameterLayout const& layout, std::wstring const& path,
                  std::vector<ValueText> const& values, std::wstring const& target,
                  FormatFunctions const& functions, WriteReport* report) {
    if (report != nullptr) {
        *report = WriteReport();
    }
    try {
        Edit(layout, path, values, target, functions);
        return true;
    } catch (Refusal& refusal) {
        if (report != nullptr) {
            report->m_sentence = std::move(refusal.sentence);
            report->m_path = std::move(refusal.path);
        }
        return false;
    }
}

std::vector<ValuePlace> Find(ParameterLayout const& layout, std::wstring const& path,
                             std::vector<std::wstring> const& paths, FormatFunctions const& functions) {
    std::vector<ValuePlace> places(paths.size());
    try {
        std::string const document = BytesOf(path);
        ParameterDatabase database(&layout);
        Read(database, document, functions);
        std::vector<ValueElement> const elements =
            FindElements(document, WaysOf(database, paths, functions.format), paths.size());
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
    return EditOrReport(layout, path, values, target, Generic, report);
}

std::vector<ValuePlace> FindValuePlaces(ParameterLayout const& layout, std::wstring const& path,
                                        std::vector<std::wstring> const& paths) {
    return Find(layout, path, paths, Generic);
}

bool KlvrProperties::EditValueTexts(ParameterLayout const& layout, std::wstring const& path,
                                    std::vector<ValueText> const& values, std::wstring const& target,
                                    WriteReport* report) {
    return EditOrReport(layout, path, values, target, Machine, report);
}

std::vector<ValuePlace> KlvrProperties::FindValuePlaces(ParameterLayout const& layout,
                                                        std::wstring const& path,
                                                        std::vector<std::wstring> const& paths) {
    return Find(layout, path, paths, Machine);
}

} // namespace Zantrel
